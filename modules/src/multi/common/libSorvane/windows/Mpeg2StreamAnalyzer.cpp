#include "Mpeg2StreamAnalyzer.h"
#include "CaptureLog.h"
#include "HexDump.h"
#include "TsQualityScan.h"

SORVANE_LOG_CATEGORY(SORVANE_CAPTURE_CATEGORY)

namespace sorvane {

namespace {

static_assert(Mpeg2StreamAnalyzer::kPacketSize == TsPacketView::kSize, "one packet size");

// Logs each packet's header flags and errors; composes nothing when the detail level is off.
struct LoggingObserver {
    void headerFlags(int, unsigned char flags)
    {
        SORVANE_LOG_DETAIL("Header Flag Field: " << kel::String::hex(static_cast<uint8_t>(flags), true));
    }
    void packetError(int index) { SORVANE_LOG_DETAIL("Found packet error at packet: " << index); }
    void outOfSync(int) { SORVANE_LOG_DETAIL("Out of Sync"); }
};

} // namespace

int Mpeg2StreamAnalyzer::signalQuality(unsigned char *data, int length)
{
    if (!kel::LogFactory::admits(sorvaneLogger(), kel::LOG_DETAIL))
        return TsQualityScan::score(data, length);
    LoggingObserver observer;
    return TsQualityScan::score(data, length, observer);
}

kel::String Mpeg2StreamAnalyzer::dataToString(unsigned char *data, int length)
{
    return kel::String::fromNarrow(HexDump::format(data, length).c_str());
}

} // namespace sorvane
