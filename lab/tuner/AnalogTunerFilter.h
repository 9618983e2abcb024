// A simulated analog TV card, one capture filter as the device enumerator binds it: a video
// capture pin (the device's "format" lines, uncompressed only) and an audio capture pin, with
// the card's tuner (IAMTVTuner, see TvTunerControl) and crossbar (IAMCrossbar, see
// CrossbarControl) on the filter itself, where ICaptureGraphBuilder2::FindInterface finds them
// from the capture filter for a pin category or none (not for LOOK_UPSTREAM_ONLY, which skips
// the filter itself).
//
// Two device kinds of the description file:
//   analog-tuner    a TV card with tuner, crossbar and both capture pins
//   analog-capture  a capture card with crossbar and line inputs only, no IAMTVTuner
//
// A card whose tuner is a filter of its own ("tv-tuner", see TvTunerFilter) is an analog-capture
// device with "tuner.medium = {GUID}", the medium of that tuner's output: its capture filter then
// has an analog video input with that medium, where the capture graph builder connects the tuner.
//
// Device keys besides those of the tuner and crossbar:
//   format = <VideoFormat>   one line per capability (RGB24, RGB32, YUY2, UYVY)
//   fault.run = <HRESULT>    Run of the filter fails with it (device in use ...)
//   fault.bind = <HRESULT>   IPersistPropertyBag::Load fails
// Journal: "Pause", "Run", "Stop", "Run failed 0x<hr>", "Bind failed 0x<hr>" and the capture
// pin's "Delivered <n>".
#pragma once

#include "common/CapturePin.h"
#include "common/DeviceFilter.h"
#include "tuner/CrossbarControl.h"
#include "tuner/MediumPins.h"
#include "tuner/TunerAudioPin.h"
#include "tuner/TunerPicture.h"
#include "tuner/TvTunerControl.h"

namespace lab {

class AnalogTunerFilter : public DeviceFilter {
public:
    AnalogTunerFilter(const CLSID &clsid, bool hasTuner);
    ~AnalogTunerFilter();

    static HRESULT createTunerCard(REFIID iid, void **out);
    static HRESULT createCaptureCard(REFIID iid, void **out);

    int pinCount() override { return m_tunerUpstream ? 3 : 2; }
    BasePin *pin(int index) override;

protected:
    void *queryExtra(REFIID iid) override;
    HRESULT configure(const std::shared_ptr<DeviceState> &device) override;
    std::vector<StreamingPin *> streamingPins() override;
    bool isLiveSource() const override { return true; }

private:
    static HRESULT create(const CLSID &clsid, bool hasTuner, REFIID iid, void **out);
    void stopStreaming();

    const bool m_hasTuner;
    TvTunerControl m_tuner;
    CrossbarControl m_crossbar;
    TunerPicture m_picture;
    CapturePin m_video;
    TunerAudioPin m_audio;
    MediumInputPin m_tunerInput;
    bool m_tunerUpstream = false;
};

} // namespace lab
