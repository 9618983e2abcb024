#include "RealSenseEnumeration.h"

#include "CaptureLog.h"
#include "PxcObjectPtr.h"
#include "ScopedModule.h"
#include "ScopedRegistryKey.h"

#include <windows.h>

#include <string>

SORVANE_LOG_CATEGORY("libSorvane")

namespace sorvane {

namespace {

// Log readers look for these lines by their leading number, so the numbers stay fixed.
const int kOlderWindowsTag = 32;
const int kNoSessionTag = 39;
const int kNoCaptureTag = 57;

const wchar_t *const kDispatchKeys[] = {L"Software\\Intel\\RSSDK\\Dispatch",
                                        L"Software\\Wow6432Node\\Intel\\RSSDK\\Dispatch"};
const wchar_t kCoreDispatchKey[] = L"Software\\Intel\\RSSDK\\v4\\Dispatch";
const wchar_t kRuntimeFile[] = L"\\libpxcsession.dll";
const wchar_t kRuntimeBelowSdk[] = L"\\bin\\x64\\libpxcsession.dll";
// The SDK's session glue finds an SDK folder from its own source file's folder. Built into an
// application that file name carries no folder, so the path stays relative to the current
// directory; the search keeps that route, as applications built with the SDK have it.
const wchar_t kGlueSourceFile[] = L"libpxc.cpp";
const wchar_t kGlueToSdk[] = L"\\..\\..";

// The SDK version this library asks the runtime for (4.0.0), and the factory's options.
const pxcI32 kSdkVersionMajor = 4;
const pxcEnum kCoreRuntime = 0;
const pxcEnum kLocalRuntime = 1;
const DWORD kValueBytes = 520;

void logLine(int priority, int tag, const char *text)
{
    kel::Logger *logger = sorvaneLogger();
    if (!kel::LogFactory::admits(logger, priority))
        return;
    kel::LoggerStream line(logger, priority);
    line << tag << " " << text;
}

// RealSense cameras need Windows 8.1 (6.3) or later.
bool isWindows81OrLater()
{
    OSVERSIONINFOEXW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    version.dwMajorVersion = 6;
    version.dwMinorVersion = 3;
    version.wServicePackMajor = 0;
    DWORDLONG conditions = 0;
    conditions = VerSetConditionMask(conditions, VER_MAJORVERSION, VER_GREATER_EQUAL);
    conditions = VerSetConditionMask(conditions, VER_MINORVERSION, VER_GREATER_EQUAL);
    conditions = VerSetConditionMask(conditions, VER_SERVICEPACKMAJOR, VER_GREATER_EQUAL);
    return VerifyVersionInfoW(&version, VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR, conditions) !=
           FALSE;
}

// A REG_SZ value of `subkey` of `key` (of `key` itself when `subkey` is null); empty when
// absent or of another type.
std::wstring readString(HKEY key, const wchar_t *subkey, const wchar_t *name)
{
    wchar_t buffer[kValueBytes / sizeof(wchar_t)] = {};
    DWORD size = kValueBytes;
    if (RegGetValueW(key, subkey, name, RRF_RT_REG_SZ, nullptr, buffer, &size) != ERROR_SUCCESS)
        return std::wstring();
    return std::wstring(buffer);
}

// This library's own folder, with its trailing backslash, wherever the library was loaded from.
std::wstring libraryFolder()
{
    ScopedModule self;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                            reinterpret_cast<LPCWSTR>(&enumIntelRealSenseDevice), self.receive()))
        return std::wstring();
    wchar_t path[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameW(self.get(), path, MAX_PATH);
    const std::wstring file(path, length);
    return file.substr(0, file.find_last_of(L'\\') + 1);
}

// Loads the runtime at `path` and asks its factory for a session. A runtime that made one stays
// loaded for the rest of the process, as the SDK leaves it: its objects and any threads it
// started live in it. One that did not is unloaded again.
PXCSession *sessionFrom(const std::wstring &path, pxcEnum options)
{
    SORVANE_LOG_DETAIL("Loading the RealSense runtime " << kel::String(path));
    ScopedModule runtime(LoadLibraryW(path.c_str()));
    if (!runtime)
        return nullptr;
    const PXCSessionCreateExtFunction create = reinterpret_cast<PXCSessionCreateExtFunction>(
        reinterpret_cast<void (*)()>(GetProcAddress(runtime.get(), "PXCSession_CreateExt")));
    if (!create)
        return nullptr;
    PXCSession *session = nullptr;
    create(kSdkVersionMajor, 0, 0, 0, options, 0, &session);
    if (session)
        runtime.keep();
    return session;
}

// The local runtime a dispatch key names: "." for the folder of this library, otherwise the
// SDK's folder.
PXCSession *localRuntimeSession(const std::wstring &location)
{
    const std::wstring path =
        location[0] == L'.' ? libraryFolder() + location + kRuntimeFile : location + kRuntimeBelowSdk;
    PXCSession *session = sessionFrom(path, kLocalRuntime);
    if (session)
        return session;
    return sessionFrom(std::wstring(kGlueSourceFile) + kGlueToSdk + kRuntimeBelowSdk, kLocalRuntime);
}

PXCSession *coreRuntimeSession()
{
    ScopedRegistryKey key;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kCoreDispatchKey, 0, KEY_READ, key.receive()) != ERROR_SUCCESS)
        return nullptr;
    const std::wstring path = readString(key.get(), nullptr, L"Core");
    if (path.empty())
        return nullptr;
    return sessionFrom(path, kCoreRuntime);
}

