// Reads one text value ("FriendlyName", "DevicePath", "Description" ...) of a DirectShow device
// moniker's property bag, the way every search for a device reads it.
#pragma once

#include "SorvaneExport.h"

#include <kel/String.h>
#include <objidl.h>
#include <oaidl.h>

namespace sorvane {

class SORVANE_API MonikerProperty {
public:
    // The value's text; empty when the bag has no such value or it is no text. `hr` receives
    // the read's result.
    static kel::String read(IPropertyBag *bag, const wchar_t *name, HRESULT &hr);
    static kel::String read(IPropertyBag *bag, const wchar_t *name);
    // Binds the moniker's property bag first; empty when that fails too.
    static kel::String read(IMoniker *moniker, const wchar_t *name);
};

} // namespace sorvane
