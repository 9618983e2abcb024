#pragma once

#include "SorvaneExport.h"

#include <kel/String.h>

namespace sorvane {

// Keeps the calling thread in a single-threaded COM apartment while it lives, and leaves
// it exactly once. A copy balances its own uninitialise.
class SORVANE_API SmartCoInitialize {
public:
    SmartCoInitialize();
    SmartCoInitialize(const SmartCoInitialize &other);
    SmartCoInitialize &operator=(const SmartCoInitialize &other);
    ~SmartCoInitialize();

    bool initialize();
    void uninitialize();
    kel::String initError() const;

private:
    bool m_initialized;
    kel::String m_initError;
};

} // namespace sorvane
