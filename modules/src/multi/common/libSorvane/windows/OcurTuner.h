// An OpenCable receiver (OCUR): the ATSC tuner's channel iteration through the receiver's
// "Digital Cable" tuning space, each channel asked for by its number alone (the CableCARD's
// channel map knows where it is on the cable), with the minor-channel test in front of the signal check when
// UseMinorChannelTechnique asks for it.
#pragma once

#include "ATSCTuner.h"
#include "SorvaneExport.h"

namespace sorvane {

class SORVANE_API OcurTuner : public ATSCTuner {
public:
    OcurTuner(const ruvo::DiagDevice &device, const kel::String &name);

protected:
    void setupDevice() override;
    void setupSampleGrabber() override;
    bool isSignalPresent() override;
    void signalFound() override;
    // The receiver's CableCARD maps the channel to its frequency and modulation: no locator.
    bool makeLocator(int channel, CComPtr<IATSCLocator> &locator) override;
};

} // namespace sorvane
