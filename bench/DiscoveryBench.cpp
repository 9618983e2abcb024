// Device enumeration time for 1, 16, 64 and 256 simulated webcams (the lab's own devices
// hidden), printed per device: the whole of CaptureDevice::enumerateDevices, and its moniker
// and SetupAPI passes alone, so the cost of merging them shows as the difference. The devices
// are written to the prefix-wide registry: run it while no test runs.
//
// Under Wine the gap filler builds each device's list from its installed driver's INF only
// (Wine itself would read every INF of C:\windows\inf), but the benchmark's cameras share one
// INF that lists them all, and Wine parses that whole INF each time a driver is listed or
// detailed (several times per device), the likeliest reason the SetupAPI pass still grows with
// the number of devices. The second series gives each camera a package of its own to tell
// that cost from the library's.
#include <CaptureDevice.h>
#include <DSMoniker.h>
#include <SetupApiDevice.h>
#include <SmartCoInitialize.h>
#include <kel/Clock.h>
#include <lab/ScopedLabDevices.h>
#include <winesupport/WineSetupApi.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

namespace {

const int kDeviceCounts[] = {1, 16, 64, 256};
const int kRepeats = 3;

double nowSeconds()
{
    return static_cast<double>(kel::Clock::nowMicroseconds()) / 1e6;
}

// The median of kRepeats runs, in seconds.
double timed(const std::function<void()> &run)
{
    std::vector<double> times;
    for (int i = 0; i < kRepeats; ++i) {
        const double start = nowSeconds();
        run();
        times.push_back(nowSeconds() - start);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

std::wstring hex4(int value)
{
    wchar_t digits[5];
    const wchar_t *const hex = L"0123456789abcdef";
    for (int i = 3; i >= 0; --i, value >>= 4)
        digits[i] = hex[value & 0xF];
    digits[4] = L'\0';
    return digits;
}

enum class Packages { Shared, OneEach };

// `count` USB webcams of one maker, in one driver package that lists them all or in a package
// each (a driver file of their own).
std::wstring webcams(int count, Packages packages)
{
    std::wstring description;
    for (int i = 0; i < count; ++i) {
        description += L"[webcam]\nname = Bench Camera " + std::to_wstring(i) + L"\n";
        description += L"path = \\\\?\\usb#vid_7e57&pid_" + hex4(i) + L"&mi_00#7&" + hex4(i) +
                       L"&0&0000#{65e8773d-8f56-11d0-a3b9-00a0c9223196}\\global\n";
        const std::wstring file = packages == Packages::Shared ? L"benchcam" : L"benchcam" + hex4(i);
        description +=
            L"manufacturer = Bench Maker\ndriver.file = " + file + L".sys\nformat = YUY2 320x240 30\nprivacy = none\n";
    }
    return description;
}

void measure(int count, Packages packages)
{
    lab::ScopedLabDevices devices(webcams(count, packages), lab::ScopedLabDevices::LabDevices::Hidden);
    kel::Array<sorvane::CaptureDevice> found;
    const double total = timed([&] {
        found.clear();
        sorvane::CaptureDevice::enumerateDevices(found);
    });
    const double monikers = timed([] {
        kel::Array<sorvane::DSMoniker> out;
        sorvane::DSMoniker::enumerateMonikers(out, sorvane::CaptureStreamType::ALL());
    });
    const double setupApi = timed([] {
        kel::Array<sorvane::SetupApiDevType> classes;
        classes.add(sorvane::SetupApiDevType::MEDIA());
        classes.add(sorvane::SetupApiDevType::IMAGE());
        kel::Array<sorvane::SetupApiEnumType> enumerators;
        enumerators.add(sorvane::SetupApiEnumType::PCI());
        enumerators.add(sorvane::SetupApiEnumType::USB());
        kel::Array<sorvane::SetupApiDevice> out;
        sorvane::SetupApiDevice::enumerateDevices(out, classes, enumerators);
    });
    // What the two passes alone do not account for: the merge, copies, and the machine's noise.
    const double rest = std::max(0.0, total - monikers - setupApi);
    std::printf("%4d devices (%3d found)  total %9.2f ms  per device %8.3f ms  "
                "[monikers %7.3f  setupapi %7.3f  merge and rest %7.3f ms per device]\n",
                count, found.size(), total * 1e3, total * 1e3 / count, monikers * 1e3 / count, setupApi * 1e3 / count,
                rest * 1e3 / count);
}

} // namespace

int main()
{
    winesupport::fillWineSetupApiGaps(GetModuleHandleW(L"libSorvane.dll"));
    sorvane::SmartCoInitialize com;
    if (!com.initialize()) {
        std::printf("COM did not start\n");
        return 1;
    }
    std::printf("CaptureDevice::enumerateDevices, median of %d runs\n", kRepeats);
    std::printf("One driver package for all the cameras:\n");
    for (int count : kDeviceCounts)
        measure(count, Packages::Shared);
    // Wine's INF parse of a package grows with the models it lists; with a package each, what
    // grows with the count is the library's own work.
    std::printf("A driver package for each camera:\n");
    for (int count : kDeviceCounts)
        measure(count, Packages::OneEach);
    com.uninitialize();
    return 0;
}
