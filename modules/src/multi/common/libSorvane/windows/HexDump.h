// A hex dump for log lines: eight bytes a row, each as "0xNN ", followed by the row's
// printable characters. A last row of fewer than eight bytes has no text column.
#pragma once

#include "SorvaneExport.h"

#include <cstddef>
#include <string>

namespace sorvane {

class SORVANE_API HexDump {
public:
    static std::string format(const unsigned char *data, int length);
};

} // namespace sorvane
