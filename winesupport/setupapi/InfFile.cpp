#include "setupapi/InfFile.h"

#include <cwchar>

namespace winesupport {

namespace {

// Splits "a<sep>b<sep>c..." into at most count numbers; returns how many were read.
int numbers(const wchar_t *text, wchar_t separator, unsigned long *values, int count)
{
    int read = 0;
    while (read < count && *text) {
        wchar_t *end = nullptr;
        values[read++] = std::wcstoul(text, &end, 10);
        if (end == text || (*end && *end != separator))
            return -1;
        text = *end ? end + 1 : end;
    }
    return read;
}

bool parseDate(const wchar_t *text, FILETIME &date)
{
    unsigned long parts[3] = {};
    if (numbers(text, L'/', parts, 3) != 3)
        return false;
    SYSTEMTIME day = {};
    day.wMonth = static_cast<WORD>(parts[0]);
    day.wDay = static_cast<WORD>(parts[1]);
    day.wYear = static_cast<WORD>(parts[2]);
    return SystemTimeToFileTime(&day, &date) != FALSE;
}

bool parseVersion(const wchar_t *text, DWORDLONG &version)
{
    unsigned long parts[4] = {};
    if (numbers(text, L'.', parts, 4) < 1)
        return false;
    version = 0;
    for (unsigned long part : parts)
        version = (version << 16) | (part & 0xFFFF);
    return true;
}

} // namespace

InfFile::InfFile(const wchar_t *path) : m_inf(SetupOpenInfFileW(path, nullptr, INF_STYLE_WIN4, nullptr)) {}

InfFile::~InfFile()
{
    if (isOpen())
        SetupCloseInfFile(m_inf);
}

bool InfFile::driverVer(FILETIME &date, DWORDLONG &version) const
{
    INFCONTEXT line = {};
    wchar_t dateText[64] = {};
    wchar_t versionText[64] = {};
    if (!isOpen() || !SetupFindFirstLineW(m_inf, L"Version", L"DriverVer", &line) ||
        !SetupGetStringFieldW(&line, 1, dateText, 64, nullptr))
        return false;
    if (!SetupGetStringFieldW(&line, 2, versionText, 64, nullptr))
        versionText[0] = L'\0';
    version = 0;
    return parseDate(dateText, date) && (!versionText[0] || parseVersion(versionText, version));
}

bool InfFile::queueInstallFiles(const wchar_t *section, HSPFILEQ queue) const
{
    wchar_t actual[LINE_LEN] = {};
    if (!isOpen() || !SetupDiGetActualSectionToInstallW(m_inf, section, actual, LINE_LEN, nullptr, nullptr))
        return false;
    return SetupInstallFilesFromInfSectionW(m_inf, nullptr, queue, actual, nullptr, SP_COPY_NEWER_ONLY) != FALSE;
}

} // namespace winesupport
