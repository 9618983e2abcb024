#include "PictureCheck.h"
#include "CaptureClasses.h"
#include "CommandContext.h"
#include "FrameConverter.h"
#include "ImageCodec.h"
#include "JpegScanner.h"
#include "JsonWriter.h"
#include "PictureHealth.h"
#include "RecordedFrames.h"
#include "RunReport.h"
#include "Terminal.h"

#include <CaptureException.h>

namespace sorvane {
namespace diag {

std::vector<Image> PictureCheck::decode(const CapturedFrames &frames)
{
    std::vector<Image> pictures;
    if (frames.layout == CapturedFrames::JPEG) {
        ImageCodec codec;
        const size_t limit = static_cast<size_t>(frames.width) * frames.height * 3 + 4096;
        for (const boost::shared_ptr<unsigned char> &frame : frames.buffers) {
            const size_t size = JpegScanner::length(frame.get(), limit);
            if (size)
                pictures.push_back(codec.decodeJpeg(frame.get(), size));
        }
        return pictures;
    }
    if (!FrameConverter::isRaw(frames.layout))
        return pictures;
    for (const boost::shared_ptr<unsigned char> &frame : frames.buffers)
        pictures.push_back(
            FrameConverter::toImage(frame.get(), frames.layout, frames.width, frames.height, frames.bottomUp));
    return pictures;
}

ruvo::TestResult PictureCheck::judge(CommandContext &context, const CapturedFrames &frames,
                                     const ruvo::TestResult &result)
{
    if (result != ruvo::TestResult::PASS())
        return result;
    return conclude(context, L"capture", decode(frames), result);
}

ruvo::TestResult PictureCheck::judgeSample(CommandContext &context, const ruvo::DiagDevice &device,
                                           const ruvo::TestResult &result)
{
    if (result != ruvo::TestResult::PASS())
        return result;
    if (CaptureClasses::isTuner(device))
        return judgeTunerSample(context, device, result);
    context.terminal().line(L"Capturing " + std::to_wstring(kSampleFrames) + L" frames to judge the picture...");
    CapturedFrames sample;
    try {
        sample = CaptureClasses::captureFrames(device, CommandContext::windowTitle(device),
                                               CommandContext::captureDelay(), kSampleFrames);
    } catch (const CaptureException &) {
        // The library's test has passed and keeps its result; only the judgement is missing.
        notJudged(context, L"the sample of frames could not be captured");
        return result;
    }
    return conclude(context, L"sample", decode(sample), result);
}

// A tuner grabbed as a webcam would show its card's first input; recorded, it is set up as
// the preview was (tuner input routed, channel untouched), so the recording is the sample.
ruvo::TestResult PictureCheck::judgeTunerSample(CommandContext &context, const ruvo::DiagDevice &device,
                                                const ruvo::TestResult &result)
{
    context.terminal().line(L"Recording a few seconds to judge the picture...");
    const std::wstring name = L"sorvane-diag-sample-" + std::to_wstring(GetCurrentProcessId());
    try {
        CaptureClasses::captureToFile(device, CommandContext::windowTitle(device), CommandContext::captureDelay(),
                                      name);
    } catch (const CaptureException &) {
        notJudged(context, L"the sample recording could not be made");
        return result;
    }
    const std::wstring path = CaptureClasses::recordingPath(name);
    const ruvo::TestResult judged = judgeFile(context, L"sample", path, result);
    DeleteFileW(path.c_str());
    return judged;
}

ruvo::TestResult PictureCheck::judgeRecording(CommandContext &context, const std::wstring &path,
                                              const ruvo::TestResult &result)
{
    if (result != ruvo::TestResult::PASS())
        return result;
    return judgeFile(context, L"recording", path, result);
}

ruvo::TestResult PictureCheck::judgeFile(CommandContext &context, const std::wstring &source, const std::wstring &path,
                                         const ruvo::TestResult &result)
{
    std::wstring problem;
    const std::vector<Image> pictures = decode(RecordedFrames::read(path, kRecordingFrames, problem));
    if (pictures.empty()) {
        notJudged(context, L"the recording could not be read (" + problem + L")");
        return result;
    }
    return conclude(context, source, pictures, result);
}

ruvo::TestResult PictureCheck::conclude(CommandContext &context, const std::wstring &source,
                                        const std::vector<Image> &pictures, const ruvo::TestResult &result)
{
    const PictureHealth::Measures measures = PictureHealth::measure(pictures);
    const PictureHealth::Verdict verdict = PictureHealth::judge(measures);
    const bool strict = context.options().has(L"--strict");
    const bool bad = verdict != PictureHealth::GOOD;
    context.terminal().line(PictureHealth::sentence(verdict, measures));
    context.report().addSection(L"picture", [=](JsonWriter &json) {
        json.beginObject();
        json.field(L"verdict", PictureHealth::name(verdict));
        json.field(L"source", source);
        json.field(L"frames", static_cast<int>(measures.frames));
        json.field(L"meanLuma", measures.meanLuma);
        json.field(L"spread", measures.spread);
        json.field(L"structure", measures.structure);
        json.field(L"change", measures.change);
        json.field(L"identicalPairs", static_cast<int>(measures.identicalPairs));
        json.field(L"strict", strict);
        json.endObject();
    });
    if (!bad || !strict)
        return result;
    context.say(L"--strict: a " + std::wstring(PictureHealth::name(verdict)) + L" picture fails the test.");
    return ruvo::TestResult::FAIL();
}

void PictureCheck::notJudged(CommandContext &context, const std::wstring &why)
{
    context.terminal().line(L"Picture: not judged: " + why + L".");
    context.report().addSection(L"picture", [=](JsonWriter &json) {
        json.beginObject();
        json.field(L"verdict", L"not judged");
        json.field(L"reason", why);
        json.endObject();
    });
}

} // namespace diag
} // namespace sorvane
