#include "ScopedDeviceInfoList.h"

namespace sorvane {

ScopedDeviceInfoList::ScopedDeviceInfoList(HDEVINFO list) : m_list(list) {}

ScopedDeviceInfoList::~ScopedDeviceInfoList()
{
    if (isValid())
        SetupDiDestroyDeviceInfoList(m_list);
}

} // namespace sorvane
