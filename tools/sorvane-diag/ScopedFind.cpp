#include "ScopedFind.h"

namespace sorvane {
namespace diag {

std::wstring ScopedFind::firstFile(const std::wstring &pattern)
{
    const ScopedFind search(pattern);
    return search.found() ? std::wstring(search.data().cFileName) : std::wstring();
}

ScopedFind::ScopedFind(const std::wstring &pattern) : m_handle(FindFirstFileW(pattern.c_str(), &m_data)) {}

ScopedFind::~ScopedFind()
{
    if (found())
        FindClose(m_handle);
}

} // namespace diag
} // namespace sorvane
