// The TV tuner of a card as a filter of its own (device kind "tv-tuner", AM_KSCATEGORY_TVTUNER):
// IAMTVTuner (TvTunerControl, with all its keys, faults and journal entries) and an analog
// video output that reaches the card's capture filter through the medium of the key
// "medium = {GUID}". Such a card's capture filter ("analog-capture" with "tuner.medium" the same
// GUID) answers no IAMTVTuner itself; the capture graph builder connects this filter above it.
#pragma once

#include "common/DeviceFilter.h"
#include "tuner/MediumPins.h"
#include "tuner/TvTunerControl.h"

namespace lab {

class TvTunerFilter : public DeviceFilter {
public:
    TvTunerFilter();

    int pinCount() override { return 1; }
    BasePin *pin(int index) override;

protected:
    void *queryExtra(REFIID iid) override;
    HRESULT configure(const std::shared_ptr<DeviceState> &device) override;
    std::vector<StreamingPin *> streamingPins() override { return {}; }

private:
    TvTunerControl m_tuner;
    MediumOutputPin m_video;
};

} // namespace lab
