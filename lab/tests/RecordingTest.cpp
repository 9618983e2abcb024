// Recording through the capture graph builder as a library does it on Windows:
// SetOutputFileName(MEDIASUBTYPE_Avi) gives the multiplexer and the file writer, RenderStream
// connects the device into the multiplexer, and after Stop the file is a complete AVI whose
// chunks hold the device's frames in order.
#include <windows.h>
#include <dshow.h>
#include <aviriff.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <atlbase.h>
#include <gtest/gtest.h>

#include "LabGraph.h"
#include "LeakCheckedTest.h"
#include "WaitFor.h"
#include "lab/FrameMark.h"
#include "lab/LabControl.h"

namespace {

class CoTaskString {
public:
    ~CoTaskString() { CoTaskMemFree(text); }
    LPOLESTR text = nullptr;
};

std::wstring tempFile(const wchar_t *name)
{
    wchar_t directory[MAX_PATH] = {};
    GetTempPathW(MAX_PATH, directory);
    return std::wstring(directory) + name;
}

std::vector<BYTE> readFile(const std::wstring &path)
{
    std::vector<BYTE> bytes;
    HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return bytes;
    LARGE_INTEGER size = {};
    GetFileSizeEx(file, &size);
    bytes.resize(static_cast<size_t>(size.QuadPart));
    DWORD read = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
    bytes.resize(read);
    CloseHandle(file);
    return bytes;
}

DWORD fourcc(const char *text)
{
    DWORD value = 0;
    std::memcpy(&value, text, 4);
    return value;
}

// An AVI file as far as a test reads it: the headers, the 'movi' chunks and the 'idx1' index.
struct AviFile {
    struct Chunk {
        DWORD id;
        size_t offset; // of the data
        DWORD size;
    };
    struct IndexEntry {
        DWORD id;
        DWORD flags;
        DWORD offset;
        DWORD size;
    };

    bool riff = false;
    AVIMAINHEADER mainHeader = {};
    std::vector<AVISTREAMHEADER> streamHeaders;
    std::vector<std::vector<BYTE>> streamFormats;
    size_t moviType = 0; // offset of the 'movi' list type, the base of index offsets
    std::vector<Chunk> chunks;
    std::vector<IndexEntry> index;
    std::vector<BYTE> bytes;

    explicit AviFile(std::vector<BYTE> data) : bytes(std::move(data))
    {
        if (bytes.size() < 12 || dword(0) != fourcc("RIFF") || dword(8) != fourcc("AVI ") ||
            dword(4) + 8 != bytes.size())
            return;
        riff = true;
        walk(12, bytes.size());
    }

    DWORD dword(size_t at) const
    {
        DWORD value = 0;
        if (at + 4 <= bytes.size())
            std::memcpy(&value, &bytes[at], 4);
        return value;
    }

    std::vector<const Chunk *> chunksOf(const char *id) const
    {
        std::vector<const Chunk *> found;
        for (const Chunk &chunk : chunks) {
            if (chunk.id == fourcc(id))
                found.push_back(&chunk);
        }
        return found;
    }

private:
    void walk(size_t at, size_t end)
    {
        while (at + 8 <= end) {
            const DWORD id = dword(at);
            const DWORD size = dword(at + 4);
            const size_t data = at + 8;
            if (data + size > end)
                return;
            if (id == fourcc("LIST")) {
                if (dword(data) == fourcc("movi"))
                    moviType = data;
                walk(data + 4, data + size);
            } else {
                take(id, data, size);
            }
            at = data + size + (size & 1);
        }
    }

    void take(DWORD id, size_t data, DWORD size)
    {
        if (id == fourcc("avih") && size + 8 == sizeof(AVIMAINHEADER)) {
            std::memcpy(&mainHeader, &bytes[data - 8], sizeof(mainHeader));
        } else if (id == fourcc("strh") && size + 8 == sizeof(AVISTREAMHEADER)) {
            streamHeaders.emplace_back();
            std::memcpy(&streamHeaders.back(), &bytes[data - 8], sizeof(AVISTREAMHEADER));
        } else if (id == fourcc("strf")) {
            streamFormats.emplace_back(bytes.begin() + data, bytes.begin() + data + size);
        } else if (id == fourcc("idx1")) {
            index.resize(size / sizeof(IndexEntry));
            if (!index.empty())
                std::memcpy(index.data(), &bytes[data], index.size() * sizeof(IndexEntry));
        } else {
            chunks.push_back(Chunk{id, data, size});
        }
    }
};

// A graph recording one device into an AVI file through the capture graph builder.
class Recording {
public:
    explicit Recording(const std::wstring &device) : m_device(device) { labtest::bindDevice(device, m_source); }

