// Webcam frame capture speed on the lab's fastest YUY2 camera, at 640x480, 1280x720 and
// 1920x1080: the frames per second kept, the time to the first kept frame, and what keeping a
// frame costs on the streaming thread (the grabber callback) against its floor, one fresh
// allocation and one copy of the same bytes kept the same way, with the frames a camera at
// that rate would drop while the callback runs.
#include "LabDeviceRecord.h"

#include <ModuleRegistration.h>
#include <SampleGrabberCallback.h>
#include <Webcam.h>
#include <kel/Clock.h>
#include <kel/LogFactory.h>
#include <lab/LabControl.h>

#include <boost/shared_ptr.hpp>
#include <boost/checked_delete.hpp>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>
#ifdef SORVANE_FILL_WINE_SETUPAPI
#include <winesupport/WineSetupApi.h>
#endif

namespace {

const wchar_t kCamera[] = L"Lab Webcam HD";
const int kFramesPerSecond = 60;
const int kRepeats = 3;

struct Size {
    int width;
    int height;
};
const Size kSizes[] = {{640, 480}, {1280, 720}, {1920, 1080}};

// Real time: kel::Clock runs on the real clock unless a test switches it.
double nowSeconds()
{
    return static_cast<double>(kel::Clock::nowMicroseconds()) / 1e6;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Seconds one captureFrames(count) takes, from the call to its return; negative on failure.
double timeCapture(const ruvo::DiagDevice &device, unsigned long long count)
{
    sorvane::Webcam webcam(device, kel::String(L"Webcam benchmark"), 0);
    const double start = nowSeconds();
    try {
        webcam.captureFrames(count);
    } catch (const sorvane::CaptureException &e) {
        std::printf("  capture of %llu frames failed: %s\n", count, e.toString().toUtf8().c_str());
        return -1.0;
    }
    return nowSeconds() - start;
}

// A real sample of `bytes` from DirectShow's memory allocator, as the grabber would pass it.
class AllocatedSample {
public:
    explicit AllocatedSample(long bytes)
    {
        if (FAILED(m_allocator.CoCreateInstance(CLSID_MemoryAllocator, nullptr, CLSCTX_INPROC_SERVER)))
            return;
        ALLOCATOR_PROPERTIES wanted = {1, bytes, 1, 0};
        ALLOCATOR_PROPERTIES actual = {};
        if (FAILED(m_allocator->SetProperties(&wanted, &actual)) || FAILED(m_allocator->Commit()))
            return;
        if (FAILED(m_allocator->GetBuffer(&m_sample, nullptr, nullptr, 0)))
            return;
        BYTE *data = nullptr;
        m_sample->GetPointer(&data);
        std::memset(data, 0x80, static_cast<size_t>(bytes));
        m_sample->SetActualDataLength(bytes);
    }
    ~AllocatedSample()
    {
        m_sample.Release();
        if (m_allocator)
            m_allocator->Decommit();
    }
    IMediaSample *get() const { return m_sample; }

private:
    CComPtr<IMemAllocator> m_allocator;
    CComPtr<IMediaSample> m_sample;
};

struct CallbackCost {
    double microseconds; // per kept frame, median of the rounds
    int dropped;         // frame periods a camera would have had to skip, worst round
};

// What the callback spends keeping `frames` frames of the sample, and the frames a camera at
// `fps` would drop meanwhile: each call longer than a frame period lets that many frames pass.
CallbackCost callbackCost(IMediaSample *sample, int frames, int fps)
{
    const double periodSeconds = 1.0 / fps;
    std::vector<double> rounds;
    int worstDropped = 0;
    for (int round = 0; round < kRepeats; ++round) {
        CComPtr<ISampleGrabberCB> callback = new sorvane::SampleGrabberCallback(0, static_cast<uint64_t>(frames));
        int dropped = 0;
        const double start = nowSeconds();
        for (int i = 0; i < frames; ++i) {
            const double before = nowSeconds();
            callback->SampleCB(0.0, sample);
            dropped += static_cast<int>((nowSeconds() - before) / periodSeconds);
        }
        rounds.push_back((nowSeconds() - start) * 1e6 / frames);
        worstDropped = std::max(worstDropped, dropped);
    }
    return CallbackCost{median(rounds), worstDropped};
}

// The floor of keeping a frame: one fresh new[] and one copy per frame, each kept in a
// shared_ptr until the round ends, as the callback keeps its frames.
double freshCopyMicroseconds(IMediaSample *sample, int frames)
{
    BYTE *data = nullptr;
    sample->GetPointer(&data);
    const size_t bytes = static_cast<size_t>(sample->GetActualDataLength());
    std::vector<double> rounds;
    for (int round = 0; round < kRepeats; ++round) {
        std::vector<boost::shared_ptr<unsigned char>> kept;
        kept.reserve(static_cast<size_t>(frames));
        const double start = nowSeconds();
        for (int i = 0; i < frames; ++i) {
            unsigned char *copy = new unsigned char[bytes];
            std::memcpy(copy, data, bytes);
            kept.push_back(boost::shared_ptr<unsigned char>(copy, boost::checked_array_deleter<unsigned char>()));
        }
        rounds.push_back((nowSeconds() - start) * 1e6 / frames);
    }
    return median(rounds);
}

void benchSize(const ruvo::DiagDevice &device, const Size &size)
{
    lab::DeviceOverride capability(kCamera, L"format",
                                   L"YUY2 " + std::to_wstring(size.width) + L"x" + std::to_wstring(size.height) + L" " +
                                       std::to_wstring(kFramesPerSecond));
    const long bytes = static_cast<long>(size.width) * size.height * 2;
    // About a second of video, fewer frames for the largest size to bound the memory kept.
    const int frames = size.width >= 1920 ? 40 : kFramesPerSecond;

    // The rate frames are kept at: the time a long capture takes beyond a short one, so that
    // graph building and start-up count in neither.
    const int fewFrames = 10;
    std::vector<double> firstFrame;
    std::vector<double> fewTimes;
    std::vector<double> manyTimes;
    for (int i = 0; i < kRepeats; ++i) {
        firstFrame.push_back(timeCapture(device, 1));
        fewTimes.push_back(timeCapture(device, fewFrames));
        manyTimes.push_back(timeCapture(device, static_cast<unsigned long long>(frames)));
    }
    const double first = median(firstFrame);
    const double few = median(fewTimes);
    const double many = median(manyTimes);
    const double keptRate = few > 0 && many > few ? (frames - fewFrames) / (many - few) : 0.0;

    AllocatedSample sample(bytes);
    if (!sample.get()) {
        std::printf("  no sample of %ld bytes from the memory allocator\n", bytes);
        return;
    }
    const CallbackCost callback = callbackCost(sample.get(), frames, kFramesPerSecond);
    const double floor = freshCopyMicroseconds(sample.get(), frames);

    std::printf("%4dx%-4d YUY2 %d fps | first kept frame %7.1f ms | kept %5.1f fps | callback %8.1f us/frame, "
                "floor (new[] + copy) %8.1f us/frame, ratio %4.2f | dropped %d of %d\n",
                size.width, size.height, kFramesPerSecond, first * 1e3, keptRate, callback.microseconds, floor,
                floor > 0 ? callback.microseconds / floor : 0.0, callback.dropped, frames);
}

} // namespace

// Optional argument: a file for the library's detailed log.
int main(int argc, char **argv)
{
#ifdef SORVANE_FILL_WINE_SETUPAPI
    // As the host does, so that discovery meets the lab's devices as it does there.
    winesupport::fillWineSetupApiGaps(GetModuleHandleW(L"libSorvane.dll"));
#endif
    if (argc > 1) {
        kel::LogFactory::setLogFile(kel::String::fromUtf8(argv[1]));
        kel::LogFactory::setPriority(kel::LOG_DETAIL);
    }
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return 1;
    ruvo::DiagDevice device = sorvane::test::LabDeviceRecord::find(kCamera, ruvo::DeviceCapability::VideoCapture() |
                                                                                ruvo::DeviceCapability::Webcam());
    if (device.name().isEmpty()) {
        std::printf("the lab camera \"%ls\" is not registered in this prefix\n", kCamera);
        CoUninitialize();
        return 1;
    }
    std::printf(
        "Webcam capture on \"%ls\", median of %d runs. Kept fps: the frames a long capture keeps beyond\n"
        "a 10-frame one, over the time it takes beyond it. First kept frame: captureFrames(1), call to return.\n"
        "Floor: a fresh new[] and a copy per kept frame, kept as the callback keeps them. Dropped: frames a\n"
        "camera at that rate passes while the callback keeps one (calls longer than a frame period).\n",
        kCamera, kRepeats);
    for (const Size &size : kSizes)
        benchSize(device, size);
    CoUninitialize();
    return 0;
}
