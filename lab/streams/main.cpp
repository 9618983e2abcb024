// lab-streams: keeps the transport stream of every multiplex of a broadcast description, as the
// lab's tuners put it on the air, one file a multiplex, so that a real player or analyser can
// be pointed at the lab's broadcast.
//   lab-streams.exe DESCRIPTION FOLDER SECONDS BITS-PER-SECOND
// writes FOLDER\<network>-<channel>.ts and prints one line a file:
//   <file> <network> <channel> <first clear program, 0 for none> <faults, or "none">
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "broadcast/BroadcastDescription.h"
#include "broadcast/TransportStreamGenerator.h"

namespace {

std::string faultWords(const lab::Multiplex &multiplex)
{
    const lab::StreamFaults &faults = multiplex.faults;
    std::string words;
    const auto add = [&words](bool present, const std::string &word) {
        if (present)
            words += (words.empty() ? "" : ",") + word;
    };
    add(faults.silence, "silence");
    add(faults.syncLoss, "sync-loss");
    add(faults.noPat, "no-pat");
    add(faults.allScrambled, "scrambled");
    add(faults.errorPercent > 0, "errors=" + std::to_string(faults.errorPercent));
    add(multiplex.refuseTune != 0, "refuse");
    return words.empty() ? "none" : words;
}

int firstClearProgram(const lab::Multiplex &multiplex)
{
    if (multiplex.faults.allScrambled)
        return 0;
    for (const lab::Program &program : multiplex.programs) {
        if (!program.scrambled && program.firstOf(lab::StreamKind::Video))
            return program.number;
    }
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 5) {
        std::fprintf(stderr, "usage: lab-streams DESCRIPTION FOLDER SECONDS BITS-PER-SECOND\n");
        return 2;
    }
    lab::BroadcastDescription broadcast;
    std::string error;
    if (!broadcast.load(argv[1], error)) {
        std::fprintf(stderr, "lab-streams: %s: %s\n", argv[1], error.c_str());
        return 1;
    }
    const double seconds = std::atof(argv[3]);
    const long bitsPerSecond = std::atol(argv[4]);
    const std::size_t slots = static_cast<std::size_t>(seconds * bitsPerSecond / (188 * 8));
    for (const lab::Multiplex &multiplex : broadcast.multiplexes()) {
        lab::TransportStreamGenerator generator(multiplex, bitsPerSecond);
        std::vector<std::uint8_t> stream;
        generator.generate(slots, stream);
        const std::string name = multiplex.network + "-" + std::to_string(multiplex.channel) + ".ts";
        std::ofstream file(std::string(argv[2]) + "/" + name, std::ios::binary);
        file.write(reinterpret_cast<const char *>(stream.data()), static_cast<std::streamsize>(stream.size()));
        if (!file) {
            std::fprintf(stderr, "lab-streams: cannot write %s\n", name.c_str());
            return 1;
        }
        std::printf("%s %s %d %d %s\n", name.c_str(), multiplex.network.c_str(), multiplex.channel,
                    firstClearProgram(multiplex), faultWords(multiplex).c_str());
    }
    return 0;
}
