#include "bdadevice/BdaReceiverFilter.h"

#include <uuids.h>

#include "bdadevice/TransportStreamType.h"
#include "common/ClassRegistry.h"
#include "lab/BdaGuids.h"
#include "lab/LabClassIds.h"

namespace lab {

namespace {

const ClassRegistration registration(ClassInfo::device(CLSID_LabBdaReceiver, L"Sorvane Lab BDA Receiver",
                                                       &createObject<BdaReceiverFilter, IBaseFilter>, L"bda-receiver",
                                                       kCategoryBdaReceiverComponent));

} // namespace

BdaReceiverFilter::BdaReceiverFilter()
    : DeviceFilter(CLSID_LabBdaReceiver),
      m_input(*this, L"Input0", MEDIATYPE_Stream, {kSubtypeBdaTransport, MEDIASUBTYPE_MPEG2_TRANSPORT}),
      m_output(*this, L"MPEG2 Transport", *this, false)
{
}

BdaReceiverFilter::~BdaReceiverFilter()
{
    m_output.stopStreaming();
}

BasePin *BdaReceiverFilter::pin(int index)
{
    if (index == 0)
        return &m_input;
    return index == 1 ? &m_output : nullptr;
}

HRESULT BdaReceiverFilter::configure(const std::shared_ptr<DeviceState> &device)
{
    m_input.useDevice(device);
    return S_OK;
}

CComPtr<ITunedSignalSource> BdaReceiverFilter::signalSource()
{
    CComPtr<IBaseFilter> tuner = m_input.upstreamFilter();
    CComPtr<ITunedSignalSource> source;
    if (tuner)
        tuner->QueryInterface(IID_PPV_ARGS(&source));
    return source;
}

std::vector<StreamingPin *> BdaReceiverFilter::streamingPins()
{
    return {&m_output};
}

} // namespace lab
