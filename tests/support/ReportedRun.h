// A run of the host with a JSON report beside its output, and what tests ask of that report.
#pragma once

#include "HostProgram.h"
#include "JsonValue.h"
#include "ScratchFolder.h"

#include <string>
#include <vector>

namespace sorvane {
namespace test {

struct ReportedRun {
    HostProgram::Outcome outcome;
    JsonValue report;

    // Runs the host with `--json <folder>\report.json` added and reads the report back.
    static ReportedRun of(std::vector<std::wstring> arguments, const ScratchFolder &folder);
    // Whether one of the report's messages contains `part`.
    bool hasMessage(const std::string &part) const;
};

} // namespace test
} // namespace sorvane
