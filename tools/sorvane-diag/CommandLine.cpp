#include "CommandLine.h"
#include "UsageError.h"

#include <kel/LogPriority.h>
#include <kel/String.h>

#include <windows.h>
#include <shellapi.h>

#include <cwctype>

namespace sorvane {
namespace diag {

namespace {

typedef void (*Apply)(HostOptions &options, const std::wstring &value);

struct OptionSpec {
    const wchar_t *longName;
    const wchar_t *shortName;
    bool takesValue;
    Apply apply;
};

std::wstring lower(const std::wstring &text)
{
    return kel::String(text).toLower().wstr();
}

void applyHelp(HostOptions &options, const std::wstring &)
{
    options.help = true;
}
void applyInteractive(HostOptions &options, const std::wstring &)
{
    options.interactive = true;
}
void applyDevice(HostOptions &options, const std::wstring &value)
{
    options.device = value;
}
void applyJson(HostOptions &options, const std::wstring &value)
{
    options.jsonPath = value;
}
void applyLog(HostOptions &options, const std::wstring &value)
{
    options.logPath = value;
}
// Read back through HostOptions::has("--strict").
void applyFlag(HostOptions &, const std::wstring &) {}
void applyOut(HostOptions &options, const std::wstring &value)
{
    options.outputFolder = value;
}

void applySet(HostOptions &options, const std::wstring &value)
{
    const size_t equals = value.find(L'=');
    if (equals == std::wstring::npos || equals == 0)
        throw UsageError(L"--set takes KEY=VALUE, for example --set TVStartChannel=2; got \"" + value + L"\".");
    options.settings.push_back(std::make_pair(value.substr(0, equals), value.substr(equals + 1)));
}

void applyLogLevel(HostOptions &options, const std::wstring &value)
{
    static const struct {
        const wchar_t *name;
        int priority;
    } kLevels[] = {
        {L"detail", kel::LOG_DETAIL}, {L"info", kel::LOG_INFO}, {L"warning", kel::LOG_WARNING},
        {L"error", kel::LOG_ERROR},   {L"off", kel::LOG_OFF},
    };
    const std::wstring wanted = lower(value);
    for (const auto &level : kLevels) {
        if (wanted == level.name) {
            options.logPriority = level.priority;
            return;
        }
    }
    throw UsageError(L"--log-level takes detail, info, warning, error or off; got \"" + value + L"\".");
}

void applyFrames(HostOptions &options, const std::wstring &value)
{
    wchar_t *end = nullptr;
    const unsigned long frames = value.empty() || !iswdigit(value[0]) ? 0 : wcstoul(value.c_str(), &end, 10);
    if (!end || *end != L'\0' || frames < 1 || frames > CommandLine::kMaxFrames)
        throw UsageError(L"--frames takes a whole number from 1 to " + std::to_wstring(CommandLine::kMaxFrames) +
                         L"; got \"" + value + L"\".");
    options.frames = static_cast<unsigned>(frames);
}

void applyName(HostOptions &options, const std::wstring &value)
{
    if (value.empty() || value.find_first_of(L"\\/:*?\"<>|") != std::wstring::npos)
        throw UsageError(L"--name takes a file name without a folder or extension; got \"" + value + L"\".");
    options.recordingName = value;
}

void applyKeepTs(HostOptions &options, const std::wstring &value)
{
    if (value.empty())
        throw UsageError(L"--keep-ts takes the name of the .ts file to write.");
    options.keepTsPath = value;
}

void applyVerbose(HostOptions &options, const std::wstring &)
{
    options.verbose = true;
}

const OptionSpec kOptions[] = {
    {L"--help", L"-h", false, applyHelp},
    {L"--device", L"-d", true, applyDevice},
    {L"--set", L"-s", true, applySet},
    {L"--interactive", L"-i", false, applyInteractive},
    {L"--json", nullptr, true, applyJson},
    {L"--log", nullptr, true, applyLog},
    {L"--log-level", nullptr, true, applyLogLevel},
    {L"--frames", L"-n", true, applyFrames},
    {L"--out", L"-o", true, applyOut},
    {L"--name", nullptr, true, applyName},
    {L"--strict", nullptr, false, applyFlag},
    {L"--verbose", L"-v", false, applyVerbose},
    {L"--keep-ts", nullptr, true, applyKeepTs},
};

const OptionSpec *findOption(const std::wstring &name)
{
    for (const OptionSpec &option : kOptions) {
        if (name == option.longName || (option.shortName && name == option.shortName))
            return &option;
    }
    return nullptr;
}

bool looksLikeOption(const std::wstring &argument)
{
    return argument.size() > 1 && argument[0] == L'-';
}

} // namespace

HostOptions CommandLine::parse(const std::vector<std::wstring> &arguments)
{
    HostOptions options;
    std::vector<std::wstring> words;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::wstring &argument = arguments[i];
        if (!looksLikeOption(argument)) {
            words.push_back(argument);
            continue;
        }
        // "--json=report.json" is the same as "--json report.json".
        const size_t equals = argument.rfind(L"--", 0) == 0 ? argument.find(L'=') : std::wstring::npos;
        const std::wstring name = argument.substr(0, equals);
        const OptionSpec *option = findOption(name);
        if (!option)
            throw UsageError(L"Unknown option " + name + L".");

        std::wstring value;
        if (equals != std::wstring::npos) {
            if (!option->takesValue)
                throw UsageError(std::wstring(option->longName) + L" takes no value.");
            value = argument.substr(equals + 1);
        } else if (option->takesValue) {
            if (i + 1 >= arguments.size())
                throw UsageError(std::wstring(option->longName) + L" needs a value.");
            value = arguments[++i];
        }
        option->apply(options, value);
        options.given.push_back(option->longName);
    }

    // "help webcam" is "webcam --help".
    if (!words.empty() && words[0] == L"help") {
        options.help = true;
        words.erase(words.begin());
    }
    if (words.size() > 1)
        throw UsageError(L"Unexpected argument \"" + words[1] + L"\".");
    if (!words.empty())
        options.command = words[0];
    if (options.logPriority && options.logPath.empty())
        throw UsageError(L"--log-level needs --log FILE to say where the log goes.");
    return options;
}

std::vector<std::wstring> CommandLine::processArguments()
{
    std::vector<std::wstring> arguments;
    int count = 0;
    wchar_t **list = CommandLineToArgvW(GetCommandLineW(), &count);
    if (!list)
        return arguments;
    for (int i = 1; i < count; ++i)
        arguments.push_back(list[i]);
    LocalFree(list);
    return arguments;
}

std::wstring CommandLine::commonOptionsHelp()
{
    return L"  -d, --device DEVICE     the device to test: its index or name as `list` shows it\n"
           L"                          (default: the first device that fits the command)\n"
           L"  -s, --set KEY=VALUE     set a framework parameter; repeatable (see `sorvane-diag --help`)\n"
           L"  -i, --interactive       ask the test's questions at the prompt (default: no questions,\n"
           L"                          every question takes its safe answer)\n"
           L"      --json FILE         write a report for machines (result, events, progress, files,\n"
           L"                          timings); FILE \"-\" writes it to standard output\n"
           L"      --log FILE          append the library's log to FILE (level detail unless --log-level)\n"
           L"      --log-level LEVEL   detail, info, warning, error or off\n"
           L"  -h, --help              show this help\n";
}

} // namespace diag
} // namespace sorvane
