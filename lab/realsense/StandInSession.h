// The stand-in runtime's session: lists its described video-capture implementations and
// creates them, failing where the description says so.
#pragma once

#include "realsense/RuntimeDescription.h"

namespace lab {
namespace realsense {

class StandInSession final : public PXCSession {
public:
    explicit StandInSession(const RuntimeDescription &description);

    void *PXCAPI QueryInstance(pxcUID cuid) override;
    void PXCAPI Release() override;
    ImplVersion PXCAPI QueryVersion() override;
    pxcStatus PXCAPI QueryImpl(ImplDesc *templat, pxcI32 idx, ImplDesc *desc) override;
    pxcStatus PXCAPI CreateImpl(ImplDesc *desc, pxcUID cuid, void **instance) override;

protected:
    void PXCAPI destructorSlot() override {}

private:
    ~StandInSession() = default;
    static bool matches(const ImplDesc &templat);
    // The implementation `desc` names (its iuid is the index plus one), or null.
    const CaptureDescription *described(const ImplDesc &desc) const;

    RuntimeDescription m_description;
};

} // namespace realsense
} // namespace lab
