// An ATSC (8-VSB terrestrial) tuner tested on channels 2 to 69: each physical channel is tuned
// through the "ATSC" tuning space at its channel-plan frequency, and the device's BDA signal
// statistics decide. The graph has no sample grabber.
#pragma once

#include "DigitalTuner.h"
#include "SorvaneExport.h"

namespace sorvane {

class SORVANE_API ATSCTuner : public DigitalTuner {
public:
    ATSCTuner(const ruvo::DiagDevice &device, const kel::String &name);

protected:
    void setupDevice() override;
    void setupSampleGrabber() override;
    bool tuneToChannel(int channel, int minorChannel, int inputType) override;
    bool checkCurrentChannel() override;
    void signalFound() override;
    void cleanUpCOMInterfaces() override;

    // Where the channel is: its physical channel, 8-VSB carrier frequency and modulation. False
    // when the locator cannot be made; a null locator leaves the place to the receiver.
    virtual bool makeLocator(int channel, CComPtr<IATSCLocator> &locator);
    // Finds the first of these tuning spaces the provider offers; CANNOTRUN when none.
    void chooseTuningSpace(const wchar_t *const *names, int count);

    CComPtr<ITuningSpace> m_tuningSpace;
};

} // namespace sorvane
