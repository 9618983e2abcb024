// The transport-stream pieces of the digital tuners: the quality score and hex dump, the
// packet buffer's packet search and waits, the clear-program search over PAT and PMT, and
// the cable, DTMB and ATSC channel plans.
#include "FrameworkTest.h"
#include "ManualClock.h"
#include "TsStreamBuilder.h"

#include <ATSCChannelPlan.h>
#include <CableFrequencyPlan.h>
#include <ClearProgramSearch.h>
#include <DTMBFrequencyPlan.h>
#include <Mpeg2StreamAnalyzer.h>
#include <SampleCallback.h>
#include <StreamHealthMonitor.h>
#include <gtest/gtest.h>
#include <atlbase.h>
#include <kel/LogFactory.h>
#include <cstring>
#include <random>

namespace {

using sorvane::ClearProgramSearch;
using sorvane::Mpeg2StreamAnalyzer;
using sorvane::SampleCallback;
using sorvane::test::Bytes;
using sorvane::test::TsElementaryStream;
using sorvane::test::TsProgram;
using sorvane::test::TsStreamBuilder;

const uint16_t kVideoPid = 0x100;
const uint16_t kAudioPid = 0x101;
const uint16_t kVideo2Pid = 0x200;
const uint16_t kAudio2Pid = 0x201;
const uint16_t kPmt1 = 0x30;
const uint16_t kPmt2 = 0x40;

Bytes packets(int count, int errorEvery = 0)
{
    Bytes out;
    for (int i = 0; i < count; ++i) {
        const bool error = errorEvery > 0 && i % errorEvery == 0;
        const Bytes packet = TsStreamBuilder::packet(kVideoPid, false, i, Bytes(), error);
        out.insert(out.end(), packet.begin(), packet.end());
    }
    return out;
}

// Hands out the packets of a byte block in order.
class BlockSource : public sorvane::TsPacketSource {
public:
    explicit BlockSource(const Bytes &bytes) : m_bytes(bytes), m_at(0), m_taken(0) {}
    bool getNextPacket(unsigned char *packet) override
    {
        if (m_at + TsStreamBuilder::kPacketSize > m_bytes.size())
            return false;
        std::memcpy(packet, m_bytes.data() + m_at, TsStreamBuilder::kPacketSize);
        m_at += TsStreamBuilder::kPacketSize;
        ++m_taken;
        return true;
    }
    int taken() const { return m_taken; }

private:
    Bytes m_bytes;
    size_t m_at;
    int m_taken;
};

int search(const TsStreamBuilder &stream)
{
    BlockSource source(stream.bytes());
    return ClearProgramSearch::processTransportStream(source);
}

std::vector<TsElementaryStream> streams(uint16_t video, uint16_t audio, bool caOnAudio = false)
{
    return {{0x02, video, false}, {0x81, audio, caOnAudio}};
}

TsStreamBuilder twoPrograms(bool firstProgramCa, bool firstAudioCa = false)
{
    TsStreamBuilder stream;
    stream.addSection(0, TsStreamBuilder::pat({{0, 0x10}, {3, kPmt1}, {4, kPmt2}}));
    stream.addSection(kPmt1, TsStreamBuilder::pmt(3, streams(kVideoPid, kAudioPid, firstAudioCa), firstProgramCa));
    stream.addSection(kPmt2, TsStreamBuilder::pmt(4, streams(kVideo2Pid, kAudio2Pid)));
    return stream;
}

class TransportStreamTest : public sorvane::test::FrameworkTest {};

TEST_F(TransportStreamTest, SignalQualityScoresWholePacketsAndFindsLostSync)
{
    Bytes short187(187, 0x47);
    EXPECT_EQ(Mpeg2StreamAnalyzer::signalQuality(short187.data(), 187), -2);

    Bytes two = packets(2);
    two[188] = 0x46;
    EXPECT_EQ(Mpeg2StreamAnalyzer::signalQuality(two.data(), static_cast<int>(two.size())), -1);
    ASSERT_FALSE(log().find(L"Out of Sync").empty());
    // The analyzer is one of the capture classes, not a helper.
    EXPECT_EQ(log().find(L"Out of Sync").front().category, kel::String(L"libSorvane.Capture"));

    Bytes ten;
    for (int i = 0; i < 10; ++i) {
        const Bytes packet = TsStreamBuilder::packet(kVideoPid, false, i, Bytes(), i == 1 || i == 4 || i == 9);
        ten.insert(ten.end(), packet.begin(), packet.end());
    }
    // Bytes after the last whole packet are not looked at.
    ten.push_back(0x00);
    EXPECT_EQ(Mpeg2StreamAnalyzer::signalQuality(ten.data(), static_cast<int>(ten.size())), 70);
    EXPECT_TRUE(log().contains(L"Found packet error at packet: 4"));
    EXPECT_TRUE(log().contains(L"Header Flag Field: 81"));
    EXPECT_EQ(Mpeg2StreamAnalyzer::signalQuality(ten.data(), 188 * 3), 66);
}

TEST_F(TransportStreamTest, DataToStringDumpsRowsOfEightWithTheirText)
{
    unsigned char data[] = {'G', 'A', 0x00, 'z', 0x7F, ' ', '~', 0x1F, 0xAB, 'q'};
    EXPECT_EQ(Mpeg2StreamAnalyzer::dataToString(data, 0), kel::String());
    EXPECT_EQ(Mpeg2StreamAnalyzer::dataToString(data, 10),
              kel::String(L"0x47 0x41 0x00 0x7A 0x7F 0x20 0x7E 0x1F     GA.z. ~.\n0xAB 0x71 "));
}

TEST_F(TransportStreamTest, GetNextPacketSkipsNoiseAndWaitsHalfASecondForMissingBytes)
{
    sorvane::test::ManualClock clock;
    CComPtr<SampleCallback> buffer(new SampleCallback);

    Bytes stream(5, 0x47);
    stream[1] = 0x00;
    const Bytes body = packets(4);
    stream.insert(stream.end(), body.begin(), body.end());
    stream[5 + 3] = 0x3C; // marks the packet at offset 5
    EXPECT_EQ(buffer->BufferCB(0.0, stream.data(), static_cast<long>(stream.size())), S_OK);
    EXPECT_EQ(buffer->bytesReceived(), 757);

    unsigned char packet[188] = {};
    ASSERT_TRUE(buffer->getNextPacket(packet));
    EXPECT_EQ(0, std::memcmp(packet, stream.data() + 5, 188));
    EXPECT_TRUE(clock.sleeps().empty());
    EXPECT_TRUE(log().contains(L"packet is valid"));

    // 564 bytes are left past the read position: not enough to be sure of the sync.
    EXPECT_FALSE(buffer->getNextPacket(packet));
    EXPECT_EQ(clock.sleeps(), std::vector<uint32_t>(5, 100));

    buffer->reset();
    EXPECT_EQ(buffer->bytesReceived(), 0);
    EXPECT_EQ(buffer->BufferCB(0.0, nullptr, 0), S_OK);
}

TEST_F(TransportStreamTest, ClearProgramSearchPicksTheFirstUnscrambledProgram)
{
    // Both clear: the first in the PAT's order, once its streams were seen.
    TsStreamBuilder clear = twoPrograms(false);
    clear.addPayload(kVideoPid, false).addPayload(kAudioPid, false);
    EXPECT_EQ(search(clear), 3);

    // A CA descriptor for the program, or for one of its streams, makes it scrambled.
    TsStreamBuilder programCa = twoPrograms(true);
    programCa.addPayload(kVideoPid, false).addPayload(kVideo2Pid, false).addPayload(kAudio2Pid, false);
    EXPECT_EQ(search(programCa), 4);
    EXPECT_EQ(search(twoPrograms(false, true).addPayload(kVideo2Pid, false).addPayload(kAudio2Pid, false)), 4);

    // Scrambling control bits on one of its packets.
    TsStreamBuilder scrambledBits = twoPrograms(false);
    scrambledBits.addPayload(kVideoPid, false).addPayload(kAudioPid, true).addPayload(kVideo2Pid, false);
    EXPECT_EQ(search(scrambledBits), 4);

    // Everything scrambled: none.
    TsStreamBuilder all = twoPrograms(false);
    all.addPayload(kVideoPid, true).addPayload(kVideo2Pid, true);
    EXPECT_EQ(search(all), -1);

    // No PAT at all, or nothing: none.
    EXPECT_EQ(search(TsStreamBuilder().addPayload(kVideoPid, false)), -1);
    EXPECT_EQ(search(TsStreamBuilder()), -1);
}

TEST_F(TransportStreamTest, ClearProgramSearchStopsReadingOnceItKnows)
{
    TsStreamBuilder stream = twoPrograms(false);
    stream.addPayload(kVideoPid, false).addPayload(kAudioPid, false);
    for (int i = 0; i < 50; ++i)
        stream.addPayload(kVideo2Pid, false);
    BlockSource source(stream.bytes());
    EXPECT_EQ(ClearProgramSearch::processTransportStream(source), 3);
    EXPECT_EQ(source.taken(), 5);
}

TEST_F(TransportStreamTest, ClearProgramSearchAssemblesAndChecksSections)
{
    // A PMT spanning three packets.
    TsStreamBuilder spanning;
    spanning.addSection(0, TsStreamBuilder::pat({{7, kPmt1}}));
    spanning.addSection(kPmt1, TsStreamBuilder::pmt(7, streams(kVideoPid, kAudioPid), false, 0, 400));
    ASSERT_EQ(spanning.bytes().size(), 188u * 4);
    EXPECT_EQ(search(spanning.addPayload(kVideoPid, false).addPayload(kAudioPid, false)), 7);

    // A damaged CRC: the PAT is never accepted.
    Bytes badPat = TsStreamBuilder::pat({{7, kPmt1}});
    badPat[9] ^= 0x01;
    TsStreamBuilder badCrc;
    badCrc.addSection(0, badPat).addSection(kPmt1, TsStreamBuilder::pmt(7, streams(kVideoPid, kAudioPid)));
    EXPECT_EQ(search(badCrc.addPayload(kVideoPid, false).addPayload(kAudioPid, false)), -1);

    // A PAT for next (current_next 0) is ignored; the current one counts.
    TsStreamBuilder next;
    next.addSection(0, TsStreamBuilder::pat({{9, kPmt2}}, 1, false));
    next.addSection(0, TsStreamBuilder::pat({{7, kPmt1}}, 0, true));
    next.addSection(kPmt2, TsStreamBuilder::pmt(9, streams(kVideo2Pid, kAudio2Pid)));
    next.addSection(kPmt1, TsStreamBuilder::pmt(7, streams(kVideoPid, kAudioPid), true));
    EXPECT_EQ(search(next.addPayload(kVideo2Pid, false).addPayload(kAudio2Pid, false)), -1);

    // A new PAT version replaces the programs of the old one.
    TsStreamBuilder version;
    version.addSection(0, TsStreamBuilder::pat({{7, kPmt1}}, 3));
    version.addSection(0, TsStreamBuilder::pat({{9, kPmt2}}, 4));
    version.addSection(kPmt1, TsStreamBuilder::pmt(7, streams(kVideoPid, kAudioPid)));
    version.addSection(kPmt2, TsStreamBuilder::pmt(9, streams(kVideo2Pid, kAudio2Pid)));
    EXPECT_EQ(search(version.addPayload(kVideoPid, false)
                         .addPayload(kAudioPid, false)
                         .addPayload(kVideo2Pid, false)
                         .addPayload(kAudio2Pid, false)),
              9);

    // A PAT in two sections: complete only with both.
    TsStreamBuilder twoSections;
    twoSections.addSection(0, TsStreamBuilder::pat({{7, kPmt1}}, 0, true, 0, 1));
    twoSections.addSection(kPmt1, TsStreamBuilder::pmt(7, streams(kVideoPid, kAudioPid), true));
    twoSections.addSection(0, TsStreamBuilder::pat({{9, kPmt2}}, 0, true, 1, 1));
    twoSections.addSection(kPmt2, TsStreamBuilder::pmt(9, streams(kVideo2Pid, kAudio2Pid)));
    EXPECT_EQ(search(twoSections.addPayload(kVideo2Pid, false).addPayload(kAudio2Pid, false)), 9);
}

TEST_F(TransportStreamTest, ClearProgramSearchFollowsPointerFieldsAndLostPackets)
{
    // The PMT's last bytes, then a new section behind the pointer field, in one packet.
    const Bytes pat = TsStreamBuilder::pat({{7, kPmt1}});
    const Bytes pmt = TsStreamBuilder::pmt(7, streams(kVideoPid, kAudioPid), false, 0, 180);
    ASSERT_GT(pmt.size(), 183u);
    const size_t tail = pmt.size() - 183;
    Bytes second(1, static_cast<uint8_t>(tail));
    second.insert(second.end(), pmt.begin() + 183, pmt.end());
    const Bytes pmtAgain = TsStreamBuilder::pmt(7, streams(kVideoPid, kAudioPid), false, 1);
    second.insert(second.end(), pmtAgain.begin(), pmtAgain.end());
    ASSERT_LE(second.size(), 184u);

    TsStreamBuilder pointer;
    pointer.addSection(0, pat);
    Bytes first(1, 0x00);
    first.insert(first.end(), pmt.begin(), pmt.begin() + 183);
    pointer.addPacket(TsStreamBuilder::packet(kPmt1, true, 0, first));
    pointer.addPacket(TsStreamBuilder::packet(kPmt1, true, 1, second));
    EXPECT_EQ(search(pointer.addPayload(kVideoPid, false).addPayload(kAudioPid, false)), 7);

    // The second packet lost (a continuity jump): the PMT is dropped, and so is the program.
    TsStreamBuilder lost;
    lost.addSection(0, pat);
    lost.addPacket(TsStreamBuilder::packet(kPmt1, true, 0, first));
    Bytes rest(pmt.begin() + 183, pmt.end());
    lost.addPacket(TsStreamBuilder::packet(kPmt1, false, 2, rest));
    EXPECT_EQ(search(lost.addPayload(kVideoPid, false).addPayload(kAudioPid, false)), -1);
}

TEST_F(TransportStreamTest, ClearProgramSearchIgnoresDamagedPayloadsButNotDamagedTables)
{
    // The tables (PAT, two PMTs) fill the first three packets; the programs' packets follow.
    TsStreamBuilder stream = twoPrograms(false);
    for (int i = 0; i < 6; ++i)
        stream.addPayload(kVideoPid, false).addPayload(kAudioPid, false);
    const Bytes clean = stream.bytes();
    ASSERT_EQ(search(stream), 3);

    std::mt19937 random(1234);
    for (int round = 0; round < 100; ++round) {
        Bytes bytes = clean;
        // Any byte after the header of any packet after the tables.
        for (int flips = 0; flips < 30; ++flips) {
            const size_t packet = 3 + random() % (bytes.size() / 188 - 3);
            bytes[packet * 188 + 4 + random() % 184] = static_cast<uint8_t>(random());
        }
        BlockSource source(bytes);
        EXPECT_EQ(ClearProgramSearch::processTransportStream(source), 3) << round;
    }

    // A damaged PAT fails its CRC: no program is known, none is clear.
    Bytes badPat = clean;
    badPat[10] ^= 0xFF;
    BlockSource noPat(badPat);
    EXPECT_EQ(ClearProgramSearch::processTransportStream(noPat), -1);

    // A damaged first PMT: only the second program is described, and it is clear.
    Bytes badPmt = clean;
    badPmt[188 + 12] ^= 0xFF;
    BlockSource secondOnly(badPmt);
    EXPECT_EQ(ClearProgramSearch::processTransportStream(secondOnly), 4);
}

TEST_F(TransportStreamTest, PacketBufferDropsSamplesOnceFull)
{
    CComPtr<SampleCallback> buffer(new SampleCallback);
    const long chunk = 8 * 1024 * 1024;
    std::vector<BYTE> bytes(static_cast<size_t>(chunk), 0x47);
    // 24 chunks fit; a 25th would fill the buffer to the last byte, which is not allowed.
    for (int i = 0; i < 25; ++i)
        EXPECT_EQ(buffer->BufferCB(0.0, bytes.data(), chunk), S_OK);
    EXPECT_EQ(buffer->bytesReceived(), 24 * chunk);
    EXPECT_EQ(buffer->BufferCB(0.0, bytes.data(), chunk - 1), S_OK);
    EXPECT_EQ(buffer->bytesReceived(), SampleCallback::kCapacity - 1);
    EXPECT_EQ(buffer->BufferCB(0.0, bytes.data(), 1), S_OK);
    EXPECT_EQ(buffer->bytesReceived(), SampleCallback::kCapacity - 1);
    EXPECT_TRUE(log().contains(L"BufferCB sees 1 bytes"));
}

sorvane::StreamHealth health(const TsStreamBuilder &stream, double durationMs)
{
    return sorvane::StreamHealthMonitor::analyze(stream.bytes().data(), static_cast<int>(stream.bytes().size()),
                                                 durationMs);
}

TEST_F(TransportStreamTest, StreamHealthCountsThePriorityOneIndicators)
{
    TsStreamBuilder clean = twoPrograms(false);
    for (int i = 0; i < 4; ++i) {
        clean.addPayload(kVideoPid, false)
            .addPayload(kAudioPid, false)
            .addPayload(kVideo2Pid, false)
            .addPayload(kAudio2Pid, false);
    }
    const sorvane::StreamHealth good = health(clean, 100.0);
    EXPECT_TRUE(good.clean());
    EXPECT_EQ(good.packets, 19);

    // A lost packet, and a packet sent twice (allowed) then a third time (not).
    TsStreamBuilder continuity = twoPrograms(false);
    continuity.addPayload(kVideoPid, false);
    continuity.addPacket(TsStreamBuilder::packet(kVideoPid, false, 3, Bytes()));
    continuity.addPacket(TsStreamBuilder::packet(kAudioPid, false, 0, Bytes()));
    continuity.addPacket(TsStreamBuilder::packet(kAudioPid, false, 0, Bytes()));
    continuity.addPacket(TsStreamBuilder::packet(kAudioPid, false, 0, Bytes()));
    EXPECT_EQ(health(continuity, 10.0).continuityErrors, 2);

    // One damaged sync byte is an error; two in a row lose the sync.
    Bytes damaged = clean.bytes();
    damaged[188 * 6] = 0x00;
    sorvane::StreamHealth oneBad =
        sorvane::StreamHealthMonitor::analyze(damaged.data(), static_cast<int>(damaged.size()), 0);
    EXPECT_EQ(oneBad.syncByteErrors, 1);
    EXPECT_EQ(oneBad.syncLosses, 0);
    damaged[188 * 7] = 0x00;
    sorvane::StreamHealth twoBad =
        sorvane::StreamHealthMonitor::analyze(damaged.data(), static_cast<int>(damaged.size()), 0);
    EXPECT_EQ(twoBad.syncLosses, 1);

    // No PAT at all.
    TsStreamBuilder noPat;
    noPat.addPayload(kVideoPid, false).addPayload(kVideoPid, false);
    EXPECT_TRUE(health(noPat, 10.0).patMissing);

    // A PMT named by the PAT never comes; a stream named by a PMT never comes.
    TsStreamBuilder missing;
    missing.addSection(0, TsStreamBuilder::pat({{3, kPmt1}, {4, kPmt2}}));
    missing.addSection(kPmt1, TsStreamBuilder::pmt(3, streams(kVideoPid, kAudioPid)));
    missing.addPayload(kVideoPid, false);
    const sorvane::StreamHealth gaps = health(missing, 10.0);
    EXPECT_EQ(gaps.pmtMissing, 1);
    EXPECT_EQ(gaps.pidErrors, 1);

    // The PAT only once in two seconds is late.
    TsStreamBuilder late = twoPrograms(false);
    for (int i = 0; i < 97; ++i)
        late.addPayload(kVideoPid, false);
    const sorvane::StreamHealth slow = health(late, 2000.0);
    EXPECT_GE(slow.patErrors, 1);
    EXPECT_FALSE(slow.patMissing);
}

TEST_F(TransportStreamTest, ChannelPlans)
{
    const int entries = sorvane::CableFrequencyPlan::kEntries;
    EXPECT_EQ(entries, 135);
    const uint32_t *cable = sorvane::CableFrequencyPlan::table();
    EXPECT_EQ(cable[0], 0u);
    EXPECT_EQ(cable[1], 73250u);
    EXPECT_EQ(cable[2], 55250u);
    EXPECT_EQ(cable[6], 83250u);
    EXPECT_EQ(cable[7], 175250u);
    EXPECT_EQ(cable[13], 211250u);
    EXPECT_EQ(cable[14], 121250u);
    EXPECT_EQ(cable[22], 169250u);
    EXPECT_EQ(cable[94], 643250u);
    EXPECT_EQ(cable[95], 91250u);
    EXPECT_EQ(cable[99], 115250u);
    EXPECT_EQ(cable[100], 649250u);
    EXPECT_EQ(cable[120], 769250u);
    EXPECT_EQ(cable[134], 853250u);
    EXPECT_EQ(sorvane::CableFrequencyPlan::frequencyKHz(135), 0u);

    const uint32_t *dtmb = sorvane::DTMBFrequencyPlan::table();
    EXPECT_EQ(dtmb[13], 474000u);
    EXPECT_EQ(dtmb[24], 562000u);
    EXPECT_EQ(dtmb[25], 610000u);
    EXPECT_EQ(dtmb[56], 858000u);

    // The US television channels, 6 MHz wide, by their lower band edges (47 CFR 73.603):
    // 2 at 54 MHz, 5 at 76 MHz after the 72-76 MHz gap, 7 at 174 MHz, 14 at 470 MHz; the plan
    // gives each channel's centre.
    const struct {
        int channel;
        uint32_t lowerEdgeKHz;
    } edges[] = {{2, 54000},   {3, 60000},   {4, 66000},   {5, 76000},   {6, 82000},   {7, 174000},
                 {10, 192000}, {13, 210000}, {14, 470000}, {37, 608000}, {51, 692000}, {69, 800000}};
    for (const auto &edge : edges)
        EXPECT_EQ(sorvane::ATSCChannelPlan::frequencyKHz(edge.channel), edge.lowerEdgeKHz + 3000) << edge.channel;
    EXPECT_EQ(sorvane::ATSCChannelPlan::frequencyKHz(1), 0u);
    EXPECT_EQ(sorvane::ATSCChannelPlan::frequencyKHz(70), 0u);
}

} // namespace
