// The driver selected for each device of each device information set (and for a set's
// class driver list), as SetupDiSetSelectedDriverW records it on Windows.
#pragma once

#include <windows.h>
#include <setupapi.h>

#include <map>
#include <mutex>
#include <utility>

namespace winesupport {

class SelectedDrivers {
public:
    static SelectedDrivers &instance();

    void remember(HDEVINFO set, const SP_DEVINFO_DATA *device, const SP_DRVINFO_DATA_V2_W &driver);
    bool find(HDEVINFO set, const SP_DEVINFO_DATA *device, SP_DRVINFO_DATA_V2_W &driver) const;
    void forget(HDEVINFO set, const SP_DEVINFO_DATA *device);
    void forgetSet(HDEVINFO set);

private:
    using Key = std::pair<HDEVINFO, unsigned long long>;
    static Key key(HDEVINFO set, const SP_DEVINFO_DATA *device);

    mutable std::mutex m_lock;
    std::map<Key, SP_DRVINFO_DATA_V2_W> m_drivers;
};

} // namespace winesupport
