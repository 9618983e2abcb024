#include "DeviceIdParser.h"

#include <kel/Array.h>

namespace sorvane {

namespace {

const int kMinimumPathParts = 3;
const int kInstanceKeyParts = 3;

} // namespace

bool DeviceIdParser::isAlphaNum(kel::Char16 c)
{
    return (c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
}

bool DeviceIdParser::codeAfter(const kel::String &marker, const kel::String &text, kel::String &code)
{
    const int at = text.find(marker);
    if (at == kel::String::npos)
        return false;
    const int start = at + marker.length();
    int end = start;
    while (end < text.length() && isAlphaNum(text[end]))
        ++end;
    code = text.substring(start, end - start);
    return true;
}

DeviceIdParser::InstanceIdKind DeviceIdParser::readInstanceIdCodes(const kel::String &instanceId, Codes &codes)
{
    const kel::String id = instanceId.toUpper();
    InstanceIdKind kind = OTHER_INSTANCE_ID;
    if (id.find(kel::String(L"USB\\")) == 0) {
        kind = USB_INSTANCE_ID;
        codeAfter(kel::String(L"VID_"), id, codes.vendor);
        codeAfter(kel::String(L"PID_"), id, codes.device);
    } else if (id.find(kel::String(L"pci\\")) == 0) {
        // The ID was upper-cased above, so this lower-case prefix never matches: PCI IDs are
        // read by the general rule below, which gives the same codes.
        kind = PCI_INSTANCE_ID;
        codeAfter(kel::String(L"VEN_"), id, codes.vendor);
        codeAfter(kel::String(L"DEV_"), id, codes.device);
    } else {
        // Any other enumerator's ID reads as a device path does.
        readPathCodes(id, codes);
        return kind;
    }
    codeAfter(kel::String(L"SUBSYS_"), id, codes.subsys);
    codeAfter(kel::String(L"REV_"), id, codes.rev);
    return kind;
}

bool DeviceIdParser::readDevicePath(const kel::String &candidate, PathIdentity &identity)
{
    const kel::Array<kel::String> parts = candidate.split(L'#');
    if (parts.size() < kMinimumPathParts)
        return false;

    bool identified = false;
    const int lastSlash = parts[0].findLast(kel::String(L"\\"));
    if (lastSlash != kel::String::npos && lastSlash + 1 < parts[0].length()) {
        const kel::String enumerator = parts[0].substring(lastSlash + 1);
        const CaptureBusType *bus = busOfEnumerator(enumerator);
        if (bus)
            identity.busType = *bus;
        kel::String guid = enumerator;
        for (int i = 1; i < parts.size(); ++i)
            guid += kel::String(L"\\") + parts[i];
        identity.guid = guid;
        identity.deviceInstanceId = enumerator + L"\\" + parts[1] + L"\\" + parts[2];
        identified = true;
    }
    readPathCodes(candidate, identity.codes);
    return identified;
}

void DeviceIdParser::readPathCodes(const kel::String &candidate, Codes &codes)
{
    if (!codeAfter(kel::String(L"VID_"), candidate, codes.vendor))
        codeAfter(kel::String(L"VEN_"), candidate, codes.vendor);
    if (!codeAfter(kel::String(L"PID_"), candidate, codes.device))
        codeAfter(kel::String(L"DEV_"), candidate, codes.device);
    codeAfter(kel::String(L"SUBSYS_"), candidate, codes.subsys);
    codeAfter(kel::String(L"REV_"), candidate, codes.rev);
}

kel::String DeviceIdParser::withBackslashes(const kel::String &text)
{
    return text.toUpper().replace(kel::String(L"#"), kel::String(L"\\"));
}

kel::String DeviceIdParser::pathIdentifier(const kel::String &devicePath)
{
    const kel::String marker(L"?\\");
    const int at = devicePath.find(marker);
    if (at == kel::String::npos || at + marker.length() >= devicePath.length())
        return kel::String();
    return withBackslashes(devicePath.substring(at + marker.length()));
}

kel::String DeviceIdParser::instanceKey(const kel::String &pathOrLocator)
{
    const kel::String upper = withBackslashes(pathOrLocator);
    int start = kel::String::npos;
    for (const wchar_t *bus : {L"USB\\", L"PCI\\"}) {
        const int at = upper.find(kel::String(bus));
        if (at != kel::String::npos && (start == kel::String::npos || at < start))
            start = at;
    }
    if (start == kel::String::npos)
        return upper;
    int end = start;
    for (int parts = 0; end < upper.length(); ++end) {
        if (upper[end] == L'\\' && ++parts == kInstanceKeyParts)
            break;
    }
    return upper.substring(start, end - start);
}

// "NGENE" cards sit on the PCI bus too; other enumerators leave the bus as it was.
const CaptureBusType *DeviceIdParser::busOfEnumerator(const kel::String &enumerator)
{
    if (enumerator == kel::String(L"USB"))
        return &CaptureBusType::USB();
    if (enumerator == kel::String(L"PCI") || enumerator == kel::String(L"NGENE"))
        return &CaptureBusType::PCI();
    return nullptr;
}

} // namespace sorvane
