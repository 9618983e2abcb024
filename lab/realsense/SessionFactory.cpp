// The runtime's factory export. The lab also builds this DLL without it, to stand for a
// runtime file that is not one.
#include "realsense/RuntimeDescription.h"
#include "realsense/RuntimeJournal.h"
#include "realsense/StandInSession.h"

#include <windows.h>

#ifndef LAB_REALSENSE_WITHOUT_FACTORY

namespace {

std::wstring ownPath()
{
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&ownPath), &self);
    wchar_t path[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameW(self, path, MAX_PATH);
    return std::wstring(path, length);
}

} // namespace

extern "C" __declspec(dllexport) pxcStatus PXCAPI
    PXCSession_CreateExt(pxcI32 version, pxcI32 reserved1, pxcI32 reserved2, pxcI32 reserved3, pxcBool localRuntime,
                         pxcI32 reserved4, PXCSession **session)
{
    using lab::realsense::RuntimeJournal;
    std::wstring entry = L"PXCSession_CreateExt";
    for (const pxcI32 argument : {version, reserved1, reserved2, reserved3, localRuntime, reserved4})
        entry += L" " + std::to_wstring(argument);
    RuntimeJournal::record(entry + L" " + ownPath());
    if (!session)
        return PXC_STATUS_ITEM_UNAVAILABLE;
    *session = nullptr;
    const lab::realsense::RuntimeDescription description = lab::realsense::RuntimeDescription::load();
    if (description.sessionFault() < PXC_STATUS_NO_ERROR) {
        RuntimeJournal::record(L"Session refused " + std::to_wstring(description.sessionFault()));
        return description.sessionFault();
    }
    *session = new lab::realsense::StandInSession(description);
    RuntimeJournal::record(L"Session created");
    return PXC_STATUS_NO_ERROR;
}

#endif
