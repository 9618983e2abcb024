// The files a run will write, checked before the test runs: a report, log or recording into
// a folder that does not exist or cannot be written, or frames into a folder that cannot be
// written or already holds an earlier run's frames, are command-line mistakes found before
// anything is captured.
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
    // The library's recording "<temp>\NAME.avi", which replaces an earlier one.
    static void checkRecording(const std::wstring &name);
    // Empty when `file` can be written into `folder` (replacing an earlier one), otherwise why not.
    static std::wstring writeProblem(const std::wstring &folder, const std::wstring &file);
    // Empty when a new file can be made in `folder`.
    static std::wstring probeFolder(const std::wstring &folder);
    // The first file of an earlier run in `folder` (frame-001.png ...); empty when none.
    static std::wstring earlierFrame(const std::wstring &folder);
    static bool isFolder(const std::wstring &path);
};

} // namespace diag
} // namespace sorvane
