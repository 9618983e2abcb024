// The base of every tuner: steps through a range of channels, tunes each one and stops at
// the first with a signal. Subclasses supply the tuning and the signal decision.
#pragma once

#include "CaptureBase.h"
#include "SorvaneExport.h"

#include <ruvo/Parameter.h>
#include <cstdint>

namespace sorvane {

class SORVANE_API TVTuner : public CaptureBase {
public:
    TVTuner(const ruvo::DiagDevice &device, const kel::String &name);

    // The whole channel test: returns when a channel with signal was found, otherwise
    // raises CaptureException (NOSIGNAL, USERABORTED, BADPARAMS ...). A range without
    // signal is tried a second time after the user was asked to check the cable.
    void checkTVSignal();

    // The virtual operations below keep this order; subclasses append theirs after them.
protected:
    virtual bool checkChannel(int channel, int minorChannel, int inputType);
    virtual bool tuneToChannel(int channel, int minorChannel, int inputType) = 0;
    virtual void initializeChannelIteration();

public:
    // One step of the iteration, the stop condition of the run loop: true once a channel
    // with signal was found, false to be called again.
    virtual bool iterateChannels();

protected:
    virtual void preCheckAction();
    virtual void postCheckAction();
    virtual void postCheckErrorAction();
    virtual bool checkCurrentChannel() = 0;
    virtual bool isSignalPresent() = 0;
    virtual void signalFound();

    void doRenderToFile() override;

    uint32_t m_settleDelay;
    uint32_t m_startChannel;
    uint32_t m_endChannel;
    uint32_t m_currentChannel;
    uint32_t m_minChannel;
    uint32_t m_maxChannel;
    ruvo::Parameter *m_startChannelParam;
    ruvo::Parameter *m_endChannelParam;

    // The channel number a parameter names, checked against the tuner's limits.
    uint32_t channelFrom(ruvo::Parameter *parameter) const;

private:
    void runOneAttempt();
    // Asks the user to check the cable before the second attempt; false means abort.
    bool userWantsRetry();
    void reportProgress();
};

} // namespace sorvane
