// A collection of some of the system's tuning spaces (ITuningSpaces), as
// ITuningSpaceContainer::TuningSpacesForName and TuningSpacesForCLSID return it: get_Item takes
// the space's ID in the system container, as the container's own get_Item does.
#pragma once

#include <windows.h>
#include <tuner.h>

#include <vector>

#include <atlbase.h>

#include "bda/DispatchObject.h"

namespace lab {

class TuningSpaceCollection final : public DispatchObject<ITuningSpaces> {
public:
    struct Entry {
        long id;
        CComPtr<ITuningSpace> space;
    };

    static HRESULT create(const std::vector<Entry> &entries, ITuningSpaces **out);

    STDMETHODIMP get_Count(LONG *count) override;
    STDMETHODIMP get__NewEnum(IEnumVARIANT **enumerator) override;
    STDMETHODIMP get_Item(VARIANT index, ITuningSpace **space) override;
    STDMETHODIMP get_EnumTuningSpaces(IEnumTuningSpaces **enumerator) override;

protected:
    bool answers(REFIID iid) const override;

private:
    explicit TuningSpaceCollection(const std::vector<Entry> &entries) : m_entries(entries) {}

    const std::vector<Entry> m_entries;
};

} // namespace lab
