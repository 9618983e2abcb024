// The seed files of one transport stream for every target: the stream as it is (quality,
// stream health), behind stray sync bytes (packet search), and behind the program search's
// first byte, which says whether the target forces each packet's sync byte (even: forced).
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace sorvane {
namespace fuzz {

class SeedFiles {
public:
    static void write(const std::string &path, const std::vector<std::uint8_t> &bytes)
    {
        FILE *file = std::fopen(path.c_str(), "wb");
        if (!file) {
            std::perror(path.c_str());
            return;
        }
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
    }

    static void writeAll(const std::string &folder, const std::string &name, const std::vector<std::uint8_t> &stream,
                         std::size_t straySyncBytes, std::uint8_t programSearchByte)
    {
        write(folder + "/quality/" + name, stream);
        write(folder + "/streamhealth/" + name, stream);
        write(folder + "/packetsearch/" + name, behind(std::vector<std::uint8_t>(straySyncBytes, 0x47), stream));
        write(folder + "/programsearch/" + name, behind(std::vector<std::uint8_t>(1, programSearchByte), stream));
    }

private:
    static std::vector<std::uint8_t> behind(std::vector<std::uint8_t> prefix, const std::vector<std::uint8_t> &stream)
    {
        prefix.insert(prefix.end(), stream.begin(), stream.end());
        return prefix;
    }
};

} // namespace fuzz
} // namespace sorvane
