#include "MonikerProperty.h"
#include "ScopedVariant.h"

#include <atlbase.h>

namespace sorvane {

kel::String MonikerProperty::read(IPropertyBag *bag, const wchar_t *name, HRESULT &hr)
{
    ScopedVariant value;
    hr = bag->Read(name, value.get(), nullptr);
    return SUCCEEDED(hr) ? value.text() : kel::String();
}

kel::String MonikerProperty::read(IPropertyBag *bag, const wchar_t *name)
{
    HRESULT hr = S_OK;
    return read(bag, name, hr);
}

kel::String MonikerProperty::read(IMoniker *moniker, const wchar_t *name)
{
    CComPtr<IPropertyBag> bag;
    if (FAILED(moniker->BindToStorage(nullptr, nullptr, IID_PPV_ARGS(&bag))) || !bag)
        return kel::String();
    return read(bag, name);
}

} // namespace sorvane
