// Owns a reference to a loaded module (LoadLibraryW, GetModuleHandleExW without
// GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT) and gives it back with FreeLibrary.
#pragma once

#include <windows.h>

namespace sorvane {

class ScopedModule {
public:
    explicit ScopedModule(HMODULE module = nullptr);
    ~ScopedModule();
    ScopedModule(const ScopedModule &) = delete;
    ScopedModule &operator=(const ScopedModule &) = delete;

    HMODULE get() const { return m_module; }
    explicit operator bool() const { return m_module != nullptr; }
    // For out-parameters: frees what is held and hands out the slot.
    HMODULE *receive();
    // Keeps the module loaded for the rest of the process: the reference is no longer owned.
    HMODULE keep();

private:
    HMODULE m_module;
};

} // namespace sorvane
