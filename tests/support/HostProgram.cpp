#include "HostProgram.h"

#include <mutex>

namespace sorvane {
namespace test {

struct HostProgram::Reader {
    HANDLE pipe = nullptr;
    HANDLE thread = nullptr;
    std::mutex lock;
    std::string text;
};

namespace {

std::wstring quoted(const std::wstring &argument)
{
    if (!argument.empty() && argument.find_first_of(L" \t\"") == std::wstring::npos)
        return argument;
    std::wstring result = L"\"";
    for (const wchar_t c : argument) {
        if (c == L'"')
            result += L'\\';
        result += c;
    }
    return result + L"\"";
}

// A pipe whose `childEnd` the program inherits.
bool makePipe(HANDLE &parentEnd, HANDLE &childEnd, bool childReads)
{
    SECURITY_ATTRIBUTES inherit = {sizeof inherit, nullptr, TRUE};
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    if (!CreatePipe(&read, &write, &inherit, 0))
        return false;
    parentEnd = childReads ? write : read;
    childEnd = childReads ? read : write;
    SetHandleInformation(parentEnd, HANDLE_FLAG_INHERIT, 0);
    return true;
}

} // namespace

std::wstring HostProgram::programPath()
{
    wchar_t self[MAX_PATH];
    const DWORD length = GetModuleFileNameW(nullptr, self, MAX_PATH);
    std::wstring path(self, length);
    return path.substr(0, path.find_last_of(L"\\/") + 1) + L"sorvane-diag.exe";
}

HostProgram::HostProgram(const std::vector<std::wstring> &arguments, const std::string &input, InputEnd inputEnd)
    : m_process(), m_input(nullptr), m_out(new Reader), m_err(new Reader)
{
    std::wstring commandLine = quoted(programPath());
    for (const std::wstring &argument : arguments)
        commandLine += L" " + quoted(argument);

    HANDLE inParent = nullptr, inChild = nullptr, outChild = nullptr, errChild = nullptr;
    if (!makePipe(inParent, inChild, true) || !makePipe(m_out->pipe, outChild, false) ||
        !makePipe(m_err->pipe, errChild, false))
        return;

    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = inChild;
    startup.hStdOutput = outChild;
    startup.hStdError = errChild;
    std::vector<wchar_t> buffer(commandLine.begin(), commandLine.end());
    buffer.push_back(L'\0');
    if (!CreateProcessW(nullptr, buffer.data(), nullptr, nullptr, TRUE, CREATE_NEW_PROCESS_GROUP, nullptr, nullptr,
                        &startup, &m_process))
        m_process = PROCESS_INFORMATION();
    CloseHandle(inChild);
    CloseHandle(outChild);
    CloseHandle(errChild);

    DWORD written = 0;
    if (!input.empty())
        WriteFile(inParent, input.data(), static_cast<DWORD>(input.size()), &written, nullptr);
    if (inputEnd == InputEnd::KeepOpen)
        m_input = inParent;
    else
        CloseHandle(inParent);
    m_out->thread = CreateThread(nullptr, 0, readAll, m_out, 0, nullptr);
    m_err->thread = CreateThread(nullptr, 0, readAll, m_err, 0, nullptr);
}

HostProgram::~HostProgram()
{
    if (m_process.hProcess) {
        TerminateProcess(m_process.hProcess, 1);
        WaitForSingleObject(m_process.hProcess, kGraceMs);
        CloseHandle(m_process.hProcess);
        CloseHandle(m_process.hThread);
    }
    if (m_input)
        CloseHandle(m_input);
    for (Reader *reader : {m_out, m_err}) {
        // A reader that cannot be stopped keeps its buffer: it is left to the process's end.
        if (!finishReading(*reader))
            continue;
        if (reader->thread)
            CloseHandle(reader->thread);
        if (reader->pipe)
            CloseHandle(reader->pipe);
        delete reader;
    }
}

// The output ends when the last holder of the pipe's write end is gone. Should another
// process have inherited it, the read is cancelled rather than waited for without end.
bool HostProgram::finishReading(Reader &reader)
{
    if (!reader.thread)
        return true;
    if (WaitForSingleObject(reader.thread, kGraceMs) == WAIT_OBJECT_0)
        return true;
    CancelSynchronousIo(reader.thread);
    return WaitForSingleObject(reader.thread, kGraceMs) == WAIT_OBJECT_0;
}

DWORD WINAPI HostProgram::readAll(void *context)
{
    Reader *reader = static_cast<Reader *>(context);
    char buffer[4096];
    DWORD read = 0;
    while (ReadFile(reader->pipe, buffer, sizeof buffer, &read, nullptr) && read > 0) {
        std::lock_guard<std::mutex> guard(reader->lock);
        reader->text.append(buffer, read);
    }
    return 0;
}

std::string HostProgram::textSoFar(Reader &reader)
{
    std::lock_guard<std::mutex> guard(reader.lock);
    return reader.text;
}

std::string HostProgram::outputSoFar()
{
    return textSoFar(*m_out);
}

std::string HostProgram::errorSoFar()
{
    return textSoFar(*m_err);
}

bool HostProgram::waitForText(Reader &reader, const std::string &text, DWORD milliseconds)
{
    const ULONGLONG deadline = GetTickCount64() + milliseconds;
    while (textSoFar(reader).find(text) == std::string::npos) {
        if (GetTickCount64() > deadline || WaitForSingleObject(m_process.hProcess, 0) == WAIT_OBJECT_0)
            return textSoFar(reader).find(text) != std::string::npos;
        Sleep(20);
    }
    return true;
}

bool HostProgram::waitForOutput(const std::string &text, DWORD milliseconds)
{
    return waitForText(*m_out, text, milliseconds);
}

bool HostProgram::waitForError(const std::string &text, DWORD milliseconds)
{
    return waitForText(*m_err, text, milliseconds);
}

HostProgram::Outcome HostProgram::wait(DWORD milliseconds)
{
    Outcome outcome = {false, 0, std::string(), std::string()};
    if (!m_process.hProcess)
        return outcome;
    outcome.finished = WaitForSingleObject(m_process.hProcess, milliseconds) == WAIT_OBJECT_0;
    if (!outcome.finished)
        TerminateProcess(m_process.hProcess, 1);
    WaitForSingleObject(m_process.hProcess, kGraceMs);
    GetExitCodeProcess(m_process.hProcess, &outcome.exitCode);
    bool complete = true;
    for (Reader *reader : {m_out, m_err})
        complete = finishReading(*reader) && complete;
    {
        std::lock_guard<std::mutex> guard(m_out->lock);
        outcome.out = m_out->text;
    }
    {
        std::lock_guard<std::mutex> guard(m_err->lock);
        outcome.err = m_err->text;
    }
    if (!complete)
        outcome.err += "\n[test: the program's output was still open after it ended]";
    return outcome;
}

HostProgram::Outcome HostProgram::run(const std::vector<std::wstring> &arguments, const std::string &input)
{
    HostProgram program(arguments, input);
    return program.wait(120000);
}

} // namespace test
} // namespace sorvane
