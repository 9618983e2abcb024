// Small helpers for tests of the lab's BDA system components: VARIANT and BSTR owners and the
// tune requests an application builds.
#pragma once

#include <windows.h>
#include <tuner.h>

#include <string>
#include <vector>

#include <atlbase.h>

namespace labtest {

// A VARIANT holding a BSTR or a long for a call, cleared on scope exit.
class TestVariant {
public:
    explicit TestVariant(const wchar_t *text);
    explicit TestVariant(long value);
    ~TestVariant();
    TestVariant(const TestVariant &) = delete;
    TestVariant &operator=(const TestVariant &) = delete;
    const VARIANT &get() const { return m_value; }

private:
    VARIANT m_value;
};

std::wstring uniqueName(ITuningSpace *space);
std::wstring networkType(ITuningSpace *space);
// The system tuning spaces container's space of that name, or null.
CComPtr<ITuningSpace> systemSpace(const wchar_t *name);
// Unique names an enumerator lists, in order.
std::vector<std::wstring> names(IEnumTuningSpaces *spaces);
// A request of that system space, its channel set, with an ATSC locator of that frequency
// (kHz, -1 none), physical channel and modulation.
CComPtr<ITuneRequest> atscRequest(const wchar_t *space, long channel, long frequency, long physical,
                                  ModulationType modulation, long program);
CComPtr<ITuneRequest> dvbtRequest(long frequency, long bandwidth);

} // namespace labtest
