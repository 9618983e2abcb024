// An analog television standard as the country table names it: a description such as
// "PAL (B)" and a short name such as "PAL B". Each standard is one shared instance.
#pragma once

#include "SorvaneExport.h"
#include <kel/String.h>

class SORVANE_API AnalogStandard {
public:
    static const AnalogStandard &NTSC();
    static const AnalogStandard &NTSC_JAPAN();
    static const AnalogStandard &PAL_B();
    static const AnalogStandard &PAL_D();
    static const AnalogStandard &PAL_I();
    static const AnalogStandard &PAL_M();
    static const AnalogStandard &PAL_N();
    static const AnalogStandard &SECAM_B();
    static const AnalogStandard &SECAM_D();
    static const AnalogStandard &SECAM_G();
    static const AnalogStandard &SECAM_K();
    static const AnalogStandard &SECAM_L();

    AnalogStandard();
    AnalogStandard(const kel::String &description, const kel::String &shortName);

    const kel::String &description() const { return m_description; }
    const kel::String &shortName() const { return m_shortName; }

    bool operator==(const AnalogStandard &other) const;
    bool operator!=(const AnalogStandard &other) const { return !(*this == other); }

private:
    kel::String m_description;
    kel::String m_shortName;
};
