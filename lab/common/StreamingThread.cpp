#include "common/StreamingThread.h"

#include <objbase.h>
#include <utility>

#include "common/LabModule.h"

namespace lab {

StreamingThread::StreamingThread() : m_stopEvent(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

StreamingThread::~StreamingThread()
{
    stop();
    CloseHandle(m_stopEvent);
}

void StreamingThread::start(std::function<void(HANDLE stopEvent)> body)
{
    stop();
    ResetEvent(m_stopEvent);
    LabModule::threadStarted();
    HANDLE stopEvent = m_stopEvent;
    m_thread = std::thread([body = std::move(body), stopEvent]() {
        const HRESULT com = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        body(stopEvent);
        if (SUCCEEDED(com))
            CoUninitialize();
        LabModule::threadEnded();
    });
}

void StreamingThread::stop()
{
    if (!m_thread.joinable())
        return;
    SetEvent(m_stopEvent);
    m_thread.join();
}

} // namespace lab
