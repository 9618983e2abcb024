// The one place where the host constructs the library's capture classes and calls their
// public operations, as a test module would. Each call returns normally on PASS and
// throws sorvane::CaptureException otherwise.
#pragma once

#include "CapturedFrames.h"

#include <StreamHealth.h>
#include <windows.h>
#include <ruvo/DiagDevice.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class CaptureClasses {
public:
    // Tuners are captured by AnalogTuner, every other device by Webcam.
    static bool isTuner(const ruvo::DiagDevice &device);

    static CapturedFrames captureFrames(const ruvo::DiagDevice &device, const std::wstring &title,
                                        unsigned captureDelay, unsigned count);
    // A tuner shows its TV picture; any other device is previewed as a webcam.
    static void captureToScreen(const ruvo::DiagDevice &device, const std::wstring &title, unsigned captureDelay);
    static void captureToFile(const ruvo::DiagDevice &device, const std::wstring &title, unsigned captureDelay,
                              const std::wstring &fileName);
    static void checkTVSignal(const ruvo::DiagDevice &device, const std::wstring &title);
    static void checkFMRadioSignal(const ruvo::DiagDevice &device, const std::wstring &title);

    // The digital tuners, in the order of the host's commands.
    enum class DigitalKind { ATSC, CLEARQAM, DVBT, OCUR };
    // The transport stream a digital scan ended on: the channel it found, or the last one it
    // tried; and where the scan's channels are.
    struct StreamReport {
        StreamHealth health;
        int quality = 0;
        // The stream's bytes as the library received them (none without a sample grabber).
        std::vector<unsigned char> bytes;
        bool fromFoundChannel = false;
        double durationMs = 0.0;
        // DVB-T and DTMB: the frequency in kHz of each channel number the scan used (0 where none).
        std::vector<uint32_t> channelFrequencies;
        bool isDTMB = false;
    };
    // Fills `report` whether the scan passes or throws.
    static void checkDigitalTVSignal(DigitalKind kind, const ruvo::DiagDevice &device, const std::wstring &title,
                                     StreamReport &report);
    // Whether the kind's scan graph has a sample grabber, and so keeps the stream it ended on.
    static bool scanKeepsStream(DigitalKind kind);
    // For the kinds whose scan keeps no stream: `channel` tuned once more, as the scan tunes it,
    // in a graph with a sample grabber (ChannelStreamCapture), kept for `seconds` unless `watch`
    // (called with the seconds so far) ends it earlier. Fills `report`; returns the graph's Run
    // failure, else S_OK. Throws CaptureException when the graph cannot be built.
    static HRESULT captureChannelStream(DigitalKind kind, const ruvo::DiagDevice &device, const std::wstring &title,
                                        int channel, double seconds, const std::function<bool(double)> &watch,
                                        StreamReport &report);

    // Where captureToFile leaves its recording: "<temp>\<fileName>.avi".
    static std::wstring recordingPath(const std::wstring &fileName);
};

} // namespace diag
} // namespace sorvane
