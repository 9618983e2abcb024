// lab-setup.exe DESCRIPTION-FILE: registers sorvanelab.dll (beside this program) and the
// devices of the description file in the registry of the running system.
#include <windows.h>
#include <objbase.h>
#include <shellapi.h>
#include <cstdio>
#include <string>

#include "setup/LabDescription.h"
#include "setup/LabSetup.h"
#include "setup/RealSenseSetup.h"

namespace {

std::wstring programFolder()
{
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring folder(path);
    return folder.substr(0, folder.find_last_of(L"\\/") + 1);
}

int fail(const std::wstring &message, HRESULT hr)
{
    std::fwprintf(stderr, L"lab-setup: %ls (0x%08lX)\n", message.c_str(), static_cast<unsigned long>(hr));
    return 1;
}

} // namespace

int main()
{
    int argc = 0;
    wchar_t **argv = CommandLineToArgvW(GetCommandLineW(), &argc);
    const std::wstring file = argv && argc == 2 ? argv[1] : L"";
    LocalFree(argv);
    if (file.empty()) {
        std::fwprintf(stderr, L"usage: lab-setup DESCRIPTION-FILE\n");
        return 2;
    }
    lab::LabDescription description;
    std::wstring error;
    if (!description.load(file, error))
        return fail(error, E_INVALIDARG);

    const HRESULT com = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    int result = 0;
    {
        const std::wstring dllPath = programFolder() + L"sorvanelab.dll";
        HMODULE dll = LoadLibraryW(dllPath.c_str());
        if (!dll)
            return fail(L"cannot load " + dllPath, HRESULT_FROM_WIN32(GetLastError()));
        lab::LabSetup setup(dll);
        HRESULT hr = setup.registerClasses();
        if (FAILED(hr))
            result = fail(L"DllRegisterServer failed", hr);
        else if (FAILED(hr = setup.writeDevices(description, error)))
            result = fail(error, hr);
        else if (FAILED(hr = setup.verifyDevices(error)))
            result = fail(error, hr);
        else if (FAILED(hr = lab::RealSenseSetup(programFolder(), file).write(description, error)))
            result = fail(error, hr);
        FreeLibrary(dll);
    }
    if (SUCCEEDED(com))
        CoUninitialize();
    return result;
}
