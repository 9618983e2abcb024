#include "ScopedFileQueue.h"

namespace sorvane {

ScopedFileQueue::ScopedFileQueue() : m_queue(SetupOpenFileQueue()) {}

ScopedFileQueue::~ScopedFileQueue()
{
    if (isOpen())
        SetupCloseFileQueue(m_queue);
}

} // namespace sorvane
