// A digital cable tuner tested on clear (unencrypted) QAM channels 2 to 120: each channel is
// tuned at its cable-plan frequency with 256-QAM, its transport stream is collected and
// searched for a program without scrambling, and that program is tuned and checked.
#pragma once

#include "DigitalTuner.h"
#include "SorvaneExport.h"

#include <qedit.h>

namespace sorvane {

class SORVANE_API ClearQAMTuner : public DigitalTuner {
public:
    ClearQAMTuner(const ruvo::DiagDevice &device, const kel::String &name);

protected:
    void setupDevice() override;
    bool tuneToChannel(int channel, int programNumber, int inputType) override;
    bool checkCurrentChannel() override;
    void signalFound() override;
    void cleanUpCOMInterfaces() override;

    CComPtr<ITuningSpace> m_tuningSpace;
    CComPtr<ISampleGrabberCB> m_sampleGrabberCallback;

private:
    // The channel's carrier at 256-QAM, the program by its number.
    bool makeLocator(int channel, int programNumber, CComPtr<IATSCLocator2> &locator);
};

} // namespace sorvane
