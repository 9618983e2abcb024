// Writes the fuzzers' starting corpora: transport streams with clear, CA-scrambled and
// bit-scrambled programs, PMTs spanning packets, several PAT sections, errored packets and
// noise, built with the tests' stream builder.
#include "SeedFiles.h"
#include "TsStreamBuilder.h"

#include <cstdio>
#include <string>
#include <vector>

using sorvane::test::Bytes;
using sorvane::test::TsElementaryStream;
using sorvane::test::TsStreamBuilder;

namespace {

std::vector<TsElementaryStream> av(uint16_t video, bool ca = false)
{
    return {{0x02, video, false}, {0x81, static_cast<uint16_t>(video + 1), ca}};
}

std::vector<Bytes> streams()
{
    std::vector<Bytes> out;
    TsStreamBuilder clear;
    clear.addSection(0, TsStreamBuilder::pat({{0, 0x10}, {1, 0x30}, {2, 0x40}}));
    clear.addSection(0x30, TsStreamBuilder::pmt(1, av(0x100)));
    clear.addSection(0x40, TsStreamBuilder::pmt(2, av(0x200)));
    for (int i = 0; i < 4; ++i)
        clear.addPayload(0x100, false).addPayload(0x101, false).addPayload(0x200, false);
    out.push_back(clear.bytes());

    TsStreamBuilder scrambled;
    scrambled.addSection(0, TsStreamBuilder::pat({{1, 0x30}, {2, 0x40}}, 5));
    scrambled.addSection(0x30, TsStreamBuilder::pmt(1, av(0x100), true));
    scrambled.addSection(0x40, TsStreamBuilder::pmt(2, av(0x200, true), false, 3));
    scrambled.addPayload(0x100, true).addPayload(0x200, true);
    out.push_back(scrambled.bytes());

    TsStreamBuilder spanning;
    spanning.addSection(0, TsStreamBuilder::pat({{7, 0x50}}, 0, true, 0, 1));
    spanning.addSection(0, TsStreamBuilder::pat({{8, 0x60}}, 0, true, 1, 1));
    spanning.addSection(0x50, TsStreamBuilder::pmt(7, av(0x300), false, 0, 500));
    spanning.addSection(0x60, TsStreamBuilder::pmt(8, av(0x400)));
    spanning.addPacket(TsStreamBuilder::packet(0x300, false, 0, Bytes(), true));
    spanning.addPayload(0x300, false).addPayload(0x301, false);
    out.push_back(spanning.bytes());
    return out;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s SEED-FOLDER (gets quality/, packetsearch/, programsearch/, streamhealth/)\n",
                     argv[0]);
        return 2;
    }
    const std::string folder = argv[1];
    const std::vector<Bytes> all = streams();
    for (size_t i = 0; i < all.size(); ++i) {
        sorvane::fuzz::SeedFiles::writeAll(folder, "stream" + std::to_string(i), all[i], 7, 0x00);
    }
    return 0;
}
