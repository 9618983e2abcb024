// sorvane-diag: runs libSorvane's tests and device enumeration from a terminal.
#include "CommandLine.h"
#include "HostApplication.h"

#ifdef SORVANE_FILL_WINE_SETUPAPI
#include <winesupport/WineSetupApi.h>
#include <windows.h>
#endif

int main()
{
#ifdef SORVANE_FILL_WINE_SETUPAPI
    // Under Wine the library's SetupAPI calls are completed where Wine falls short of
    // Windows, so `list` shows the driver facts it would show there; on Windows this does nothing.
    winesupport::fillWineSetupApiGaps(GetModuleHandleW(L"libSorvane.dll"));
#endif
    return sorvane::diag::HostApplication().run(sorvane::diag::CommandLine::processArguments());
}
