#include "setup/LabSetup.h"

#include <cstdio>

#include <dshow.h>
#include <oleauto.h>

#include <atlbase.h>

#include "common/GuidText.h"
#include "devices/HiddenLabDevices.h"
#include "devices/MonikerWriter.h"
#include "devices/SetupApiRecord.h"
#include "devices/SetupApiWriter.h"
#include "devices/WrittenItems.h"
#include "setup/RealSenseSetup.h"

namespace lab {

namespace {

using RegisterFunction = HRESULT(WINAPI *)();

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
        if (FAILED(moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag))))
            continue;
        VARIANT friendlyName;
        VariantInit(&friendlyName);
        const bool match = SUCCEEDED(bag->Read(L"FriendlyName", &friendlyName, nullptr)) &&
                           friendlyName.vt == VT_BSTR && name == friendlyName.bstrVal;
        VariantClear(&friendlyName);
        if (!match)
            continue;
        CComPtr<IBaseFilter> filter;
        return moniker->BindToObject(nullptr, nullptr, IID_PPV_ARGS(&filter));
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
    HiddenLabDevices::discard();
    WrittenItems::readRecorded().removeAll();
    WrittenItems::forgetRecorded();
    return S_OK;
}

HRESULT LabSetup::writeDevices(const LabDescription &description, std::wstring &error)
{
    HRESULT hr = removeEarlierDevices();
    if (FAILED(hr)) {
        error = L"cannot remove the devices of an earlier setup";
        return hr;
    }
    for (const DeviceDescription &device : description.devices()) {
        if (RealSenseSetup::handles(device) || !MonikerWriter::hasMoniker(device))
            continue;
        hr = writeDevice(device, error);
        if (FAILED(hr))
            return hr;
    }
    return writeSetupApiRecords(description, error);
}

HRESULT LabSetup::writeSetupApiRecords(const LabDescription &description, std::wstring &error)
{
    std::vector<SetupApiRecord> records;
    if (!SetupApiRecord::fromDescription(description.devices(), records, error))
        return E_INVALIDARG;
    WrittenItems written;
    const HRESULT hr = SetupApiWriter::write(records, false, written, error);
    if (!written.record(L"SetupAPI record") && SUCCEEDED(hr)) {
        error = L"cannot record the SetupAPI records";
        return E_FAIL;
    }
    for (const SetupApiRecord &record : records)
        std::wprintf(L"lab-setup: %ls -> %ls\n", record.sections.c_str(), record.instanceId.c_str());
    return hr;
}

HRESULT LabSetup::writeDevice(const DeviceDescription &device, std::wstring &error)
{
    MonikerWriter::Written moniker;
    const HRESULT hr = MonikerWriter(m_dll).write(device, false, moniker, error);
    if (FAILED(hr))
        return hr;
    WrittenItems written;
    written.keys.push_back(moniker.key);
    if (!written.record(moniker.name)) {
        error = L"cannot record " + moniker.key;
        return E_FAIL;
    }
    m_written.push_back(WrittenDevice{moniker.name, moniker.category, !device.value(L"fault.bind").empty()});
    std::wprintf(L"lab-setup: %ls [%ls] -> %ls\n", moniker.name.c_str(), device.kind.c_str(),
                 guidText(moniker.category).c_str());
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
