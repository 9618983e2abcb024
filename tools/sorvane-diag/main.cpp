// sorvane-diag: runs libSorvane's tests and device enumeration from a terminal.
#include "CommandLine.h"
#include "HostApplication.h"

int main()
{
    return sorvane::diag::HostApplication().run(sorvane::diag::CommandLine::processArguments());
}
