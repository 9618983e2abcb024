#include "devices/MonikerWriter.h"

#include "common/GuidText.h"
#include "common/RegistryKey.h"

namespace lab {

namespace {

using DeviceClassFunction = HRESULT(WINAPI *)(const wchar_t *, CLSID *, GUID *);

// Keys that become the moniker's standard values rather than lab settings.
bool isStandardKey(const std::wstring &key)
{
    for (const wchar_t *standard : {L"name", L"path", L"description", L"category", L"moniker-key"}) {
        if (_wcsicmp(key.c_str(), standard) == 0)
            return true;
    }
    return false;
}

// The device enumerator refuses instance names with a backslash.
std::wstring instanceName(const std::wstring &name)
{
    std::wstring result(name);
    for (wchar_t &c : result) {
        if (c == L'\\')
            c = L'_';
    }
    return result;
}

DeviceClassFunction deviceClassFunction(HMODULE dll)
{
    return reinterpret_cast<DeviceClassFunction>(reinterpret_cast<void (*)()>(GetProcAddress(dll, "LabDeviceClass")));
}

LSTATUS writeValues(const RegistryKey &key, const DeviceDescription &device, const CLSID &clsid)
{
    LSTATUS status = key.setString(L"FriendlyName", device.value(L"name"));
    if (status == ERROR_SUCCESS)
        status = key.setString(L"CLSID", guidText(clsid));
    if (status == ERROR_SUCCESS && !device.value(L"description").empty())
        status = key.setString(L"Description", device.value(L"description"));
    if (status == ERROR_SUCCESS && !device.value(L"path").empty())
        status = key.setString(L"DevicePath", device.value(L"path"));
    std::wstring labKeys;
    for (const std::wstring &setting : device.keys()) {
        if (status != ERROR_SUCCESS || isStandardKey(setting))
            continue;
        status = key.setString(setting.c_str(), device.value(setting));
        labKeys += (labKeys.empty() ? L"" : L"\n") + setting;
    }
    if (status == ERROR_SUCCESS)
        status = key.setString(L"LabKeys", labKeys);
    return status;
}

} // namespace

MonikerWriter::MonikerWriter(HMODULE labDll) : m_dll(labDll) {}

bool MonikerWriter::hasMoniker(const DeviceDescription &device)
{
    return _wcsicmp(device.value(L"moniker").c_str(), L"no") != 0;
}

HRESULT MonikerWriter::resolveClass(const DeviceDescription &device, CLSID &clsid, GUID &category,
                                    std::wstring &error) const
{
    const std::wstring where = L"device at line " + std::to_wstring(device.line) + L": ";
    const DeviceClassFunction deviceClass = m_dll ? deviceClassFunction(m_dll) : nullptr;
    if (!deviceClass || FAILED(deviceClass(device.kind.c_str(), &clsid, &category))) {
        error = where + L"no lab class serves the kind [" + device.kind + L"]";
        return E_INVALIDARG;
    }
    const std::wstring categoryText = device.value(L"category");
    if (!categoryText.empty() && !parseGuid(categoryText, category)) {
        error = where + L"category is no {GUID}: " + categoryText;
        return E_INVALIDARG;
    }
    return S_OK;
}

HRESULT MonikerWriter::write(const DeviceDescription &device, bool keepExisting, Written &written,
                             std::wstring &error) const
{
    const std::wstring where = L"device at line " + std::to_wstring(device.line) + L": ";
    const std::wstring name = device.value(L"name");
    if (name.empty() || name.find(L'\n') != std::wstring::npos) {
        error = where + L"needs exactly one name";
        return E_INVALIDARG;
    }
    CLSID clsid = GUID_NULL;
    GUID category = GUID_NULL;
    HRESULT hr = resolveClass(device, clsid, category, error);
    if (FAILED(hr))
        return hr;

    // Two devices of one model share a name; each still needs an instance key of its own.
    const std::wstring keyName = device.value(L"moniker-key").empty() ? name : device.value(L"moniker-key");
    const std::wstring path =
        L"Software\\Classes\\CLSID\\" + guidText(category) + L"\\Instance\\" + instanceName(keyName);
    RegistryKey key;
    if (keepExisting && RegistryKey::open(HKEY_LOCAL_MACHINE, path, KEY_READ, key) == ERROR_SUCCESS) {
        error = where + L"a device named " + name + L" exists already";
        return HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS);
    }
    LSTATUS status = RegistryKey::create(HKEY_LOCAL_MACHINE, path, key);
    if (status == ERROR_SUCCESS)
        status = writeValues(key, device, clsid);
    if (status != ERROR_SUCCESS) {
        error = where + L"cannot write " + path;
        return HRESULT_FROM_WIN32(status);
    }
    written.key = path;
    written.name = name;
    written.category = category;
    return S_OK;
}

} // namespace lab
