// A SetupAPI device enumerator, the first component of a device instance ID ("PCI", "USB").
// NOTSET and ALL are placeholders.
#pragma once

#include "SorvaneExport.h"
#include <kel/String.h>

namespace sorvane {

class SORVANE_API SetupApiEnumType {
public:
    static const SetupApiEnumType &NOTSET();
    static const SetupApiEnumType &ALL();
    static const SetupApiEnumType &ACPI();
    static const SetupApiEnumType &ACPI_HAL();
    static const SetupApiEnumType &DISPLAY();
    static const SetupApiEnumType &FDC();
    static const SetupApiEnumType &HTREE();
    static const SetupApiEnumType &IDE();
    static const SetupApiEnumType &ISAPNP();
    static const SetupApiEnumType &LPTENUM();
    static const SetupApiEnumType &PCI();
    static const SetupApiEnumType &PCIIDE();
    static const SetupApiEnumType &ROOT();
    static const SetupApiEnumType &STORAGE();
    static const SetupApiEnumType &SW();
    static const SetupApiEnumType &USB();
    static const SetupApiEnumType &USBSTOR();
    // The IEEE 1394 bus enumerator. Its name keeps the leading "V", so the system's own
    // enumerator text "1394" never equals it.
    static const SetupApiEnumType &V1394();

    // The member named `text` in any case; unknown text, "NOTSET" and "ALL" give NOTSET.
    static const SetupApiEnumType &fromString(const kel::String &text);

    SetupApiEnumType();
    SetupApiEnumType(const kel::String &name, bool placeHolder);

    const kel::String &name() const { return m_name; }
    bool isPlaceHolder() const { return m_placeHolder; }
    kel::String toString() const;

    bool operator==(const SetupApiEnumType &other) const { return m_name == other.m_name; }
    bool operator!=(const SetupApiEnumType &other) const { return !(*this == other); }

private:
    kel::String m_name;
    bool m_placeHolder;
};

} // namespace sorvane
