// One video-capture implementation of the stand-in runtime: reports its described cameras.
#pragma once

#include "realsense/RuntimeDescription.h"

namespace lab {
namespace realsense {

class StandInCapture final : public PXCCapture {
public:
    explicit StandInCapture(const CaptureDescription &description);

    void *PXCAPI QueryInstance(pxcUID cuid) override;
    void PXCAPI Release() override;
    pxcStatus PXCAPI QueryDeviceInfo(pxcI32 didx, DeviceInfo *dinfo) override;

protected:
    void PXCAPI destructorSlot() override {}

private:
    ~StandInCapture() = default;
    static void copyText(const std::wstring &text, pxcCHAR *target, size_t capacity);

    CaptureDescription m_description;
};

} // namespace realsense
} // namespace lab
