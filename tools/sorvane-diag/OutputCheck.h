// The files a run will write, checked before the test runs: a report or log into a folder
// that does not exist, or frames into a folder that cannot be written or already holds an
// earlier run's frames, are command-line mistakes found before anything is captured.
#pragma once

#include "HostOptions.h"

#include <string>

namespace sorvane {
namespace diag {

class OutputCheck {
public:
    // Throws UsageError with the exact problem; creates the --out folder when it is missing.
    static void check(const HostOptions &options);

private:
    static void checkFileFolder(const std::wstring &path, const std::wstring &option);
    static void checkOutputFolder(const std::wstring &path);
    // The first file of an earlier run in `folder` (frame-001.png ...); empty when none.
    static std::wstring earlierFrame(const std::wstring &folder);
    static bool isFolder(const std::wstring &path);
};

} // namespace diag
} // namespace sorvane
