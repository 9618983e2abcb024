#include "AnalogStandard.h"
#include "FixedMember.h"

SORVANE_FIXED_MEMBER(AnalogStandard, NTSC, L"NTSC (M) 7.5 IRE black", L"NTSC")
SORVANE_FIXED_MEMBER(AnalogStandard, NTSC_JAPAN, L"NTSC (M) 0 IRE black (Japan)", L"NTSC Japan")
SORVANE_FIXED_MEMBER(AnalogStandard, PAL_B, L"PAL (B)", L"PAL B")
SORVANE_FIXED_MEMBER(AnalogStandard, PAL_D, L"PAL (D)", L"PAL D")
SORVANE_FIXED_MEMBER(AnalogStandard, PAL_I, L"PAL (I)", L"PAL I")
SORVANE_FIXED_MEMBER(AnalogStandard, PAL_M, L"PAL (M)", L"PAL M")
SORVANE_FIXED_MEMBER(AnalogStandard, PAL_N, L"PAL (N)", L"PAL N")
SORVANE_FIXED_MEMBER(AnalogStandard, SECAM_B, L"SECAM (B)", L"SECAM B")
SORVANE_FIXED_MEMBER(AnalogStandard, SECAM_D, L"SECAM (D)", L"SECAM D")
SORVANE_FIXED_MEMBER(AnalogStandard, SECAM_G, L"SECAM (G)", L"SECAM G")
SORVANE_FIXED_MEMBER(AnalogStandard, SECAM_K, L"SECAM (K)", L"SECAM K")
SORVANE_FIXED_MEMBER(AnalogStandard, SECAM_L, L"SECAM (L)", L"SECAM L")

AnalogStandard::AnalogStandard() {}

AnalogStandard::AnalogStandard(const kel::String &description, const kel::String &shortName)
    : m_description(description), m_shortName(shortName)
{
}

bool AnalogStandard::operator==(const AnalogStandard &other) const
{
    return m_description == other.m_description && m_shortName == other.m_shortName;
}
