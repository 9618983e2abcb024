// The output pin of a TransformFilter: offers what the filter makes of the connected input.
#pragma once

#include "common/OutputPin.h"

namespace lab {

class TransformFilter;

class TransformOutputPin : public OutputPin {
public:
    explicit TransformOutputPin(TransformFilter &filter);

    std::vector<MediaType> mediaTypes() override;
    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;

private:
    TransformFilter &m_transform;
};

} // namespace lab
