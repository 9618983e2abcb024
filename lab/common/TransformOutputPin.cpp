#include "common/TransformOutputPin.h"

#include "common/TransformFilter.h"

namespace lab {

TransformOutputPin::TransformOutputPin(TransformFilter &filter) : OutputPin(filter, L"Out"), m_transform(filter) {}

std::vector<MediaType> TransformOutputPin::mediaTypes()
{
    const MediaType &input = m_transform.inputType();
    if (input.empty())
        return {};
    return m_transform.outputTypes(input.get());
}

HRESULT TransformOutputPin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    const MediaType &input = m_transform.inputType();
    if (input.empty())
        return VFW_E_NOT_CONNECTED;
    return m_transform.checkTransform(input.get(), type);
}

} // namespace lab
