// The bus a capture device sits on. NOTSET (nothing chosen) and ALL (any bus) are
// placeholders that never describe a real device.
#pragma once

#include "SorvaneExport.h"
#include <kel/String.h>

namespace sorvane {

class SORVANE_API CaptureBusType {
public:
    static const CaptureBusType &NOTSET();
    static const CaptureBusType &ALL();
    static const CaptureBusType &PCI();
    static const CaptureBusType &USB();
    static const CaptureBusType &PCMCIA();

    CaptureBusType();
    CaptureBusType(const kel::String &name, bool placeHolder);

    const kel::String &name() const { return m_name; }
    kel::String toString() const { return m_name; }
    bool isPlaceHolder() const { return m_placeHolder; }

    // Equal by name alone: the placeholder flag follows from the name.
    bool operator==(const CaptureBusType &other) const { return m_name == other.m_name; }
    bool operator!=(const CaptureBusType &other) const { return !(*this == other); }

private:
    kel::String m_name;
    bool m_placeHolder;
};

} // namespace sorvane
