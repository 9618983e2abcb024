// Class IDs of the lab's own COM classes (the pieces that stand in for Windows components use
// Windows' class IDs instead).
#pragma once

#include <windows.h>

namespace lab {

// {F19DD49F-12B0-4D4B-8CF0-09AECC2CDF40}
constexpr CLSID CLSID_LabWebcam = {0xf19dd49f, 0x12b0, 0x4d4b, {0x8c, 0xf0, 0x09, 0xae, 0xcc, 0x2c, 0xdf, 0x40}};
// {8EC4F4B2-D948-4598-9D11-75EC744CBB74}
constexpr CLSID CLSID_LabColourConverter = {
    0x8ec4f4b2, 0xd948, 0x4598, {0x9d, 0x11, 0x75, 0xec, 0x74, 0x4c, 0xbb, 0x74}};
// {278E0009-0A54-4E4B-AE64-AA40B47B1FE2}
constexpr CLSID CLSID_LabMjpegDecompressor = {
    0x278e0009, 0x0a54, 0x4e4b, {0xae, 0x64, 0xaa, 0x40, 0xb4, 0x7b, 0x1f, 0xe2}};

} // namespace lab

namespace lab {

// A BDA tuner filter (KSCATEGORY_BDA_NETWORK_TUNER). {6A3C1E52-0F5B-4C0B-9D34-2E7B81F4A6C1}
constexpr CLSID CLSID_LabBdaTuner = {0x6a3c1e52, 0x0f5b, 0x4c0b, {0x9d, 0x34, 0x2e, 0x7b, 0x81, 0xf4, 0xa6, 0xc1}};
// A BDA receiver (capture) filter (KSCATEGORY_BDA_RECEIVER_COMPONENT). {C4D2B7A9-51E3-4F86-A0C7-93D15E2B8F04}
constexpr CLSID CLSID_LabBdaReceiver = {0xc4d2b7a9, 0x51e3, 0x4f86, {0xa0, 0xc7, 0x93, 0xd1, 0x5e, 0x2b, 0x8f, 0x04}};
// The MPEG-2 video decoder behind the demultiplexer's video pin. {3E8F0B6D-7A24-4C19-B5E2-6D0F9A1C7B38}
constexpr CLSID CLSID_LabMpeg2VideoDecoder = {
    0x3e8f0b6d, 0x7a24, 0x4c19, {0xb5, 0xe2, 0x6d, 0x0f, 0x9a, 0x1c, 0x7b, 0x38}};

} // namespace lab
