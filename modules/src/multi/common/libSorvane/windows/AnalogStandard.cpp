#include "AnalogStandard.h"

#define SORVANE_ANALOG_STANDARD(member, description, shortName)              \
    const AnalogStandard& AnalogStandard::member()                           \
    {                                                                        \
        static const AnalogStandard value(description, shortName);           \
        return value;                                                        \
    }

SORVANE_ANALOG_STANDARD(NTSC, L"NTSC (M) 7.5 IRE black", L"NTSC")
SORVANE_ANALOG_STANDARD(NTSC_JAPAN, L"NTSC (M) 0 IRE black (Japan)", L"NTSC Japan")
SORVANE_ANALOG_STANDARD(PAL_B, L"PAL (B)", L"PAL B")
SORVANE_ANALOG_STANDARD(PAL_D, L"PAL (D)", L"PAL D")
SORVANE_ANALOG_STANDARD(PAL_I, L"PAL (I)", L"PAL I")
SORVANE_ANALOG_STANDARD(PAL_M, L"PAL (M)", L"PAL M")
SORVANE_ANALOG_STANDARD(PAL_N, L"PAL (N)", L"PAL N")
SORVANE_ANALOG_STANDARD(SECAM_B, L"SECAM (B)", L"SECAM B")
SORVANE_ANALOG_STANDARD(SECAM_D, L"SECAM (D)", L"SECAM D")
SORVANE_ANALOG_STANDARD(SECAM_G, L"SECAM (G)", L"SECAM G")
SORVANE_ANALOG_STANDARD(SECAM_K, L"SECAM (K)", L"SECAM K")
SORVANE_ANALOG_STANDARD(SECAM_L, L"SECAM (L)", L"SECAM L")

#undef SORVANE_ANALOG_STANDARD

AnalogStandard::AnalogStandard() {}

AnalogStandard::AnalogStandard(const kel::String& description, const kel::String& shortName)
    : m_description(description), m_shortName(shortName)
{
}

bool AnalogStandard::operator==(const AnalogStandard& other) const
{
    return m_description == other.m_description && m_shortName == other.m_shortName;
}
