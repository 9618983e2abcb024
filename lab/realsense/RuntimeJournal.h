// What the library asked of the stand-in runtime, one line per call, appended to the file the
// environment variable SORVANE_LAB_REALSENSE_JOURNAL names (nothing is written without it).
// A file rather than memory, because the library loads the runtime from several places and
// tests read the journal of a child process too.
//
// Entries:
//   "PXCSession_CreateExt <its six numeric arguments> <module path>"   the factory was called,
//                                  e.g. "PXCSession_CreateExt 4 0 0 0 1 0 Z:\...\libpxcsession.dll"
//   "Session created" / "Session refused <status>"
//   "QueryImpl <index> group <G> subgroup <S>: <implementation name>" / "...: none"
//                                  G and S of the caller's template ("without template" for none)
//   "CreateImpl <implementation name> iuid <iuid> cuid <cuid in hex>" / "... failed <status>"
//   "QueryDeviceNum <implementation name> <count>"
//   "QueryDeviceInfo <implementation name> <index> <camera name>" / "... <index> failed <status>"
//   "Release capture <implementation name>", "Release session"
//   "Unexpected call <PXCSession|PXCCapture> slot <N>"   a slot no caller should reach
#pragma once

#include <string>

namespace lab {
namespace realsense {

class RuntimeJournal {
public:
    static void record(const std::wstring &entry);
};

} // namespace realsense
} // namespace lab
