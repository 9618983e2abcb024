// A terrestrial DVB-T tuner, or its Chinese variant DTMB: the DVB-T tuning space, the country
// whose frequency map gives the channels (DTMB has its own plan), and a signal decision on
// the quality of the transport stream before the device's statistics.
#pragma once

#include "DVBTGuideStore.h"
#include "DigitalTuner.h"
#include "SorvaneExport.h"

#include <kel/Array.h>
#include <qedit.h>

namespace sorvane {

class SORVANE_API DVBTuner : public DigitalTuner {
public:
    DVBTuner(const ruvo::DiagDevice &device, const kel::String &name);
    ~DVBTuner() override;

    // What the scan tunes for `channel`, in kHz: the country's list or the DTMB plan; 0 for a
    // channel it does not tune.
    uint32_t channelFrequencyKHz(int channel) const;
    bool isDTMB() const { return m_isDTMB; }

protected:
    void setupDevice() override;
    void setupNetworkProvider() override;
    bool tuneToChannel(int channel, int unused1, int unused2) override;
    bool renderFromPin(CComPtr<IPin> pin, long &hr) override;
    bool isSignalPresent() override;
    bool checkCurrentChannel() override;
    // Without channel parameters the scan covers the range the set-up found.
    void initializeChannelIteration() override;
    void signalFound() override;
    void cleanUpCOMInterfaces() override;

    // The virtual operations below follow those of DigitalTuner, in this order.
    virtual bool containsDTMB(kel::String name);
    virtual bool filterIsDTMB(CComPtr<IBaseFilter> filter);
    virtual bool checkMpeg2SignalQuality(int &quality);
    // A positive country code, 0 when the user cancelled, -1 when none could be found.
    virtual int askForCountry();

    kel::Array<int> m_supportedCountryCodes;
    bool m_isDTMB;
    DVBTGuideStore m_guideStore;
    CComPtr<ITuningSpace> m_tuningSpace;
    // Collects each channel's transport stream beside the grabber's last sample, so that the
    // channel found is measured over the time it stayed on screen.
    CComPtr<ISampleGrabberCB> m_packetBuffer;

private:
    void attachPacketBuffer();
    void setupTuningSpace();
    void renderDemuxPins();
    void setChannelRange(uint32_t first, uint32_t last);
    // The network provider's frequency map for the country the user or the location gives.
    void setupCountry();
    void readSupportedCountries(IFrequencyMap *frequencyMap);
    // A country code; throws when the user cancelled or none could be found.
    int chooseCountry();
    void loadCountryChannels(IFrequencyMap *frequencyMap, int country);
    bool tuneDTMB(int channel);
    // The country of the user's Windows location, or -1.
    int countryFromLocation(const class CountryCodeManager &countries);
    int countryFromDialog();
};

} // namespace sorvane
