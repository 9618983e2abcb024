// Class IDs of the lab's analog TV cards.
#pragma once

#include <windows.h>

namespace lab {

// A TV card: tuner (IAMTVTuner), crossbar, video and audio capture. {AA58A0DF-BDE1-47D3-8878-CFAB9099C5A9}
constexpr CLSID CLSID_LabAnalogTuner = {0xaa58a0df, 0xbde1, 0x47d3, {0x88, 0x78, 0xcf, 0xab, 0x90, 0x99, 0xc5, 0xa9}};
// A capture card with line inputs and a crossbar but no tuner. {8409907D-5126-44DC-BC7B-6FE78CD9E864}
constexpr CLSID CLSID_LabAnalogCapture = {0x8409907d, 0x5126, 0x44dc, {0xbc, 0x7b, 0x6f, 0xe7, 0x8c, 0xd9, 0xe8, 0x64}};

} // namespace lab
