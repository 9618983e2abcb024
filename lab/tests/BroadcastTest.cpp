// The portable broadcast code on its own: the description file's reader, the CRC-32 of the
// tables, the transport-stream generator with its faults, and the demultiplexing that takes the
// stream apart again (across arbitrary sample boundaries). That FFmpeg decodes the stream is
// LabBroadcastFfmpegTest's (lab/tests/ffmpeg-decodes-broadcast.sh).
#include <windows.h>

#include <cstdint>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "broadcast/BroadcastDescription.h"
#include "broadcast/Crc32Mpeg2.h"
#include "broadcast/MpegVideoFrame.h"
#include "broadcast/PsiTables.h"
#include "broadcast/TransportStreamGenerator.h"
#include "demux/TransportStreamDemux.h"

namespace {

const long kBitRate = 4000000;

lab::Multiplex parseOne(const std::string &text)
{
    lab::BroadcastDescription description;
    std::string error;
    EXPECT_TRUE(description.parse(text, error)) << error;
    return description.multiplexes().empty() ? lab::Multiplex() : description.multiplexes().front();
}

std::string parseError(const std::string &text)
{
    lab::BroadcastDescription description;
    std::string error;
    EXPECT_FALSE(description.parse(text, error));
    return error;
}

std::vector<std::uint8_t> generate(const lab::Multiplex &multiplex, size_t slots, const lab::StreamFaults &faults = {})
{
    lab::TransportStreamGenerator generator(multiplex, kBitRate);
    generator.setFaults(faults);
    std::vector<std::uint8_t> bytes;
    generator.generate(slots, bytes);
    return bytes;
}

const char kTwoPrograms[] = "[cable]\n"
                            "channel = 4\n"
                            "frequency = 67250\n"
                            "program = 1 pmt=0x30 video=0x31 audio=0x34 scrambled\n"
                            "program = 2 pmt=0x40 video=0x41 audio=0x44\n";

TEST(BroadcastTest, Crc32OfTheTables)
{
    const std::uint8_t check[] = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(0x0376E6E7u, lab::Crc32Mpeg2::compute(check, sizeof(check)));
    const lab::Multiplex multiplex = parseOne(kTwoPrograms);
    const std::vector<std::uint8_t> pat = lab::PsiTables::programAssociation(4, multiplex.programs);
    EXPECT_EQ(0u, lab::Crc32Mpeg2::compute(pat.data(), pat.size()));
    EXPECT_EQ(3u + 5 + 2 * 4 + 4, pat.size());
    const std::vector<std::uint8_t> pmt = lab::PsiTables::programMap(multiplex.programs[0], true);
    EXPECT_EQ(0u, lab::Crc32Mpeg2::compute(pmt.data(), pmt.size()));
    EXPECT_EQ(0x09, pmt[12]); // the CA descriptor of a scrambled program
}

TEST(BroadcastTest, DescriptionReadsTheLabBroadcast)
{
    wchar_t module[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, module, MAX_PATH);
    std::wstring path(module);
    path.erase(path.find_last_of(L"\\/") + 1);
    std::ifstream file(std::string(path.begin(), path.end()) + "broadcast.conf");
    ASSERT_TRUE(file.good());
    std::ostringstream text;
    text << file.rdbuf();
    lab::BroadcastDescription description;
    std::string error;
    ASSERT_TRUE(description.parse(text.str(), error)) << error;

    const lab::Multiplex *cable2 = description.find({"cable"}, 55250);
    ASSERT_TRUE(cable2);
    EXPECT_EQ(2, cable2->channel);
    EXPECT_EQ(cable2, description.find({"cable"}, 55500));
    EXPECT_EQ(nullptr, description.find({"cable"}, 55501));
    EXPECT_EQ(nullptr, description.find({"atsc"}, 55250));
    const lab::Multiplex *atsc8 = description.find({"atsc", "cable"}, 185900);
    ASSERT_TRUE(atsc8);
    EXPECT_EQ(8, atsc8->channel);
    EXPECT_EQ(1, atsc8->programs[0].minorChannel);
    EXPECT_TRUE(atsc8->locksWith("8VSB"));
    EXPECT_TRUE(atsc8->locksWith(""));
    EXPECT_FALSE(atsc8->locksWith("256QAM"));
    EXPECT_EQ(static_cast<std::int32_t>(0x8007001F), description.find({"cable"}, 175250)->refuseTune);
    EXPECT_EQ(30, description.find({"cable"}, 91250)->faults.errorPercent);
    // The same frequency in two network types.
    EXPECT_EQ("dtmb", description.find({"dtmb"}, 474000)->network);
    EXPECT_EQ("dvb-t", description.find({"dvb-t"}, 474000)->network);
}

TEST(BroadcastTest, DescriptionMistakesNameTheirLine)
{
    EXPECT_EQ("line 1: a section names a network type: [atsc], [cable], [dvb-t] or [dtmb]", parseError("[dvb-s]\n"));
    EXPECT_EQ("line 2: expected \"key = value\" inside a section", parseError("\nfrequency = 1\n"));
    EXPECT_EQ("line 3: program needs pmt=PID", parseError("[cable]\nfrequency = 1\nprogram = 1 video=0x31\n"));
    EXPECT_EQ("line 2: unknown fault \"loud\"", parseError("[cable]\nfault = silence, loud\n"));
    EXPECT_EQ("line 2: unknown key \"colour\"", parseError("[dtmb]\ncolour = red\n"));
    EXPECT_EQ("line 1: a multiplex needs a frequency (or an atsc channel)", parseError("[cable]\nchannel = 3\n"));
    EXPECT_EQ("line 2: program: cannot read \"video=0x2000\"",
              parseError("[atsc]\nprogram = 1 pmt=0x30 video=0x2000\n"));
}

TEST(BroadcastTest, GeneratedStreamKeepsSyncCountersAndPace)
{
    const lab::Multiplex multiplex = parseOne(kTwoPrograms);
    // One second of stream.
    const size_t slots = kBitRate / (188 * 8);
    const std::vector<std::uint8_t> bytes = generate(multiplex, slots);
    ASSERT_EQ(slots * 188, bytes.size());
    std::map<int, int> counters;
    std::map<int, int> packetsPerPid;
    std::map<int, int> unitsPerPid;
    for (size_t offset = 0; offset < bytes.size(); offset += 188) {
        ASSERT_EQ(0x47, bytes[offset]);
        const int pid = ((bytes[offset + 1] & 0x1F) << 8) | bytes[offset + 2];
        ++packetsPerPid[pid];
        if (bytes[offset + 1] & 0x40)
            ++unitsPerPid[pid];
        if (pid == 0x1FFF)
            continue;
        const int counter = bytes[offset + 3] & 0x0F;
        if (counters.count(pid)) {
            EXPECT_EQ((counters[pid] + 1) & 0x0F, counter) << "PID " << pid;
        }
        counters[pid] = counter;
    }
    EXPECT_EQ(10, packetsPerPid[0]);     // a PAT every 100 ms
    EXPECT_EQ(10, packetsPerPid[0x40]);  // and each PMT
    EXPECT_EQ(30, unitsPerPid[0x41]);    // a picture every 1/29.97 s
    EXPECT_GT(packetsPerPid[0x41], 30);  // each a coded picture of several packets
    EXPECT_EQ(32, unitsPerPid[0x44]);    // an AC-3 frame every 32 ms
    EXPECT_EQ(32, packetsPerPid[0x44]);  // in one packet each
    EXPECT_GT(packetsPerPid[0x1FFF], 0); // the rest is stuffing
}

TEST(BroadcastTest, AudioFollowsTheNetworksCoding)
{
    const lab::Multiplex multiplex = parseOne("[dvb-t]\nchannel = 21\nfrequency = 474000\n"
                                              "program = 0x1001 pmt=0x100 video=0x101 audio=0x102\n");
    const std::vector<std::uint8_t> bytes = generate(multiplex, kBitRate / (188 * 8));
    int frames = 0;
    for (size_t offset = 0; offset < bytes.size(); offset += 188) {
        const int pid = ((bytes[offset + 1] & 0x1F) << 8) | bytes[offset + 2];
        if (pid != 0x102 || !(bytes[offset + 1] & 0x40))
            continue;
        ++frames;
        const size_t pes = offset + 4 + ((bytes[offset + 3] & 0x20) ? 1 + bytes[offset + 4] : 0);
        EXPECT_EQ(0xC0, bytes[pes + 3]); // an MPEG audio stream
        const size_t frame = pes + 9 + bytes[pes + 8];
        EXPECT_EQ(0xFF, bytes[frame]); // MPEG-1 layer II, 48 kHz
        EXPECT_EQ(0xFD, bytes[frame + 1]);
    }
    EXPECT_EQ(42, frames); // a layer II frame every 24 ms
}

TEST(BroadcastTest, PcrTellsWhenItsPacketArrives)
{
    const lab::Multiplex multiplex = parseOne(kTwoPrograms);
    const std::vector<std::uint8_t> bytes = generate(multiplex, 3000);
    int pcrs = 0;
    for (size_t offset = 0; offset < bytes.size(); offset += 188) {
        const std::uint8_t *p = bytes.data() + offset;
        if (!(p[3] & 0x20) || p[4] < 7 || !(p[5] & 0x10))
            continue;
        ++pcrs;
        const long long base =
            (static_cast<long long>(p[6]) << 25) | (p[7] << 17) | (p[8] << 9) | (p[9] << 1) | (p[10] >> 7);
        const long long pcr = base * 300 + (((p[10] & 1) << 8) | p[11]);
        const long long arrival = static_cast<long long>(offset / 188) * 188 * 8 * 27000000LL / kBitRate;
        EXPECT_NEAR(static_cast<double>(arrival), static_cast<double>(pcr), 300.0) << "packet " << offset / 188;
    }
    EXPECT_GT(pcrs, 20);
}

TEST(BroadcastTest, PicturesCoverThePictureInSlices)
{
    const lab::FrameLabel label{9, 3, 1234};
    lab::MpegVideoFrame pictures;
    for (const auto &size : std::vector<std::pair<int, int>>{{320, 240}, {100, 50}, {16, 16}}) {
        const std::vector<std::uint8_t> picture = pictures.build(size.first, size.second, label);
        std::map<int, int> startCodes;
        for (size_t i = 0; i + 3 < picture.size(); ++i) {
            if (picture[i] == 0 && picture[i + 1] == 0 && picture[i + 2] == 1)
                ++startCodes[picture[i + 3]];
        }
        EXPECT_EQ(1, startCodes[0xB3]); // sequence header
        EXPECT_EQ(2, startCodes[0xB5]); // its extension, the picture coding extension
        EXPECT_EQ(1, startCodes[0x00]); // picture
        EXPECT_EQ(1, startCodes[0xB2]); // user data
        const int rows = (size.second + 15) / 16;
        for (int row = 1; row <= rows; ++row)
            EXPECT_EQ(1, startCodes[row]) << "slice " << row;
        EXPECT_EQ(0, startCodes[rows + 1]);
        lab::FrameLabel read;
        int width = 0;
        int height = 0;
        ASSERT_TRUE(lab::MpegVideoFrame::read(picture.data(), picture.size(), read, width, height));
        EXPECT_EQ(size.first, width);
        EXPECT_EQ(size.second, height);
        EXPECT_EQ(9, read.channel);
        EXPECT_EQ(3, read.program);
        EXPECT_EQ(1234u, read.frame);
    }
}

TEST(BroadcastTest, GeneratorFaults)
{
    const lab::Multiplex multiplex = parseOne(kTwoPrograms);
    lab::StreamFaults silence;
    silence.silence = true;
    EXPECT_TRUE(generate(multiplex, 500, silence).empty());

    lab::StreamFaults syncLoss;
    syncLoss.syncLoss = true;
    const std::vector<std::uint8_t> noise = generate(multiplex, 500, syncLoss);
    ASSERT_EQ(500u * 188, noise.size());
    for (size_t offset = 0; offset < noise.size(); offset += 188)
        ASSERT_NE(0x47, noise[offset]);

    lab::StreamFaults errors;
    errors.errorPercent = 25;
    errors.noPat = true;
    const std::vector<std::uint8_t> damaged = generate(multiplex, 400, errors);
    int flagged = 0;
    for (size_t offset = 0; offset < damaged.size(); offset += 188) {
        flagged += (damaged[offset + 1] & 0x80) ? 1 : 0;
        EXPECT_NE(0, ((damaged[offset + 1] & 0x1F) << 8) | damaged[offset + 2]);
    }
    EXPECT_EQ(100, flagged);
}

TEST(BroadcastTest, DemultiplexingFindsTheClearProgramAcrossSampleBoundaries)
{
    const lab::Multiplex multiplex = parseOne(kTwoPrograms);
    const std::vector<std::uint8_t> bytes = generate(multiplex, 3000);
    lab::TransportStreamDemux demux;
    std::vector<lab::DemuxUnit> units;
    // Odd sample sizes cut packets anywhere; three bytes of noise in front are skipped.
    const std::uint8_t noise[] = {0x00, 0x47, 0x12};
    demux.feed(noise, sizeof(noise), units);
    for (size_t offset = 0; offset < bytes.size(); offset += 1001)
        demux.feed(bytes.data() + offset, std::min<size_t>(1001, bytes.size() - offset), units);
    EXPECT_EQ(0x41, demux.videoPid());
    EXPECT_EQ(0x44, demux.audioPid());

    int sections = 0;
    int audio = 0;
    std::vector<unsigned long> frames;
    for (const lab::DemuxUnit &unit : units) {
        if (unit.kind == lab::DemuxUnit::Kind::Section) {
            ++sections;
            EXPECT_EQ(0u, lab::Crc32Mpeg2::compute(unit.data.data(), unit.data.size()));
        } else if (unit.kind == lab::DemuxUnit::Kind::Audio) {
            ++audio;
            EXPECT_EQ(0x0B, unit.data[0]); // AC-3 sync word
        } else {
            lab::FrameLabel label;
            int width = 0;
            int height = 0;
            ASSERT_TRUE(lab::MpegVideoFrame::read(unit.data.data(), unit.data.size(), label, width, height));
            EXPECT_EQ(4, label.channel);
            EXPECT_EQ(2, label.program);
            EXPECT_EQ(320, width);
            EXPECT_EQ(240, height);
            frames.push_back(label.frame);
        }
    }
    EXPECT_GT(sections, 3);
    EXPECT_GT(audio, 3);
    ASSERT_GT(frames.size(), 3u);
    for (size_t i = 1; i < frames.size(); ++i)
        EXPECT_EQ(frames[i - 1] + 1, frames[i]);
}

TEST(BroadcastTest, DemultiplexingDropsDamagedPictures)
{
    const lab::Multiplex multiplex = parseOne("[dvb-t]\nchannel = 21\nfrequency = 474000\n"
                                              "program = 0x1001 pmt=0x100 video=0x101 audio=0x102\n");
    lab::StreamFaults errors;
    errors.errorPercent = 100;
    lab::TransportStreamDemux demux;
    std::vector<lab::DemuxUnit> units;
    const std::vector<std::uint8_t> damaged = generate(multiplex, 3000, errors);
    demux.feed(damaged.data(), damaged.size(), units);
    EXPECT_TRUE(units.empty());
    EXPECT_EQ(-1, demux.videoPid());
}

} // namespace
