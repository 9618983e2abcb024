// BDA GUIDs that mingw-w64's headers declare without a definition in its import libraries, or
// lack altogether. Published values; constexpr in the lab's namespace so any lab source or test
// may include this without clashing with another definition of the same Windows name.
#pragma once

#include <windows.h>

namespace lab {

// The generic network provider, {B2F3A67C-29DA-4C78-8831-091ED509A475}.
constexpr CLSID kClsidNetworkProvider = {0xb2f3a67c, 0x29da, 0x4c78, {0x88, 0x31, 0x09, 0x1e, 0xd5, 0x09, 0xa4, 0x75}};
// The major type of the antenna link between a network provider and a tuner filter,
// KSDATAFORMAT_TYPE_BDA_ANTENNA {71985F41-1CA1-11D3-9CC8-00C04F7971E0}.
constexpr GUID kMediaTypeBdaAntenna = {0x71985f41, 0x1ca1, 0x11d3, {0x9c, 0xc8, 0x00, 0xc0, 0x4f, 0x79, 0x71, 0xe0}};
// Network types (the tuning space's NetworkType; the ATSC and DVB-T ones are also the class IDs
// of their network providers).
constexpr GUID kNetworkTypeAtsc = {0x0dad2fdd, 0x5fd7, 0x11d3, {0x8f, 0x50, 0x00, 0xc0, 0x4f, 0x79, 0x71, 0xe2}};
constexpr GUID kNetworkTypeDvbt = {0x216c62df, 0x6d7f, 0x4e9a, {0x85, 0x71, 0x05, 0xf1, 0x4e, 0xdb, 0x76, 0x6a}};
constexpr GUID kNetworkTypeDigitalCable = {
    0x143827ab, 0xf77b, 0x498d, {0x81, 0xca, 0x5a, 0x00, 0x7a, 0xec, 0x28, 0xbf}};
// The tuning-space classes the spaces report through ITuningSpace::get_CLSID.
constexpr CLSID kClsidAtscTuningSpace = {0xa2e30750, 0x6c3d, 0x11d3, {0xb6, 0x53, 0x00, 0xc0, 0x4f, 0x79, 0x49, 0x8e}};
constexpr CLSID kClsidDigitalCableTuningSpace = {
    0xd9bb4cee, 0xb87a, 0x47f1, {0xac, 0x92, 0xb0, 0x8d, 0x9c, 0x78, 0x13, 0xfc}};
constexpr CLSID kClsidDvbTuningSpace = {0xc6b14b32, 0x76aa, 0x4a86, {0xa7, 0xac, 0x5c, 0x79, 0xaa, 0xf5, 0x8d, 0xa7}};
// The device categories of BDA cards: KSCATEGORY_BDA_NETWORK_TUNER
// {71985F48-1CA1-11d3-9CC8-00C04F7971E0} and KSCATEGORY_BDA_RECEIVER_COMPONENT
// {FD0A5AF4-B41D-11d2-9C95-00C04F7971E0}.
constexpr GUID kCategoryBdaNetworkTuner = {
    0x71985f48, 0x1ca1, 0x11d3, {0x9c, 0xc8, 0x00, 0xc0, 0x4f, 0x79, 0x71, 0xe0}};
constexpr GUID kCategoryBdaReceiverComponent = {
    0xfd0a5af4, 0xb41d, 0x11d2, {0x9c, 0x95, 0x00, 0xc0, 0x4f, 0x79, 0x71, 0xe0}};
// The transport stream between a tuner and a receiver, KSDATAFORMAT_SUBTYPE_BDA_MPEG2_TRANSPORT
// {F4AEB342-0329-4fdd-A8FD-4AFF4926C978}.
constexpr GUID kSubtypeBdaTransport = {0xf4aeb342, 0x0329, 0x4fdd, {0xa8, 0xfd, 0x4a, 0xff, 0x49, 0x26, 0xc9, 0x78}};

} // namespace lab
