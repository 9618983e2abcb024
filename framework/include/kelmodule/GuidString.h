#pragma once

#include <kelmodule/Export.h>
#include <kel/String.h>
#include <guiddef.h>

namespace kelmodule {

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" in upper case.
KELMODULE_API kel::String guidToString(const GUID &guid);

} // namespace kelmodule
