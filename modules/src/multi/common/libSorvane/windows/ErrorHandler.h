#pragma once

#include "SorvaneExport.h"

#include <kel/String.h>

namespace sorvane {

class SORVANE_API ErrorHandler {
public:
    // "SYS: <system message> (hr=0xXXXXXXXX)", or only the part in parentheses when the
    // system has no message for the code.
    static kel::String errorMessageFromHr(long code);
};

} // namespace sorvane
