// One DirectShow device moniker of a capture category: its display name and property-bag
// values, the device instance ID and codes read from its device path, the filter's driver
// file, and what the filter can do. Enumeration and probing never throw for COM failures:
// each is logged and the record keeps what was found so far.
#pragma once

#include "CaptureBusType.h"
#include "CaptureCapability.h"
#include "CaptureStreamType.h"
#include "SorvaneExport.h"

#include <kel/Array.h>
#include <kel/String.h>

struct IMoniker;
struct IPropertyBag;
struct ICreateDevEnum;

namespace sorvane {

class SORVANE_API DSMoniker {
public:
    // At most this many monikers are taken from one category.
    static const int kMaxMonikersPerCategory = 256;

    // Appends the monikers of streamType to `out`; ALL means ANALOG, then DIGITAL.
    static void enumerateMonikers(kel::Array<DSMoniker> &out, const CaptureStreamType &streamType);
    static void enumerateMonikersOfType(const CaptureStreamType &streamType, ICreateDevEnum *deviceEnumerator,
                                        kel::Array<DSMoniker> &out);

    DSMoniker();

    // Fills this record from a moniker found at 1-based position enumIndex of its category.
    void create(IMoniker *moniker, const CaptureStreamType &type, int enumIndex);
    void getCapabilities(IMoniker *moniker, const CaptureStreamType &streamType);
    void getAnalogCapabilities(IMoniker *moniker);
    void getDigitalCapabilities(IMoniker *moniker);
    // Reads the identity from the display name, else the device path; fallbackIdentity
    // (e.g. "KELR\Analog:3") stands when neither holds one.
    void parseMonikerInfo(const kel::String &fallbackIdentity);
    void getFilterDriverName();
    bool getMonikerProperty(IPropertyBag *propertyBag, const kel::String &key, const kel::String &label,
                            kel::String &out);

    const kel::String &guid() const { return m_guid; }
    const kel::String &deviceInstanceId() const { return m_deviceInstanceId; }
    const kel::String &description() const { return m_description; }
    const kel::String &clsid() const { return m_clsid; }
    const kel::String &devicePath() const { return m_devicePath; }
    const kel::String &filterName() const { return m_filterName; }
    const kel::String &filterDriverName() const { return m_filterDriverName; }
    const kel::String &monikerName() const { return m_monikerName; }
    const kel::String &vendorIdCode() const { return m_vendorIdCode; }
    const kel::String &deviceIdCode() const { return m_deviceIdCode; }
    const kel::String &subsysIdCode() const { return m_subsysIdCode; }
    const kel::String &revIdCode() const { return m_revIdCode; }
    int enumIndex() const { return m_enumIndex; }
    const CaptureStreamType &captureStreamType() const { return m_captureStreamType; }
    const CaptureBusType &busType() const { return m_busType; }
    const kel::Array<CaptureCapability> &capabilities() const { return m_capabilities; }

    kel::String toString() const;
    kel::String toFormattedString(const kel::String &indent) const;

private:
    void readProperties(IMoniker *moniker);
    void appendCapability(const CaptureCapability &capability);
    kel::String capabilitiesText(const kel::String &separator) const;

    kel::String m_guid;
    kel::String m_deviceInstanceId;
    kel::String m_description;
    kel::String m_clsid;
    kel::String m_devicePath;
    kel::String m_filterName;
    kel::String m_filterDriverName;
    kel::String m_monikerName;
    kel::String m_vendorIdCode;
    kel::String m_deviceIdCode;
    kel::String m_subsysIdCode;
    kel::String m_revIdCode;
    int m_enumIndex;
    CaptureStreamType m_captureStreamType;
    CaptureBusType m_busType;
    kel::Array<CaptureCapability> m_capabilities;
};

} // namespace sorvane
