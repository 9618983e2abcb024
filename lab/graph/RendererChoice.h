// Which video renderer intelligent connect picks in the prefix. Wine's default video renderer
// (CLSID_VideoRendererDefault, the highest merit) needs Direct3D, which the headless prefix
// lacks: rendering a decoded pin with IGraphBuilder::Render then crashes in quartz after the
// renderer failed to create its presenter, where Windows' default renderer just shows the video.
// Taken out of the filter category (it can still be created by its class ID), it leaves the
// choice to Wine's GDI video renderer, which works headless.
#pragma once

#include <windows.h>

namespace lab {

class RendererChoice {
public:
    static HRESULT preferGdiRenderer();
};

} // namespace lab
