#pragma once

#include <windows.h>
#include <string>
#include <vector>

namespace sorvane {
namespace test {

// Runs sorvane-diag.exe from the bin folder the way a person's shell does: arguments,
// optional text on standard input, standard output and error captured.
class HostProgram {
public:
    struct Outcome {
        bool finished; // false when it was still running after the time limit (then killed)
        DWORD exitCode;
        std::string out; // UTF-8
        std::string err;
    };

    // What becomes of standard input after `input` was written to it: closed (the end of
    // input), or kept open until the program ends, as a person's terminal is.
    enum class InputEnd { Close, KeepOpen };

    // Starts the program; `input` is written to its standard input.
    HostProgram(const std::vector<std::wstring> &arguments, const std::string &input = std::string(),
                InputEnd inputEnd = InputEnd::Close);
    ~HostProgram();
    HostProgram(const HostProgram &) = delete;
    HostProgram &operator=(const HostProgram &) = delete;

    bool started() const { return m_process.hProcess != nullptr; }
    DWORD processId() const { return m_process.dwProcessId; }
    // Standard output so far.
    std::string outputSoFar();
    // Standard error so far.
    std::string errorSoFar();
    // Waits until standard output contains `text`; false after `milliseconds`.
    bool waitForOutput(const std::string &text, DWORD milliseconds);
    // The same for standard error.
    bool waitForError(const std::string &text, DWORD milliseconds);
    Outcome wait(DWORD milliseconds);

    // Starts, waits up to two minutes, returns what happened.
    static Outcome run(const std::vector<std::wstring> &arguments, const std::string &input = std::string());
    static std::wstring programPath();

private:
    struct Reader;
    static const DWORD kGraceMs = 5000;
    static DWORD WINAPI readAll(void *reader);
    static bool finishReading(Reader &reader);
    static std::string textSoFar(Reader &reader);
    bool waitForText(Reader &reader, const std::string &text, DWORD milliseconds);

    PROCESS_INFORMATION m_process;
    HANDLE m_input;
    Reader *m_out;
    Reader *m_err;
};

inline bool contains(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

// Paths and names between the program's UTF-8 output and the wide Windows API.
inline std::wstring wide(const std::string &utf8)
{
    std::wstring text(utf8.size(), L'\0');
    text.resize(static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()),
                                                        &text[0], static_cast<int>(text.size()))));
    return text;
}

inline std::string narrow(const std::wstring &text)
{
    std::string utf8(text.size() * 3, '\0');
    utf8.resize(static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                                        &utf8[0], static_cast<int>(utf8.size()), nullptr, nullptr)));
    return utf8;
}

} // namespace test
} // namespace sorvane