    HRESULT build(const std::wstring &path, bool withAudio)
    {
        HRESULT hr = m_graph.CoCreateInstance(CLSID_FilterGraph, nullptr, CLSCTX_INPROC_SERVER);
        if (SUCCEEDED(hr))
            hr = m_builder.CoCreateInstance(CLSID_CaptureGraphBuilder2, nullptr, CLSCTX_INPROC_SERVER);
        if (SUCCEEDED(hr))
            hr = m_builder->SetFiltergraph(m_graph);
        if (SUCCEEDED(hr))
            hr = m_source ? m_graph->AddFilter(m_source, L"Video Capture") : E_FAIL;
        if (SUCCEEDED(hr))
            hr = m_builder->SetOutputFileName(&MEDIASUBTYPE_Avi, path.c_str(), &m_mux, &m_sink);
        if (SUCCEEDED(hr))
            hr = m_builder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Video, m_source, nullptr, m_mux);
        if (SUCCEEDED(hr) && withAudio)
            hr = m_builder->RenderStream(&PIN_CATEGORY_CAPTURE, &MEDIATYPE_Audio, m_source, nullptr, m_mux);
        return hr;
    }

    // Runs the graph until the device has delivered `frames` more video samples, then stops it.
    HRESULT record(long long frames)
    {
        const long long before = lab::samplesDelivered(m_device);
        CComQIPtr<IMediaControl> control(m_graph);
        HRESULT hr = control->Run();
        if (FAILED(hr))
            return hr;
        const std::wstring device = m_device;
        if (!labtest::waitFor([&] { return lab::samplesDelivered(device) >= before + frames; }))
            ADD_FAILURE() << "the device never delivered " << frames << " samples";
        return control->Stop();
    }

    void tearDown()
    {
        if (m_graph) {
            CComPtr<IEnumFilters> filters;
            m_graph->EnumFilters(&filters);
            std::vector<CComPtr<IBaseFilter>> members;
            for (CComPtr<IBaseFilter> filter; filters && filters->Next(1, &filter, nullptr) == S_OK; filter.Release())
                members.push_back(filter);
            for (const CComPtr<IBaseFilter> &filter : members)
                m_graph->RemoveFilter(filter);
        }
        m_sink.Release();
        m_mux.Release();
        m_source.Release();
        m_builder.Release();
        m_graph.Release();
    }

    ~Recording() { tearDown(); }

    CComPtr<IGraphBuilder> m_graph;
    CComPtr<ICaptureGraphBuilder2> m_builder;
    std::wstring m_device;
    CComPtr<IBaseFilter> m_source;
    CComPtr<IBaseFilter> m_mux;
    CComPtr<IFileSinkFilter> m_sink;
};

bool inGraph(IBaseFilter *filter, IGraphBuilder *graph)
{
    FILTER_INFO info = {};
    if (FAILED(filter->QueryFilterInfo(&info)))
        return false;
    CComPtr<IFilterGraph> member;
    member.Attach(info.pGraph);
    return member.IsEqualObject(graph);
}

// Records `frames` video samples of the device (and what else it delivers meanwhile) into a
// fresh temporary file and reads it back; the file is gone afterwards.
AviFile recordedFile(const wchar_t *device, const wchar_t *fileName, bool withAudio, long long frames)
{
    const std::wstring path = tempFile(fileName);
    DeleteFileW(path.c_str());
    {
        Recording recording(device);
        EXPECT_HRESULT_SUCCEEDED(recording.build(path, withAudio));
        EXPECT_HRESULT_SUCCEEDED(recording.record(frames));
    }
    AviFile avi(readFile(path));
    DeleteFileW(path.c_str());
    return avi;
}

// The frame numbers the video chunks of the file carry, in file order, read with the geometry
// of the file's first stream format.
std::vector<unsigned long> frameNumbers(const AviFile &avi, const char *chunkId, lab::PixelLayout layout)
{
    std::vector<unsigned long> numbers;
    BITMAPINFOHEADER bitmap = {};
    if (avi.streamFormats.empty() || avi.streamFormats[0].size() < sizeof(bitmap))
        return numbers;
    std::memcpy(&bitmap, avi.streamFormats[0].data(), sizeof(bitmap));
    for (const AviFile::Chunk *chunk : avi.chunksOf(chunkId)) {
        lab::FrameView view{&avi.bytes[chunk->offset],
                            static_cast<long>(chunk->size),
                            layout,
                            static_cast<int>(bitmap.biWidth),
                            static_cast<int>(std::labs(bitmap.biHeight)),
                            bitmap.biHeight > 0};
        unsigned long number = 0;
        numbers.push_back(lab::readFrameNumber(view, number) ? number : 0xFFFFFFFFul);
    }
    return numbers;
}

