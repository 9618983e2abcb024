#include "recording/FileWriterInputPin.h"

#include "common/BaseFilter.h"
#include "recording/SinkFile.h"

namespace lab {

FileWriterInputPin::FileWriterInputPin(BaseFilter &filter, SinkFile &file) : InputPin(filter, L"in"), m_file(file) {}

HRESULT FileWriterInputPin::checkMediaType(const AM_MEDIA_TYPE &type)
{
    return IsEqualGUID(type.majortype, MEDIATYPE_Stream) ? S_OK : S_FALSE;
}

std::vector<MediaType> FileWriterInputPin::mediaTypes()
{
    AM_MEDIA_TYPE stream = {};
    stream.majortype = MEDIATYPE_Stream;
    stream.bFixedSizeSamples = FALSE;
    return {MediaType(stream)};
}

STDMETHODIMP FileWriterInputPin::EndOfStream()
{
    m_file.close();
    m_filter.notifyEvent(EC_COMPLETE, S_OK, reinterpret_cast<LONG_PTR>(static_cast<IBaseFilter *>(&m_filter)));
    return S_OK;
}

void FileWriterInputPin::beginRun()
{
    m_position = 0;
    m_truncatePending = true;
}

void *FileWriterInputPin::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, IID_IStream) || IsEqualIID(iid, IID_ISequentialStream))
        return static_cast<IStream *>(this);
    return InputPin::queryExtra(iid);
}

HRESULT FileWriterInputPin::receive(IMediaSample *sample)
{
    if (m_truncatePending.exchange(false)) {
        HRESULT hr = m_file.setSize(0);
        if (FAILED(hr))
            return hr;
    }
    BYTE *data = nullptr;
    HRESULT hr = sample->GetPointer(&data);
    if (FAILED(hr))
        return hr;
    const ULONG size = static_cast<ULONG>(sample->GetActualDataLength());
    REFERENCE_TIME start = 0;
    REFERENCE_TIME stop = 0;
    ULONGLONG position = SUCCEEDED(sample->GetTime(&start, &stop)) ? static_cast<ULONGLONG>(start) : m_position.load();
    hr = m_file.writeAt(position, data, size);
    if (SUCCEEDED(hr))
        m_position = position + size;
    return hr;
}

STDMETHODIMP FileWriterInputPin::Read(void *data, ULONG size, ULONG *read)
{
    if (!data)
        return STG_E_INVALIDPOINTER;
    ULONG got = 0;
    HRESULT hr = m_file.readAt(m_position, data, size, got);
    m_position += got;
    if (read)
        *read = got;
    return FAILED(hr) ? hr : (got < size ? S_FALSE : S_OK);
}

STDMETHODIMP FileWriterInputPin::Write(const void *data, ULONG size, ULONG *written)
{
    if (!data)
        return STG_E_INVALIDPOINTER;
    // Whoever writes through the stream manages the whole file itself.
    m_truncatePending = false;
    HRESULT hr = m_file.writeAt(m_position, data, size);
    if (SUCCEEDED(hr))
        m_position += size;
    if (written)
        *written = SUCCEEDED(hr) ? size : 0;
    return hr;
}

STDMETHODIMP FileWriterInputPin::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER *position)
{
    LONGLONG base = 0;
    if (origin == STREAM_SEEK_CUR) {
        base = static_cast<LONGLONG>(m_position.load());
    } else if (origin == STREAM_SEEK_END) {
        ULONGLONG size = 0;
        HRESULT hr = m_file.size(size);
        if (FAILED(hr))
            return hr;
        base = static_cast<LONGLONG>(size);
    } else if (origin != STREAM_SEEK_SET) {
        return STG_E_INVALIDFUNCTION;
    }
    if (base + move.QuadPart < 0)
        return STG_E_INVALIDFUNCTION;
    m_position = static_cast<ULONGLONG>(base + move.QuadPart);
    if (position)
        position->QuadPart = m_position;
    return S_OK;
}

STDMETHODIMP FileWriterInputPin::SetSize(ULARGE_INTEGER size)
{
    m_truncatePending = false;
    return m_file.setSize(size.QuadPart);
}

STDMETHODIMP FileWriterInputPin::CopyTo(IStream *, ULARGE_INTEGER, ULARGE_INTEGER *, ULARGE_INTEGER *)
{
    return E_NOTIMPL;
}

// The writer upstream is done: the file is complete and goes back to the disk.
STDMETHODIMP FileWriterInputPin::Commit(DWORD)
{
    m_file.close();
    return S_OK;
}

STDMETHODIMP FileWriterInputPin::Revert()
{
    return E_NOTIMPL;
}

STDMETHODIMP FileWriterInputPin::LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD)
{
    return STG_E_INVALIDFUNCTION;
}

STDMETHODIMP FileWriterInputPin::UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD)
{
    return STG_E_INVALIDFUNCTION;
}

STDMETHODIMP FileWriterInputPin::Stat(STATSTG *stat, DWORD)
{
    if (!stat)
        return STG_E_INVALIDPOINTER;
    ZeroMemory(stat, sizeof(*stat));
    stat->type = STGTY_STREAM;
    ULONGLONG size = 0;
    HRESULT hr = m_file.size(size);
    stat->cbSize.QuadPart = size;
    return hr;
}

STDMETHODIMP FileWriterInputPin::Clone(IStream **clone)
{
    if (clone)
        *clone = nullptr;
    return E_NOTIMPL;
}

} // namespace lab
