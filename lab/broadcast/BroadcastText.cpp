#include "broadcast/BroadcastText.h"

#include <cctype>
#include <cstdlib>

namespace lab {

std::string BroadcastText::trim(const std::string &text)
{
    const std::string blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return std::string();
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string BroadcastText::lower(const std::string &text)
{
    std::string result(text);
    for (char &c : result)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return result;
}

std::vector<std::string> BroadcastText::split(const std::string &text, char separator)
{
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (;;) {
        const std::size_t end = text.find(separator, begin);
        const std::string part = trim(text.substr(begin, end == std::string::npos ? std::string::npos : end - begin));
        if (!part.empty())
            parts.push_back(part);
        if (end == std::string::npos)
            return parts;
        begin = end + 1;
    }
}

std::vector<std::string> BroadcastText::words(const std::string &text)
{
    std::vector<std::string> result;
    std::string word;
    for (const char c : text + " ") {
        if (c == ' ' || c == '\t') {
            if (!word.empty())
                result.push_back(word);
            word.clear();
        } else {
            word += c;
        }
    }
    return result;
}

bool BroadcastText::parseNumber(const std::string &text, long long &value)
{
    const std::string trimmed = trim(text);
    if (trimmed.empty())
        return false;
    char *end = nullptr;
    const bool hex = trimmed.size() > 2 && trimmed[0] == '0' && (trimmed[1] == 'x' || trimmed[1] == 'X');
    value = hex ? static_cast<long long>(std::strtoull(trimmed.c_str() + 2, &end, 16))
                : std::strtoll(trimmed.c_str(), &end, 10);
    return end && *end == '\0';
}

bool BroadcastText::parseFlag(const std::string &text, bool &value)
{
    const std::string word = lower(trim(text));
    if (word == "yes" || word == "true" || word == "1") {
        value = true;
        return true;
    }
    if (word == "no" || word == "false" || word == "0") {
        value = false;
        return true;
    }
    return false;
}

} // namespace lab
