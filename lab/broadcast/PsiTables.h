// The program-specific information sections of a multiplex: the program association table
// (PID 0) and one program map table per program, each with its CRC-32.
#pragma once

#include <cstdint>
#include <vector>

#include "broadcast/Multiplex.h"

namespace lab {

class PsiTables {
public:
    static const int kPatPid = 0x0000;
    static const int kCaSystemId = 0x4AD4; // in the CA descriptor of a scrambled program

    static std::vector<std::uint8_t> programAssociation(int transportStreamId, const std::vector<Program> &programs);
    // A scrambled program's map carries a CA descriptor.
    static std::vector<std::uint8_t> programMap(const Program &program, bool scrambled);
    // The PID whose packets carry the program's PCR (its video), or 0x1FFF when none does.
    static int pcrPid(const Program &program);

private:
    // Table header (syntax indicator, section length, id extension, version 0, current) around
    // the body, closed by the CRC.
    static std::vector<std::uint8_t> longSection(int tableId, int idExtension, const std::vector<std::uint8_t> &body);
};

} // namespace lab
