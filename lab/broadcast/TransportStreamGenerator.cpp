#include "broadcast/TransportStreamGenerator.h"

#include "broadcast/AudioFrame.h"
#include "broadcast/MpegVideoFrame.h"
#include "broadcast/PsiTables.h"

namespace lab {

namespace {

const double kTablePeriod = 0.1;
const double kPicturePeriod = 1001.0 / 30000.0;
const double kPresentationDelay = 0.2; // PTS runs this far ahead of the PCR
// Below this the programs' own packets would outgrow the packet slots.
const long kMinimumBitRate = 1000000;

void putTimestamp(std::vector<std::uint8_t> &out, int prefix, unsigned long long pts)
{
    pts &= 0x1FFFFFFFFull;
    out.push_back(static_cast<std::uint8_t>((prefix << 4) | ((pts >> 29) & 0x0E) | 0x01));
    out.push_back(static_cast<std::uint8_t>(pts >> 22));
    out.push_back(static_cast<std::uint8_t>(((pts >> 14) & 0xFE) | 0x01));
    out.push_back(static_cast<std::uint8_t>(pts >> 7));
    out.push_back(static_cast<std::uint8_t>(((pts << 1) & 0xFE) | 0x01));
}

// A PES packet with a PTS, data-aligned.
std::vector<std::uint8_t> pesPacket(int streamId, double seconds, const std::vector<std::uint8_t> &payload)
{
    std::vector<std::uint8_t> pes = {0x00, 0x00, 0x01, static_cast<std::uint8_t>(streamId)};
    const std::size_t length = 3 + 5 + payload.size();
    const std::size_t field = length > 0xFFFF ? 0 : length; // 0: unbounded, allowed for video
    pes.push_back(static_cast<std::uint8_t>(field >> 8));
    pes.push_back(static_cast<std::uint8_t>(field & 0xFF));
    pes.push_back(0x84); // '10', not scrambled, data_alignment_indicator
    pes.push_back(0x80); // PTS only
    pes.push_back(0x05);
    putTimestamp(pes, 0x2, static_cast<unsigned long long>((seconds + kPresentationDelay) * 90000.0));
    pes.insert(pes.end(), payload.begin(), payload.end());
    return pes;
}

// The audio coding of the multiplex: that of its first audio stream.
int audioType(const Multiplex &multiplex)
{
    for (const Program &program : multiplex.programs) {
        if (const ElementaryStream *audio = program.firstOf(StreamKind::Audio))
            return audio->type;
    }
    return AudioFrame::kAc3;
}

} // namespace

TransportStreamGenerator::TransportStreamGenerator(const Multiplex &multiplex, long bitsPerSecond)
    : m_multiplex(multiplex), m_bitsPerSecond(bitsPerSecond > kMinimumBitRate ? bitsPerSecond : kMinimumBitRate),
      m_faults(multiplex.faults), m_audioPeriod(AudioFrame::period(audioType(multiplex)))
{
}

void TransportStreamGenerator::setFaults(const StreamFaults &deviceFaults)
{
    m_faults = m_multiplex.faults;
    m_faults.add(deviceFaults);
}

bool TransportStreamGenerator::isScrambled(const Program &program) const
{
    return program.scrambled || m_faults.allScrambled;
}

void TransportStreamGenerator::generate(std::size_t slots, std::vector<std::uint8_t> &out)
{
    for (std::size_t i = 0; i < slots; ++i, ++m_slot) {
        const double seconds = static_cast<double>(m_slot) * TsPacketizer::kPacketSize * 8.0 / m_bitsPerSecond;
        queueDue(seconds);
        if (m_faults.silence || m_faults.syncLoss) {
            // The programs go on behind the fault: their packets are lost, not postponed.
            std::vector<std::uint8_t> lost;
            emitPacket(seconds, lost);
            if (m_faults.syncLoss)
                emitNoise(out);
            continue;
        }
        emitPacket(seconds, out);
    }
}

void TransportStreamGenerator::queueDue(double seconds)
{
    if (seconds >= m_nextTables) {
        queueTables();
        m_nextTables += kTablePeriod;
    }
    // Presentation times follow the nominal cadence, not the packet slot that came due.
    if (seconds >= m_nextPicture) {
        queuePictures(m_nextPicture);
        m_nextPicture += kPicturePeriod;
        ++m_frame;
    }
    if (seconds >= m_nextAudio) {
        queueAudio(m_nextAudio);
        m_nextAudio += m_audioPeriod;
    }
}

void TransportStreamGenerator::queueTables()
{
    if (!m_faults.noPat)
        m_packetizer.section(PsiTables::kPatPid,
                             PsiTables::programAssociation(m_multiplex.transportStreamId, m_multiplex.programs),
                             m_queue);
    for (const Program &program : m_multiplex.programs)
        m_packetizer.section(program.pmtPid, PsiTables::programMap(program, isScrambled(program)), m_queue);
}

void TransportStreamGenerator::queuePictures(double seconds)
{
    for (const Program &program : m_multiplex.programs) {
        const ElementaryStream *video = program.firstOf(StreamKind::Video);
        if (!video)
            continue;
        std::vector<std::uint8_t> picture;
        if (video->type == 0x02) {
            picture = m_pictures.build(m_multiplex.width, m_multiplex.height,
                                       FrameLabel{m_multiplex.channel, program.number, m_frame});
        } else {
            picture = {0x00, 0x00, 0x00, 0x01, 0x09, 0xF0}; // an access unit delimiter
        }
        // The PCR field is filled in when its packet leaves (emitPacket).
        m_packetizer.pes(video->pid, pesPacket(0xE0, seconds, picture), 0, isScrambled(program), m_queue);
    }
}

void TransportStreamGenerator::queueAudio(double seconds)
{
    for (const Program &program : m_multiplex.programs) {
        for (const ElementaryStream &stream : program.streams) {
            if (stream.kind != StreamKind::Audio)
                continue;
            m_packetizer.pes(stream.pid,
                             pesPacket(AudioFrame::streamId(stream.type), seconds, AudioFrame::tone(stream.type)), -1,
                             isScrambled(program), m_queue);
        }
    }
}

void TransportStreamGenerator::emitPacket(double seconds, std::vector<std::uint8_t> &out)
{
    const std::size_t start = out.size();
    if (m_queueRead < m_queue.size()) {
        out.insert(out.end(), m_queue.begin() + static_cast<std::ptrdiff_t>(m_queueRead),
                   m_queue.begin() + static_cast<std::ptrdiff_t>(m_queueRead + TsPacketizer::kPacketSize));
        // A PCR tells the time its packet arrives.
        TsPacketizer::stampPcr(&out[start], static_cast<long long>(seconds * 27000000.0));
        m_queueRead += TsPacketizer::kPacketSize;
        if (m_queueRead == m_queue.size()) {
            m_queue.clear();
            m_queueRead = 0;
        }
    } else {
        TsPacketizer::nullPacket(out);
    }
    // Spread evenly: packet n is damaged when the running share of damaged packets steps up.
    const unsigned long long n = m_emitted++;
    const unsigned long long percent = static_cast<unsigned long long>(m_faults.errorPercent);
    if ((n + 1) * percent / 100 != n * percent / 100)
        out[start + 1] |= 0x80;
}

void TransportStreamGenerator::emitNoise(std::vector<std::uint8_t> &out)
{
    const std::size_t start = out.size();
    for (std::size_t i = 0; i < TsPacketizer::kPacketSize; ++i) {
        m_noise = m_noise * 1664525u + 1013904223u;
        out.push_back(static_cast<std::uint8_t>(m_noise >> 24));
    }
    if (out[start] == 0x47)
        out[start] = 0x46;
}

} // namespace lab