class RecordingTest : public labtest::LeakCheckedTest {};

TEST_F(RecordingTest, WebcamFramesLandInTheAviInOrder)
{
    const std::wstring path = tempFile(L"lab-recording-rgb24.avi");
    DeleteFileW(path.c_str());
    {
        Recording recording(L"Lab Webcam RGB24");
        ASSERT_HRESULT_SUCCEEDED(recording.build(path, false));
        ASSERT_TRUE(recording.m_mux && recording.m_sink);
        EXPECT_TRUE(inGraph(recording.m_mux, recording.m_graph));
        CComQIPtr<IBaseFilter> writer(recording.m_sink);
        ASSERT_TRUE(writer);
        EXPECT_TRUE(inGraph(writer, recording.m_graph));
        CoTaskString file;
        ASSERT_HRESULT_SUCCEEDED(recording.m_sink->GetCurFile(&file.text, nullptr));
        EXPECT_EQ(path, file.text);
        ASSERT_HRESULT_SUCCEEDED(recording.record(30));
    }

    AviFile avi(readFile(path));
    ASSERT_TRUE(avi.riff);
    ASSERT_EQ(1u, avi.streamHeaders.size());
    EXPECT_EQ(fourcc("vids"), avi.streamHeaders[0].fccType);
    ASSERT_GE(avi.streamFormats[0].size(), sizeof(BITMAPINFOHEADER));
    BITMAPINFOHEADER bitmap = {};
    std::memcpy(&bitmap, avi.streamFormats[0].data(), sizeof(bitmap));
    EXPECT_EQ(640, bitmap.biWidth);
    EXPECT_EQ(480, bitmap.biHeight);
    EXPECT_EQ(24, bitmap.biBitCount);
    EXPECT_EQ(33333u, avi.mainHeader.dwMicroSecPerFrame);
    EXPECT_EQ(static_cast<DWORD>(AVIF_HASINDEX), avi.mainHeader.dwFlags & AVIF_HASINDEX);

    const std::vector<unsigned long> numbers = frameNumbers(avi, "00db", lab::PixelLayout::Rgb24);
    // Every sample the camera delivered before the stop, and nothing else.
    ASSERT_GE(numbers.size(), 30u);
    std::wstring delivered;
    for (const std::wstring &entry : lab::journal(L"Lab Webcam RGB24")) {
        if (entry.compare(0, 10, L"Delivered ") == 0)
            delivered = entry;
    }
    EXPECT_EQ(L"Delivered " + std::to_wstring(numbers.size()), delivered);
    for (size_t i = 0; i < numbers.size(); ++i)
        EXPECT_EQ(i, numbers[i]) << "chunk " << i;
    EXPECT_EQ(numbers.size(), avi.mainHeader.dwTotalFrames);
    EXPECT_EQ(numbers.size(), avi.streamHeaders[0].dwLength);

    // The index names every chunk at its place, relative to the 'movi' list type.
    ASSERT_EQ(numbers.size(), avi.index.size());
    for (size_t i = 0; i < avi.index.size(); ++i) {
        EXPECT_EQ(fourcc("00db"), avi.index[i].id);
        EXPECT_EQ(static_cast<DWORD>(AVIIF_KEYFRAME), avi.index[i].flags);
        EXPECT_EQ(avi.chunks[i].offset - 8, avi.moviType + avi.index[i].offset);
        EXPECT_EQ(640u * 480u * 3u, avi.index[i].size);
    }
    DeleteFileW(path.c_str());
}

// JPEG frames differ in length from frame to frame, many of them odd: every chunk must still
// start where the index says, after the padding of the chunk before it.
TEST_F(RecordingTest, MotionJpegFramesKeepTheirLengths)
{
    const AviFile avi = recordedFile(L"Lab Webcam MJPG", L"lab-recording-mjpg.avi", false, 20);
    ASSERT_TRUE(avi.riff);
    ASSERT_EQ(1u, avi.streamHeaders.size());
    EXPECT_EQ(fourcc("MJPG"), avi.streamHeaders[0].fccHandler);
    const std::vector<const AviFile::Chunk *> frames = avi.chunksOf("00dc");
    ASSERT_GE(frames.size(), 5u);
    ASSERT_EQ(frames.size(), avi.index.size());
    DWORD largest = 0;
    for (size_t i = 0; i < frames.size(); ++i) {
        const BYTE *data = &avi.bytes[frames[i]->offset];
        const DWORD size = frames[i]->size;
        ASSERT_GE(size, 4u);
        EXPECT_TRUE(data[0] == 0xFF && data[1] == 0xD8) << "frame " << i << " starts a JPEG";
        EXPECT_TRUE(data[size - 2] == 0xFF && data[size - 1] == 0xD9) << "frame " << i << " ends a JPEG";
        EXPECT_EQ(size, avi.index[i].size);
        EXPECT_EQ(frames[i]->offset - 8, avi.moviType + avi.index[i].offset);
        largest = size > largest ? size : largest;
    }
    EXPECT_EQ(largest, avi.streamHeaders[0].dwSuggestedBufferSize);
}

