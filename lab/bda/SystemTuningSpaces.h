// The system tuning spaces container under CLSID_SystemTuningSpaces (ITuningSpaceContainer):
// the spaces TuningSpaceCatalog says the system holds, with IDs 1, 2 ... in that order. get_Item
// takes a unique name (VT_BSTR) or an ID; TuningSpacesForName (unique or friendly name) and
// TuningSpacesForCLSID give collections of them. What these return, and what
// get_EnumTuningSpaces lists, are copies, so a change to them stays with the caller (saving it back would need put_Item,
// which the lab's read-only system does not offer).
//
// Device "System Tuning Spaces":
//   fault.get_Item = HRESULT       every get_Item fails with it
//   Journal: "Item <name> found", "Item <name> not found", "Item <id> found", "Item <id> not found",
//            "Item failed 0x<hr>", "FindID <name> <id>", "FindID <name> not found",
//            "EnumTuningSpaces <count>"
#pragma once

#include <windows.h>
#include <tuner.h>

#include <string>
#include <vector>

#include <atlbase.h>

#include "bda/DispatchObject.h"

namespace lab {

class SystemTuningSpaces final : public DispatchObject<ITuningSpaceContainer> {
public:
    SystemTuningSpaces();

    STDMETHODIMP get_Count(LONG *count) override;
    STDMETHODIMP get__NewEnum(IEnumVARIANT **enumerator) override;
    STDMETHODIMP get_Item(VARIANT index, ITuningSpace **space) override;
    STDMETHODIMP put_Item(VARIANT index, ITuningSpace *space) override;
    STDMETHODIMP TuningSpacesForCLSID(BSTR spaceClass, ITuningSpaces **spaces) override;
    STDMETHODIMP _TuningSpacesForCLSID(REFCLSID spaceClass, ITuningSpaces **spaces) override;
    STDMETHODIMP TuningSpacesForName(BSTR name, ITuningSpaces **spaces) override;
    STDMETHODIMP FindID(ITuningSpace *space, LONG *id) override;
    STDMETHODIMP Add(ITuningSpace *space, VARIANT *newIndex) override;
    STDMETHODIMP get_EnumTuningSpaces(IEnumTuningSpaces **enumerator) override;
    STDMETHODIMP Remove(VARIANT index) override;
    STDMETHODIMP get_MaxCount(LONG *maxCount) override;
    STDMETHODIMP put_MaxCount(LONG maxCount) override;

protected:
    bool answers(REFIID iid) const override;

private:
    // Position of the space of that unique name, or -1.
    int indexOf(const std::wstring &name) const;
    // Position for a VARIANT index (a name or an ID), or -1; `label` names it for the journal.
    int lookUp(const VARIANT &index, std::wstring &label) const;
    // The spaces `matches` accepts, as a collection keeping their IDs.
    template <class Matches>
    HRESULT collect(Matches matches, ITuningSpaces **spaces) const;

    std::vector<std::wstring> m_names;
    std::vector<CComPtr<ITuningSpace>> m_spaces;
};

} // namespace lab
