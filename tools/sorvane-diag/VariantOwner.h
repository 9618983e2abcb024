// A VARIANT that is cleared when it goes out of scope.
#pragma once

#include <windows.h>
#include <oleauto.h>

namespace sorvane {
namespace diag {

class VariantOwner {
public:
    VariantOwner() { VariantInit(&m_value); }
    ~VariantOwner() { VariantClear(&m_value); }
    VariantOwner(const VariantOwner &) = delete;
    VariantOwner &operator=(const VariantOwner &) = delete;

    VARIANT *get() { return &m_value; }
    const VARIANT &value() const { return m_value; }

private:
    VARIANT m_value;
};

} // namespace diag
} // namespace sorvane
