#pragma once

#include <kel/String.h>

namespace kel {

class KEL_API FileSystem {
public:
    static bool exists(const String &path);
    // True when the file is gone afterwards (removed, or was never there).
    static bool removeFile(const String &path);
    static String tempDirectory();
};

} // namespace kel
