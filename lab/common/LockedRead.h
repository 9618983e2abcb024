// The shape of a plain property getter: a null out-pointer is E_POINTER, otherwise the value
// is read under the lock that guards it (other threads of the graph may be setting it).
#pragma once

#include <windows.h>

#include <mutex>

namespace lab {

template <class Out, class Value>
HRESULT readLocked(std::mutex &lock, Out *out, const Value &value)
{
    if (!out)
        return E_POINTER;
    std::lock_guard<std::mutex> guard(lock);
    *out = value;
    return S_OK;
}

} // namespace lab
