#include "lab/ScopedLabDevices.h"

#include <windows.h>
#include <stdexcept>

#include "common/Utf8.h"
#include "devices/HiddenLabDevices.h"
#include "devices/MonikerWriter.h"
#include "devices/SetupApiRecord.h"
#include "devices/SetupApiWriter.h"
#include "devices/WrittenItems.h"
#include "setup/LabDescription.h"

namespace lab {

namespace {

[[noreturn]] void fail(const std::wstring &message)
{
    throw std::runtime_error("lab devices: " + utf8(message));
}

// sorvanelab.dll names the class and category of each kind; the test's own bin folder holds it.
class LabDll {
public:
    LabDll() : m_module(LoadLibraryW(L"sorvanelab.dll")) {}
    ~LabDll()
    {
        if (m_module)
            FreeLibrary(m_module);
    }
    LabDll(const LabDll &) = delete;
    LabDll &operator=(const LabDll &) = delete;
    HMODULE module() const { return m_module; }

private:
    HMODULE m_module;
};

} // namespace

// Members are destroyed in reverse order: the test's devices go before the lab's come back.
struct ScopedLabDevices::State {
    HiddenLabDevices hidden;
    WrittenItems written;
    std::vector<std::wstring> instanceIds;
    std::vector<std::wstring> infFiles;

    ~State() { written.removeAll(); }
};

ScopedLabDevices::ScopedLabDevices(const std::wstring &description, LabDevices labDevices) : m_state(new State)
{
    std::wstring error;
    LabDescription parsed;
    if (!parsed.parse(utf8(description), error))
        fail(error);
    if (labDevices == LabDevices::Hidden && !m_state->hidden.hide(error))
        fail(error);

    const LabDll dll;
    const MonikerWriter monikers(dll.module());
    for (const DeviceDescription &device : parsed.devices()) {
        if (!MonikerWriter::hasMoniker(device))
            continue;
        MonikerWriter::Written moniker;
        if (FAILED(monikers.write(device, true, moniker, error)))
            fail(error);
        m_state->written.keys.push_back(moniker.key);
    }
    std::vector<SetupApiRecord> records;
    if (!SetupApiRecord::fromDescription(parsed.devices(), records, error))
        fail(error);
    WrittenItems written;
    const HRESULT hr = SetupApiWriter::write(records, true, written, error);
    m_state->written.append(written);
    if (FAILED(hr))
        fail(error);
    for (const SetupApiRecord &record : records)
        m_state->instanceIds.push_back(record.instanceId);
    m_state->infFiles = written.files;
}

ScopedLabDevices::~ScopedLabDevices() = default;

const std::vector<std::wstring> &ScopedLabDevices::instanceIds() const
{
    return m_state->instanceIds;
}

const std::vector<std::wstring> &ScopedLabDevices::infFiles() const
{
    return m_state->infFiles;
}

} // namespace lab
