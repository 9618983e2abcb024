// A named set of television or input standards ("PAL (B)", "FM", "SVIDEO" ...), kept in
// insertion order. Standards of one device are merged with += or |.
#pragma once

#include "CaptureFeature.h"
#include "CaptureStreamType.h"
#include "SorvaneExport.h"
#include <kel/OrderedHashTable.h>
#include <kel/String.h>

namespace sorvane {

class SORVANE_API CaptureStandard {
public:
    static CaptureStandard &NTSC();
    static CaptureStandard &NTSC_J();
    static CaptureStandard &NTSC_433();
    static CaptureStandard &PAL_B();
    static CaptureStandard &PAL_D();
    static CaptureStandard &PAL_H();
    static CaptureStandard &PAL_I();
    static CaptureStandard &PAL_M();
    static CaptureStandard &PAL_N();
    static CaptureStandard &PAL_60();
    static CaptureStandard &SECAM_B();
    static CaptureStandard &SECAM_D();
    static CaptureStandard &SECAM_G();
    static CaptureStandard &SECAM_H();
    static CaptureStandard &SECAM_K();
    static CaptureStandard &SECAM_K1();
    static CaptureStandard &SECAM_L();
    static CaptureStandard &SECAM_L1();
    static CaptureStandard &COMBO();
    static CaptureStandard &ATSC();
    static CaptureStandard &DVB_T();
    static CaptureStandard &DVB_C();
    static CaptureStandard &DVB_S();
    static CaptureStandard &ISDB_T();
    static CaptureStandard &AM();
    static CaptureStandard &FM();
    static CaptureStandard &QAM();
    static CaptureStandard &COMPOSITE();
    static CaptureStandard &SVIDEO();

    CaptureStandard();
    // Holds the one name. The stream type and feature are accepted but not kept: a named
    // standard carries neither, so merging named standards never reports a mismatch.
    CaptureStandard(const kel::String &name, const CaptureStreamType &streamType, const CaptureFeature &feature);

    const CaptureStreamType &streamType() const { return m_streamType; }
    const CaptureFeature &feature() const { return m_feature; }
    int size() const { return m_names.size(); }
    bool isEmpty() const { return m_names.isEmpty(); }
    bool contains(const kel::String &name) const { return m_names.contains(name); }
    // The names in insertion order.
    const kel::Array<kel::String> &names() const { return m_names.keys(); }

    // Union: other's names not yet held are appended in their order. A differing stream
    // type or feature is logged, never refused; this value's own type and feature stay.
    CaptureStandard &operator+=(const CaptureStandard &other);
    CaptureStandard operator|(const CaptureStandard &other) const;

    bool containsAll(const CaptureStandard &other) const;
    bool containsAny(const CaptureStandard &other) const;

    // Same names in any order; stream type and feature are not compared.
    bool operator==(const CaptureStandard &other) const;
    bool operator!=(const CaptureStandard &other) const { return !(*this == other); }

    // The names joined by ", ", or "None".
    kel::String toString() const;

private:
    void reportMismatches(const CaptureStandard &other) const;

    CaptureStreamType m_streamType;
    CaptureFeature m_feature;
    kel::OrderedHashTable<kel::String, kel::String> m_names;
};

} // namespace sorvane
