#include "SetupApiDevType.h"
#include "FixedMember.h"
#include "NamedMemberLookup.h"
#include <devguid.h>

namespace sorvane {

SORVANE_FIXED_MEMBER(SetupApiDevType, NOTSET, L"NOTSET", nullptr, true)
SORVANE_FIXED_MEMBER(SetupApiDevType, ALL, L"ALL", nullptr, true)
SORVANE_FIXED_MEMBER(SetupApiDevType, IEEE1394, L"1394", &GUID_DEVCLASS_1394, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, ADAPTER, L"ADAPTER", &GUID_DEVCLASS_ADAPTER, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, APMSUPPORT, L"APMSUPPORT", &GUID_DEVCLASS_APMSUPPORT, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, BATTERY, L"BATTERY", &GUID_DEVCLASS_BATTERY, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, CDROM, L"CDROM", &GUID_DEVCLASS_CDROM, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, COMPUTER, L"COMPUTER", &GUID_DEVCLASS_COMPUTER, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, DECODER, L"DECODER", &GUID_DEVCLASS_DECODER, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, DISKDRIVE, L"DISKDRIVE", &GUID_DEVCLASS_DISKDRIVE, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, DISPLAY, L"DISPLAY", &GUID_DEVCLASS_DISPLAY, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, FDC, L"FDC", &GUID_DEVCLASS_FDC, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, FLOPPYDISK, L"FLOPPYDISK", &GUID_DEVCLASS_FLOPPYDISK, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, GPS, L"GPS", &GUID_DEVCLASS_GPS, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, HDC, L"HDC", &GUID_DEVCLASS_HDC, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, HIDCLASS, L"HIDCLASS", &GUID_DEVCLASS_HIDCLASS, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, IMAGE, L"IMAGE", &GUID_DEVCLASS_IMAGE, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, INFRARED, L"INFRARED", &GUID_DEVCLASS_INFRARED, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, KEYBOARD, L"KEYBOARD", &GUID_DEVCLASS_KEYBOARD, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, LEGACYDRIVER, L"LEGACYDRIVER", &GUID_DEVCLASS_LEGACYDRIVER, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, MEDIA, L"MEDIA", &GUID_DEVCLASS_MEDIA, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, MEDIUM_CHANGER, L"MEDIUM_CHANGER", &GUID_DEVCLASS_MEDIUM_CHANGER, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, MODEM, L"MODEM", &GUID_DEVCLASS_MODEM, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, MONITOR, L"MONITOR", &GUID_DEVCLASS_MONITOR, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, MOUSE, L"MOUSE", &GUID_DEVCLASS_MOUSE, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, MTD, L"MTD", &GUID_DEVCLASS_MTD, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, MULTIFUNCTION, L"MULTIFUNCTION", &GUID_DEVCLASS_MULTIFUNCTION, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, MULTIPORTSERIAL, L"MULTIPORTSERIAL", &GUID_DEVCLASS_MULTIPORTSERIAL, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, NET, L"NET", &GUID_DEVCLASS_NET, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, NETCLIENT, L"NETCLIENT", &GUID_DEVCLASS_NETCLIENT, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, NETSERVICE, L"NETSERVICE", &GUID_DEVCLASS_NETSERVICE, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, NETTRANS, L"NETTRANS", &GUID_DEVCLASS_NETTRANS, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, NODRIVER, L"NODRIVER", &GUID_DEVCLASS_NODRIVER, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, PCMCIA, L"PCMCIA", &GUID_DEVCLASS_PCMCIA, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, PORTS, L"PORTS", &GUID_DEVCLASS_PORTS, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, PRINTER, L"PRINTER", &GUID_DEVCLASS_PRINTER, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, PRINTERUPGRADE, L"PRINTERUPGRADE", &GUID_DEVCLASS_PRINTERUPGRADE, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, SCSIADAPTER, L"SCSIADAPTER", &GUID_DEVCLASS_SCSIADAPTER, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, SMARTCARDREADER, L"SMARTCARDREADER", &GUID_DEVCLASS_SMARTCARDREADER, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, SOUND, L"SOUND", &GUID_DEVCLASS_SOUND, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, SYSTEM, L"SYSTEM", &GUID_DEVCLASS_SYSTEM, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, TAPEDRIVE, L"TAPEDRIVE", &GUID_DEVCLASS_TAPEDRIVE, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, UNKNOWN, L"UNKNOWN", &GUID_DEVCLASS_UNKNOWN, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, USB, L"USB", &GUID_DEVCLASS_USB, false)
SORVANE_FIXED_MEMBER(SetupApiDevType, VOLUME, L"VOLUME", &GUID_DEVCLASS_VOLUME, false)

namespace {

typedef NamedMemberLookup<SetupApiDevType>::Member Member;

// Every class a device can be looked up by; the placeholders are deliberately absent.
const Member kLookupMembers[] = {
    &SetupApiDevType::IEEE1394,
    &SetupApiDevType::ADAPTER,
    &SetupApiDevType::APMSUPPORT,
    &SetupApiDevType::BATTERY,
    &SetupApiDevType::CDROM,
    &SetupApiDevType::COMPUTER,
    &SetupApiDevType::DECODER,
    &SetupApiDevType::DISKDRIVE,
    &SetupApiDevType::DISPLAY,
    &SetupApiDevType::FDC,
    &SetupApiDevType::FLOPPYDISK,
    &SetupApiDevType::GPS,
    &SetupApiDevType::HDC,
    &SetupApiDevType::HIDCLASS,
    &SetupApiDevType::IMAGE,
    &SetupApiDevType::INFRARED,
    &SetupApiDevType::KEYBOARD,
    &SetupApiDevType::LEGACYDRIVER,
    &SetupApiDevType::MEDIA,
    &SetupApiDevType::MEDIUM_CHANGER,
    &SetupApiDevType::MODEM,
    &SetupApiDevType::MONITOR,
    &SetupApiDevType::MOUSE,
    &SetupApiDevType::MTD,
    &SetupApiDevType::MULTIFUNCTION,
    &SetupApiDevType::MULTIPORTSERIAL,
    &SetupApiDevType::NET,
    &SetupApiDevType::NETCLIENT,
    &SetupApiDevType::NETSERVICE,
    &SetupApiDevType::NETTRANS,
    &SetupApiDevType::NODRIVER,
    &SetupApiDevType::PCMCIA,
    &SetupApiDevType::PORTS,
    &SetupApiDevType::PRINTER,
    &SetupApiDevType::PRINTERUPGRADE,
    &SetupApiDevType::SCSIADAPTER,
    &SetupApiDevType::SMARTCARDREADER,
    &SetupApiDevType::SOUND,
    &SetupApiDevType::SYSTEM,
    &SetupApiDevType::TAPEDRIVE,
    &SetupApiDevType::UNKNOWN,
    &SetupApiDevType::USB,
    &SetupApiDevType::VOLUME,
};

} // namespace

const SetupApiDevType &SetupApiDevType::fromString(const kel::String &text)
{
    static const NamedMemberLookup<SetupApiDevType> lookup(kLookupMembers);
    return lookup.find(text, NOTSET());
}

SetupApiDevType::SetupApiDevType() : m_classGuid(nullptr), m_placeHolder(false) {}

SetupApiDevType::SetupApiDevType(const kel::String &name, const GUID *classGuid, bool placeHolder)
    : m_name(name), m_classGuid(classGuid), m_placeHolder(placeHolder)
{
}

kel::String SetupApiDevType::toString() const
{
    return m_name + L" PlaceHolder: " + kel::String::fromBool(m_placeHolder);
}

} // namespace sorvane
