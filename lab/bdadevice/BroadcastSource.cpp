#include "bdadevice/BroadcastSource.h"

#include <map>
#include <mutex>

#include "common/DeviceState.h"
#include "common/LabModule.h"

namespace lab {

namespace {

struct CachedDescription {
    FILETIME written = {};
    std::shared_ptr<const BroadcastDescription> description;
};

std::string narrow(const std::wstring &text)
{
    const int length = WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, nullptr, 0, nullptr, nullptr);
    if (length <= 1)
        return std::string();
    std::string result(static_cast<size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, &result[0], length, nullptr, nullptr);
    result.resize(static_cast<size_t>(length - 1));
    return result;
}

std::wstring widen(const std::string &text)
{
    return std::wstring(text.begin(), text.end());
}

bool lastWritten(const std::wstring &path, FILETIME &written)
{
    WIN32_FILE_ATTRIBUTE_DATA data = {};
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data))
        return false;
    written = data.ftLastWriteTime;
    return true;
}

} // namespace

std::wstring BroadcastSource::resolve(const std::wstring &path)
{
    const bool absolute = path.size() > 2 && (path[1] == L':' || (path[0] == L'\\' && path[1] == L'\\'));
    if (absolute)
        return path;
    wchar_t module[MAX_PATH] = {};
    GetModuleFileNameW(LabModule::instance(), module, MAX_PATH);
    std::wstring folder(module);
    folder.erase(folder.find_last_of(L"\\/") + 1);
    return folder + path;
}

std::shared_ptr<const BroadcastDescription> BroadcastSource::forDevice(const DeviceState &device, std::wstring &problem)
{
    static std::mutex lock;
    static std::map<std::wstring, CachedDescription> cache;

    const std::wstring path = resolve(device.text(L"broadcast", L"broadcast.conf"));
    FILETIME written = {};
    if (!lastWritten(path, written)) {
        problem = L"no broadcast description at " + path;
        return std::make_shared<BroadcastDescription>();
    }
    std::lock_guard<std::mutex> guard(lock);
    CachedDescription &cached = cache[path];
    if (cached.description && CompareFileTime(&cached.written, &written) == 0)
        return cached.description;
    auto description = std::make_shared<BroadcastDescription>();
    std::string error;
    if (!description->load(narrow(path), error)) {
        problem = path + L": " + widen(error);
        return std::make_shared<BroadcastDescription>();
    }
    cached.written = written;
    cached.description = description;
    return description;
}

} // namespace lab
