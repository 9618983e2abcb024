// The plain properties of a tuning object (tuning space, tune request, locator) behind one lock:
// the graph's threads may read a request or a locator while the application sets it.
#pragma once

#include <windows.h>

#include <mutex>

#include "common/LockedRead.h"

namespace lab {

class LockedProperties {
protected:
    template <class Out, class Value>
    HRESULT read(Out *out, const Value &field)
    {
        return readLocked(m_lock, out, field);
    }
    // The setters take any value; whoever uses the object judges it.
    template <class Field, class Value>
    HRESULT write(Field &field, const Value &value)
    {
        std::lock_guard<std::mutex> guard(m_lock);
        field = value;
        return S_OK;
    }

    std::mutex m_lock;
};

} // namespace lab
