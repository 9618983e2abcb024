// The simulated broadcast (lab/broadcast.conf): per network type the multiplexes on the air,
// each a section of "key = value" lines. The file's header documents the format.
#pragma once

#include <string>
#include <vector>

#include "broadcast/Multiplex.h"

namespace lab {

class BroadcastDescription {
public:
    // Parses UTF-8 text; false with a message naming the line on an error.
    bool parse(const std::string &text, std::string &error);
    bool load(const std::string &path, std::string &error);

    const std::vector<Multiplex> &multiplexes() const { return m_multiplexes; }

    // The multiplex a tuner for these network types receives at kHz; null when nothing is there.
    const Multiplex *find(const std::vector<std::string> &networks, long kHz) const;

    static bool isNetworkType(const std::string &name);

private:
    bool setValue(Multiplex &multiplex, const std::string &key, const std::string &value, std::string &error);

    std::vector<Multiplex> m_multiplexes;
};

} // namespace lab
