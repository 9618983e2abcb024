#pragma once

#include <string>
#include <vector>

namespace sorvane {
namespace test {

// Turns kel assertions into records: the assertion is logged and observed here, and the
// structured exception that follows it is continued past instead of ending the process.
class AssertionCatcher {
public:
    struct Assertion {
        std::string file;
        int line;
        std::string expression;
    };

    AssertionCatcher();
    ~AssertionCatcher();
    AssertionCatcher(const AssertionCatcher &) = delete;
    AssertionCatcher &operator=(const AssertionCatcher &) = delete;

    const std::vector<Assertion> &assertions() const;
    // How many structured exceptions with the assertion code were raised.
    int raisedCount() const;

private:
    void *m_handler;
};

} // namespace test
} // namespace sorvane
