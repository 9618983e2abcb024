#include "StreamHealthMonitor.h"
#include "TsPacketView.h"

namespace sorvane {

namespace {

const uint16_t kPatPid = 0x0000;
const unsigned char kPatTableId = 0x00;
const unsigned char kPmtTableId = 0x02;
const int kLongHeaderSize = 8;
const int kCrcSize = 4;
const int kPmtFixedSize = 4;
const int kStreamEntrySize = 5;

uint16_t read13(const unsigned char *p)
{
    return static_cast<uint16_t>(((p[0] & 0x1F) << 8) | p[1]);
}

uint16_t read12(const unsigned char *p)
{
    return static_cast<uint16_t>(((p[0] & 0x0F) << 8) | p[1]);
}

bool synchronisedAt(const unsigned char *data, int length, int at, int count)
{
    for (int k = 0; k < count; ++k) {
        const int64_t position = static_cast<int64_t>(at) + static_cast<int64_t>(k) * TsPacketView::kSize;
        if (position >= length || data[position] != TsPacketView::kSyncByte)
            return false;
    }
    return true;
}

// A discontinuity indicator excuses the next continuity jump.
bool signalsDiscontinuity(const TsPacketView &packet)
{
    const unsigned char *bytes = packet.bytes();
    return packet.hasAdaptationField() && bytes[4] > 0 && (bytes[5] & 0x80) != 0;
}

} // namespace

StreamHealthMonitor::StreamHealthMonitor() {}

StreamHealth StreamHealthMonitor::analyze(const unsigned char *data, int length, double durationMs)
{
    StreamHealthMonitor monitor;
    monitor.m_health.measured = true;
    monitor.m_health.durationMs = durationMs;
    monitor.walk(data, length);
    monitor.checkTimes(durationMs);
    return monitor.m_health;
}

void StreamHealthMonitor::walk(const unsigned char *data, int length)
{
    int at = 0;
    int64_t index = 0;
    bool inSync = false;
    int badSyncs = 0;
    while (at + TsPacketView::kSize <= length) {
        if (!inSync) {
            // Sync is acquired on five sync bytes at packet spacing (fewer at the block's end).
            const int remaining = (length - at) / TsPacketView::kSize;
            const int wanted = remaining < kSyncToAcquire ? remaining : kSyncToAcquire;
            if (!synchronisedAt(data, length, at, wanted)) {
                ++at;
                continue;
            }
            inSync = true;
            badSyncs = 0;
        }
        if (data[at] != TsPacketView::kSyncByte) {
            ++m_health.syncByteErrors;
            if (++badSyncs >= kBadSyncsForLoss) {
                ++m_health.syncLosses;
                inSync = false;
                ++at;
                continue;
            }
        } else {
            badSyncs = 0;
            packet(data + at, index);
        }
        ++index;
        at += TsPacketView::kSize;
    }
    if (index == 0 && length >= TsPacketView::kSize)
        ++m_health.syncLosses;
    m_health.packets = index;
}

void StreamHealthMonitor::packet(const unsigned char *bytes, int64_t index)
{
    const TsPacketView view(bytes);
    if (view.transportError())
        return;
    const uint16_t pid = view.pid();
    m_seenPids.insert(pid);
    checkContinuity(bytes);
    if (pid == kPatPid) {
        m_tableTimes[pid].push_back(index);
        if (view.scramblingControl() != 0)
            ++m_health.patErrors;
        else
            m_patAssembler.addPacket(view, *this);
        return;
    }
    std::map<uint16_t, PsiSectionAssembler>::iterator pmt = m_pmtAssemblers.find(pid);
    if (pmt == m_pmtAssemblers.end())
        return;
    m_tableTimes[pid].push_back(index);
    if (view.scramblingControl() != 0)
        ++m_health.pmtErrors;
    else
        pmt->second.addPacket(view, *this);
}

void StreamHealthMonitor::checkContinuity(const unsigned char *bytes)
{
    const TsPacketView view(bytes);
    if (view.pid() == TsPacketView::kNullPid || !view.hasPayload())
        return;
    PidState &state = m_pids[view.pid()];
    const int counter = view.continuityCounter();
    if (state.lastContinuity >= 0 && !signalsDiscontinuity(view)) {
        if (counter == state.lastContinuity) {
            // One repetition of a packet is allowed.
            if (state.repeated)
                ++m_health.continuityErrors;
            state.repeated = true;
            return;
        }
        if (counter != ((state.lastContinuity + 1) & 0x0F))
            ++m_health.continuityErrors;
    }
    state.lastContinuity = counter;
    state.repeated = false;
}

void StreamHealthMonitor::onSection(uint16_t pid, const unsigned char *section, int length)
{
    const int end = length - kCrcSize;
    if (pid == kPatPid) {
        if (section[0] != kPatTableId) {
            ++m_health.patErrors;
            return;
        }
        for (int at = kLongHeaderSize; at + 4 <= end; at += 4) {
            const uint16_t program = static_cast<uint16_t>((section[at] << 8) | section[at + 1]);
            const uint16_t pmtPid = read13(section + at + 2);
            if (program != 0 && pmtPid != kPatPid)
                m_pmtAssemblers[pmtPid];
        }
        return;
    }
    if (section[0] != kPmtTableId) {
        ++m_health.pmtErrors;
        return;
    }
    int at = kLongHeaderSize;
    if (at + kPmtFixedSize > end)
        return;
    at += kPmtFixedSize + read12(section + at + 2);
    while (at + kStreamEntrySize <= end) {
        m_referencedPids.insert(read13(section + at + 1));
        at += kStreamEntrySize + read12(section + at + 3);
    }
}

int64_t StreamHealthMonitor::lateCount(const std::vector<int64_t> &occurrences, double msPerPacket) const
{
    int64_t late = 0;
    int64_t previous = 0;
    for (int64_t index : occurrences) {
        if (static_cast<double>(index - previous) * msPerPacket > StreamHealth::kTableIntervalMs)
            ++late;
        previous = index;
    }
    if (static_cast<double>(m_health.packets - previous) * msPerPacket > StreamHealth::kTableIntervalMs)
        ++late;
    return late;
}

void StreamHealthMonitor::checkTimes(double durationMs)
{
    std::map<uint16_t, std::vector<int64_t>>::const_iterator pat = m_tableTimes.find(kPatPid);
    if (pat == m_tableTimes.end() && m_health.packets > 0) {
        m_health.patMissing = true;
        ++m_health.patErrors;
    }
    for (const auto &pmt : m_pmtAssemblers) {
        if (m_tableTimes.find(pmt.first) == m_tableTimes.end()) {
            ++m_health.pmtMissing;
            ++m_health.pmtErrors;
        }
    }
    for (uint16_t pid : m_referencedPids) {
        if (m_seenPids.find(pid) == m_seenPids.end())
            ++m_health.pidErrors;
    }
    if (durationMs <= 0.0 || m_health.packets == 0)
        return;
    const double msPerPacket = durationMs / static_cast<double>(m_health.packets);
    if (pat != m_tableTimes.end())
        m_health.patErrors += lateCount(pat->second, msPerPacket);
    for (const auto &pmt : m_pmtAssemblers) {
        std::map<uint16_t, std::vector<int64_t>>::const_iterator times = m_tableTimes.find(pmt.first);
        if (times != m_tableTimes.end())
            m_health.pmtErrors += lateCount(times->second, msPerPacket);
    }
}

} // namespace sorvane
