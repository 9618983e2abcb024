// The control functions tests call (declared in lab/LabControl.h).
#include "lab/LabControl.h"

#include <cwchar>

#include "common/DeviceRegistry.h"
#include "bdadevice/TransportStreamPin.h"
#include "common/LabModule.h"

namespace {

int copyOut(const std::wstring &text, wchar_t *buffer, int capacity)
{
    const int length = static_cast<int>(text.size());
    if (buffer && capacity > length)
        wmemcpy(buffer, text.c_str(), text.size() + 1);
    return length;
}

} // namespace

LAB_API HRESULT WINAPI LabSetOverride(const wchar_t *device, const wchar_t *key, const wchar_t *value)
{
    if (!device || !key)
        return E_POINTER;
    const auto state = lab::DeviceRegistry::device(device);
    if (value)
        state->setOverride(key, value);
    else
        state->removeOverride(key);
    return S_OK;
}

LAB_API int WINAPI LabGetOverride(const wchar_t *device, const wchar_t *key, wchar_t *buffer, int capacity)
{
    std::wstring value;
    if (!device || !key || !lab::DeviceRegistry::device(device)->findOverride(key, value))
        return -1;
    return copyOut(value, buffer, capacity);
}

LAB_API int WINAPI LabJournalSize(const wchar_t *device)
{
    return device ? static_cast<int>(lab::DeviceRegistry::device(device)->journal().size()) : 0;
}

LAB_API int WINAPI LabJournalEntry(const wchar_t *device, int index, wchar_t *buffer, int capacity)
{
    if (!device || index < 0)
        return -1;
    const std::vector<std::wstring> entries = lab::DeviceRegistry::device(device)->journal();
    if (static_cast<size_t>(index) >= entries.size())
        return -1;
    return copyOut(entries[static_cast<size_t>(index)], buffer, capacity);
}

LAB_API void WINAPI LabClearJournal(const wchar_t *device)
{
    if (device)
        lab::DeviceRegistry::device(device)->clearJournal();
}

LAB_API long long WINAPI LabSamplesDelivered(const wchar_t *device)
{
    return device ? lab::DeviceRegistry::device(device)->delivered() : 0;
}

LAB_API long long WINAPI LabTransportPeriods()
{
    return lab::TransportStreamPin::periodsBegun();
}

LAB_API long WINAPI LabTransportStreams()
{
    return lab::TransportStreamPin::streamsRunning();
}

LAB_API long WINAPI LabLiveObjects()
{
    return lab::LabModule::liveObjects();
}

LAB_API long WINAPI LabLiveThreads()
{
    return lab::LabModule::liveThreads();
}
