// Interface identifiers for __uuidof that mingw-w64's DirectShow headers leave out, so that
// typed queries (CComPtr::QueryInterface(&p), IID_PPV_ARGS) work on these interfaces too.
// Values as in control.h's IID_ constants.
#pragma once

#include <dshow.h>

__CRT_UUID_DECL(IMediaEventEx, 0x56a868c0, 0x0ad4, 0x11ce, 0xb0, 0x3a, 0x00, 0x20, 0xaf, 0x0b, 0xa7, 0x70)
__CRT_UUID_DECL(IVideoWindow, 0x56a868b4, 0x0ad4, 0x11ce, 0xb0, 0x3a, 0x00, 0x20, 0xaf, 0x0b, 0xa7, 0x70)
