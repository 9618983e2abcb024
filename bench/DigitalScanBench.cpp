// Wall time of whole digital scans on the lab's BDA cards against the sum of the sleeps the
// scan must make: a Clear QAM scan over cable channels 3 and 4 (all scrambled, then a clear
// program) and a DVB-T scan of Germany's channels 8 and 9 (nothing, then UHF 21). The clock
// is the framework's manual clock with every sleep waited in full, so the sleeps are both
// real and recorded.
#include "LabDeviceRecord.h"

#include <ClearQAMTuner.h>
#include <DVBTuner.h>
#include <ModuleRegistration.h>
#include <SdkGuids.h>
#include <kel/Clock.h>
#include <ruvo/DiagModule.h>
#include <ruvo/RecordingBackend.h>

#include <atlbase.h>
#include <chrono>
#include <cstdio>
#include <dshow.h>
#include <functional>
#ifdef SORVANE_FILL_WINE_SETUPAPI
#include <winesupport/WineSetupApi.h>
#endif

namespace {

void setParameter(const char *key, const ruvo::Value &value)
{
    ruvo::Parameter *parameter = ruvo::DiagModule::findParameter(kel::String(key));
    if (parameter)
        parameter->set(value);
}

void measure(const char *what, const wchar_t *tuner, const std::function<void(const ruvo::DiagDevice &)> &scan)
{
    const ruvo::DiagDevice device = sorvane::test::LabDeviceRecord::find(
        tuner, ruvo::DeviceCapability::VideoCapture() | ruvo::DeviceCapability::DigitalTVTuner());
    if (device.name().isEmpty()) {
        std::printf("  %-44s the lab tuner \"%ls\" is not registered here\n", what, tuner);
        return;
    }
    kel::Clock::useManualClock(true);
    kel::Clock::setManualRealShare(100);
    const auto start = std::chrono::steady_clock::now();
    bool passed = true;
    try {
        scan(device);
    } catch (const sorvane::CaptureException &) {
        passed = false;
    }
    const double wallMs = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    double sleptMs = 0;
    const kel::Array<uint32_t> sleeps = kel::Clock::recordedSleeps();
    for (int i = 0; i < sleeps.size(); ++i)
        sleptMs += sleeps[i];
    kel::Clock::useManualClock(false);
    std::printf("  %-44s wall %8.0f ms, required sleeps %8.0f ms, overhead %5.1f %%%s\n", what, wallMs, sleptMs,
                sleptMs > 0 ? (wallMs - sleptMs) * 100.0 / sleptMs : 0.0, passed ? "" : " (did not pass)");
}

} // namespace

int main()
{
#ifdef SORVANE_FILL_WINE_SETUPAPI
    // As the host does, so that discovery meets the lab's devices as it does there.
    winesupport::fillWineSetupApiGaps(GetModuleHandleW(L"libSorvane.dll"));
#endif
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 1;
    ruvo::RecordingBackend backend;
    ruvo::DiagModule::setBackend(&backend);
    setParameter("CheckTVCable", ruvo::Value::fromBool(false));
    std::printf("Digital scans on the lab's BDA cards (wall time against the sleeps the scan requires)\n");

    setParameter("DigitalStartChannel", ruvo::Value(3u));
    setParameter("DigitalEndChannel", ruvo::Value(4u));
    measure("Clear QAM, cable channels 3-4", L"Lab ATSC QAM Tuner", [](const ruvo::DiagDevice &device) {
        sorvane::ClearQAMTuner(device, kel::String(L"bench")).checkTVSignal();
    });

    setParameter("Country", ruvo::Value(kel::String(L"de")));
    setParameter("DigitalStartChannel", ruvo::Value(8u));
    setParameter("DigitalEndChannel", ruvo::Value(9u));
    measure("DVB-T, Germany channels 8-9", L"Lab DVB-T Tuner",
            [](const ruvo::DiagDevice &device) { sorvane::DVBTuner(device, kel::String(L"bench")).checkTVSignal(); });

    ruvo::DiagModule::setBackend(nullptr);
    CoUninitialize();
    return 0;
}
