// Lists RealSense cameras through libSorvane as a test module would, for tests that need a
// process of its own: one whose libSorvane.dll lies in another folder, one started in a chosen
// working folder, or one built without the Windows 10 manifest (so Windows reports 6.2).
// Usage: depthprobe OUTPUT-FILE. Writes "count N", one "camera NAME" line per record and one
// "log CATEGORY PRIORITY MESSAGE" line per library log line, in UTF-8.
#include <RealSenseEnumeration.h>
#include <kel/LogFactory.h>

#include <windows.h>
#include <shellapi.h>

#include <string>

namespace {

std::string utf8(const std::wstring &text)
{
    std::string result(text.size() * 3, '\0');
    result.resize(
        static_cast<size_t>(WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), &result[0],
                                                static_cast<int>(result.size()), nullptr, nullptr)));
    return result;
}

} // namespace

int main()
{
    int argc = 0;
    wchar_t **argv = CommandLineToArgvW(GetCommandLineW(), &argc);
    if (!argv || argc != 2)
        return 2;
    const std::wstring outputPath = argv[1];
    LocalFree(argv);

    std::string output;
    kel::LogFactory::setPriority(kel::LOG_DETAIL);
    kel::LogFactory::setSink([&output](const kel::String &category, int priority, const kel::String &message) {
        output += "log " + category.toUtf8() + " " + std::to_string(priority) + " " + message.toUtf8() + "\n";
    });
    kel::Array<PXCCapture::DeviceInfo> devices;
    const unsigned count = sorvane::enumIntelRealSenseDevice(devices);
    kel::LogFactory::setSink(kel::LogFactory::Sink());
    output += "count " + std::to_string(count) + "\n";
    for (int i = 0; i < devices.size(); ++i)
        output += "camera " + utf8(devices[i].name) + "\n";

    HANDLE file =
        CreateFileW(outputPath.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return 3;
    DWORD written = 0;
    WriteFile(file, output.data(), static_cast<DWORD>(output.size()), &written, nullptr);
    CloseHandle(file);
    return 0;
}
