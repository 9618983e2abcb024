// One video-capture implementation of the stand-in runtime, as a PXCCapture object laid out as
// published (realsense/SdkInterface.h): reports its described cameras.
#pragma once

#include "realsense/RuntimeDescription.h"
#include "realsense/SdkInterface.h"

namespace lab {
namespace realsense {

class StandInCapture {
public:
    // A new object for `description`, as CreateImpl hands it out; its Release deletes it.
    static void *create(const CaptureDescription &description);

private:
    explicit StandInCapture(const CaptureDescription &description);
    static StandInCapture &of(void *self);

    static void *queryInstance(void *self, int32_t cuid);
    static void release(void *self);
    static int32_t queryDeviceNum(void *self);
    static sdk::Status queryDeviceInfo(void *self, int32_t didx, sdk::CameraRecord *dinfo);

    sdk::Status describe(int32_t didx, sdk::CameraRecord &record) const;
    static void copyText(const std::wstring &text, wchar_t *target, size_t capacity);

    static const sdk::CaptureTable kTable;
    sdk::Object<sdk::CaptureTable> m_object;
    CaptureDescription m_description;
};

} // namespace realsense
} // namespace lab
