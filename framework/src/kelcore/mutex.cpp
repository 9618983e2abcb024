#include <kel/mutex.h>

#include <windows.h>

namespace kel {

mutex::mutex() : m_section(new CRITICAL_SECTION)
{
    InitializeCriticalSection(static_cast<CRITICAL_SECTION *>(m_section));
}

mutex::~mutex()
{
    DeleteCriticalSection(static_cast<CRITICAL_SECTION *>(m_section));
    delete static_cast<CRITICAL_SECTION *>(m_section);
}

void mutex::lock()
{
    EnterCriticalSection(static_cast<CRITICAL_SECTION *>(m_section));
}
void mutex::unlock()
{
    LeaveCriticalSection(static_cast<CRITICAL_SECTION *>(m_section));
}

} // namespace kel
