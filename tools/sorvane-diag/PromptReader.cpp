#include "PromptReader.h"

#include <kel/String.h>

#include <windows.h>

#include <chrono>
#include <thread>

namespace sorvane {
namespace diag {

PromptReader &PromptReader::instance()
{
    static PromptReader *reader = new PromptReader;
    return *reader;
}

PromptReader::PromptReader() : m_started(false), m_ended(false), m_interrupted(false) {}

bool PromptReader::readLine(std::wstring &line, uint32_t milliseconds)
{
    std::unique_lock<std::mutex> guard(m_lock);
    if (!m_started)
        start();
    const auto ready = [this] { return !m_lines.empty() || m_ended || m_interrupted; };
    if (milliseconds == 0)
        m_arrived.wait(guard, ready);
    else
        m_arrived.wait_for(guard, std::chrono::milliseconds(milliseconds), ready);
    if (m_lines.empty() || m_interrupted)
        return false;
    line = m_lines.front();
    m_lines.pop_front();
    return true;
}

void PromptReader::interrupt()
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_interrupted = true;
    m_arrived.notify_all();
}

void PromptReader::start()
{
    m_started = true;
    std::thread(&PromptReader::readAll, this).detach();
}

void PromptReader::readAll()
{
    std::wstring line;
    while (readOne(line)) {
        std::lock_guard<std::mutex> guard(m_lock);
        m_lines.push_back(line);
        m_arrived.notify_all();
    }
    std::lock_guard<std::mutex> guard(m_lock);
    m_ended = true;
    m_arrived.notify_all();
}

bool PromptReader::readOne(std::wstring &line)
{
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    DWORD mode = 0;
    line.clear();
    if (GetConsoleMode(input, &mode)) {
        wchar_t buffer[512];
        DWORD read = 0;
        if (!ReadConsoleW(input, buffer, 512, &read, nullptr) || read == 0)
            return false;
        line.assign(buffer, read);
    } else {
        std::string bytes;
        char c = 0;
        DWORD read = 0;
        while (ReadFile(input, &c, 1, &read, nullptr) && read == 1 && c != '\n')
            bytes += c;
        if (bytes.empty() && read == 0)
            return false;
        line = kel::String::fromUtf8(bytes).wstr();
    }
    while (!line.empty() && (line.back() == L'\n' || line.back() == L'\r'))
        line.pop_back();
    return true;
}

} // namespace diag
} // namespace sorvane
