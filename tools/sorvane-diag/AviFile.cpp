#include "AviFile.h"

#include <cstring>
#include <fstream>
#include <iterator>

namespace sorvane {
namespace diag {

namespace {

std::string fourcc(const BYTE *at)
{
    return std::string(reinterpret_cast<const char *>(at), 4);
}

DWORD readDword(const BYTE *at)
{
    DWORD value;
    std::memcpy(&value, at, sizeof(value));
    return value;
}

} // namespace

AviFile::AviFile(const std::wstring &path)
    : m_valid(false), m_format(), m_formatSeen(false), m_declaredFrames(0), m_hasIndex(false)
{
    std::ifstream file(path.c_str(), std::ios::binary);
    if (!file) {
        fail("cannot open the file");
        return;
    }
    m_bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    if (m_bytes.size() < 12 || fourcc(&m_bytes[0]) != "RIFF" || fourcc(&m_bytes[8]) != "AVI ") {
        fail("not a RIFF 'AVI ' file");
        return;
    }
    const size_t riffEnd = 8 + static_cast<size_t>(readDword(&m_bytes[4]));
    if (riffEnd > m_bytes.size()) {
        fail("RIFF size beyond the end of the file");
        return;
    }
    if (!walk(12, riffEnd, "AVI "))
        return;
    if (!m_formatSeen) {
        fail("no video stream format");
        return;
    }
    m_valid = true;
}

bool AviFile::walk(size_t begin, size_t end, const std::string &parent)
{
    size_t at = begin;
    while (at + 8 <= end) {
        const std::string id = fourcc(&m_bytes[at]);
        const size_t size = readDword(&m_bytes[at + 4]);
        const size_t data = at + 8;
        if (data + size > end)
            return fail("chunk '" + id + "' runs past its parent");
        if (id == "LIST") {
            if (size < 4)
                return fail("empty LIST");
            if (!walk(data + 4, data + size, fourcc(&m_bytes[data])))
                return false;
        } else if (id == "avih" && size >= 20) {
            m_declaredFrames = readDword(&m_bytes[data + 16]);
        } else if (id == "strf" && parent == "strl" && !m_formatSeen && size >= sizeof(BITMAPINFOHEADER)) {
            std::memcpy(&m_format, &m_bytes[data], sizeof(m_format));
            m_formatSeen = true;
        } else if ((id == "00dc" || id == "00db") && parent == "movi") {
            m_frames.push_back(Frame{data, static_cast<long>(size)});
        } else if (id == "idx1") {
            m_hasIndex = true;
        }
        // Chunks are padded to an even size.
        at = data + size + (size & 1);
    }
    return true;
}

bool AviFile::fail(const std::string &problem)
{
    m_problem = problem;
    return false;
}

} // namespace diag
} // namespace sorvane
