// Runs the depth-camera probe program (tests/programs/depthprobe.cpp or its build without the
// Windows 10 manifest) and collects what it printed: the count, the camera names and the
// library's log lines.
#pragma once

#include <windows.h>
#include <string>

namespace sorvane {
namespace test {

class DepthProbe {
public:
    struct Outcome {
        bool finished;
        DWORD exitCode;
        std::string output; // UTF-8
    };

    // Starts `program` in `workingFolder` (the test's own when empty) and waits for it.
    static Outcome run(const std::wstring &program, const std::wstring &workingFolder = std::wstring());
};

} // namespace test
} // namespace sorvane
