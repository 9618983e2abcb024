#pragma once

#include <string>

namespace sorvane {
namespace test {

// A fresh, empty folder under the temporary folder, removed with its files at the end.
class ScratchFolder {
public:
    explicit ScratchFolder(const std::wstring &name);
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder &) = delete;
    ScratchFolder &operator=(const ScratchFolder &) = delete;

    const std::wstring &path() const { return m_path; }
    std::wstring file(const std::wstring &name) const { return m_path + L"\\" + name; }

    // The whole content of a file; empty when it cannot be read.
    static std::string read(const std::wstring &path);

private:
    void removeAll();
    static void removeTree(const std::wstring &folder);
    std::wstring m_path;
};

} // namespace test
} // namespace sorvane
