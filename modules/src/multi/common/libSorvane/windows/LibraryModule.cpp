#include "LibraryModule.h"

namespace sorvane {

HINSTANCE LibraryModule::instance()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&LibraryModule::instance), &module);
    return module;
}

} // namespace sorvane
