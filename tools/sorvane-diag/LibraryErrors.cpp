#include "LibraryErrors.h"

#include <LogTexts.h>

#include <kel/LogFactory.h>
#include <kel/LogPriority.h>

#include <windows.h>

#include <cwchar>
#include <cwctype>
#include <mutex>

namespace sorvane {
namespace diag {

namespace {

std::mutex g_lock;
std::vector<std::wstring> g_lines;
std::mutex g_listenerLock;
LibraryErrors::Listener g_listener;
std::vector<std::wstring> g_activities;
std::wstring g_activity;

// "408 IMediaControl::Run() failed: ...\ngraph: ..." as "IMediaControl::Run() failed: ...".
std::wstring firstLineWithoutNumber(const std::wstring &message)
{
    size_t begin = 0;
    while (begin < message.size() && iswdigit(message[begin]))
        ++begin;
    while (begin < message.size() && message[begin] == L' ')
        ++begin;
    const size_t end = message.find_first_of(L"\r\n", begin);
    return message.substr(begin, end == std::wstring::npos ? std::wstring::npos : end - begin);
}

// "... SignalPresent returned hr/signalPresent: 0x80004005/0" with a failure code.
bool isFailedSignalCheck(const std::wstring &message)
{
    static const std::wstring kCall = LogTexts::SIGNAL_PRESENT_ANSWER;
    const size_t at = message.find(kCall);
    if (at == std::wstring::npos)
        return false;
    const wchar_t *digits = message.c_str() + at + kCall.size();
    return FAILED(static_cast<HRESULT>(wcstoul(digits, nullptr, 16)));
}

// Detail lines that record a failure the library does not raise as such: a capture's
// time-out and shortfall (the time-out is retried on the next capability and the last
// event only says frames are missing), and empty samples (a line each: kept once).
struct NotableDetail {
    const wchar_t *part;
    bool once;
};
const NotableDetail kNotableDetails[] = {{LogTexts::TIMEOUT_AFTER, false},
                                         {LogTexts::SHORTFALL_BEFORE, false},
                                         {LogTexts::EMPTY_SAMPLE, true},
                                         {LogTexts::NO_PACKETS, false},
                                         {LogTexts::NO_CLEAR_PROGRAM, false}};

bool isNotableDetail(const std::wstring &line)
{
    if (isFailedSignalCheck(line))
        return true;
    for (const NotableDetail &detail : kNotableDetails) {
        if (line.find(detail.part) == std::wstring::npos)
            continue;
        if (!detail.once)
            return true;
        for (const std::wstring &kept : g_lines) {
            if (kept.find(detail.part) != std::wstring::npos)
                return false;
        }
        return true;
    }
    return false;
}

// Sees every line the library writes (the host admits them all): most are dropped unread.
void keep(const kel::String &, int priority, const kel::String &message)
{
    {
        std::lock_guard<std::mutex> hold(g_listenerLock);
        if (g_listener)
            g_listener(message.wstr());
    }
    std::lock_guard<std::mutex> hold(g_lock);
    if (priority >= kel::LOG_ERROR || isNotableDetail(message.wstr())) {
        g_lines.push_back(firstLineWithoutNumber(message.wstr()));
        g_activities.push_back(g_activity);
    }
}

} // namespace

void LibraryErrors::start()
{
    kel::LogFactory::setSink(&keep);
}

void LibraryErrors::setListener(const Listener &listener)
{
    std::lock_guard<std::mutex> hold(g_listenerLock);
    g_listener = listener;
}

void LibraryErrors::stop()
{
    kel::LogFactory::setSink(kel::LogFactory::Sink());
}

size_t LibraryErrors::count()
{
    std::lock_guard<std::mutex> hold(g_lock);
    return g_lines.size();
}

std::vector<std::wstring> LibraryErrors::since(size_t first)
{
    std::lock_guard<std::mutex> hold(g_lock);
    if (first >= g_lines.size())
        return std::vector<std::wstring>();
    return std::vector<std::wstring>(g_lines.begin() + static_cast<std::ptrdiff_t>(first), g_lines.end());
}

std::vector<std::wstring> LibraryErrors::activitiesSince(size_t first)
{
    std::lock_guard<std::mutex> hold(g_lock);
    if (first >= g_activities.size())
        return std::vector<std::wstring>();
    return std::vector<std::wstring>(g_activities.begin() + static_cast<std::ptrdiff_t>(first), g_activities.end());
}

void LibraryErrors::setActivity(const std::wstring &text)
{
    std::lock_guard<std::mutex> hold(g_lock);
    g_activity = text;
}

} // namespace diag
} // namespace sorvane
