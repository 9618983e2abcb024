#include "CommandSet.h"
#include "CommandLine.h"
#include "ParameterSettings.h"
#include "ResultCodes.h"

namespace sorvane {
namespace diag {

CommandSet::CommandSet() : m_demo(m_list, m_webcam)
{
    m_all.push_back(&m_list);
    m_all.push_back(&m_webcam);
    m_all.push_back(&m_preview);
    m_all.push_back(&m_record);
    m_all.push_back(&m_tv);
    m_all.push_back(&m_fm);
    m_all.push_back(&m_demo);
    m_all.push_back(&m_depth);
    m_all.push_back(&m_formats);
    m_all.push_back(&m_atsc);
    m_all.push_back(&m_clearqam);
    m_all.push_back(&m_dvbt);
    m_all.push_back(&m_ocur);
}

Command *CommandSet::find(const std::wstring &name)
{
    for (Command *command : m_all) {
        if (command->name() == name)
            return command;
    }
    return nullptr;
}

std::wstring CommandSet::names() const
{
    std::wstring text;
    for (const Command *command : m_all)
        text += (text.empty() ? L"" : L", ") + command->name();
    return text;
}

std::wstring CommandSet::help() const
{
    std::wstring text = L"Usage: sorvane-diag COMMAND [OPTIONS]\n"
                        L"       sorvane-diag COMMAND --help\n"
                        L"\n"
                        L"Runs libSorvane's tests and device enumeration from a terminal.\n"
                        L"\n"
                        L"Commands:\n";
    for (const Command *command : m_all) {
        std::wstring name = command->name();
        name.append(10 - name.size(), L' ');
        text += L"  " + name + command->summary() + L"\n";
    }
    text += L"\nOptions of every command:\n" + CommandLine::commonOptionsHelp();
    text += L"\nParameters (--set KEY=VALUE; keys are case-sensitive):\n" + ParameterSettings::declaredHelp();
    text += L"Country takes a country's two-letter code in any case (DE, us), or UserDefined to choose\n"
            L"from a list with --interactive.\n";
    text += L"\nExit status:\n" + ResultCodes::table();
    return text;
}

std::wstring CommandSet::help(const Command &command) const
{
    return command.help() + L"\nOptions of every command:\n" + CommandLine::commonOptionsHelp() +
           L"\nExit status: 0 when the test passed; `sorvane-diag --help` lists the others.\n";
}

} // namespace diag
} // namespace sorvane
