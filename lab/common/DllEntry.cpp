// The entry points of sorvanelab.dll: COM server and self-registration.
#include <windows.h>
#include <dshow.h>

#include "common/ClassFactory.h"
#include "common/ClassRegistry.h"
#include "common/GuidText.h"
#include "common/LabModule.h"
#include "common/RegistryKey.h"
#include "graph/RendererChoice.h"

namespace {

std::wstring modulePath()
{
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(lab::LabModule::instance(), path, MAX_PATH);
    return path;
}

std::wstring classKeyPath(REFCLSID clsid)
{
    return L"Software\\Classes\\CLSID\\" + lab::guidText(clsid);
}

HRESULT registerServer(const lab::ClassInfo &info, const std::wstring &dllPath)
{
    lab::RegistryKey classKey;
    lab::RegistryKey serverKey;
    LSTATUS status = lab::RegistryKey::create(HKEY_LOCAL_MACHINE, classKeyPath(info.clsid), classKey);
    if (status == ERROR_SUCCESS)
        status = classKey.setString(nullptr, info.name);
    if (status == ERROR_SUCCESS)
        status = lab::RegistryKey::create(classKey.handle(), L"InprocServer32", serverKey);
    if (status == ERROR_SUCCESS)
        status = serverKey.setString(nullptr, dllPath);
    // "Both": Wine would otherwise marshal the object, and these interfaces have no proxies.
    if (status == ERROR_SUCCESS)
        status = serverKey.setString(L"ThreadingModel", L"Both");
    return HRESULT_FROM_WIN32(status);
}

// Writes the filter data intelligent connect reads, in the legacy filter category.
HRESULT registerFilter(IFilterMapper2 *mapper, const lab::ClassInfo &info)
{
    std::vector<std::vector<REGPINTYPES>> types(info.pins.size());
    std::vector<REGFILTERPINS2> pins(info.pins.size());
    for (size_t i = 0; i < info.pins.size(); ++i) {
        for (const lab::RegisteredPinType &type : info.pins[i].types)
            types[i].push_back(REGPINTYPES{&type.majorType, &type.subType});
        REGFILTERPINS2 &pin = pins[i];
        ZeroMemory(&pin, sizeof(pin));
        pin.dwFlags = info.pins[i].output ? REG_PINFLAG_B_OUTPUT : 0;
        pin.cInstances = 1;
        pin.nMediaTypes = static_cast<UINT>(types[i].size());
        pin.lpMediaType = types[i].data();
    }
    REGFILTER2 filter = {};
    filter.dwVersion = 2;
    filter.dwMerit = info.merit;
    filter.cPins2 = static_cast<ULONG>(pins.size());
    filter.rgPins2 = pins.data();
    return mapper->RegisterFilter(info.clsid, info.name, nullptr, &CLSID_LegacyAmFilterCategory, nullptr, &filter);
}

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID)
{
    if (reason == DLL_PROCESS_ATTACH) {
        lab::LabModule::setInstance(instance);
        DisableThreadLibraryCalls(instance);
    }
    return TRUE;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    const lab::ClassInfo *info = lab::ClassRegistry::find(clsid);
    if (!info)
        return CLASS_E_CLASSNOTAVAILABLE;
    lab::ClassFactory *factory = new (std::nothrow) lab::ClassFactory(info->create);
    if (!factory)
        return E_OUTOFMEMORY;
    CComPtr<IClassFactory> hold(factory);
    return hold->QueryInterface(iid, out);
}

STDAPI DllCanUnloadNow()
{
    return lab::LabModule::canUnload() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer()
{
    const std::wstring dllPath = modulePath();
    CComPtr<IFilterMapper2> mapper;
    for (const lab::ClassInfo &info : lab::ClassRegistry::all()) {
        HRESULT hr = registerServer(info, dllPath);
        if (FAILED(hr))
            return hr;
        if (info.merit == 0)
            continue;
        if (!mapper) {
            hr = mapper.CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER);
            if (FAILED(hr))
                return hr;
        }
        hr = registerFilter(mapper, info);
        if (FAILED(hr))
            return hr;
    }
    return lab::RendererChoice::preferGdiRenderer();
}

STDAPI DllUnregisterServer()
{
    CComPtr<IFilterMapper2> mapper;
    mapper.CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER);
    for (const lab::ClassInfo &info : lab::ClassRegistry::all()) {
        if (info.merit != 0 && mapper)
            mapper->UnregisterFilter(&CLSID_LegacyAmFilterCategory, nullptr, info.clsid);
        lab::RegistryKey::removeTree(HKEY_LOCAL_MACHINE, classKeyPath(info.clsid));
    }
    return S_OK;
}

// The class and category that serve a device kind of the description file.
extern "C" HRESULT WINAPI LabDeviceClass(const wchar_t *kind, CLSID *clsid, GUID *category)
{
    if (!kind || !clsid || !category)
        return E_POINTER;
    const lab::ClassInfo *info = lab::ClassRegistry::findDeviceKind(kind);
    if (!info)
        return CLASS_E_CLASSNOTAVAILABLE;
    *clsid = info->clsid;
    *category = info->deviceCategory;
    return S_OK;
}

// Every class the DLL serves, for the setup tool to clean up devices of earlier descriptions.
extern "C" HRESULT WINAPI LabClassAt(unsigned index, CLSID *clsid)
{
    if (!clsid)
        return E_POINTER;
    const std::vector<lab::ClassInfo> &all = lab::ClassRegistry::all();
    if (index >= all.size())
        return S_FALSE;
    *clsid = all[index].clsid;
    return S_OK;
}
