#include "broadcast/PsiTables.h"

#include "broadcast/Crc32Mpeg2.h"

namespace lab {

namespace {

void put16(std::vector<std::uint8_t> &out, int value)
{
    out.push_back(static_cast<std::uint8_t>((value >> 8) & 0xFF));
    out.push_back(static_cast<std::uint8_t>(value & 0xFF));
}

// reserved bits '111' above a 13-bit PID
void putPid(std::vector<std::uint8_t> &out, int pid)
{
    put16(out, 0xE000 | (pid & 0x1FFF));
}

} // namespace

std::vector<std::uint8_t> PsiTables::longSection(int tableId, int idExtension, const std::vector<std::uint8_t> &body)
{
    const int sectionLength = static_cast<int>(body.size()) + 5 + 4; // header after the length, body, CRC
    std::vector<std::uint8_t> section;
    section.push_back(static_cast<std::uint8_t>(tableId));
    put16(section, 0xB000 | sectionLength); // syntax indicator, '0', reserved '11'
    put16(section, idExtension);
    section.push_back(0xC1); // reserved '11', version 0, current_next_indicator 1
    section.push_back(0x00); // section_number
    section.push_back(0x00); // last_section_number
    section.insert(section.end(), body.begin(), body.end());
    const std::uint32_t crc = Crc32Mpeg2::compute(section.data(), section.size());
    for (int shift = 24; shift >= 0; shift -= 8)
        section.push_back(static_cast<std::uint8_t>((crc >> shift) & 0xFF));
    return section;
}

std::vector<std::uint8_t> PsiTables::programAssociation(int transportStreamId, const std::vector<Program> &programs)
{
    std::vector<std::uint8_t> body;
    for (const Program &program : programs) {
        put16(body, program.number);
        putPid(body, program.pmtPid);
    }
    return longSection(0x00, transportStreamId, body);
}

int PsiTables::pcrPid(const Program &program)
{
    const ElementaryStream *video = program.firstOf(StreamKind::Video);
    return video ? video->pid : 0x1FFF;
}

std::vector<std::uint8_t> PsiTables::programMap(const Program &program, bool scrambled)
{
    std::vector<std::uint8_t> descriptors;
    if (scrambled) {
        descriptors.push_back(0x09); // CA_descriptor
        descriptors.push_back(0x04);
        put16(descriptors, kCaSystemId);
        putPid(descriptors, program.pmtPid + 0x0F);
    }
    std::vector<std::uint8_t> body;
    putPid(body, pcrPid(program));
    put16(body, 0xF000 | static_cast<int>(descriptors.size()));
    body.insert(body.end(), descriptors.begin(), descriptors.end());
    for (const ElementaryStream &stream : program.streams) {
        body.push_back(static_cast<std::uint8_t>(stream.type));
        putPid(body, stream.pid);
        put16(body, 0xF000); // no ES descriptors
    }
    return longSection(0x02, program.number, body);
}

} // namespace lab
