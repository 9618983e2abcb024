#include "ParameterSettings.h"
#include "ResultCodes.h"
#include "UsageError.h"

#include <ruvo/DiagModule.h>

namespace sorvane {
namespace diag {

namespace {

std::wstring typeName(ruvo::DataType::Type type)
{
    return kel::String(ruvo::Value::typeName(type)).wstr();
}

std::wstring knownKeys()
{
    std::wstring keys;
    const kel::Array<ruvo::Declaration> declarations = ruvo::DiagModule::declarations();
    for (const ruvo::Declaration &declaration : declarations) {
        if (declaration.kind != ruvo::Declaration::PARAMETER)
            continue;
        if (!keys.empty())
            keys += L", ";
        keys += declaration.key.wstr();
    }
    return keys;
}

// The declared key that differs from `key` only in case, or empty.
std::wstring sameKeyInOtherCase(const std::wstring &key)
{
    const kel::Array<ruvo::Declaration> declarations = ruvo::DiagModule::declarations();
    for (const ruvo::Declaration &declaration : declarations) {
        if (declaration.kind == ruvo::Declaration::PARAMETER && declaration.key.equalsIgnoreCase(kel::String(key)))
            return declaration.key.wstr();
    }
    return std::wstring();
}

std::wstring unknownKeyMessage(const std::wstring &key)
{
    const std::wstring suggestion = sameKeyInOtherCase(key);
    if (!suggestion.empty())
        return L"Unknown parameter \"" + key + L"\". Keys are case-sensitive: did you mean " + suggestion + L"?";
    return L"Unknown parameter \"" + key + L"\". The parameters are: " + knownKeys() + L".";
}

struct Parsed {
    ruvo::Parameter *parameter;
    ruvo::Value value;
};

Parsed parse(const std::wstring &key, const std::wstring &text)
{
    const int badParams = ResultCodes::exitCode(ruvo::TestResult::BADPARAMS());
    Parsed parsed;
    parsed.parameter = ruvo::DiagModule::findParameter(kel::String(key));
    if (!parsed.parameter)
        throw UsageError(unknownKeyMessage(key), badParams);
    const ruvo::DataType::Type type = parsed.parameter->type();
    if (!ruvo::Value::parse(type, kel::String(text), parsed.value))
        throw UsageError(L"The parameter " + key + L" takes " + typeName(type) + L"; \"" + text + L"\" is not one.",
                         badParams);
    return parsed;
}

} // namespace

void ParameterSettings::apply(const std::vector<std::pair<std::wstring, std::wstring>> &settings)
{
    std::vector<Parsed> parsed;
    for (const auto &setting : settings)
        parsed.push_back(parse(setting.first, setting.second));
    for (const Parsed &each : parsed)
        each.parameter->set(each.value);
}

std::wstring ParameterSettings::declaredHelp()
{
    std::wstring text;
    const kel::Array<ruvo::Declaration> declarations = ruvo::DiagModule::declarations();
    for (const ruvo::Declaration &declaration : declarations) {
        if (declaration.kind != ruvo::Declaration::PARAMETER)
            continue;
        std::wstring key = declaration.key.wstr();
        if (key.size() < 26)
            key.append(26 - key.size(), L' ');
        text += L"  " + key + L" " + typeName(declaration.type) + L"\n";
    }
    return text;
}

} // namespace diag
} // namespace sorvane
