#include "ReportedRun.h"

namespace sorvane {
namespace test {

ReportedRun ReportedRun::of(std::vector<std::wstring> arguments, const ScratchFolder &folder)
{
    const std::wstring path = folder.file(L"report.json");
    arguments.push_back(L"--json");
    arguments.push_back(path);
    ReportedRun run;
    run.outcome = HostProgram::run(arguments);
    run.report = JsonValue::parse(ScratchFolder::read(path));
    return run;
}

bool ReportedRun::hasMessage(const std::string &part) const
{
    const JsonValue &messages = report["messages"];
    for (size_t i = 0; i < messages.size(); ++i) {
        if (contains(messages[i].text(), part))
            return true;
    }
    return false;
}

} // namespace test
} // namespace sorvane
