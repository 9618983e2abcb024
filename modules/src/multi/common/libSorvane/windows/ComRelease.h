// Releases a COM pointer and returns the count the object reports afterwards, for the
// log lines that trace whether filters really go away.
#pragma once

#include <atlbase.h>

namespace sorvane {

template <class T>
ULONG releaseWithCount(CComPtr<T> &pointer)
{
    T *object = pointer.Detach();
    return object ? object->Release() : 0;
}

} // namespace sorvane
