#include "setup/RealSenseSetup.h"

#include "common/RegistryKey.h"

#include <cstdio>

namespace lab {

namespace {

const wchar_t kDispatchKey[] = L"Software\\Intel\\RSSDK\\Dispatch";
const wchar_t kWow64DispatchKey[] = L"Software\\Wow6432Node\\Intel\\RSSDK\\Dispatch";
const wchar_t kCoreDispatchKey[] = L"Software\\Intel\\RSSDK\\v4\\Dispatch";
const wchar_t kRecordedDescriptionKey[] = L"Software\\Sorvane\\Lab\\RealSense";

bool isAbsolute(const std::wstring &path)
{
    return (path.size() > 1 && path[1] == L':') || (path.size() > 1 && path[0] == L'\\' && path[1] == L'\\');
}

} // namespace

RealSenseSetup::RealSenseSetup(const std::wstring &binFolder, const std::wstring &descriptionPath)
    : m_binFolder(binFolder), m_descriptionPath(descriptionPath)
{
}

bool RealSenseSetup::handles(const DeviceDescription &section)
{
    return section.kind.compare(0, 10, L"realsense-") == 0;
}

std::wstring RealSenseSetup::resolve(const std::wstring &location) const
{
    if (location.empty() || location[0] == L'.' || isAbsolute(location))
        return location;
    return m_binFolder + location;
}

// An empty value removes the value, so a route the description leaves out is not offered.
LSTATUS RealSenseSetup::writeValue(const wchar_t *key, const wchar_t *name, const std::wstring &value)
{
    RegistryKey opened;
    LSTATUS status = RegistryKey::create(HKEY_LOCAL_MACHINE, key, opened);
    if (status != ERROR_SUCCESS)
        return status;
    if (!value.empty())
        return opened.setString(name, value);
    status = RegDeleteValueW(opened.handle(), name);
    return status == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : status;
}

HRESULT RealSenseSetup::write(const LabDescription &description, std::wstring &error) const
{
    const DeviceDescription *runtime = nullptr;
    for (const DeviceDescription &section : description.devices()) {
        if (section.kind == L"realsense-runtime")
            runtime = &section;
    }
    const std::wstring dispatch = runtime ? resolve(runtime->value(L"dispatch")) : std::wstring();
    const std::wstring wow64 = runtime ? resolve(runtime->value(L"dispatch-wow64")) : std::wstring();
    const std::wstring core = runtime ? resolve(runtime->value(L"core")) : std::wstring();
    LSTATUS status = writeValue(kDispatchKey, L"LocalRuntime", dispatch);
    if (status == ERROR_SUCCESS)
        status = writeValue(kWow64DispatchKey, L"LocalRuntime", wow64);
    if (status == ERROR_SUCCESS)
        status = writeValue(kCoreDispatchKey, L"Core", core);
    if (status == ERROR_SUCCESS)
        status = writeValue(kRecordedDescriptionKey, L"Description", m_descriptionPath);
    if (status != ERROR_SUCCESS) {
        error = L"cannot write the RealSense dispatch keys";
        return HRESULT_FROM_WIN32(status);
    }
    if (runtime)
        std::wprintf(L"lab-setup: RealSense runtime: LocalRuntime \"%ls\", Wow6432Node \"%ls\", Core \"%ls\"\n",
                     dispatch.c_str(), wow64.c_str(), core.c_str());
    return S_OK;
}

} // namespace lab
