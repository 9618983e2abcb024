// The TR 101 290 stream-health measurement over arbitrary bytes, from an exact-size copy.
#include <StreamHealthMonitor.h>

#include <cstdint>
#include <cstdlib>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    std::vector<uint8_t> bytes(data, data + size);
    const sorvane::StreamHealth health =
        sorvane::StreamHealthMonitor::analyze(bytes.data(), static_cast<int>(bytes.size()), 500.0);
    if (health.packets < 0 || health.packets > static_cast<int64_t>(size / 188))
        std::abort();
    if (health.syncByteErrors < 0 || health.continuityErrors < 0)
        std::abort();
    return 0;
}
