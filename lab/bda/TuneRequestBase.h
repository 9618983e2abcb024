// ITuneRequest for the lab's tune requests: the tuning space that created the request and the
// locator the application gave it (none at first: a new request leaves the tuning to the
// space's default locator until one is put).
#pragma once

#include <windows.h>
#include <tuner.h>

#include <mutex>

#include <atlbase.h>

#include "bda/DispatchObject.h"

namespace lab {

template <class Interface>
class TuneRequestBase : public DispatchObject<Interface> {
public:
    explicit TuneRequestBase(ITuningSpace *space) : m_space(space) {}

    STDMETHODIMP get_TuningSpace(ITuningSpace **space) override
    {
        if (!space)
            return E_POINTER;
        std::lock_guard<std::mutex> guard(m_lock);
        return m_space.CopyTo(space);
    }
    // No component list: the lab's broadcasts are chosen by program, not by component.
    STDMETHODIMP get_Components(IComponents **components) override
    {
        if (components)
            *components = nullptr;
        return E_NOTIMPL;
    }
    STDMETHODIMP get_Locator(ILocator **locator) override
    {
        if (!locator)
            return E_POINTER;
        std::lock_guard<std::mutex> guard(m_lock);
        return m_locator.CopyTo(locator);
    }
    STDMETHODIMP put_Locator(ILocator *locator) override
    {
        std::lock_guard<std::mutex> guard(m_lock);
        m_locator = locator;
        return S_OK;
    }

protected:
    bool answers(REFIID iid) const override { return IsEqualIID(iid, __uuidof(ITuneRequest)); }

    // What Clone copies of this part: the same tuning space, a copy of the locator.
    HRESULT copyBaseTo(TuneRequestBase &copy)
    {
        CComPtr<ILocator> locator;
        {
            std::lock_guard<std::mutex> guard(m_lock);
            locator = m_locator;
        }
        CComPtr<ILocator> locatorCopy;
        if (locator) {
            const HRESULT hr = locator->Clone(&locatorCopy);
            if (FAILED(hr))
                return hr;
        }
        return copy.put_Locator(locatorCopy);
    }

    std::mutex m_lock;

private:
    CComPtr<ITuningSpace> m_space;
    CComPtr<ILocator> m_locator;
};

} // namespace lab