TEST_F(RecordingTest, CompressedVideoAndSoundGetTheirOwnChunkTypes)
{
    const AviFile avi = recordedFile(L"Lab Analog TV Tuner", L"lab-recording-tuner.avi", true, 18);
    ASSERT_TRUE(avi.riff);
    ASSERT_EQ(2u, avi.streamHeaders.size());
    EXPECT_EQ(fourcc("vids"), avi.streamHeaders[0].fccType);
    EXPECT_EQ(fourcc("YUY2"), avi.streamHeaders[0].fccHandler);
    EXPECT_EQ(fourcc("auds"), avi.streamHeaders[1].fccType);
    EXPECT_EQ(4u, avi.streamHeaders[1].dwSampleSize);
    EXPECT_EQ(192000u, avi.streamHeaders[1].dwRate);

    const size_t video = avi.chunksOf("00dc").size();
    const size_t audio = avi.chunksOf("01wb").size();
    EXPECT_GE(video, 5u);
    EXPECT_GE(audio, 2u);
    EXPECT_EQ(video + audio, avi.chunks.size());
    EXPECT_EQ(avi.chunks.size(), avi.index.size());
    EXPECT_EQ(video, avi.streamHeaders[0].dwLength);
    EXPECT_EQ(audio * 19200u / 4u, avi.streamHeaders[1].dwLength);
}

TEST_F(RecordingTest, EachRunWritesTheFileAfresh)
{
    const std::wstring path = tempFile(L"lab-recording-twice.avi");
    {
        Recording recording(L"Lab Webcam RGB24 Top-Down");
        ASSERT_HRESULT_SUCCEEDED(recording.build(path, false));
        ASSERT_HRESULT_SUCCEEDED(recording.record(18));
        const size_t firstSize = readFile(path).size();
        ASSERT_HRESULT_SUCCEEDED(recording.record(6));
        AviFile second(readFile(path));
        ASSERT_TRUE(second.riff);
        EXPECT_LT(second.bytes.size(), firstSize);
        const std::vector<unsigned long> numbers = frameNumbers(second, "00db", lab::PixelLayout::Rgb24);
        ASSERT_FALSE(numbers.empty());
        EXPECT_EQ(0u, numbers.front());
    }
    DeleteFileW(path.c_str());
}

TEST_F(RecordingTest, SetOutputFileNameChecksItsArguments)
{
    CComPtr<ICaptureGraphBuilder2> builder;
    ASSERT_HRESULT_SUCCEEDED(builder.CoCreateInstance(CLSID_CaptureGraphBuilder2, nullptr, CLSCTX_INPROC_SERVER));
    CComPtr<IBaseFilter> mux;
    CComPtr<IFileSinkFilter> sink;
    const std::wstring path = tempFile(L"lab-recording-unused.avi");
    EXPECT_EQ(E_POINTER, builder->SetOutputFileName(nullptr, path.c_str(), &mux, &sink));
    EXPECT_EQ(E_POINTER, builder->SetOutputFileName(&MEDIASUBTYPE_Avi, nullptr, &mux, &sink));
    EXPECT_EQ(E_POINTER, builder->SetOutputFileName(&MEDIASUBTYPE_Avi, path.c_str(), nullptr, &sink));
    EXPECT_EQ(E_NOTIMPL, builder->SetOutputFileName(&MEDIASUBTYPE_Asf, path.c_str(), &mux, &sink));
    EXPECT_EQ(REGDB_E_CLASSNOTREG, builder->SetOutputFileName(&GUID_NULL, path.c_str(), &mux, &sink));

    // Like Windows, the builder makes a graph of its own when none was set; the sink is optional.
    ASSERT_HRESULT_SUCCEEDED(builder->SetOutputFileName(&MEDIASUBTYPE_Avi, path.c_str(), &mux, nullptr));
    CComPtr<IGraphBuilder> graph;
    ASSERT_HRESULT_SUCCEEDED(builder->GetFiltergraph(&graph));
    EXPECT_TRUE(inGraph(mux, graph));
    graph->RemoveFilter(mux);
    CComPtr<IEnumFilters> filters;
    graph->EnumFilters(&filters);
    for (CComPtr<IBaseFilter> filter; filters->Next(1, &filter, nullptr) == S_OK; filter.Release()) {
        graph->RemoveFilter(filter);
        filters->Reset();
    }
}

} // namespace
