// IEnumTuningSpaces over a fixed list of tuning spaces (the container's, or those a network
// provider supports).
#pragma once

#include <windows.h>
#include <tuner.h>

#include <vector>

#include <atlbase.h>

#include "common/ComObject.h"
#include "common/LabModule.h"

namespace lab {

class TuningSpaceEnumerator final : public ComObject<IEnumTuningSpaces>, private LiveObject {
public:
    static HRESULT create(const std::vector<CComPtr<ITuningSpace>> &spaces, IEnumTuningSpaces **out);

    STDMETHODIMP Next(ULONG count, ITuningSpace **spaces, ULONG *fetched) override;
    STDMETHODIMP Skip(ULONG count) override;
    STDMETHODIMP Reset() override;
    STDMETHODIMP Clone(IEnumTuningSpaces **clone) override;

private:
    explicit TuningSpaceEnumerator(const std::vector<CComPtr<ITuningSpace>> &spaces) : m_spaces(spaces) {}

    const std::vector<CComPtr<ITuningSpace>> m_spaces;
    size_t m_position = 0;
};

} // namespace lab
