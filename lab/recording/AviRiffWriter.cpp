#include "recording/AviRiffWriter.h"

#include <aviriff.h>
#include <cstdlib>
#include <cstring>

namespace lab {

namespace {

const LONGLONG kUnitsPerSecond = 10000000;
const LONGLONG kDefaultFrameDuration = 333333;

DWORD fourcc(const char *text)
{
    return static_cast<DWORD>(static_cast<BYTE>(text[0])) | static_cast<DWORD>(static_cast<BYTE>(text[1])) << 8 |
           static_cast<DWORD>(static_cast<BYTE>(text[2])) << 16 | static_cast<DWORD>(static_cast<BYTE>(text[3])) << 24;
}

void putBytes(std::vector<BYTE> &out, const void *data, size_t size)
{
    const BYTE *bytes = static_cast<const BYTE *>(data);
    out.insert(out.end(), bytes, bytes + size);
}

void putDword(std::vector<BYTE> &out, DWORD value)
{
    putBytes(out, &value, sizeof value);
}

// Opens a LIST chunk and returns where its size goes.
size_t beginList(std::vector<BYTE> &out, const char *listType)
{
    putDword(out, fourcc("LIST"));
    size_t sizeAt = out.size();
    putDword(out, 0);
    putDword(out, fourcc(listType));
    return sizeAt;
}

void endList(std::vector<BYTE> &out, size_t sizeAt)
{
    DWORD size = static_cast<DWORD>(out.size() - sizeAt - sizeof(DWORD));
    std::memcpy(&out[sizeAt], &size, sizeof size);
}

void putChunk(std::vector<BYTE> &out, const char *id, const void *data, size_t size)
{
    putDword(out, fourcc(id));
    putDword(out, static_cast<DWORD>(size));
    putBytes(out, data, size);
    if (size & 1)
        out.push_back(0);
}

ULONGLONG greatestCommonDivisor(ULONGLONG a, ULONGLONG b)
{
    while (b) {
        ULONGLONG rest = a % b;
        a = b;
        b = rest;
    }
    return a;
}

bool isUncompressed(DWORD compression)
{
    return compression == BI_RGB || compression == BI_BITFIELDS;
}

} // namespace

AviRiffWriter::AviRiffWriter(IStream *out) : m_out(out) {}

int AviRiffWriter::addVideoStream(const BITMAPINFOHEADER &header, ULONG formatSize, LONGLONG frameDuration)
{
    Stream stream;
    stream.video = true;
    const BYTE *bytes = reinterpret_cast<const BYTE *>(&header);
    stream.format.assign(bytes, bytes + formatSize);
    stream.frameDuration = frameDuration > 0 ? frameDuration : kDefaultFrameDuration;
    return addStream(stream, isUncompressed(header.biCompression) ? "db" : "dc");
}

int AviRiffWriter::addAudioStream(const WAVEFORMATEX &format, ULONG formatSize)
{
    Stream stream;
    const BYTE *bytes = reinterpret_cast<const BYTE *>(&format);
    stream.format.assign(bytes, bytes + formatSize);
    return addStream(stream, "wb");
}

int AviRiffWriter::addStream(Stream stream, const char *suffix)
{
    int number = streamCount();
    char id[5] = {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10), suffix[0], suffix[1], 0};
    stream.chunkId = fourcc(id);
    m_streams.push_back(stream);
    return number;
}

DWORD AviRiffWriter::chunkId(int stream) const
{
    return stream >= 0 && stream < streamCount() ? m_streams[stream].chunkId : 0;
}

