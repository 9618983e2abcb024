// An analog TV card tested through its IAMTVTuner: TV channels on the antenna and cable
// inputs, and a sweep of the FM band. A signal is what the tuner itself reports.
#pragma once

#include "SorvaneExport.h"
#include "TVTuner.h"

namespace sorvane {

class SORVANE_API AnalogTuner : public TVTuner {
public:
    AnalogTuner(const ruvo::DiagDevice &device, const kel::String &name);

    // The preview and the recording show the TV picture.
    void captureToScreen() override;
    void captureToFile(const kel::String &fileName) override;

    // The virtual operations below follow those of TVTuner, in this order.
    virtual void checkTVSignal();
    virtual void checkFMRadioSignal();

protected:
    void setupDevice() override;
    void renderToScreen() override;
    void cleanUpCOMInterfaces() override;

    // inputType is a TunerInputType (0 cable, 1 antenna), or negative to leave the input as
    // it is; in FM mode the channel is a frequency in hertz.
    bool tuneToChannel(int channel, int minorChannel, int inputType) override;
    void initializeChannelIteration() override;
    void preCheckAction() override;
    void postCheckErrorAction() override;
    bool checkCurrentChannel() override;
    bool isSignalPresent() override;

    // Routes the card's first tuner input to the first output that takes it.
    void routeCrossbar();

    CComPtr<IAMTVTuner> m_tuner;
    long m_mode;
    bool m_checking;
    bool m_tryAntenna;
    bool m_tryCable;

private:
    // Where the FM sweep stands, in megahertz.
    struct FMSweep {
        double start;
        double end;
        double current;
    };

    // The frequency in megahertz; BADPARAMS when it cannot be tuned.
    static double frequencyFrom(ruvo::Parameter *parameter);
    bool stepFMSweep(FMSweep &sweep);
    void reportFMProgress(double megahertz);
    // Renders the first category and media type that renders completely; false when the
    // stream was only partly rendered, so the window is left as it is.
    bool renderVideoStream();
    void resizeWindowToVideo();
    // Shows the country dialog and gives the chosen country to the tuner.
    void askForCountry();
    void setCountryCode(long code);
    uint32_t checksPerChannel() const;
};

} // namespace sorvane
