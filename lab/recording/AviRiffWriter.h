// Writes an AVI 1.0 file to a seekable stream: the RIFF 'AVI ' header list first with its counts
// still open, then one 'movi' chunk per sample as samples come, and last the 'idx1' index and the
// final counts. The format blocks are copied, so the caller's media types may go away.
#pragma once

#include <windows.h>
#include <objidl.h>
#include <mmreg.h>
#include <vector>

#include <atlbase.h>

namespace lab {

class AviRiffWriter {
public:
    // AVI 1.0 readers stop trusting sizes beyond 1 GiB; chunks past it are refused.
    static const ULONGLONG kMaxFileSize = 1ull << 30;

    explicit AviRiffWriter(IStream *out);

    // Streams are numbered in the order they are added; all of them come before begin().
    // A video format is the BITMAPINFOHEADER with what follows it (masks, palette); the frame
    // duration is in 100 ns units, as DirectShow times are.
    int addVideoStream(const BITMAPINFOHEADER &header, ULONG formatSize, LONGLONG frameDuration);
    int addAudioStream(const WAVEFORMATEX &format, ULONG formatSize);

    HRESULT begin();
    // STG_E_MEDIUMFULL once the file would outgrow kMaxFileSize.
    HRESULT writeChunk(int stream, const BYTE *data, ULONG size, bool keyFrame);
    HRESULT finish();

    bool isOpen() const { return m_open; }
    int streamCount() const { return static_cast<int>(m_streams.size()); }
    // The chunk identifier of a stream: "00db" uncompressed video, "00dc" compressed, "01wb" audio.
    DWORD chunkId(int stream) const;

private:
    struct Stream {
        bool video = false;
        std::vector<BYTE> format;
        DWORD chunkId = 0;
        LONGLONG frameDuration = 0;
        ULONG chunks = 0;
        ULONGLONG bytes = 0;
        ULONG largestChunk = 0;
    };
    struct IndexEntry {
        DWORD chunkId;
        DWORD flags;
        DWORD offset;
        DWORD size;
    };

    int addStream(Stream stream, const char *suffix);
    std::vector<BYTE> headerList() const;
    void appendMainHeader(std::vector<BYTE> &out) const;
    void appendStreamList(std::vector<BYTE> &out, const Stream &stream) const;
    const Stream *firstVideo() const;
    HRESULT writeAt(ULONGLONG position, const void *data, ULONG size);
    HRESULT writeDword(ULONGLONG position, DWORD value);

    CComPtr<IStream> m_out;
    std::vector<Stream> m_streams;
    std::vector<IndexEntry> m_index;
    ULONGLONG m_moviType = 0; // position of the 'movi' list type, the base of index offsets
    ULONGLONG m_end = 0;
    bool m_open = false;
};

} // namespace lab
