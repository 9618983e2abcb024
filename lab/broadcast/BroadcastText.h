// Small text helpers of the broadcast description's reader: trimming, splitting, numbers in
// decimal or 0x hexadecimal, yes/no flags.
#pragma once

#include <string>
#include <vector>

namespace lab {

class BroadcastText {
public:
    static std::string trim(const std::string &text);
    static std::string lower(const std::string &text);
    static std::vector<std::string> split(const std::string &text, char separator);
    // Splits at blanks and tabs, dropping empty words.
    static std::vector<std::string> words(const std::string &text);
    static bool parseNumber(const std::string &text, long long &value);
    static bool parseFlag(const std::string &text, bool &value);
};

} // namespace lab
