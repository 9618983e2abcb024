// The file writer's input pin. Upstream filters either deliver samples (each written at the byte
// offset its start time names, or after the previous one when it has none) or, as the AVI
// multiplexer does, write through the pin's IStream with seeks back to fix up headers.
#pragma once

#include <atomic>

#include "common/InputPin.h"

namespace lab {

class SinkFile;

class FileWriterInputPin : public InputPin, public IStream {
public:
    FileWriterInputPin(BaseFilter &filter, SinkFile &file);

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override { return InputPin::QueryInterface(iid, out); }
    STDMETHODIMP_(ULONG) AddRef() override { return InputPin::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return InputPin::Release(); }

    HRESULT checkMediaType(const AM_MEDIA_TYPE &type) override;
    std::vector<MediaType> mediaTypes() override;
    STDMETHODIMP EndOfStream() override;

    // A run begins: samples delivered in it replace what the file held.
    void beginRun();

    // ISequentialStream
    STDMETHODIMP Read(void *data, ULONG size, ULONG *read) override;
    STDMETHODIMP Write(const void *data, ULONG size, ULONG *written) override;
    // IStream
    STDMETHODIMP Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER *position) override;
    STDMETHODIMP SetSize(ULARGE_INTEGER size) override;
    STDMETHODIMP CopyTo(IStream *target, ULARGE_INTEGER size, ULARGE_INTEGER *read, ULARGE_INTEGER *written) override;
    STDMETHODIMP Commit(DWORD flags) override;
    STDMETHODIMP Revert() override;
    STDMETHODIMP LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size, DWORD type) override;
    STDMETHODIMP UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size, DWORD type) override;
    STDMETHODIMP Stat(STATSTG *stat, DWORD flags) override;
    STDMETHODIMP Clone(IStream **clone) override;

protected:
    void *queryExtra(REFIID iid) override;
    HRESULT receive(IMediaSample *sample) override;

private:
    SinkFile &m_file;
    // Where the stream writes next, and where an untimed sample goes.
    std::atomic<ULONGLONG> m_position{0};
    std::atomic<bool> m_truncatePending{false};
};

} // namespace lab
