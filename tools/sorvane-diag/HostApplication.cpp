#include "HostApplication.h"
#include "CommandContext.h"
#include "CommandLine.h"
#include "CommandSet.h"
#include "HostError.h"
#include "HostPaths.h"
#include "HostSession.h"
#include "OutputCheck.h"
#include "ParameterSettings.h"
#include "ResultCodes.h"
#include "RunReport.h"
#include "Terminal.h"
#include "UsageError.h"

#include <kel/LogFactory.h>

#include <exception>

namespace sorvane {
namespace diag {

namespace {

const wchar_t *const kCommonOptions[] = {L"--help", L"--device", L"--set",      L"--interactive",
                                         L"--json", L"--log",    L"--log-level"};

bool isCommon(const std::wstring &option)
{
    for (const wchar_t *common : kCommonOptions) {
        if (option == common)
            return true;
    }
    return false;
}

} // namespace

int HostApplication::run(const std::vector<std::wstring> &arguments)
{
    HostOptions options;
    CommandSet commands;
    try {
        options = CommandLine::parse(arguments);
        if (options.command.empty()) {
            if (!options.help)
                throw UsageError(L"No command given. The commands are: " + commands.names() + L".");
            Terminal(false).line(commands.help());
            return 0;
        }
        Command *command = commands.find(options.command);
        if (!command)
            throw UsageError(L"Unknown command \"" + options.command + L"\". The commands are: " + commands.names() +
                             L".");
        checkOptions(*command, options);
        if (options.help) {
            Terminal(false).line(commands.help(*command));
            return 0;
        }
        OutputCheck::check(options);
        return runCommand(*command, options);
    } catch (const UsageError &error) {
        return usageFailure(error.message(), error.exitCode());
    }
}

int HostApplication::usageFailure(const std::wstring &message, int exitCode)
{
    Terminal terminal(false);
    terminal.problem(L"sorvane-diag: " + message);
    terminal.problem(L"Run `sorvane-diag --help` for the commands and options.");
    return exitCode;
}

void HostApplication::checkOptions(const Command &command, const HostOptions &options)
{
    const std::vector<std::wstring> own = command.ownOptions();
    for (const std::wstring &option : options.given) {
        bool allowed = isCommon(option) && (option != L"--device" || command.takesDevice());
        for (const std::wstring &name : own)
            allowed = allowed || option == name;
        if (!allowed)
            throw UsageError(L"The command " + command.name() + L" takes no " + option + L" option.");
    }
}

int HostApplication::runCommand(Command &command, const HostOptions &options)
{
    Terminal terminal(options.jsonToStdout());
    RunReport report;
    report.setCommand(command.name());
    for (const auto &setting : options.settings)
        report.addParameter(setting.first, setting.second);

    int exitCode = ResultCodes::HOST_ERROR;
    try {
        configureLog(options);
        ParameterSettings::apply(options.settings);
        const ruvo::TestResult result = runInSession(command, options, terminal, report);
        report.setResult(result);
        exitCode = ResultCodes::exitCode(result);
        terminal.line(L"Result: " + ResultCodes::name(result) + L" (" + ResultCodes::words(result) + L")");
    } catch (const UsageError &error) {
        terminal.problem(L"sorvane-diag: " + error.message());
        report.addMessage(error.message());
        exitCode = error.exitCode();
        if (exitCode == ResultCodes::exitCode(ruvo::TestResult::BADPARAMS()))
            report.setResult(ruvo::TestResult::BADPARAMS());
    } catch (const HostError &error) {
        terminal.finishProgress();
        terminal.problem(L"sorvane-diag: " + error.message());
        report.addMessage(error.message());
    } catch (const std::exception &error) {
        terminal.finishProgress();
        const std::wstring message = L"Unexpected error: " + kel::String(error.what()).wstr();
        terminal.problem(L"sorvane-diag: " + message);
        report.addMessage(message);
    }
    report.setExitCode(exitCode);
    return writeReport(options, terminal, report) ? exitCode : ResultCodes::HOST_ERROR;
}

ruvo::TestResult HostApplication::runInSession(Command &command, const HostOptions &options, Terminal &terminal,
                                               RunReport &report)
{
    HostSession session(terminal, report, options.interactive, [&options, &terminal, &report] {
        report.addMessage(L"Quit at once by a second Ctrl+C: the test did not finish.");
        report.setExitCode(ResultCodes::FORCED_QUIT);
        writeReport(options, terminal, report);
    });
    CommandContext context(options, terminal, report);
    return command.run(context);
}

void HostApplication::configureLog(const HostOptions &options)
{
    // The host reads some of the library's detail lines to explain a result (a tuner whose
    // signal check fails reads as a plain "no signal" otherwise): every line is admitted, and
    // the file keeps the level asked for.
    kel::LogFactory::setPriority(kel::LOG_DETAIL);
    if (options.logPath.empty())
        return;
    kel::LogFactory::setLogFilePriority(options.logPriority ? options.logPriority : kel::LOG_DETAIL);
    kel::LogFactory::setLogFile(kel::String(HostPaths::absolute(options.logPath)));
}

bool HostApplication::writeReport(const HostOptions &options, Terminal &terminal, const RunReport &report)
{
    if (options.jsonPath.empty())
        return true;
    const std::string json = report.toJson();
    if (options.jsonToStdout()) {
        terminal.writeData(json);
        return true;
    }
    try {
        HostPaths::replaceFile(HostPaths::absolute(options.jsonPath), json.data(), json.size());
        return true;
    } catch (const HostError &error) {
        terminal.problem(L"sorvane-diag: " + error.message());
        return false;
    }
}

} // namespace diag
} // namespace sorvane
