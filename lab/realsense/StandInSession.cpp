#include "realsense/StandInSession.h"

#include "realsense/RuntimeJournal.h"
#include "realsense/StandInCapture.h"
#include "realsense/UnexpectedCall.h"

#include <cstdio>
#include <cstring>

namespace lab {
namespace realsense {

namespace {
// The stand-in's implementations are numbered from this id on, in description order.
const int32_t kFirstImplementationId = 0x4C414200; // "LAB"
// The runtime's version: the SDK release whose layout the lab declares.
const sdk::Version kRuntimeVersion = {11, 0};

std::wstring hex(int32_t value)
{
    wchar_t text[16];
    std::swprintf(text, 16, L"0x%08X", static_cast<unsigned>(value));
    return text;
}
} // namespace

const sdk::SessionTable StandInSession::kTable = {{&StandInSession::queryInstance, &StandInSession::release},
                                                  &StandInSession::queryVersion,
                                                  &StandInSession::queryImpl,
                                                  &StandInSession::createImpl,
                                                  &UnexpectedCall::status<UnexpectedCall::SESSION, 5>,
                                                  &UnexpectedCall::object<UnexpectedCall::SESSION, 6>,
                                                  &UnexpectedCall::object<UnexpectedCall::SESSION, 7>,
                                                  &UnexpectedCall::status<UnexpectedCall::SESSION, 8>,
                                                  &UnexpectedCall::status<UnexpectedCall::SESSION, 9>};

StandInSession::StandInSession(const RuntimeDescription &description)
    : m_object{&kTable, this}, m_description(description)
{
}

void *StandInSession::create(const RuntimeDescription &description)
{
    return &(new StandInSession(description))->m_object;
}

StandInSession &StandInSession::of(void *self)
{
    return *static_cast<StandInSession *>(static_cast<sdk::Object<sdk::SessionTable> *>(self)->owner);
}

void *StandInSession::queryInstance(void *self, int32_t cuid)
{
    return cuid == sdk::kSessionInterface || cuid == sdk::kBaseInterface ? self : nullptr;
}

void StandInSession::release(void *self)
{
    RuntimeJournal::record(L"Release session");
    delete &of(self);
}

sdk::Version *StandInSession::queryVersion(void *, sdk::Version *result)
{
    *result = kRuntimeVersion;
    return result;
}

// Only video capture is offered: a template asking for another group or subgroup matches nothing.
bool StandInSession::matches(const sdk::ImplementationDescription &templat)
{
    return (templat.group == 0 || (templat.group & sdk::kSensorGroup)) &&
           (templat.subgroup == 0 || (templat.subgroup & sdk::kVideoCaptureSubgroup));
}

std::wstring StandInSession::templateText(const sdk::ImplementationDescription *templat)
{
    if (!templat)
        return L"without template";
    return L"group " + std::to_wstring(templat->group) + L" subgroup " + std::to_wstring(templat->subgroup);
}

sdk::Status StandInSession::queryImpl(void *self, sdk::ImplementationDescription *templat, int32_t idx,
                                      sdk::ImplementationDescription *desc)
{
    const StandInSession &session = of(self);
    const std::wstring entry = L"QueryImpl " + std::to_wstring(idx) + L" " + templateText(templat);
    const std::vector<CaptureDescription> &captures = session.m_description.captures();
    if (!desc || idx < 0 || static_cast<size_t>(idx) >= captures.size() || (templat && !matches(*templat))) {
        RuntimeJournal::record(entry + L": none");
        return sdk::kItemUnavailable;
    }
    session.describe(idx, *desc);
    RuntimeJournal::record(entry + L": " + captures[static_cast<size_t>(idx)].name);
    return sdk::kNoError;
}

void StandInSession::describe(int32_t idx, sdk::ImplementationDescription &desc) const
{
    const CaptureDescription &capture = m_description.captures()[static_cast<size_t>(idx)];
    std::memset(&desc, 0, sizeof desc);
    desc.group = sdk::kSensorGroup;
    desc.subgroup = sdk::kVideoCaptureSubgroup;
    desc.iuid = kFirstImplementationId + idx;
    desc.version = kRuntimeVersion;
    desc.cuids[0] = sdk::kCaptureInterface;
    const size_t capacity = sizeof desc.friendlyName / sizeof desc.friendlyName[0];
    const size_t length = capture.name.size() < capacity ? capture.name.size() : capacity - 1;
    std::memcpy(desc.friendlyName, capture.name.data(), length * sizeof(wchar_t));
}

const CaptureDescription *StandInSession::implementation(int32_t iuid) const
{
    const std::vector<CaptureDescription> &captures = m_description.captures();
    const int32_t index = iuid - kFirstImplementationId;
    return index >= 0 && static_cast<size_t>(index) < captures.size() ? &captures[static_cast<size_t>(index)] : nullptr;
}

// The implementation is the one the description names, or without a description the one `iuid`
// names; it is handed out as its capture interface only.
sdk::Status StandInSession::createImpl(void *self, sdk::ImplementationDescription *desc, int32_t iuid, int32_t cuid,
                                       void **instance)
{
    const StandInSession &session = of(self);
    const CaptureDescription *capture = session.implementation(desc ? desc->iuid : iuid);
    const std::wstring entry = L"CreateImpl " + (capture ? capture->name : std::wstring(L"unknown")) + L" iuid " +
                               std::to_wstring(iuid) + L" cuid " + hex(cuid);
    const sdk::Status status = session.create(desc, iuid, cuid, instance);
    RuntimeJournal::record(status < sdk::kNoError ? entry + L" failed " + std::to_wstring(status) : entry);
    return status;
}

sdk::Status StandInSession::create(const sdk::ImplementationDescription *desc, int32_t iuid, int32_t cuid,
                                   void **instance) const
{
    if (!instance)
        return sdk::kItemUnavailable;
    *instance = nullptr;
    const CaptureDescription *capture = implementation(desc ? desc->iuid : iuid);
    if (!capture || cuid != sdk::kCaptureInterface)
        return sdk::kItemUnavailable;
    if (capture->createFault < sdk::kNoError)
        return capture->createFault;
    *instance = StandInCapture::create(*capture);
    return sdk::kNoError;
}

} // namespace realsense
} // namespace lab
