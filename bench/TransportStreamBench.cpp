// Speed of the digital tuners' transport-stream code on 64 MiB of a clear two-program stream,
// in MB/s of stream, each beside a memcpy of the same bytes: the quality score (log below its
// level), the packet buffer's packet search, the clear-program search fed every packet, and
// the TR 101 290 stream-health measurement.
#include "TsStreamBuilder.h"

#include <ClearProgramSearch.h>
#include <Mpeg2StreamAnalyzer.h>
#include <StreamHealthMonitor.h>
#include <TsPacketSearch.h>
#include <kel/Clock.h>
#include <kel/LogFactory.h>
#include <kel/LogPriority.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

namespace {

using sorvane::test::Bytes;
using sorvane::test::TsStreamBuilder;

const size_t kStreamBytes = 64u * 1024u * 1024u;
const int kRepeats = 5;
const double kMegabyte = 1e6;

double nowSeconds()
{
    return static_cast<double>(kel::Clock::nowMicroseconds()) / 1e6;
}

// PAT and PMTs every 100 packets, video and audio of two programs in between.
Bytes makeStream()
{
    TsStreamBuilder unit;
    unit.addSection(0, TsStreamBuilder::pat({{1, 0x30}, {2, 0x40}}));
    unit.addSection(0x30, TsStreamBuilder::pmt(1, {{0x02, 0x31, false}, {0x81, 0x34, false}}));
    unit.addSection(0x40, TsStreamBuilder::pmt(2, {{0x02, 0x41, false}, {0x81, 0x44, false}}));
    for (int i = 0; i < 97; ++i)
        unit.addPayload(i % 4 == 0 ? 0x34 : (i % 2 ? 0x31 : 0x41), false);
    Bytes stream;
    stream.reserve(kStreamBytes);
    while (stream.size() + unit.bytes().size() <= kStreamBytes) {
        stream.insert(stream.end(), unit.bytes().begin(), unit.bytes().end());
    }
    return stream;
}

// The best of several runs, in MB/s.
double rate(size_t bytes, const std::function<void()> &work)
{
    std::vector<double> seconds;
    for (int i = 0; i < kRepeats; ++i) {
        const double start = nowSeconds();
        work();
        seconds.push_back(nowSeconds() - start);
    }
    const double best = *std::min_element(seconds.begin(), seconds.end());
    return best > 0 ? static_cast<double>(bytes) / best / kMegabyte : 0.0;
}

volatile int g_sink;

} // namespace

int main()
{
    kel::LogFactory::setPriority(kel::LOG_INFO);
    Bytes stream = makeStream();
    const int length = static_cast<int>(stream.size());
    Bytes copy(stream.size());

    const double memcpyRate = rate(stream.size(), [&] {
        std::memcpy(copy.data(), stream.data(), stream.size());
        g_sink = copy[copy.size() / 2];
    });
    const double qualityRate =
        rate(stream.size(), [&] { g_sink = sorvane::Mpeg2StreamAnalyzer::signalQuality(stream.data(), length); });
    const double searchRate = rate(stream.size(), [&] {
        int32_t readPosition = 0;
        unsigned char packet[188];
        int found = 0;
        while (sorvane::TsPacketSearch::findPacket(stream.data(), readPosition, length, packet))
            ++found;
        g_sink = found;
    });
    const double programRate = rate(stream.size(), [&] {
        sorvane::ClearProgramSearch search;
        int answer = 0;
        for (int at = 0; at + 188 <= length; at += 188)
            answer = search.addPacket(stream.data() + at);
        g_sink = answer;
    });
    const double healthRate = rate(stream.size(), [&] {
        g_sink = static_cast<int>(sorvane::StreamHealthMonitor::analyze(stream.data(), length, 10000.0).packets);
    });

    std::printf("Transport stream: %.1f MiB, best of %d runs\n", stream.size() / 1048576.0, kRepeats);
    std::printf("  %-34s %9.1f MB/s\n", "memcpy of the same bytes", memcpyRate);
    std::printf("  %-34s %9.1f MB/s  (%.2f x memcpy)\n", "signalQuality (log off)", qualityRate,
                qualityRate / memcpyRate);
    std::printf("  %-34s %9.1f MB/s  (%.2f x memcpy)\n", "packet search (getNextPacket core)", searchRate,
                searchRate / memcpyRate);
    std::printf("  %-34s %9.1f MB/s  (%.2f x memcpy)\n", "processTransportStream, all packets", programRate,
                programRate / memcpyRate);
    std::printf("  %-34s %9.1f MB/s  (%.2f x memcpy)\n", "TR 101 290 priority-1 health", healthRate,
                healthRate / memcpyRate);
    return 0;
}
