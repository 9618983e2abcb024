#include "realsense/StandInCapture.h"

#include "realsense/RuntimeJournal.h"

#include <cstring>

namespace lab {
namespace realsense {

StandInCapture::StandInCapture(const CaptureDescription &description) : m_description(description) {}

void *PXCAPI StandInCapture::QueryInstance(pxcUID cuid)
{
    return cuid == PXCCapture::CUID || cuid == PXCBase::CUID ? this : nullptr;
}

void PXCAPI StandInCapture::Release()
{
    RuntimeJournal::record(L"Release capture " + m_description.name);
    delete this;
}

pxcStatus PXCAPI StandInCapture::QueryDeviceInfo(pxcI32 didx, DeviceInfo *dinfo)
{
    const std::wstring entry = L"QueryDeviceInfo " + m_description.name + L" " + std::to_wstring(didx);
    const bool faulted = m_description.queryFailsFrom >= 0 && didx >= m_description.queryFailsFrom;
    if (!dinfo || didx < 0 || faulted || static_cast<size_t>(didx) >= m_description.cameras.size()) {
        const pxcStatus status = faulted ? PXC_STATUS_DEVICE_FAILED : PXC_STATUS_ITEM_UNAVAILABLE;
        RuntimeJournal::record(entry + L" failed " + std::to_wstring(status));
        return status;
    }
    const CameraDescription &camera = m_description.cameras[static_cast<size_t>(didx)];
    std::memset(dinfo, 0, sizeof *dinfo);
    copyText(camera.name, dinfo->name, sizeof dinfo->name / sizeof dinfo->name[0]);
    copyText(camera.serial, dinfo->serial, sizeof dinfo->serial / sizeof dinfo->serial[0]);
    copyText(camera.did, dinfo->did, sizeof dinfo->did / sizeof dinfo->did[0]);
    std::memcpy(dinfo->firmware, camera.firmware, sizeof dinfo->firmware);
    dinfo->model = camera.model;
    dinfo->orientation = camera.orientation;
    dinfo->streams = static_cast<StreamType>(camera.streams);
    dinfo->didx = didx;
    dinfo->duid = didx;
    dinfo->rotation = ROTATION_0_DEGREE;
    RuntimeJournal::record(entry + L" " + camera.name);
    return PXC_STATUS_NO_ERROR;
}

void StandInCapture::copyText(const std::wstring &text, pxcCHAR *target, size_t capacity)
{
    const size_t length = text.size() < capacity - 1 ? text.size() : capacity - 1;
    std::memcpy(target, text.data(), length * sizeof(pxcCHAR));
    target[length] = L'\0';
}

} // namespace realsense
} // namespace lab
