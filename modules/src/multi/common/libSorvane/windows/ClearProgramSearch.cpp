#include "ClearProgramSearch.h"
#include "TsPacketView.h"

namespace sorvane {

namespace {

const uint16_t kPatPid = 0x0000;
const unsigned char kPatTableId = 0x00;
const unsigned char kPmtTableId = 0x02;
const unsigned char kCaDescriptorTag = 0x09;
// The PAT's entry for the network information table, not a program.
const uint16_t kNetworkProgram = 0;
const int kLongHeaderSize = 8;
const int kCrcSize = 4;
const int kPatEntrySize = 4;
const int kPmtFixedSize = 4;
const int kStreamEntrySize = 5;
const int kDescriptorHeaderSize = 2;
const int kNoVersion = -1;
const int kClear = 1;
const int kNotClear = 0;

uint16_t read16(const unsigned char *p)
{
    return static_cast<uint16_t>((p[0] << 8) | p[1]);
}

uint16_t read13(const unsigned char *p)
{
    return static_cast<uint16_t>(((p[0] & 0x1F) << 8) | p[1]);
}

uint16_t read12(const unsigned char *p)
{
    return static_cast<uint16_t>(((p[0] & 0x0F) << 8) | p[1]);
}

int versionOf(const unsigned char *section)
{
    return (section[5] >> 1) & 0x1F;
}

bool isCurrent(const unsigned char *section)
{
    return (section[5] & 0x01) != 0;
}

// True when a descriptor loop holds a CA descriptor; a loop that runs past its end stops.
bool hasCaDescriptor(const unsigned char *loop, int length)
{
    int at = 0;
    while (at + kDescriptorHeaderSize <= length) {
        if (loop[at] == kCaDescriptorTag)
            return true;
        at += kDescriptorHeaderSize + loop[at + 1];
    }
    return false;
}

} // namespace

ClearProgramSearch::ClearProgramSearch()
    : m_patVersion(kNoVersion), m_patLastSection(0), m_patComplete(false), m_pidState(kPidCount, 0)
{
}

int ClearProgramSearch::processTransportStream(TsPacketSource &source)
{
    ClearProgramSearch search;
    unsigned char packet[TsPacketView::kSize];
    for (int count = 0; count < kMaxPackets && source.getNextPacket(packet); ++count) {
        const int answer = search.addPacket(packet);
        if (answer != kUndecided)
            return answer;
    }
    return search.finish();
}

int ClearProgramSearch::addPacket(const unsigned char *bytes)
{
    const TsPacketView packet(bytes);
    if (!packet.inSync() || packet.transportError())
        return kUndecided;
    const uint16_t pid = packet.pid();
    if (pid == kPatPid) {
        m_patAssembler.addPacket(packet, *this);
    } else {
        std::map<uint16_t, PsiSectionAssembler>::iterator pmt = m_pmtAssemblers.find(pid);
        if (pmt != m_pmtAssemblers.end()) {
            pmt->second.addPacket(packet, *this);
        } else if (packet.hasPayload()) {
            m_pidState[pid] |= packet.scramblingControl() != 0 ? kSeenScrambled : kSeenClear;
        }
    }
    return decide(false);
}

int ClearProgramSearch::finish() const
{
    return decide(true);
}

void ClearProgramSearch::onSection(uint16_t pid, const unsigned char *section, int length)
{
    if (!isCurrent(section))
        return;
    if (pid == kPatPid) {
        if (section[0] == kPatTableId)
            onPatSection(section, length);
    } else if (section[0] == kPmtTableId) {
        onPmtSection(pid, section, length);
    }
}

void ClearProgramSearch::onPatSection(const unsigned char *section, int length)
{
    const int version = versionOf(section);
    const int number = section[6];
    const int lastSection = section[7];
    if (version != m_patVersion || lastSection != m_patLastSection)
        resetPat(version, lastSection);
    if (number > m_patLastSection || m_patSections[number].seen)
        return;

    PatSection &entry = m_patSections[number];
    entry.seen = true;
    const int end = length - kCrcSize;
    for (int at = kLongHeaderSize; at + kPatEntrySize <= end; at += kPatEntrySize) {
        const uint16_t programNumber = read16(section + at);
        if (programNumber == kNetworkProgram)
            continue;
        Program program = {programNumber, read13(section + at + 2), false, kNoVersion, false, {}};
        entry.programs.push_back(program);
    }
    for (int i = 0; i <= m_patLastSection; ++i) {
        if (!m_patSections[i].seen)
            return;
    }
    completePat();
}

void ClearProgramSearch::resetPat(int version, int lastSection)
{
    m_patVersion = version;
    m_patLastSection = lastSection;
    m_patSections.assign(static_cast<size_t>(lastSection) + 1, PatSection());
    m_patComplete = false;
    m_programs.clear();
    m_pmtAssemblers.clear();
}

void ClearProgramSearch::completePat()
{
    m_patComplete = true;
    for (const PatSection &section : m_patSections) {
        for (const Program &program : section.programs) {
            m_programs.push_back(program);
            if (program.pmtPid != kPatPid)
                m_pmtAssemblers[program.pmtPid];
        }
    }
}

void ClearProgramSearch::onPmtSection(uint16_t pid, const unsigned char *section, int length)
{
    const uint16_t programNumber = read16(section + 3);
    const int version = versionOf(section);
    for (Program &program : m_programs) {
        if (program.number != programNumber || program.pmtPid != pid)
            continue;
        if (program.pmtSeen && program.pmtVersion == version)
            return;
        program.pmtSeen = true;
        program.pmtVersion = version;
        parseStreams(program, section, length);
        return;
    }
}

void ClearProgramSearch::parseStreams(Program &program, const unsigned char *section, int length)
{
    program.streamPids.clear();
    program.conditionalAccess = false;
    const int end = length - kCrcSize;
    int at = kLongHeaderSize;
    if (at + kPmtFixedSize > end)
        return;
    const int infoLength = read12(section + at + 2);
    at += kPmtFixedSize;
    if (at + infoLength > end)
        return;
    program.conditionalAccess = hasCaDescriptor(section + at, infoLength);
    at += infoLength;
    while (at + kStreamEntrySize <= end) {
        const uint16_t streamPid = read13(section + at + 1);
        const int esInfoLength = read12(section + at + 3);
        at += kStreamEntrySize;
        if (at + esInfoLength > end)
            break;
        if (hasCaDescriptor(section + at, esInfoLength))
            program.conditionalAccess = true;
        program.streamPids.push_back(streamPid);
        at += esInfoLength;
    }
}

int ClearProgramSearch::decide(bool endOfStream) const
{
    if (!m_patComplete)
        return endOfStream ? kNoClearProgram : kUndecided;
    for (const Program &program : m_programs) {
        const int verdict = judge(program, endOfStream);
        if (verdict == kUndecided)
            return kUndecided;
        if (verdict == kClear)
            return program.number;
    }
    return kNoClearProgram;
}

int ClearProgramSearch::judge(const Program &program, bool endOfStream) const
{
    if (!program.pmtSeen)
        return endOfStream ? kNotClear : kUndecided;
    if (program.conditionalAccess || program.streamPids.empty())
        return kNotClear;
    bool allSeen = true;
    for (uint16_t pid : program.streamPids) {
        const uint8_t state = m_pidState[pid];
        if (state & kSeenScrambled)
            return kNotClear;
        if (!(state & kSeenClear))
            allSeen = false;
    }
    if (allSeen || endOfStream)
        return kClear;
    return kUndecided;
}

} // namespace sorvane
