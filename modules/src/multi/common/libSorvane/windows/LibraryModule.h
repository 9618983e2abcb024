#pragma once

#include <windows.h>

namespace sorvane {

// This library's own module, wherever it was loaded from: the owner of its window class
// and of its dialog and icon resources.
class LibraryModule {
public:
    static HINSTANCE instance();
};

} // namespace sorvane
