// The BDA GUIDs the lab's devices publish and mingw-w64's libraries lack, from their published
// values: the two device categories and the media types of the transport link (the antenna
// link's is lab/BdaGuids.h's kMediaTypeBdaAntenna, shared with the network providers).
#pragma once

#include <windows.h>
#include <strmif.h>
#include <uuids.h>

namespace lab {
namespace bda {

// KSCATEGORY_BDA_NETWORK_TUNER {71985F48-1CA1-11d3-9CC8-00C04F7971E0}
constexpr GUID kCategoryNetworkTuner = {0x71985f48, 0x1ca1, 0x11d3, {0x9c, 0xc8, 0x00, 0xc0, 0x4f, 0x79, 0x71, 0xe0}};
// KSCATEGORY_BDA_RECEIVER_COMPONENT {FD0A5AF4-B41D-11d2-9C95-00C04F7971E0}
constexpr GUID kCategoryReceiverComponent = {
    0xfd0a5af4, 0xb41d, 0x11d2, {0x9c, 0x95, 0x00, 0xc0, 0x4f, 0x79, 0x71, 0xe0}};
// KSDATAFORMAT_SUBTYPE_BDA_MPEG2_TRANSPORT {F4AEB342-0329-4fdd-A8FD-4AFF4926C978}
constexpr GUID kSubtypeBdaTransport = {0xf4aeb342, 0x0329, 0x4fdd, {0xa8, 0xfd, 0x4a, 0xff, 0x49, 0x26, 0xc9, 0x78}};
// KSDATAFORMAT_TYPE_MPEG2_SECTIONS {455F176C-4B06-47CE-9AEF-8CAEF73DF7B5}
constexpr GUID kFormatTypeSections = {0x455f176c, 0x4b06, 0x47ce, {0x9a, 0xef, 0x8c, 0xae, 0xf7, 0x3d, 0xf7, 0xb5}};

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