// A session of the RealSense runtime, or null when none can be made.
PXCSession *createRealSenseSession()
{
    for (const wchar_t *dispatchKey : kDispatchKeys) {
        const std::wstring location = readString(HKEY_LOCAL_MACHINE, dispatchKey, L"LocalRuntime");
        if (location.empty())
            continue;
        if (PXCSession *session = localRuntimeSession(location))
            return session;
    }
    return coreRuntimeSession();
}

// Appends the records of every camera of one capture implementation.
void appendCameras(PXCCapture &capture, kel::Array<PXCCapture::DeviceInfo> &devices)
{
    for (pxcI32 index = 0;; ++index) {
        PXCCapture::DeviceInfo info = {};
        if (capture.QueryDeviceInfo(index, &info) < PXC_STATUS_NO_ERROR)
            return;
        devices.add(info);
    }
}

void appendEveryCapture(PXCSession &session, kel::Array<PXCCapture::DeviceInfo> &devices)
{
    PXCSession::ImplDesc videoCapture = {};
    videoCapture.group = PXCSession::IMPL_GROUP_SENSOR;
    videoCapture.subgroup = PXCSession::IMPL_SUBGROUP_VIDEO_CAPTURE;
    for (pxcI32 index = 0;; ++index) {
        PXCSession::ImplDesc description = {};
        if (session.QueryImpl(&videoCapture, index, &description) < PXC_STATUS_NO_ERROR)
            return;
        // The implementation the description names, as its capture interface.
        void *instance = nullptr;
        const pxcStatus created = session.CreateImpl(&description, PXCCapture::CUID, &instance);
        PxcObjectPtr<PXCCapture> capture(static_cast<PXCCapture *>(instance));
        if (created < PXC_STATUS_NO_ERROR || !capture) {
            logLine(kel::LOG_ERROR, kNoCaptureTag, "Unable to create a PXCCapture video instance.");
            continue;
        }
        appendCameras(*capture.get(), devices);
    }
}

} // namespace

unsigned enumIntelRealSenseDevice(kel::Array<PXCCapture::DeviceInfo> &devices)
{
    devices = kel::Array<PXCCapture::DeviceInfo>();
    if (!isWindows81OrLater()) {
        logLine(kel::LOG_INFO, kOlderWindowsTag,
                "By camera requirement, we enumerate Intel RealSense devices only in Windows 8.1 or greater");
        return 0;
    }
    PxcObjectPtr<PXCSession> session(createRealSenseSession());
    if (!session) {
        logLine(kel::LOG_INFO, kNoSessionTag, "No sessions instantiable.");
        return 0;
    }
    appendEveryCapture(*session.get(), devices);
    return static_cast<unsigned>(devices.size());
}

} // namespace sorvane
