#include "setupapi/SelectedDrivers.h"

namespace winesupport {

namespace {
// Stands for "no device": the set's class driver list.
const unsigned long long kClassList = ~0ull;
} // namespace

SelectedDrivers &SelectedDrivers::instance()
{
    static SelectedDrivers drivers;
    return drivers;
}

SelectedDrivers::Key SelectedDrivers::key(HDEVINFO set, const SP_DEVINFO_DATA *device)
{
    return Key(set, device ? device->DevInst : kClassList);
}

void SelectedDrivers::remember(HDEVINFO set, const SP_DEVINFO_DATA *device, const SP_DRVINFO_DATA_V2_W &driver)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_drivers[key(set, device)] = driver;
}

bool SelectedDrivers::find(HDEVINFO set, const SP_DEVINFO_DATA *device, SP_DRVINFO_DATA_V2_W &driver) const
{
    std::lock_guard<std::mutex> guard(m_lock);
    const auto found = m_drivers.find(key(set, device));
    if (found == m_drivers.end())
        return false;
    driver = found->second;
    return true;
}

void SelectedDrivers::forget(HDEVINFO set, const SP_DEVINFO_DATA *device)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_drivers.erase(key(set, device));
}

void SelectedDrivers::forgetSet(HDEVINFO set)
{
    std::lock_guard<std::mutex> guard(m_lock);
    m_drivers.erase(m_drivers.lower_bound(Key(set, 0)), m_drivers.upper_bound(Key(set, kClassList)));
}

} // namespace winesupport
