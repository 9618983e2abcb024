#include "setup/LabSetup.h"

#include <cstdio>

#include <dshow.h>
#include <oleauto.h>

#include <atlbase.h>

#include "common/DeviceConfig.h"
#include "common/GuidText.h"
#include "common/RegistryKey.h"
#include "setup/RealSenseSetup.h"

namespace lab {

namespace {

// Where the setup remembers the instance keys it wrote, to remove them on the next run.
const wchar_t kWrittenDevicesKey[] = L"Software\\Sorvane\\Lab\\Devices";

using DeviceClassFunction = HRESULT(WINAPI *)(const wchar_t *, CLSID *, GUID *);
using RegisterFunction = HRESULT(WINAPI *)();

// Keys that become the moniker's standard values rather than lab settings.
bool isStandardKey(const std::wstring &key)
{
    for (const wchar_t *standard : {L"name", L"path", L"description", L"category"}) {
        if (_wcsicmp(key.c_str(), standard) == 0)
            return true;
    }
    return false;
}

std::wstring instanceName(const std::wstring &name)
{
    std::wstring result(name);
    for (wchar_t &c : result) {
        if (c == L'\\')
            c = L'_';
    }
    return result;
}

// GetProcAddress's result as the function type it really has.
template <class Function>
Function procAddress(HMODULE dll, const char *name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(dll, name)));
}

HRESULT bindByName(ICreateDevEnum *enumerator, const GUID &category, const std::wstring &name)
{
    CComPtr<IEnumMoniker> monikers;
    if (enumerator->CreateClassEnumerator(category, &monikers, 0) != S_OK || !monikers)
        return HRESULT_FROM_WIN32(ERROR_NOT_FOUND);
    for (CComPtr<IMoniker> moniker; monikers->Next(1, &moniker, nullptr) == S_OK; moniker.Release()) {
        CComPtr<IPropertyBag> bag;
        if (FAILED(moniker->BindToStorage(nullptr, nullptr, IID_IPropertyBag, reinterpret_cast<void **>(&bag))))
            continue;
        VARIANT friendlyName;
        VariantInit(&friendlyName);
        const bool match = SUCCEEDED(bag->Read(L"FriendlyName", &friendlyName, nullptr)) &&
                           friendlyName.vt == VT_BSTR && name == friendlyName.bstrVal;
        VariantClear(&friendlyName);
        if (!match)
            continue;
        CComPtr<IBaseFilter> filter;
        return moniker->BindToObject(nullptr, nullptr, IID_IBaseFilter, reinterpret_cast<void **>(&filter));
    }
    return HRESULT_FROM_WIN32(ERROR_NOT_FOUND);
}

} // namespace

LabSetup::LabSetup(HMODULE labDll) : m_dll(labDll) {}

HRESULT LabSetup::registerClasses()
{
    const auto registerServer = procAddress<RegisterFunction>(m_dll, "DllRegisterServer");
    return registerServer ? registerServer() : HRESULT_FROM_WIN32(GetLastError());
}

HRESULT LabSetup::removeEarlierDevices()
{
    RegistryKey written;
    if (RegistryKey::open(HKEY_LOCAL_MACHINE, kWrittenDevicesKey, KEY_READ, written) != ERROR_SUCCESS)
        return S_OK;
    for (DWORD index = 0;; ++index) {
        wchar_t name[512] = {};
        DWORD length = 512;
        if (RegEnumValueW(written.handle(), index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            break;
        RegistryKey::removeTree(HKEY_LOCAL_MACHINE, name);
    }
    written = RegistryKey();
    return HRESULT_FROM_WIN32(RegistryKey::removeTree(HKEY_LOCAL_MACHINE, kWrittenDevicesKey));
}

HRESULT LabSetup::writeDevices(const LabDescription &description, std::wstring &error)
{
    HRESULT hr = removeEarlierDevices();
    if (FAILED(hr)) {
        error = L"cannot remove the devices of an earlier setup";
        return hr;
    }
    for (const DeviceDescription &device : description.devices()) {
        if (RealSenseSetup::handles(device))
            continue;
        hr = writeDevice(device, error);
        if (FAILED(hr))
            return hr;
    }
    return S_OK;
}

HRESULT LabSetup::writeDevice(const DeviceDescription &device, std::wstring &error)
{
    const std::wstring where = L"device at line " + std::to_wstring(device.line) + L": ";
    const std::wstring name = device.value(L"name");
    if (name.empty() || name.find(L'\n') != std::wstring::npos) {
        error = where + L"needs exactly one name";
        return E_INVALIDARG;
    }
    const auto deviceClass = procAddress<DeviceClassFunction>(m_dll, "LabDeviceClass");
    CLSID clsid = GUID_NULL;
    GUID category = GUID_NULL;
    if (!deviceClass || FAILED(deviceClass(device.kind.c_str(), &clsid, &category))) {
        error = where + L"no lab class serves the kind [" + device.kind + L"]";
        return E_INVALIDARG;
    }
    const std::wstring categoryText = device.value(L"category");
    if (!categoryText.empty() && !parseGuid(categoryText, category)) {
        error = where + L"category is no {GUID}: " + categoryText;
        return E_INVALIDARG;
    }

    const std::wstring path = L"Software\\Classes\\CLSID\\" + guidText(category) + L"\\Instance\\" + instanceName(name);
    RegistryKey key;
    LSTATUS status = RegistryKey::create(HKEY_LOCAL_MACHINE, path, key);
    std::wstring labKeys;
    if (status == ERROR_SUCCESS)
        status = key.setString(L"FriendlyName", name);
    if (status == ERROR_SUCCESS)
        status = key.setString(L"CLSID", guidText(clsid));
    if (status == ERROR_SUCCESS && !device.value(L"description").empty())
        status = key.setString(L"Description", device.value(L"description"));
    if (status == ERROR_SUCCESS && !device.value(L"path").empty())
        status = key.setString(L"DevicePath", device.value(L"path"));
    for (const std::wstring &setting : device.keys()) {
        if (status != ERROR_SUCCESS || isStandardKey(setting))
            continue;
        status = key.setString(setting.c_str(), device.value(setting));
        labKeys += (labKeys.empty() ? L"" : L"\n") + setting;
    }
    if (status == ERROR_SUCCESS)
        status = key.setString(L"LabKeys", labKeys);

    RegistryKey written;
    if (status == ERROR_SUCCESS)
        status = RegistryKey::create(HKEY_LOCAL_MACHINE, kWrittenDevicesKey, written);
    if (status == ERROR_SUCCESS)
        status = written.setString(path.c_str(), name);
    if (status != ERROR_SUCCESS) {
        error = where + L"cannot write " + path;
        return HRESULT_FROM_WIN32(status);
    }
    m_written.push_back(WrittenDevice{name, category, !device.value(L"fault.bind").empty()});
    std::wprintf(L"lab-setup: %ls [%ls] -> %ls\n", name.c_str(), device.kind.c_str(), guidText(category).c_str());
    return S_OK;
}

HRESULT LabSetup::verifyDevices(std::wstring &error)
{
    CComPtr<ICreateDevEnum> enumerator;
    HRESULT hr = enumerator.CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr)) {
        error = L"no system device enumerator";
        return hr;
    }
    for (const WrittenDevice &device : m_written) {
        if (device.refusesBind)
            continue;
        hr = bindByName(enumerator, device.category, device.name);
        if (FAILED(hr)) {
            error = device.name + L": binding its moniker fails (check its settings)";
            return hr;
        }
    }
    return S_OK;
}

} // namespace lab
