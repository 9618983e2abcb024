#include "SideThread.h"

#include <windows.h>

namespace sorvane {
namespace test {

SideThread::SideThread(const std::function<void(SideThread &)> &work) : m_thread([this, work] { work(*this); }) {}

SideThread::~SideThread()
{
    m_over = true;
    m_thread.join();
}

bool SideThread::waitUntil(const std::function<bool()> &condition)
{
    while (!m_over) {
        if (condition())
            return true;
        Sleep(1);
    }
    return false;
}

} // namespace test
} // namespace sorvane
