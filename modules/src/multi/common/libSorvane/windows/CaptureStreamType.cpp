#include "CaptureStreamType.h"
#include "SdkGuids.h"
#include <kel/AssertionFailure.h>

namespace sorvane {

const CaptureStreamType& CaptureStreamType::NOTSET()
{
    static const CaptureStreamType value(L"NotSet", nullptr, true);
    return value;
}

const CaptureStreamType& CaptureStreamType::ALL()
{
    static const CaptureStreamType value(L"All", nullptr, true);
    return value;
}

const CaptureStreamType& CaptureStreamType::ANALOG()
{
    static const CaptureStreamType value(L"Analog", &CLSID_VideoInputDeviceCategory, false);
    return value;
}

// The digital kinds share the BDA tuner category: they differ only in the tuning space and
// network provider used later, not in how the device is found.
const CaptureStreamType& CaptureStreamType::DIGITAL()
{
    static const CaptureStreamType value(L"Digital", &KSCATEGORY_BDA_NETWORK_TUNER, false);
    return value;
}

const CaptureStreamType& CaptureStreamType::ATSC()
{
    static const CaptureStreamType value(L"ATSC", &KSCATEGORY_BDA_NETWORK_TUNER, false);
    return value;
}

const CaptureStreamType& CaptureStreamType::CLEARQAM()
{
    static const CaptureStreamType value(L"ClearQAM", &KSCATEGORY_BDA_NETWORK_TUNER, false);
    return value;
}

const CaptureStreamType& CaptureStreamType::DVBT()
{
    static const CaptureStreamType value(L"DVBT", &KSCATEGORY_BDA_NETWORK_TUNER, false);
    return value;
}

CaptureStreamType::CaptureStreamType() : m_placeHolder(false), m_classGuid(nullptr) {}

CaptureStreamType::CaptureStreamType(const kel::String& name, const GUID* classGuid, bool placeHolder)
    : m_name(name), m_placeHolder(placeHolder), m_classGuid(classGuid)
{
}

GUID CaptureStreamType::classId() const
{
    KEL_ASSERT(m_classGuid != nullptr);
    return m_classGuid ? *m_classGuid : GUID();
}

} // namespace sorvane
