#include "tuner/TvTunerFilter.h"

#include "common/ClassRegistry.h"
#include "common/DeviceRegistry.h"
#include "tuner/TunerClassIds.h"

namespace lab {

namespace {

const ClassRegistration registration(ClassInfo::device(CLSID_LabTvTunerFilter, L"Sorvane Lab TV Tuner",
                                                       &createObject<TvTunerFilter, IBaseFilter>, L"tv-tuner",
                                                       kTvTunerCategory));

} // namespace

TvTunerFilter::TvTunerFilter()
    : DeviceFilter(CLSID_LabTvTunerFilter), m_tuner(*static_cast<IBaseFilter *>(this)),
      m_video(*this, L"Analog Video", MEDIATYPE_AnalogVideo)
{
    useDevice(DeviceRegistry::device(L""));
}

void *TvTunerFilter::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, IID_IAMTVTuner) || IsEqualIID(iid, IID_IAMTuner))
        return static_cast<IAMTVTuner *>(&m_tuner);
    return DeviceFilter::queryExtra(iid);
}

BasePin *TvTunerFilter::pin(int index)
{
    return index == 0 ? &m_video : nullptr;
}

HRESULT TvTunerFilter::configure(const std::shared_ptr<DeviceState> &device)
{
    m_tuner.attach(device);
    m_video.setMedium(PinMedium::parse(device->text(L"medium")));
    return S_OK;
}

} // namespace lab
