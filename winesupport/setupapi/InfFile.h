// An open INF file (closed with the object) and the two things the gap filler reads from it.
#pragma once

#include <windows.h>
#include <setupapi.h>

namespace winesupport {

class InfFile {
public:
    explicit InfFile(const wchar_t *path);
    ~InfFile();
    InfFile(const InfFile &) = delete;
    InfFile &operator=(const InfFile &) = delete;

    bool isOpen() const { return m_inf != INVALID_HANDLE_VALUE; }

    // [Version] DriverVer = MM/DD/YYYY,a.b.c.d: the date as a FILETIME and the version with
    // a in the highest 16 bits; false when the line is missing or malformed.
    bool driverVer(FILETIME &date, DWORDLONG &version) const;
    // Queues the files the install section (with its platform decoration) copies.
    bool queueInstallFiles(const wchar_t *section, HSPFILEQ queue) const;

private:
    HINF m_inf;
};

} // namespace winesupport
