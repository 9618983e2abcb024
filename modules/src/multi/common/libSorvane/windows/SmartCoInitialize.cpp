#include "SmartCoInitialize.h"

#include "CaptureLog.h"
#include "ErrorHandler.h"

#include <objbase.h>

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

SmartCoInitialize::SmartCoInitialize() : m_initialized(false) {}

SmartCoInitialize::SmartCoInitialize(const SmartCoInitialize &other)
    : m_initialized(other.m_initialized), m_initError(other.m_initError)
{
}

SmartCoInitialize &SmartCoInitialize::operator=(const SmartCoInitialize &other)
{
    m_initialized = other.m_initialized;
    m_initError = other.m_initError;
    return *this;
}

SmartCoInitialize::~SmartCoInitialize()
{
    uninitialize();
}

bool SmartCoInitialize::initialize()
{
    SORVANE_LOG_DETAIL("CoInitializeEx");
    const HRESULT hr = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (FAILED(hr)) {
        m_initError = ErrorHandler::errorMessageFromHr(hr);
        SORVANE_LOG_DETAIL("CoInitializeEx failed: " << m_initError);
        return false;
    }
    SORVANE_LOG_DETAIL("CoInitializeEx succeeded");
    m_initialized = true;
    return true;
}

void SmartCoInitialize::uninitialize()
{
    if (!m_initialized)
        return;
    m_initialized = false;
    SORVANE_LOG_DETAIL("CoUninitialize");
    CoUninitialize();
}

kel::String SmartCoInitialize::initError() const
{
    return m_initError;
}

} // namespace sorvane
