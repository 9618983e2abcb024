// The host's judgement of the picture a capture delivered (PictureHealth), shown as one line
// beside the library's result, kept in the report's "picture" member, and, with --strict,
// the result itself: a bad picture is then a FAIL.
#pragma once

#include "CapturedFrames.h"
#include "Image.h"

#include <ruvo/DiagDevice.h>
#include <ruvo/TestResult.h>

#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class CommandContext;

class PictureCheck {
public:
    // Frames the host grabs after a preview or recording to judge the device's picture.
    static const unsigned kSampleFrames = 5;

    // Judges frames the library returned; `result` is the library's, returned unchanged
    // unless --strict finds the picture bad.
    static ruvo::TestResult judge(CommandContext &context, const CapturedFrames &frames,
                                  const ruvo::TestResult &result);
    // A preview returns no frames: after a passing preview the host captures a short sample
    // from the same device and judges that; a TV tuner's sample is a short recording.
    static ruvo::TestResult judgeSample(CommandContext &context, const ruvo::DiagDevice &device,
                                        const ruvo::TestResult &result);
    // A recording is judged on the frames of the AVI file it left, whatever the device.
    static const unsigned kRecordingFrames = 30;
    static ruvo::TestResult judgeRecording(CommandContext &context, const std::wstring &path,
                                           const ruvo::TestResult &result);
    // Top-down BGR pictures of the captured frames (JPEG frames decoded).
    static std::vector<Image> decode(const CapturedFrames &frames);

private:
    static ruvo::TestResult judgeTunerSample(CommandContext &context, const ruvo::DiagDevice &device,
                                             const ruvo::TestResult &result);
    static ruvo::TestResult judgeFile(CommandContext &context, const std::wstring &source, const std::wstring &path,
                                      const ruvo::TestResult &result);
    static ruvo::TestResult conclude(CommandContext &context, const std::wstring &source,
                                     const std::vector<Image> &pictures, const ruvo::TestResult &result);
    static void notJudged(CommandContext &context, const std::wstring &why);
};

} // namespace diag
} // namespace sorvane
