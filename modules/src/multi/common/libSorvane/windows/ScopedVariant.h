// Owns a VARIANT (a property-bag value, a BSTR inside it) and clears it when done.
#pragma once

#include "SorvaneExport.h"

#include <kel/String.h>
#include <oaidl.h>

namespace sorvane {

class SORVANE_API ScopedVariant {
public:
    ScopedVariant();
    ~ScopedVariant();
    ScopedVariant(const ScopedVariant &) = delete;
    ScopedVariant &operator=(const ScopedVariant &) = delete;

    VARIANT *get() { return &m_value; }
    const VARIANT &value() const { return m_value; }
    void clear();
    // The text of a VT_BSTR value; empty for any other type.
    kel::String text() const;

private:
    VARIANT m_value;
};

} // namespace sorvane
