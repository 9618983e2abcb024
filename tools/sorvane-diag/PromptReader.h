// Answers typed at the prompt: lines read from standard input by a thread of their own,
// so that a question can wait for an answer with a time limit.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>

namespace sorvane {
namespace diag {

class PromptReader {
public:
    // The one reader of this process. It lives as long as the process, as does the thread
    // that may be blocked reading for it.
    static PromptReader &instance();

    // The next line without its line end; false when none came within `milliseconds`
    // (0: no limit), standard input has ended, or the wait was interrupted.
    bool readLine(std::wstring &line, uint32_t milliseconds);
    // Ends the current wait and every later one (the person asked the test to stop).
    void interrupt();

private:
    PromptReader();
    PromptReader(const PromptReader &) = delete;
    PromptReader &operator=(const PromptReader &) = delete;

    void start();
    void readAll();
    bool readOne(std::wstring &line);

    std::mutex m_lock;
    std::condition_variable m_arrived;
    std::deque<std::wstring> m_lines;
    bool m_started;
    bool m_ended;
    bool m_interrupted;
};

} // namespace diag
} // namespace sorvane
