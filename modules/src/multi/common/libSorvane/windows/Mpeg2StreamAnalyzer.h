// Checks on blocks of MPEG-2 transport-stream bytes, for the digital tuners' signal decision
// and their log.
#pragma once

#include "SorvaneExport.h"

#include <kel/String.h>

namespace sorvane {

class SORVANE_API Mpeg2StreamAnalyzer {
public:
    static const int kPacketSize = 188;

    // Percentage (0 to 100) of the block's whole packets without the transport error
    // indicator; -2 when it holds no whole packet, -1 when a packet does not start with the
    // sync byte.
    static int signalQuality(unsigned char *data, int length);
    // A hex dump with a text column, eight bytes a row.
    static kel::String dataToString(unsigned char *data, int length);
};

} // namespace sorvane
