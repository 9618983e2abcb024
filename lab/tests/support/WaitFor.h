// Waiting on what the lab reports (journal entries, sample counts) instead of sleeping for a
// while and counting afterwards.
#pragma once

#include <windows.h>

#include <functional>

#include "lab/LabControl.h"

namespace labtest {

// Polls `condition` until it holds. The limit only keeps a broken lab from hanging the test
// program; no test measures time with it.
inline bool waitFor(const std::function<bool()> &condition, DWORD limitMilliseconds = 20000)
{
    const ULONGLONG giveUpAt = GetTickCount64() + limitMilliseconds;
    while (!condition()) {
        if (GetTickCount64() > giveUpAt)
            return false;
        Sleep(1);
    }
    return true;
}

// Waits until the device has delivered more than `count` samples.
inline bool waitForSamplesBeyond(const wchar_t *device, long long count)
{
    return waitFor([device, count] { return LabSamplesDelivered(device) > count; });
}

} // namespace labtest
