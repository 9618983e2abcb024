// The quality score and the hex dump over arbitrary bytes.
#include <HexDump.h>
#include <TsQualityScan.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const int length = static_cast<int>(size);
    const int quality = sorvane::TsQualityScan::score(data, length);
    if (quality < -2 || quality > 100)
        std::abort();
    if (length < 188 && quality != -2)
        std::abort();
    const std::string dump = sorvane::HexDump::format(data, length);
    if (length > 0 && dump.size() < size * 5)
        std::abort();
    return 0;
}
