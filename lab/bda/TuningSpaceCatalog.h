// The tuning spaces the lab's system offers, with the settings Windows installs for them:
// "ATSC" (antenna, 8VSB), "ATSCCable", "ClearQAM" (cable, 256QAM), "Digital Cable" (cable,
// 256QAM, the digital cable network type) and "DVB-T" (terrestrial, 8 MHz).
//
// Which of them the system holds is the "spaces" key of the device "System Tuning Spaces": a
// comma-separated list of unique names (all five when unset; "<name> as <other name>" installs
// a space under another's unique name), so a test can take the cable spaces or the DVB-T space
// away with an override, in-process:
//   lab::DeviceOverride scope(L"System Tuning Spaces", L"spaces", L"ATSC, DVB-T");
// The same device carries the tuning spaces' faults and journal.
#pragma once

#include <windows.h>
#include <tuner.h>

#include <memory>
#include <string>
#include <vector>

#include <atlbase.h>

namespace lab {

class DeviceState;

class TuningSpaceCatalog {
public:
    static const wchar_t kDeviceName[];

    static std::shared_ptr<DeviceState> device();
    // Unique names of the spaces the system holds now, in the system's order.
    static std::vector<std::wstring> installedNames();
    // A new tuning space of an entry of the list with its default settings; E_INVALIDARG for a
    // name the lab does not know. "Digital Cable as ATSCCable" makes a Digital Cable space
    // whose unique name is ATSCCable (two spaces of one name, as a careless installer leaves).
    static HRESULT create(const std::wstring &entry, CComPtr<ITuningSpace> &space);
    // Whether a space may create a tune request now: the injected fault.CreateTuneRequest, or
    // S_OK; journals "CreateTuneRequest <space>" either way.
    static HRESULT admitTuneRequest(const std::wstring &spaceName);
    // A space's unique name; empty when it has none.
    static std::wstring uniqueNameOf(ITuningSpace *space);

private:
    static HRESULT createInstalled(const std::wstring &uniqueName, CComPtr<ITuningSpace> &space);
};

} // namespace lab
