// The kind of stream a capture device delivers, with the device category it is found in.
// NOTSET and ALL are placeholders and carry no category.
#pragma once

#include "SorvaneExport.h"
#include <kel/String.h>
#include <guiddef.h>

namespace sorvane {

class SORVANE_API CaptureStreamType {
public:
    static const CaptureStreamType &NOTSET();
    static const CaptureStreamType &ALL();
    static const CaptureStreamType &ANALOG();
    static const CaptureStreamType &DIGITAL();
    static const CaptureStreamType &ATSC();
    static const CaptureStreamType &CLEARQAM();
    static const CaptureStreamType &DVBT();

    CaptureStreamType();
    // classGuid points at a static GUID and is not owned.
    CaptureStreamType(const kel::String &name, const GUID *classGuid, bool placeHolder);

    const kel::String &name() const { return m_name; }
    kel::String toString() const { return m_name; }
    bool isPlaceHolder() const { return m_placeHolder; }
    // The device category; asking a placeholder is an assertion failure.
    GUID classId() const;

    bool operator==(const CaptureStreamType &other) const { return m_name == other.m_name; }
    bool operator!=(const CaptureStreamType &other) const { return !(*this == other); }

private:
    kel::String m_name;
    bool m_placeHolder;
    const GUID *m_classGuid;
};

} // namespace sorvane
