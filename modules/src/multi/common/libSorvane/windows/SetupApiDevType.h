// A SetupAPI device setup class: its upper-case name and the class GUID SetupDiGetClassDevs
// takes. NOTSET and ALL are placeholders with no GUID and are never sent to SetupAPI.
#pragma once

#include "SorvaneExport.h"
#include <kel/String.h>
#include <guiddef.h>

namespace sorvane {

class SORVANE_API SetupApiDevType {
public:
    static const SetupApiDevType &NOTSET();
    static const SetupApiDevType &ALL();
    static const SetupApiDevType &IEEE1394();
    static const SetupApiDevType &ADAPTER();
    static const SetupApiDevType &APMSUPPORT();
    static const SetupApiDevType &BATTERY();
    static const SetupApiDevType &CDROM();
    static const SetupApiDevType &COMPUTER();
    static const SetupApiDevType &DECODER();
    static const SetupApiDevType &DISKDRIVE();
    static const SetupApiDevType &DISPLAY();
    static const SetupApiDevType &FDC();
    static const SetupApiDevType &FLOPPYDISK();
    static const SetupApiDevType &GPS();
    static const SetupApiDevType &HDC();
    static const SetupApiDevType &HIDCLASS();
    static const SetupApiDevType &IMAGE();
    static const SetupApiDevType &INFRARED();
    static const SetupApiDevType &KEYBOARD();
    static const SetupApiDevType &LEGACYDRIVER();
    static const SetupApiDevType &MEDIA();
    static const SetupApiDevType &MEDIUM_CHANGER();
    static const SetupApiDevType &MODEM();
    static const SetupApiDevType &MONITOR();
    static const SetupApiDevType &MOUSE();
    static const SetupApiDevType &MTD();
    static const SetupApiDevType &MULTIFUNCTION();
    static const SetupApiDevType &MULTIPORTSERIAL();
    static const SetupApiDevType &NET();
    static const SetupApiDevType &NETCLIENT();
    static const SetupApiDevType &NETSERVICE();
    static const SetupApiDevType &NETTRANS();
    static const SetupApiDevType &NODRIVER();
    static const SetupApiDevType &PCMCIA();
    static const SetupApiDevType &PORTS();
    static const SetupApiDevType &PRINTER();
    static const SetupApiDevType &PRINTERUPGRADE();
    static const SetupApiDevType &SCSIADAPTER();
    static const SetupApiDevType &SMARTCARDREADER();
    static const SetupApiDevType &SOUND();
    static const SetupApiDevType &SYSTEM();
    static const SetupApiDevType &TAPEDRIVE();
    static const SetupApiDevType &UNKNOWN();
    static const SetupApiDevType &USB();
    static const SetupApiDevType &VOLUME();

    // The member named `text` in any case; unknown text, "NOTSET" and "ALL" give NOTSET.
    static const SetupApiDevType &fromString(const kel::String &text);

    SetupApiDevType();
    // classGuid points at the system's static class GUID and is not owned.
    SetupApiDevType(const kel::String &name, const GUID *classGuid, bool placeHolder);

    const kel::String &name() const { return m_name; }
    const GUID *classGuid() const { return m_classGuid; }
    bool isPlaceHolder() const { return m_placeHolder; }
    kel::String toString() const;

    bool operator==(const SetupApiDevType &other) const { return m_name == other.m_name; }
    bool operator!=(const SetupApiDevType &other) const { return !(*this == other); }

private:
    kel::String m_name;
    const GUID *m_classGuid;
    bool m_placeHolder;
};

} // namespace sorvane
