#include "DriverInventory.h"

namespace labtest {

namespace {

class FileQueue {
public:
    FileQueue() : m_queue(SetupOpenFileQueue()) {}
    ~FileQueue()
    {
        if (m_queue != INVALID_HANDLE_VALUE)
            SetupCloseFileQueue(m_queue);
    }
    FileQueue(const FileQueue &) = delete;
    FileQueue &operator=(const FileQueue &) = delete;
    HSPFILEQ handle() const { return m_queue; }

    std::vector<std::wstring> targets() const
    {
        std::vector<std::wstring> files;
        DWORD result = 0;
        SetupScanFileQueueW(m_queue, SPQ_SCAN_USE_CALLBACK, nullptr, &FileQueue::collect, &files, &result);
        return files;
    }

private:
    static UINT CALLBACK collect(void *context, UINT, UINT_PTR target, UINT_PTR)
    {
        static_cast<std::vector<std::wstring> *>(context)->push_back(reinterpret_cast<const wchar_t *>(target));
        return NO_ERROR;
    }

    HSPFILEQ m_queue;
};

bool buildDriverList(HDEVINFO set, SP_DEVINFO_DATA &device)
{
    SP_DEVINSTALL_PARAMS_W params = {};
    params.cbSize = sizeof(params);
    if (!SetupDiGetDeviceInstallParamsW(set, &device, &params))
        return false;
    params.FlagsEx |= DI_FLAGSEX_INSTALLEDDRIVER;
    if (!SetupDiSetDeviceInstallParamsW(set, &device, &params) ||
        !SetupDiBuildDriverInfoList(set, &device, SPDIT_COMPATDRIVER))
        return false;
    params.FlagsEx |= DI_FLAGSEX_APPENDDRIVERLIST;
    return SetupDiSetDeviceInstallParamsW(set, &device, &params) &&
           SetupDiBuildDriverInfoList(set, &device, SPDIT_COMPATDRIVER);
}

bool readDetail(HDEVINFO set, SP_DEVINFO_DATA &device, DriverFacts &facts)
{
    // A fixed buffer as inventory code uses: the hardware IDs may not fit, the rest does.
    union {
        SP_DRVINFO_DETAIL_DATA_W detail;
        BYTE bytes[1584];
    } buffer = {};
    buffer.detail.cbSize = sizeof(buffer.detail);
    const BOOL detail = SetupDiGetDriverInfoDetailW(set, &device, reinterpret_cast<SP_DRVINFO_DATA_W *>(&facts.info),
                                                    &buffer.detail, sizeof(buffer), nullptr);
    if (!detail && GetLastError() != ERROR_INSUFFICIENT_BUFFER)
        return false;
    facts.infFile = buffer.detail.InfFileName;
    return true;
}

bool queueDriverFiles(HDEVINFO set, SP_DEVINFO_DATA &device, DriverFacts &facts)
{
    if (!SetupDiSetSelectedDriverW(set, &device, reinterpret_cast<SP_DRVINFO_DATA_W *>(&facts.info)))
        return false;
    const FileQueue queue;
    SP_DEVINSTALL_PARAMS_W params = {};
    params.cbSize = sizeof(params);
    if (queue.handle() == INVALID_HANDLE_VALUE || !SetupDiGetDeviceInstallParamsW(set, &device, &params))
        return false;
    params.FileQueue = queue.handle();
    params.Flags |= DI_NOVCP;
    if (!SetupDiSetDeviceInstallParamsW(set, &device, &params) ||
        !SetupDiCallClassInstaller(DIF_INSTALLDEVICEFILES, set, &device))
        return false;
    facts.files = queue.targets();
    return true;
}

} // namespace

bool readDriver(HDEVINFO set, SP_DEVINFO_DATA &device, DriverFacts &facts)
{
    facts = DriverFacts{};
    facts.info.cbSize = sizeof(facts.info);
    return buildDriverList(set, device) &&
           SetupDiEnumDriverInfoW(set, &device, SPDIT_COMPATDRIVER, 0,
                                  reinterpret_cast<SP_DRVINFO_DATA_W *>(&facts.info)) &&
           readDetail(set, device, facts) && queueDriverFiles(set, device, facts);
}

} // namespace labtest
