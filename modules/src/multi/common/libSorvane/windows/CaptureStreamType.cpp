#include "CaptureStreamType.h"
#include "FixedMember.h"
#include "SdkGuids.h"
#include <kel/AssertionFailure.h>

namespace sorvane {

SORVANE_FIXED_MEMBER(CaptureStreamType, NOTSET, L"NotSet", nullptr, true)
SORVANE_FIXED_MEMBER(CaptureStreamType, ALL, L"All", nullptr, true)
SORVANE_FIXED_MEMBER(CaptureStreamType, ANALOG, L"Analog", &CLSID_VideoInputDeviceCategory, false)
// The digital kinds share the BDA tuner category: they differ only in the tuning space and
// network provider used later, not in how the device is found.
SORVANE_FIXED_MEMBER(CaptureStreamType, DIGITAL, L"Digital", &KSCATEGORY_BDA_NETWORK_TUNER, false)
SORVANE_FIXED_MEMBER(CaptureStreamType, ATSC, L"ATSC", &KSCATEGORY_BDA_NETWORK_TUNER, false)
SORVANE_FIXED_MEMBER(CaptureStreamType, CLEARQAM, L"ClearQAM", &KSCATEGORY_BDA_NETWORK_TUNER, false)
SORVANE_FIXED_MEMBER(CaptureStreamType, DVBT, L"DVBT", &KSCATEGORY_BDA_NETWORK_TUNER, false)

CaptureStreamType::CaptureStreamType() : m_placeHolder(false), m_classGuid(nullptr) {}

CaptureStreamType::CaptureStreamType(const kel::String &name, const GUID *classGuid, bool placeHolder)
    : m_name(name), m_placeHolder(placeHolder), m_classGuid(classGuid)
{
}

GUID CaptureStreamType::classId() const
{
    KEL_ASSERT(m_classGuid != nullptr);
    return m_classGuid ? *m_classGuid : GUID();
}

} // namespace sorvane
