#include "common/ClassRegistry.h"

#include <utility>

namespace lab {

namespace {
std::vector<ClassInfo> &entries()
{
    static std::vector<ClassInfo> classes;
    return classes;
}
} // namespace

ClassInfo ClassInfo::plain(const CLSID &clsid, const wchar_t *name, CreateFunction create)
{
    ClassInfo info;
    info.clsid = clsid;
    info.name = name;
    info.create = create;
    return info;
}

ClassInfo ClassInfo::device(const CLSID &clsid, const wchar_t *name, CreateFunction create, const wchar_t *kind,
                            const GUID &category)
{
    ClassInfo info = plain(clsid, name, create);
    info.deviceKind = kind;
    info.deviceCategory = category;
    return info;
}

ClassInfo ClassInfo::filter(const CLSID &clsid, const wchar_t *name, CreateFunction create, DWORD merit,
                            std::vector<RegisteredPin> pins)
{
    ClassInfo info = plain(clsid, name, create);
    info.merit = merit;
    info.pins = std::move(pins);
    return info;
}

void ClassRegistry::add(const ClassInfo &info)
{
    entries().push_back(info);
}

const ClassInfo *ClassRegistry::find(REFCLSID clsid)
{
    for (const ClassInfo &info : entries()) {
        if (IsEqualCLSID(info.clsid, clsid))
            return &info;
    }
    return nullptr;
}

const ClassInfo *ClassRegistry::findDeviceKind(const wchar_t *kind)
{
    for (const ClassInfo &info : entries()) {
        if (info.deviceKind && kind && _wcsicmp(info.deviceKind, kind) == 0)
            return &info;
    }
    return nullptr;
}

const std::vector<ClassInfo> &ClassRegistry::all()
{
    return entries();
}

} // namespace lab
