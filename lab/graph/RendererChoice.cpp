#include "graph/RendererChoice.h"

#include <dshow.h>
#include <uuids.h>

#include <atlbase.h>

namespace lab {

HRESULT RendererChoice::preferGdiRenderer()
{
    CComPtr<IFilterMapper2> mapper;
    const HRESULT hr = mapper.CoCreateInstance(CLSID_FilterMapper2, nullptr, CLSCTX_INPROC_SERVER);
    if (FAILED(hr))
        return hr;
    // A renderer an earlier setup took out answers an error; the choice
    // stands either way, so the result is not the setup's concern.
    mapper->UnregisterFilter(&CLSID_LegacyAmFilterCategory, nullptr, CLSID_VideoRendererDefault);
    return S_OK;
}

} // namespace lab
