#include "ScopedModule.h"

namespace sorvane {

ScopedModule::ScopedModule(HMODULE module) : m_module(module) {}

ScopedModule::~ScopedModule()
{
    if (m_module)
        FreeLibrary(m_module);
}

HMODULE *ScopedModule::receive()
{
    if (m_module)
        FreeLibrary(m_module);
    m_module = nullptr;
    return &m_module;
}

HMODULE ScopedModule::keep()
{
    HMODULE module = m_module;
    m_module = nullptr;
    return module;
}

} // namespace sorvane
