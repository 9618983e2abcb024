#include "DepthProbe.h"
#include "ScratchFolder.h"

#include <vector>

namespace sorvane {
namespace test {

DepthProbe::Outcome DepthProbe::run(const std::wstring &program, const std::wstring &workingFolder)
{
    Outcome outcome = {false, 0, std::string()};
    ScratchFolder scratch(L"sorvane-depthprobe");
    const std::wstring outputFile = scratch.file(L"output.txt");
    std::wstring commandLine = L"\"" + program + L"\" \"" + outputFile + L"\"";
    std::vector<wchar_t> buffer(commandLine.begin(), commandLine.end());
    buffer.push_back(L'\0');
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(program.c_str(), buffer.data(), nullptr, nullptr, FALSE, 0, nullptr,
                        workingFolder.empty() ? nullptr : workingFolder.c_str(), &startup, &process))
        return outcome;
    outcome.finished = WaitForSingleObject(process.hProcess, 60000) == WAIT_OBJECT_0;
    if (!outcome.finished)
        TerminateProcess(process.hProcess, 1);
    WaitForSingleObject(process.hProcess, 5000);
    GetExitCodeProcess(process.hProcess, &outcome.exitCode);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    outcome.output = ScratchFolder::read(outputFile);
    return outcome;
}

} // namespace test
} // namespace sorvane
