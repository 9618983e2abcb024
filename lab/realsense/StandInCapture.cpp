#include "realsense/StandInCapture.h"

#include "realsense/RuntimeJournal.h"
#include "realsense/UnexpectedCall.h"

#include <cstring>

namespace lab {
namespace realsense {

const sdk::CaptureTable StandInCapture::kTable = {{&StandInCapture::queryInstance, &StandInCapture::release},
                                                  &StandInCapture::queryDeviceNum,
                                                  &StandInCapture::queryDeviceInfo,
                                                  &UnexpectedCall::object<UnexpectedCall::CAPTURE, 4>,
                                                  &UnexpectedCall::status<UnexpectedCall::CAPTURE, 5>,
                                                  &UnexpectedCall::status<UnexpectedCall::CAPTURE, 6>};

StandInCapture::StandInCapture(const CaptureDescription &description)
    : m_object{&kTable, this}, m_description(description)
{
}

void *StandInCapture::create(const CaptureDescription &description)
{
    return &(new StandInCapture(description))->m_object;
}

StandInCapture &StandInCapture::of(void *self)
{
    return *static_cast<StandInCapture *>(static_cast<sdk::Object<sdk::CaptureTable> *>(self)->owner);
}

void *StandInCapture::queryInstance(void *self, int32_t cuid)
{
    return cuid == sdk::kCaptureInterface || cuid == sdk::kBaseInterface ? self : nullptr;
}

void StandInCapture::release(void *self)
{
    StandInCapture *capture = &of(self);
    RuntimeJournal::record(L"Release capture " + capture->m_description.name);
    delete capture;
}

int32_t StandInCapture::queryDeviceNum(void *self)
{
    const CaptureDescription &description = of(self).m_description;
    const int32_t count = static_cast<int32_t>(description.cameras.size());
    RuntimeJournal::record(L"QueryDeviceNum " + description.name + L" " + std::to_wstring(count));
    return count;
}

sdk::Status StandInCapture::queryDeviceInfo(void *self, int32_t didx, sdk::CameraRecord *dinfo)
{
    const StandInCapture &capture = of(self);
    const std::wstring entry = L"QueryDeviceInfo " + capture.m_description.name + L" " + std::to_wstring(didx);
    const sdk::Status status = dinfo ? capture.describe(didx, *dinfo) : sdk::kItemUnavailable;
    if (status < sdk::kNoError) {
        RuntimeJournal::record(entry + L" failed " + std::to_wstring(status));
        return status;
    }
    RuntimeJournal::record(entry + L" " + capture.m_description.cameras[static_cast<size_t>(didx)].name);
    return status;
}

sdk::Status StandInCapture::describe(int32_t didx, sdk::CameraRecord &record) const
{
    if (m_description.queryFailsFrom >= 0 && didx >= m_description.queryFailsFrom)
        return sdk::kDeviceFailed;
    if (didx < 0 || static_cast<size_t>(didx) >= m_description.cameras.size())
        return sdk::kItemUnavailable;
    const CameraDescription &camera = m_description.cameras[static_cast<size_t>(didx)];
    std::memset(&record, 0, sizeof record);
    copyText(camera.name, record.name, sizeof record.name / sizeof record.name[0]);
    copyText(camera.serial, record.serial, sizeof record.serial / sizeof record.serial[0]);
    copyText(camera.did, record.did, sizeof record.did / sizeof record.did[0]);
    std::memcpy(record.firmware, camera.firmware, sizeof record.firmware);
    std::memcpy(record.location, camera.location, sizeof record.location);
    record.model = camera.model;
    record.orientation = camera.orientation;
    record.streams = camera.streams;
    record.didx = didx;
    record.duid = camera.duid;
    record.rotation = camera.rotation;
    record.connectionType = camera.connectionType;
    return sdk::kNoError;
}

void StandInCapture::copyText(const std::wstring &text, wchar_t *target, size_t capacity)
{
    const size_t length = text.size() < capacity - 1 ? text.size() : capacity - 1;
    std::memcpy(target, text.data(), length * sizeof(wchar_t));
    target[length] = L'\0';
}

} // namespace realsense
} // namespace lab
