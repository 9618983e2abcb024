// Reads the lab's description file (lab/lab.conf): a list of devices, each a section that
// starts with its kind in brackets, followed by "key = value" lines. '#' starts a comment.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace lab {

struct DeviceDescription {
    std::wstring kind;
    int line = 0;
    // In file order; a key may repeat.
    std::vector<std::pair<std::wstring, std::wstring>> values;

    // The value of a key; repeated keys joined by newlines. Empty when absent.
    std::wstring value(const std::wstring &key) const;
    // Distinct keys in first-seen order.
    std::vector<std::wstring> keys() const;
};

class LabDescription {
public:
    // Parses UTF-8 text; false with a message naming the line on a syntax error.
    bool parse(const std::string &text, std::wstring &error);
    bool load(const std::wstring &path, std::wstring &error);

    const std::vector<DeviceDescription> &devices() const { return m_devices; }

private:
    std::vector<DeviceDescription> m_devices;
};

} // namespace lab
