#pragma once

#include <kel/LogFactory.h>
#include <mutex>
#include <vector>

namespace sorvane {
namespace test {

// Collects every log line written while it lives, at every priority.
class LogCapture {
public:
    struct Line {
        kel::String category;
        int priority;
        kel::String message;
    };

    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    std::vector<Line> lines() const;
    // Lines whose message contains `text`.
    std::vector<Line> find(const kel::String &text) const;
    bool contains(const kel::String &text) const;
    // Forgets the lines collected so far (between the rows of a table).
    void clear();

private:
    mutable std::mutex m_lock;
    std::vector<Line> m_lines;
    int m_previousPriority;
};

} // namespace test
} // namespace sorvane
