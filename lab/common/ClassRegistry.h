// The classes sorvanelab.dll serves. Each class registers itself from its own .cpp with a static
// ClassRegistration, so adding a class never touches a shared list:
//
//   static const lab::ClassRegistration registration(
//       lab::ClassInfo::plain(CLSID_X, L"Lab X", &lab::createObject<X, IBaseFilter>));
//
// ClassInfo::device names the device kind the description file uses; ClassInfo::filter adds
// the filter data intelligent connect needs.
#pragma once

#include <windows.h>
#include <new>
#include <vector>

#include <atlbase.h>

namespace lab {

using CreateFunction = HRESULT (*)(REFIID iid, void **out);

// One media type a registered filter's pin handles, for intelligent connect.
struct RegisteredPinType {
    GUID majorType;
    GUID subType;
};

// A pin as it appears in the filter data of the legacy filter category.
struct RegisteredPin {
    bool output;
    std::vector<RegisteredPinType> types;
};

struct ClassInfo {
    static ClassInfo plain(const CLSID &clsid, const wchar_t *name, CreateFunction create);
    static ClassInfo device(const CLSID &clsid, const wchar_t *name, CreateFunction create, const wchar_t *kind,
                            const GUID &category);
    static ClassInfo filter(const CLSID &clsid, const wchar_t *name, CreateFunction create, DWORD merit,
                            std::vector<RegisteredPin> pins);

    CLSID clsid;
    const wchar_t *name = nullptr;
    CreateFunction create = nullptr;
    // Device kind that the description file names ("webcam"); null for classes that are no device.
    const wchar_t *deviceKind = nullptr;
    // Category whose Instance key lists a device of this kind (CLSID_VideoInputDeviceCategory ...).
    GUID deviceCategory = GUID_NULL;
    // Nonzero: registered as a filter in the legacy filter category with this merit and pins.
    DWORD merit = 0;
    std::vector<RegisteredPin> pins;
};

class ClassRegistry {
public:
    static void add(const ClassInfo &info);
    static const ClassInfo *find(REFCLSID clsid);
    static const ClassInfo *findDeviceKind(const wchar_t *kind);
    static const std::vector<ClassInfo> &all();
};

class ClassRegistration {
public:
    explicit ClassRegistration(const ClassInfo &info) { ClassRegistry::add(info); }
};

// Creates a T (reference count starting at 0) and answers the asked interface.
template <class T, class Primary>
HRESULT createObject(REFIID iid, void **out)
{
    if (!out)
        return E_POINTER;
    *out = nullptr;
    T *object = new (std::nothrow) T();
    if (!object)
        return E_OUTOFMEMORY;
    CComPtr<Primary> hold(static_cast<Primary *>(object));
    return hold->QueryInterface(iid, out);
}

} // namespace lab
