#include "HostSession.h"
#include "HostError.h"
#include "LibraryErrors.h"
#include "StopRequest.h"
#include "Terminal.h"

#include <ModuleRegistration.h>
#include <ruvo/DiagModule.h>

#include <objbase.h>

namespace sorvane {
namespace diag {

HostSession::HostSession(Terminal &terminal, RunReport &report, bool interactive,
                         const StopRequest::QuitAction &beforeQuit)
    : m_backend(terminal, report, interactive), m_stopWait([&terminal](long seconds) {
          terminal.progressNote(DeviceStopWait::note(seconds, StopRequest::requested()));
      })
{
    // The capture objects own windows and pump messages on this thread, as on a test
    // module's thread: a single-threaded apartment.
    const HRESULT hr = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (FAILED(hr))
        throw HostError(L"Starting COM", hr);
    ruvo::DiagModule::setBackend(&m_backend);
    LibraryErrors::start();
    LibraryErrors::setListener(&DeviceStopWait::libraryLine);
    sorvane::init();
    StopRequest::install(terminal, beforeQuit);
}

HostSession::~HostSession()
{
    StopRequest::uninstall();
    LibraryErrors::setListener(LibraryErrors::Listener());
    LibraryErrors::stop();
    ruvo::DiagModule::setBackend(nullptr);
    CoUninitialize();
}

} // namespace diag
} // namespace sorvane