HRESULT AviRiffWriter::begin()
{
    if (!m_out)
        return E_POINTER;
    if (m_streams.empty())
        return E_UNEXPECTED;
    for (Stream &stream : m_streams) {
        stream.chunks = 0;
        stream.bytes = 0;
        stream.largestChunk = 0;
    }
    m_index.clear();

    std::vector<BYTE> head;
    putDword(head, fourcc("RIFF"));
    putDword(head, 0);
    putDword(head, fourcc("AVI "));
    std::vector<BYTE> headers = headerList();
    putBytes(head, headers.data(), headers.size());
    putDword(head, fourcc("LIST"));
    putDword(head, 0);
    m_moviType = head.size();
    putDword(head, fourcc("movi"));

    ULARGE_INTEGER empty = {};
    HRESULT hr = m_out->SetSize(empty);
    if (SUCCEEDED(hr))
        hr = writeAt(0, head.data(), static_cast<ULONG>(head.size()));
    if (FAILED(hr))
        return hr;
    m_end = head.size();
    m_open = true;
    return S_OK;
}

HRESULT AviRiffWriter::writeChunk(int stream, const BYTE *data, ULONG size, bool keyFrame)
{
    if (!m_open || stream < 0 || stream >= streamCount())
        return E_UNEXPECTED;
    if (!data && size)
        return E_POINTER;
    ULONG padded = size + (size & 1);
    ULONGLONG indexAfter = (m_index.size() + 1) * sizeof(IndexEntry) + 8;
    if (m_end + 8 + padded + indexAfter > kMaxFileSize)
        return STG_E_MEDIUMFULL;

    Stream &target = m_streams[stream];
    DWORD header[2] = {target.chunkId, size};
    HRESULT hr = writeAt(m_end, header, sizeof header);
    if (SUCCEEDED(hr) && size)
        hr = writeAt(m_end + sizeof header, data, size);
    if (SUCCEEDED(hr) && padded != size) {
        BYTE pad = 0;
        hr = writeAt(m_end + sizeof header + size, &pad, 1);
    }
    if (FAILED(hr))
        return hr;

    IndexEntry entry = {target.chunkId, keyFrame ? static_cast<DWORD>(AVIIF_KEYFRAME) : 0u,
                        static_cast<DWORD>(m_end - m_moviType), size};
    m_index.push_back(entry);
    m_end += sizeof header + padded;
    ++target.chunks;
    target.bytes += size;
    if (size > target.largestChunk)
        target.largestChunk = size;
    return S_OK;
}

HRESULT AviRiffWriter::finish()
{
    if (!m_open)
        return E_UNEXPECTED;
    m_open = false;
    ULONGLONG moviEnd = m_end;

    std::vector<BYTE> index;
    putDword(index, fourcc("idx1"));
    putDword(index, static_cast<DWORD>(m_index.size() * sizeof(IndexEntry)));
    if (!m_index.empty())
        putBytes(index, m_index.data(), m_index.size() * sizeof(IndexEntry));
    HRESULT hr = writeAt(moviEnd, index.data(), static_cast<ULONG>(index.size()));
    if (FAILED(hr))
        return hr;
    m_end = moviEnd + index.size();

    std::vector<BYTE> headers = headerList();
    hr = writeAt(12, headers.data(), static_cast<ULONG>(headers.size()));
    if (SUCCEEDED(hr))
        hr = writeDword(4, static_cast<DWORD>(m_end - 8));
    if (SUCCEEDED(hr))
        hr = writeDword(m_moviType - 4, static_cast<DWORD>(moviEnd - m_moviType));
    if (SUCCEEDED(hr)) {
        ULARGE_INTEGER size;
        size.QuadPart = m_end;
        hr = m_out->SetSize(size);
    }
    if (SUCCEEDED(hr))
        hr = m_out->Commit(STGC_DEFAULT);
    return hr;
}

const AviRiffWriter::Stream *AviRiffWriter::firstVideo() const
{
    for (const Stream &stream : m_streams) {
        if (stream.video)
            return &stream;
    }
    return nullptr;
}

std::vector<BYTE> AviRiffWriter::headerList() const
{
    std::vector<BYTE> out;
    size_t sizeAt = beginList(out, "hdrl");
    appendMainHeader(out);
    for (const Stream &stream : m_streams)
        appendStreamList(out, stream);
    endList(out, sizeAt);
    return out;
}

