// What a pin of the lab's BDA devices and demultiplexer accepts as a transport stream.
#pragma once

#include <windows.h>
#include <strmif.h>
#include <uuids.h>

#include "lab/BdaGuids.h"

namespace lab {
namespace bda {

// S_OK for a transport stream in either of its subtypes (the plain MPEG-2 one or BDA's), S_FALSE
// for anything else: a pin's answer to a proposed media type.
inline HRESULT acceptsTransportStream(const AM_MEDIA_TYPE &type)
{
    if (!IsEqualGUID(type.majortype, MEDIATYPE_Stream))
        return S_FALSE;
    return IsEqualGUID(type.subtype, MEDIASUBTYPE_MPEG2_TRANSPORT) || IsEqualGUID(type.subtype, kSubtypeBdaTransport)
               ? S_OK
               : S_FALSE;
}

} // namespace bda
} // namespace lab
