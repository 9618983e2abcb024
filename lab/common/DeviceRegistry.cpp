#include "common/DeviceRegistry.h"

#include <map>
#include <mutex>

namespace lab {

std::shared_ptr<DeviceState> DeviceRegistry::device(const std::wstring &name)
{
    static std::mutex lock;
    static std::map<std::wstring, std::shared_ptr<DeviceState>> devices;
    std::lock_guard<std::mutex> guard(lock);
    std::shared_ptr<DeviceState> &state = devices[name];
    if (!state)
        state = std::make_shared<DeviceState>(name);
    return state;
}

} // namespace lab
