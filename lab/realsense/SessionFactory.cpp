// The runtime's factory export. The lab also builds this DLL without it, to stand for a
// runtime file that is not one.
#include "realsense/RuntimeDescription.h"
#include "realsense/RuntimeJournal.h"
#include "realsense/SdkInterface.h"
#include "realsense/StandInSession.h"

#include <windows.h>

#include <type_traits>

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

namespace sdk = lab::realsense::sdk;

extern "C" __declspec(dllexport) sdk::Status
    PXCSession_CreateExt(int32_t versionMajor, int32_t versionMinor, int32_t versionBuild, int32_t reserved,
                         int32_t options, int32_t reserved2, void **session)
{
    using lab::realsense::RuntimeJournal;
    std::wstring entry = L"PXCSession_CreateExt";
    for (const int32_t argument : {versionMajor, versionMinor, versionBuild, reserved, options, reserved2})
        entry += L" " + std::to_wstring(argument);
    RuntimeJournal::record(entry + L" " + ownPath());
    if (!session)
        return sdk::kItemUnavailable;
    *session = nullptr;
    const lab::realsense::RuntimeDescription description = lab::realsense::RuntimeDescription::load();
    if (description.sessionFault() < sdk::kNoError) {
        RuntimeJournal::record(L"Session refused " + std::to_wstring(description.sessionFault()));
        return description.sessionFault();
    }
    *session = lab::realsense::StandInSession::create(description);
    RuntimeJournal::record(L"Session created");
    return sdk::kNoError;
}

static_assert(std::is_same<decltype(&PXCSession_CreateExt), sdk::SessionFactory>::value,
              "the export has the published factory's arguments");

#endif
