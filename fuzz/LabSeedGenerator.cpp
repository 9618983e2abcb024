// Writes fuzz seeds from the lab's simulated broadcast: the first bytes of every multiplex of
// lab/broadcast.conf as the lab's generator emits them (tables, video, audio, null packets,
// and each multiplex's faults: silence, sync loss, errors, no PAT, scrambling).
#include "SeedFiles.h"
#include "broadcast/BroadcastDescription.h"
#include "broadcast/TransportStreamGenerator.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

const long kBitsPerSecond = 4000000;
const std::size_t kSlots = 200;

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s BROADCAST-DESCRIPTION SEED-FOLDER\n", argv[0]);
        return 2;
    }
    lab::BroadcastDescription broadcast;
    std::string error;
    if (!broadcast.load(argv[1], error)) {
        std::fprintf(stderr, "%s: %s\n", argv[1], error.c_str());
        return 1;
    }
    const std::string folder = argv[2];
    for (const lab::Multiplex &multiplex : broadcast.multiplexes()) {
        lab::TransportStreamGenerator generator(multiplex, kBitsPerSecond);
        std::vector<std::uint8_t> stream;
        generator.generate(kSlots, stream);
        if (stream.empty())
            continue;
        const std::string name = "lab-" + multiplex.network + "-" + std::to_string(multiplex.channel);
        sorvane::fuzz::SeedFiles::writeAll(folder, name, stream, 5, 0x01);
    }
    return 0;
}
