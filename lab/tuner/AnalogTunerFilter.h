// A simulated analog TV card, one capture filter as the device enumerator binds it: a video
// capture pin (the device's "format" lines, uncompressed only) and an audio capture pin, with
// the card's tuner (IAMTVTuner, see TvTunerControl) and crossbar (IAMCrossbar, see
// CrossbarControl) on the filter itself, where ICaptureGraphBuilder2::FindInterface finds them
// from the capture filter whatever pin category it is asked for.
//
// Two device kinds of the description file:
//   analog-tuner    a TV card with tuner, crossbar and both capture pins
//   analog-capture  a capture card with crossbar and line inputs only, no IAMTVTuner
//
// Device keys besides those of the tuner and crossbar:
//   format = <VideoFormat>   one line per capability (RGB24, RGB32, YUY2, UYVY)
//   fault.run = <HRESULT>    Pause/Run of the filter fail with it
//   fault.bind = <HRESULT>   IPersistPropertyBag::Load fails
// Journal: "Pause", "Run", "Stop", "Run failed 0x<hr>", "Bind failed 0x<hr>" and the capture
// pin's "Delivered <n>".
#pragma once

#include <memory>

#include "common/BaseFilter.h"
#include "common/CapturePin.h"
#include "common/DeviceState.h"
#include "tuner/CrossbarControl.h"
#include "tuner/TunerAudioPin.h"
#include "tuner/TunerPicture.h"
#include "tuner/TvTunerControl.h"

namespace lab {

class AnalogTunerFilter : public BaseFilter, public IPersistPropertyBag {
public:
    AnalogTunerFilter(const CLSID &clsid, bool hasTuner);
    ~AnalogTunerFilter();

    static HRESULT createTunerCard(REFIID iid, void **out);
    static HRESULT createCaptureCard(REFIID iid, void **out);

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override { return BaseFilter::QueryInterface(iid, out); }
    STDMETHODIMP_(ULONG) AddRef() override { return BaseFilter::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return BaseFilter::Release(); }
    STDMETHODIMP GetClassID(CLSID *clsid) override { return BaseFilter::GetClassID(clsid); }

    // IPersistPropertyBag
    STDMETHODIMP InitNew() override;
    STDMETHODIMP Load(IPropertyBag *bag, IErrorLog *log) override;
    STDMETHODIMP Save(IPropertyBag *bag, BOOL clearDirty, BOOL saveAll) override;

    int pinCount() override { return 2; }
    BasePin *pin(int index) override;

protected:
    void *queryExtra(REFIID iid) override;
    HRESULT onPause(bool fromStopped) override;
    HRESULT onRun(REFERENCE_TIME start) override;
    void onStop() override;
    bool isLiveSource() const override { return true; }

private:
    static HRESULT create(const CLSID &clsid, bool hasTuner, REFIID iid, void **out);
    HRESULT configure(const std::shared_ptr<DeviceState> &device);
    void stopStreaming();

    const bool m_hasTuner;
    TvTunerControl m_tuner;
    CrossbarControl m_crossbar;
    TunerPicture m_picture;
    CapturePin m_video;
    TunerAudioPin m_audio;
    std::shared_ptr<DeviceState> m_device;
};

} // namespace lab
