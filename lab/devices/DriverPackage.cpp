#include "devices/DriverPackage.h"

#include <windows.h>
#include <fstream>

#include "common/GuidText.h"

namespace lab {

namespace {

// A value of the [Strings] section: quoted, with quotes doubled.
std::wstring quoted(const std::wstring &text)
{
    std::wstring result = L"\"";
    for (wchar_t c : text) {
        result += c;
        if (c == L'"')
            result += c;
    }
    return result + L"\"";
}

} // namespace

DriverPackage::DriverPackage(std::vector<const SetupApiRecord *> records) : m_records(std::move(records)) {}

const wchar_t *DriverPackage::installSection()
{
    return L"LabDriver_Install";
}

const wchar_t *DriverPackage::installSectionExtension()
{
    return L".NT";
}

std::wstring DriverPackage::versionSection() const
{
    const SetupApiRecord &first = *m_records.front();
    return L"[Version]\r\n"
           L"Signature   = \"$Windows NT$\"\r\n"
           L"Class       = " +
           first.className +
           L"\r\n"
           L"ClassGuid   = " +
           guidText(first.classGuid) +
           L"\r\n"
           L"Provider    = %Provider%\r\n"
           L"DriverVer   = " +
           first.driverDate + L"," + first.driverVersion + L"\r\n\r\n";
}

std::wstring DriverPackage::modelsSections() const
{
    std::wstring models = L"[Manufacturer]\r\n%Mfg% = LabModels, NTamd64\r\n\r\n[LabModels.NTamd64]\r\n";
    for (size_t i = 0; i < m_records.size(); ++i) {
        models += L"%Device" + std::to_wstring(i) + L"% = " + installSection() + L", " +
                  m_records[i]->hardwareIds.front() + L"\r\n";
    }
    return models + L"\r\n";
}

std::wstring DriverPackage::installSections() const
{
    const std::wstring install = L"[" + std::wstring(installSection()) + installSectionExtension() + L"]\r\n";
    if (!m_records.front()->copiesFile())
        return install + L"; the device needs no file of its own\r\n\r\n";
    const std::wstring file = m_records.front()->driverFile;
    return L"[DestinationDirs]\r\nDefaultDestDir = 12\r\n\r\n" + install +
           L"CopyFiles = LabDriver_CopyFiles\r\n\r\n"
           L"[LabDriver_CopyFiles]\r\n" +
           file +
           L"\r\n\r\n"
           L"[SourceDisksNames]\r\n1 = %Disk%\r\n\r\n"
           L"[SourceDisksFiles]\r\n" +
           file + L" = 1\r\n\r\n";
}

std::wstring DriverPackage::stringsSection() const
{
    const SetupApiRecord &first = *m_records.front();
    std::wstring strings = L"[Strings]\r\n"
                           L"Provider = " +
                           quoted(first.driverProvider) +
                           L"\r\n"
                           L"Mfg = " +
                           quoted(first.manufacturer) +
                           L"\r\n"
                           L"Disk = " +
                           quoted(first.manufacturer + L" driver disk") + L"\r\n";
    for (size_t i = 0; i < m_records.size(); ++i)
        strings += L"Device" + std::to_wstring(i) + L" = " + quoted(m_records[i]->deviceDescription) + L"\r\n";
    return strings;
}

std::wstring DriverPackage::infText() const
{
    return L"; Driver package of the lab's " + m_records.front()->manufacturer + L" devices\r\n\r\n" +
           versionSection() + modelsSections() + installSections() + stringsSection();
}

bool DriverPackage::writeTo(const std::wstring &file) const
{
    const std::wstring text = L"\xFEFF" + infText();
    std::ofstream out(file.c_str(), std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char *>(text.data()), static_cast<std::streamsize>(text.size() * sizeof(wchar_t)));
    return static_cast<bool>(out.flush());
}

} // namespace lab
