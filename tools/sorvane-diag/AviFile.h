#pragma once

#include <windows.h>
#include <string>
#include <vector>

namespace sorvane {
namespace diag {

// Reads an AVI file as a player would: the RIFF tree, the first video stream's format and
// its frame chunks ('00dc' or '00db' in 'movi').
class AviFile {
public:
    explicit AviFile(const std::wstring &path);

    bool valid() const { return m_valid; }
    const std::string &problem() const { return m_problem; }
    const BITMAPINFOHEADER &format() const { return m_format; }
    int frameCount() const { return static_cast<int>(m_frames.size()); }
    const BYTE *frameData(int index) const { return m_bytes.data() + m_frames[index].offset; }
    long frameLength(int index) const { return m_frames[index].length; }
    // Frames the main header says the file holds.
    DWORD declaredFrames() const { return m_declaredFrames; }
    bool hasIndex() const { return m_hasIndex; }

private:
    struct Frame {
        size_t offset;
        long length;
    };
    bool walk(size_t begin, size_t end, const std::string &parent);
    bool fail(const std::string &problem);

    std::vector<BYTE> m_bytes;
    bool m_valid;
    std::string m_problem;
    BITMAPINFOHEADER m_format;
    bool m_formatSeen;
    DWORD m_declaredFrames;
    bool m_hasIndex;
    std::vector<Frame> m_frames;
};

} // namespace diag
} // namespace sorvane
