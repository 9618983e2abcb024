// Class IDs of the lab's analog TV cards.
#pragma once

#include <windows.h>

namespace lab {

// A TV card: tuner (IAMTVTuner), crossbar, video and audio capture. {AA58A0DF-BDE1-47D3-8878-CFAB9099C5A9}
constexpr CLSID CLSID_LabAnalogTuner = {0xaa58a0df, 0xbde1, 0x47d3, {0x88, 0x78, 0xcf, 0xab, 0x90, 0x99, 0xc5, 0xa9}};
// A capture card with line inputs and a crossbar but no tuner. {8409907D-5126-44DC-BC7B-6FE78CD9E864}
constexpr CLSID CLSID_LabAnalogCapture = {0x8409907d, 0x5126, 0x44dc, {0xbc, 0x7b, 0x6f, 0xe7, 0x8c, 0xd9, 0xe8, 0x64}};

// The TV tuner filter of a card whose capture filter has none of its own (AM_KSCATEGORY_TVTUNER).
// {3F1C6B2E-8A47-4D09-B5E2-71C0D94A6E38}
constexpr CLSID CLSID_LabTvTunerFilter = {0x3f1c6b2e, 0x8a47, 0x4d09, {0xb5, 0xe2, 0x71, 0xc0, 0xd9, 0x4a, 0x6e, 0x38}};

// The device category of TV tuner filters, AM_KSCATEGORY_TVTUNER. {A799A800-A46D-11D0-A18C-00A02401DCD4}
constexpr GUID kTvTunerCategory = {0xa799a800, 0xa46d, 0x11d0, {0xa1, 0x8c, 0x00, 0xa0, 0x24, 0x01, 0xdc, 0xd4}};

} // namespace lab
