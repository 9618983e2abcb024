#include "realsense/StandInSession.h"

#include "realsense/RuntimeJournal.h"
#include "realsense/StandInCapture.h"

#include <cstring>

namespace lab {
namespace realsense {

namespace {
// The stand-in's implementations are numbered from this id on, in description order.
const pxcUID kFirstImplementationId = 0x4C414200; // "LAB"
} // namespace

StandInSession::StandInSession(const RuntimeDescription &description) : m_description(description) {}

void *PXCAPI StandInSession::QueryInstance(pxcUID cuid)
{
    return cuid == PXCSession::CUID || cuid == PXCBase::CUID ? this : nullptr;
}

void PXCAPI StandInSession::Release()
{
    RuntimeJournal::record(L"Release session");
    delete this;
}

PXCSession::ImplVersion PXCAPI StandInSession::QueryVersion()
{
    ImplVersion version = {};
    version.major = 11;
    version.minor = 0;
    return version;
}

// Only video capture is offered: a template asking for another group or subgroup matches nothing.
bool StandInSession::matches(const ImplDesc &templat)
{
    return (templat.group == IMPL_GROUP_ANY || (templat.group & IMPL_GROUP_SENSOR)) &&
           (templat.subgroup == IMPL_SUBGROUP_ANY || (templat.subgroup & IMPL_SUBGROUP_VIDEO_CAPTURE));
}

pxcStatus PXCAPI StandInSession::QueryImpl(ImplDesc *templat, pxcI32 idx, ImplDesc *desc)
{
    const std::wstring entry = L"QueryImpl " + std::to_wstring(idx);
    const std::vector<CaptureDescription> &captures = m_description.captures();
    if (!desc || idx < 0 || static_cast<size_t>(idx) >= captures.size() || (templat && !matches(*templat))) {
        RuntimeJournal::record(entry + L" none");
        return PXC_STATUS_ITEM_UNAVAILABLE;
    }
    const CaptureDescription &capture = captures[static_cast<size_t>(idx)];
    std::memset(desc, 0, sizeof *desc);
    desc->group = IMPL_GROUP_SENSOR;
    desc->subgroup = IMPL_SUBGROUP_VIDEO_CAPTURE;
    desc->iuid = kFirstImplementationId + idx;
    desc->version = QueryVersion();
    desc->cuids[0] = PXCCapture::CUID;
    const size_t length = capture.name.size() < 255 ? capture.name.size() : 255;
    std::memcpy(desc->friendlyName, capture.name.data(), length * sizeof(pxcCHAR));
    RuntimeJournal::record(entry + L" " + capture.name);
    return PXC_STATUS_NO_ERROR;
}

const CaptureDescription *StandInSession::described(const ImplDesc &desc) const
{
    const std::vector<CaptureDescription> &captures = m_description.captures();
    const pxcI32 index = desc.iuid - kFirstImplementationId;
    return index >= 0 && static_cast<size_t>(index) < captures.size() ? &captures[static_cast<size_t>(index)] : nullptr;
}

pxcStatus PXCAPI StandInSession::CreateImpl(ImplDesc *desc, pxcUID cuid, void **instance)
{
    if (!instance)
        return PXC_STATUS_ITEM_UNAVAILABLE;
    *instance = nullptr;
    const CaptureDescription *capture = desc ? described(*desc) : nullptr;
    if (!capture || cuid != PXCCapture::CUID) {
        RuntimeJournal::record(L"CreateImpl unknown failed " + std::to_wstring(PXC_STATUS_ITEM_UNAVAILABLE));
        return PXC_STATUS_ITEM_UNAVAILABLE;
    }
    if (capture->createFault < PXC_STATUS_NO_ERROR) {
        RuntimeJournal::record(L"CreateImpl " + capture->name + L" failed " + std::to_wstring(capture->createFault));
        return capture->createFault;
    }
    RuntimeJournal::record(L"CreateImpl " + capture->name);
    *instance = static_cast<PXCCapture *>(new StandInCapture(*capture));
    return PXC_STATUS_NO_ERROR;
}

} // namespace realsense
} // namespace lab
