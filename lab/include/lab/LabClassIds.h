// Class IDs of the lab's own COM classes (the pieces that stand in for Windows components use
// Windows' class IDs instead).
#pragma once

#include <windows.h>

namespace lab {

// {F19DD49F-12B0-4D4B-8CF0-09AECC2CDF40}
constexpr CLSID CLSID_LabWebcam = {0xf19dd49f, 0x12b0, 0x4d4b, {0x8c, 0xf0, 0x09, 0xae, 0xcc, 0x2c, 0xdf, 0x40}};
// {8EC4F4B2-D948-4598-9D11-75EC744CBB74}
constexpr CLSID CLSID_LabColourConverter = {0x8ec4f4b2, 0xd948, 0x4598, {0x9d, 0x11, 0x75, 0xec, 0x74, 0x4c, 0xbb, 0x74}};
// {278E0009-0A54-4E4B-AE64-AA40B47B1FE2}
constexpr CLSID CLSID_LabMjpegDecompressor = {0x278e0009, 0x0a54, 0x4e4b, {0xae, 0x64, 0xaa, 0x40, 0xb4, 0x7b, 0x1f, 0xe2}};

} // namespace lab