void AviRiffWriter::appendMainHeader(std::vector<BYTE> &out) const
{
    AVIMAINHEADER header = {};
    header.fcc = fourcc("avih");
    header.cb = sizeof header - 8;
    header.dwFlags = AVIF_HASINDEX | AVIF_ISINTERLEAVED;
    header.dwStreams = static_cast<DWORD>(m_streams.size());
    ULONGLONG bytesPerSecond = 0;
    for (const Stream &stream : m_streams) {
        if (stream.largestChunk + 8 > header.dwSuggestedBufferSize)
            header.dwSuggestedBufferSize = stream.largestChunk + 8;
        if (stream.video)
            bytesPerSecond += static_cast<ULONGLONG>(stream.largestChunk) * kUnitsPerSecond / stream.frameDuration;
        else
            bytesPerSecond += reinterpret_cast<const WAVEFORMATEX *>(stream.format.data())->nAvgBytesPerSec;
    }
    header.dwMaxBytesPerSec = static_cast<DWORD>(bytesPerSecond);
    if (const Stream *video = firstVideo()) {
        const BITMAPINFOHEADER *bitmap = reinterpret_cast<const BITMAPINFOHEADER *>(video->format.data());
        header.dwMicroSecPerFrame = static_cast<DWORD>(video->frameDuration / 10);
        header.dwTotalFrames = video->chunks;
        header.dwWidth = static_cast<DWORD>(bitmap->biWidth);
        header.dwHeight = static_cast<DWORD>(std::labs(bitmap->biHeight));
    }
    putBytes(out, &header, sizeof header);
}

void AviRiffWriter::appendStreamList(std::vector<BYTE> &out, const Stream &stream) const
{
    AVISTREAMHEADER header = {};
    header.fcc = fourcc("strh");
    header.cb = sizeof header - 8;
    header.dwQuality = 0xFFFFFFFF;
    header.dwSuggestedBufferSize = stream.largestChunk;
    if (stream.video) {
        const BITMAPINFOHEADER *bitmap = reinterpret_cast<const BITMAPINFOHEADER *>(stream.format.data());
        ULONGLONG divisor = greatestCommonDivisor(stream.frameDuration, kUnitsPerSecond);
        header.fccType = fourcc("vids");
        header.fccHandler = bitmap->biCompression;
        header.dwScale = static_cast<DWORD>(stream.frameDuration / divisor);
        header.dwRate = static_cast<DWORD>(kUnitsPerSecond / divisor);
        header.dwLength = stream.chunks;
        header.rcFrame.right = static_cast<short>(bitmap->biWidth);
        header.rcFrame.bottom = static_cast<short>(std::labs(bitmap->biHeight));
    } else {
        const WAVEFORMATEX *wave = reinterpret_cast<const WAVEFORMATEX *>(stream.format.data());
        DWORD blockAlign = wave->nBlockAlign ? wave->nBlockAlign : 1;
        header.fccType = fourcc("auds");
        header.dwScale = blockAlign;
        header.dwRate = wave->nAvgBytesPerSec;
        header.dwSampleSize = blockAlign;
        header.dwLength = static_cast<DWORD>(stream.bytes / blockAlign);
    }
    size_t sizeAt = beginList(out, "strl");
    putBytes(out, &header, sizeof header);
    putChunk(out, "strf", stream.format.data(), stream.format.size());
    endList(out, sizeAt);
}

HRESULT AviRiffWriter::writeAt(ULONGLONG position, const void *data, ULONG size)
{
    LARGE_INTEGER move;
    move.QuadPart = static_cast<LONGLONG>(position);
    HRESULT hr = m_out->Seek(move, STREAM_SEEK_SET, nullptr);
    if (FAILED(hr))
        return hr;
    ULONG written = 0;
    hr = m_out->Write(data, size, &written);
    if (SUCCEEDED(hr) && written != size)
        hr = STG_E_WRITEFAULT;
    return hr;
}

HRESULT AviRiffWriter::writeDword(ULONGLONG position, DWORD value)
{
    return writeAt(position, &value, sizeof value);
}

} // namespace lab
