#include "recording/FileWriter.h"

#include <cstring>
#include <string>

#include "common/ClassRegistry.h"
#include "common/LockedRead.h"

namespace lab {

namespace {

const ClassRegistration registration(ClassInfo::plain(CLSID_FileWriter, L"File writer",
                                                      &createObject<FileWriter, IBaseFilter>));

} // namespace

FileWriter::FileWriter() : BaseFilter(CLSID_FileWriter), m_input(*this, m_file) {}

BasePin *FileWriter::pin(int index)
{
    return index == 0 ? &m_input : nullptr;
}

void *FileWriter::queryExtra(REFIID iid)
{
    if (IsEqualIID(iid, IID_IFileSinkFilter) || IsEqualIID(iid, IID_IFileSinkFilter2))
        return static_cast<IFileSinkFilter2 *>(this);
    if (IsEqualIID(iid, IID_IAMFilterMiscFlags))
        return static_cast<IAMFilterMiscFlags *>(this);
    return nullptr;
}

STDMETHODIMP FileWriter::SetFileName(LPCOLESTR name, const AM_MEDIA_TYPE *type)
{
    if (!name)
        return E_POINTER;
    if (state() != State_Stopped)
        return VFW_E_NOT_STOPPED;
    std::lock_guard<std::mutex> guard(m_settingsLock);
    m_file.setPath(name);
    m_fileType = type ? MediaType(*type) : MediaType();
    return S_OK;
}

STDMETHODIMP FileWriter::GetCurFile(LPOLESTR *name, AM_MEDIA_TYPE *type)
{
    if (!name)
        return E_POINTER;
    *name = nullptr;
    const std::wstring path = m_file.path();
    if (path.empty())
        return E_FAIL;
    if (type) {
        std::lock_guard<std::mutex> guard(m_settingsLock);
        const HRESULT hr = m_fileType.copyTo(*type);
        if (FAILED(hr))
            return hr;
    }
    // The caller owns the name (and the type's contents) from here on.
    const size_t bytes = (path.size() + 1) * sizeof(wchar_t);
    *name = static_cast<LPOLESTR>(CoTaskMemAlloc(bytes));
    if (*name) {
        std::memcpy(*name, path.c_str(), bytes);
        return S_OK;
    }
    if (type)
        MediaType::freeContents(*type);
    return E_OUTOFMEMORY;
}

STDMETHODIMP FileWriter::SetMode(DWORD flags)
{
    if (flags & ~static_cast<DWORD>(AM_FILE_OVERWRITE))
        return E_INVALIDARG;
    std::lock_guard<std::mutex> guard(m_settingsLock);
    m_mode = flags;
    return S_OK;
}

STDMETHODIMP FileWriter::GetMode(DWORD *flags)
{
    return readLocked(m_settingsLock, flags, m_mode);
}

STDMETHODIMP_(ULONG) FileWriter::GetMiscFlags()
{
    return AM_FILTER_MISC_FLAGS_IS_RENDERER;
}

HRESULT FileWriter::onPause(bool fromStopped)
{
    if (!fromStopped)
        return S_OK;
    // Nothing to write to until a file is named.
    if (m_file.path().empty())
        return E_UNEXPECTED;
    m_input.beginRun();
    return S_OK;
}

void FileWriter::onStop()
{
    m_file.close();
}

} // namespace lab
