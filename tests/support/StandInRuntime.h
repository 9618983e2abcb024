// The stand-in RealSense runtime as one test describes it: a scratch folder with the runtime's
// description and journal files, named to the runtime (and to programs the test starts) through
// the environment of this process while the object lives.
#pragma once

#include "ScratchFolder.h"

#include <string>
#include <vector>

namespace sorvane {
namespace test {

class StandInRuntime {
public:
    StandInRuntime();
    ~StandInRuntime();
    StandInRuntime(const StandInRuntime &) = delete;
    StandInRuntime &operator=(const StandInRuntime &) = delete;

    // Replaces the runtime's description ([realsense-...] sections, as in lab/lab.conf).
    void describe(const std::string &text);
    // The runtime's journal entries so far; empty when it was never called.
    std::vector<std::string> journal() const;
    void clearJournal();
    const std::wstring &folder() const { return m_folder.path(); }

private:
    ScratchFolder m_folder;
};

} // namespace test
} // namespace sorvane
