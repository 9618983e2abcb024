#include "ScopedVariant.h"

#include <oleauto.h>

namespace sorvane {

ScopedVariant::ScopedVariant()
{
    VariantInit(&m_value);
}

ScopedVariant::~ScopedVariant()
{
    VariantClear(&m_value);
}

void ScopedVariant::clear()
{
    VariantClear(&m_value);
}

kel::String ScopedVariant::text() const
{
    if (m_value.vt != VT_BSTR || !m_value.bstrVal)
        return kel::String();
    return kel::String(m_value.bstrVal, static_cast<int>(SysStringLen(m_value.bstrVal)));
}

} // namespace sorvane
