#include "CaptureStandard.h"
#include "CaptureLog.h"

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

namespace {

const int kNameBuckets = 32;

// Log readers search for the mismatch lines by their leading number, so these stay fixed
// wherever the statements move in this file.
const int kStreamTypeMismatchTag = 246;
const int kFeatureMismatchTag = 250;

CaptureStandard analog(const wchar_t *name, const CaptureFeature &feature)
{
    return CaptureStandard(name, CaptureStreamType::ANALOG(), feature);
}

CaptureStandard digital(const wchar_t *name, const CaptureFeature &feature)
{
    return CaptureStandard(name, CaptureStreamType::DIGITAL(), feature);
}

} // namespace

#define SORVANE_STANDARD(member, kind, name, feature)                                                                  \
    CaptureStandard &CaptureStandard::member()                                                                         \
    {                                                                                                                  \
        static CaptureStandard value = kind(name, CaptureFeature::feature());                                          \
        return value;                                                                                                  \
    }

SORVANE_STANDARD(NTSC, analog, L"NTSC (M) 7.5 IRE black", TVTUNING)
SORVANE_STANDARD(NTSC_J, analog, L"NTSC (M) 0 IRE black (Japan)", TVTUNING)
SORVANE_STANDARD(NTSC_433, analog, L"NTSC (433)", TVTUNING)
SORVANE_STANDARD(PAL_B, analog, L"PAL (B)", TVTUNING)
SORVANE_STANDARD(PAL_D, analog, L"PAL (D)", TVTUNING)
SORVANE_STANDARD(PAL_H, analog, L"PAL (H)", TVTUNING)
SORVANE_STANDARD(PAL_I, analog, L"PAL (I)", TVTUNING)
SORVANE_STANDARD(PAL_M, analog, L"PAL (M)", TVTUNING)
SORVANE_STANDARD(PAL_N, analog, L"PAL (N)", TVTUNING)
SORVANE_STANDARD(PAL_60, analog, L"PAL (60)", TVTUNING)
SORVANE_STANDARD(SECAM_B, analog, L"SECAM (B)", TVTUNING)
SORVANE_STANDARD(SECAM_D, analog, L"SECAM (D)", TVTUNING)
SORVANE_STANDARD(SECAM_G, analog, L"SECAM (G)", TVTUNING)
SORVANE_STANDARD(SECAM_H, analog, L"SECAM (H)", TVTUNING)
SORVANE_STANDARD(SECAM_K, analog, L"SECAM (K)", TVTUNING)
SORVANE_STANDARD(SECAM_K1, analog, L"SECAM (K1)", TVTUNING)
SORVANE_STANDARD(SECAM_L, analog, L"SECAM (L)", TVTUNING)
SORVANE_STANDARD(SECAM_L1, analog, L"SECAM (L1)", TVTUNING)
// The spelling is what device listings have always shown; keep it.
SORVANE_STANDARD(COMBO, analog, L"Combonation (N) PAL ARGENTINA", TVTUNING)
SORVANE_STANDARD(ATSC, digital, L"ATSC", TVTUNING)
SORVANE_STANDARD(DVB_T, digital, L"DVB_T", TVTUNING)
SORVANE_STANDARD(DVB_C, digital, L"DVB_C", TVTUNING)
SORVANE_STANDARD(DVB_S, digital, L"DVB_S", TVTUNING)
SORVANE_STANDARD(ISDB_T, digital, L"ISDB_T", TVTUNING)
SORVANE_STANDARD(AM, analog, L"AM", RADIOTUNING)
SORVANE_STANDARD(FM, analog, L"FM", RADIOTUNING)
SORVANE_STANDARD(QAM, digital, L"QAM", RADIOTUNING)
SORVANE_STANDARD(COMPOSITE, analog, L"COMPOSITE", CAPTURE)
SORVANE_STANDARD(SVIDEO, analog, L"SVIDEO", CAPTURE)

#undef SORVANE_STANDARD

CaptureStandard::CaptureStandard() : m_names(kNameBuckets) {}

CaptureStandard::CaptureStandard(const kel::String &name, const CaptureStreamType &, const CaptureFeature &)
    : m_names(kNameBuckets)
{
    m_names.insert(name, name);
}

CaptureStandard &CaptureStandard::operator+=(const CaptureStandard &other)
{
    if (!isEmpty() && !other.isEmpty())
        reportMismatches(other);
    const kel::Array<kel::String> &names = other.m_names.keys();
    for (int i = 0; i < names.size(); ++i)
        m_names.insert(names[i], names[i]);
    return *this;
}

CaptureStandard CaptureStandard::operator|(const CaptureStandard &other) const
{
    CaptureStandard result(*this);
    result += other;
    return result;
}

bool CaptureStandard::containsAll(const CaptureStandard &other) const
{
    const kel::Array<kel::String> &names = other.m_names.keys();
    for (int i = 0; i < names.size(); ++i) {
        if (!contains(names[i]))
            return false;
    }
    return true;
}

bool CaptureStandard::containsAny(const CaptureStandard &other) const
{
    const kel::Array<kel::String> &names = other.m_names.keys();
    for (int i = 0; i < names.size(); ++i) {
        if (contains(names[i]))
            return true;
    }
    return false;
}

bool CaptureStandard::operator==(const CaptureStandard &other) const
{
    return size() == other.size() && containsAll(other);
}

kel::String CaptureStandard::toString() const
{
    if (isEmpty())
        return kel::String(L"None");
    const kel::Array<kel::String> &names = m_names.keys();
    kel::String text = names[0];
    for (int i = 1; i < names.size(); ++i)
        text += kel::String(L", ") + names[i];
    return text;
}

void CaptureStandard::reportMismatches(const CaptureStandard &other) const
{
    kel::Logger *logger = sorvaneLogger();
    if (!kel::LogFactory::admits(logger, kel::LOG_WARNING))
        return;
    if (m_streamType.name() != other.m_streamType.name()) {
        kel::LoggerStream line(logger, kel::LOG_WARNING);
        line << kStreamTypeMismatchTag << " CaptureStreamType mismatch: " << toString()
             << " Type: " << m_streamType.name() << " & " << other.toString() << " Type: " << other.m_streamType.name();
    }
    if (m_feature.name() != other.m_feature.name()) {
        kel::LoggerStream line(logger, kel::LOG_WARNING);
        line << kFeatureMismatchTag << " CaptureFeature mismatch: " << toString() << " Feature: " << m_feature.name()
             << " & " << other.toString() << " Feature: " << other.m_feature.name();
    }
}

} // namespace sorvane
