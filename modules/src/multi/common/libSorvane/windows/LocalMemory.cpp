#include "LocalMemory.h"

namespace sorvane {

LocalMemory::LocalMemory(size_t bytes) : m_block(nullptr), m_size(0)
{
    if (bytes)
        reallocate(bytes);
}

LocalMemory::~LocalMemory()
{
    release();
}

void LocalMemory::reallocate(size_t bytes)
{
    release();
    m_block = LocalAlloc(LPTR, bytes);
    m_size = m_block ? bytes : 0;
}

void LocalMemory::release()
{
    if (m_block)
        LocalFree(m_block);
    m_block = nullptr;
    m_size = 0;
}

} // namespace sorvane
