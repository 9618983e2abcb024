// Owns a BSTR received from a COM call, or made to pass to one, and frees it on scope exit.
#pragma once

#include <windows.h>
#include <oleauto.h>

#include <string>

namespace lab {

class ScopedBstr {
public:
    ScopedBstr() = default;
    explicit ScopedBstr(const std::wstring &text)
        : m_text(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())))
    {
    }
    ScopedBstr(const ScopedBstr &) = delete;
    ScopedBstr &operator=(const ScopedBstr &) = delete;
    ~ScopedBstr() { SysFreeString(m_text); }

    // For the out-parameter of a call; frees what was held before.
    BSTR *out()
    {
        SysFreeString(m_text);
        m_text = nullptr;
        return &m_text;
    }
    BSTR get() const { return m_text; }
    std::wstring text() const { return m_text ? std::wstring(m_text, SysStringLen(m_text)) : std::wstring(); }

private:
    BSTR m_text = nullptr;
};

} // namespace lab
