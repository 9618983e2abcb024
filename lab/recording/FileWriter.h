// The file writer Windows registers as CLSID_FileWriter: a renderer that puts a byte stream into
// the file named through IFileSinkFilter. Wine's own lacks IStream on its input pin, which the
// AVI multiplexer needs, so the lab serves this class ID.
#pragma once

#include <mutex>

#include "common/BaseFilter.h"
#include "recording/FileWriterInputPin.h"
#include "recording/SinkFile.h"

namespace lab {

class FileWriter : public BaseFilter, public IFileSinkFilter2, public IAMFilterMiscFlags {
public:
    FileWriter();

    STDMETHODIMP QueryInterface(REFIID iid, void **out) override { return BaseFilter::QueryInterface(iid, out); }
    STDMETHODIMP_(ULONG) AddRef() override { return BaseFilter::AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return BaseFilter::Release(); }

    // IFileSinkFilter2
    STDMETHODIMP SetFileName(LPCOLESTR name, const AM_MEDIA_TYPE *type) override;
    STDMETHODIMP GetCurFile(LPOLESTR *name, AM_MEDIA_TYPE *type) override;
    STDMETHODIMP SetMode(DWORD flags) override;
    STDMETHODIMP GetMode(DWORD *flags) override;

    // IAMFilterMiscFlags
    STDMETHODIMP_(ULONG) GetMiscFlags() override;

    int pinCount() override { return 1; }
    BasePin *pin(int index) override;

protected:
    void *queryExtra(REFIID iid) override;
    HRESULT onPause(bool fromStopped) override;
    void onStop() override;

private:
    SinkFile m_file;
    FileWriterInputPin m_input;
    std::mutex m_settingsLock;
    MediaType m_fileType;
    DWORD m_mode = 0;
};

} // namespace lab
