#include "broadcast/BroadcastDescription.h"

#include <fstream>
#include <sstream>

#include "broadcast/BroadcastText.h"

namespace lab {

namespace {

const int kMaxPid = 0x1FFE;

bool pidValue(const std::string &text, int &pid)
{
    long long value = 0;
    if (!BroadcastText::parseNumber(text, value) || value < 0x10 || value > kMaxPid)
        return false;
    pid = static_cast<int>(value);
    return true;
}

int audioStreamType(const std::string &network)
{
    // North American systems carry AC-3; DVB-T and DTMB MPEG-1 layer II here.
    return network == "atsc" || network == "cable" ? 0x81 : 0x03;
}

// "NUMBER pmt=PID video=PID audio=PID stream=TYPE:PID minor=N scrambled"
bool parseProgram(const std::string &network, const std::string &text, Program &program, std::string &error)
{
    const std::vector<std::string> words = BroadcastText::words(text);
    long long number = 0;
    if (words.empty() || !BroadcastText::parseNumber(words[0], number) || number < 1 || number > 0xFFFF) {
        error = "program needs a number from 1 to 65535 first";
        return false;
    }
    program.number = static_cast<int>(number);
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::string word = BroadcastText::lower(words[i]);
        if (word == "scrambled") {
            program.scrambled = true;
            continue;
        }
        if (word == "clear")
            continue;
        const std::size_t equals = word.find('=');
        const std::string key = word.substr(0, equals);
        const std::string value = equals == std::string::npos ? std::string() : word.substr(equals + 1);
        ElementaryStream stream;
        bool ok = false;
        if (key == "pmt") {
            ok = pidValue(value, program.pmtPid);
        } else if (key == "minor") {
            long long minor = 0;
            ok = BroadcastText::parseNumber(value, minor) && minor >= 0;
            program.minorChannel = static_cast<int>(minor);
        } else if (key == "video" || key == "audio") {
            stream.kind = key == "video" ? StreamKind::Video : StreamKind::Audio;
            stream.type = key == "video" ? 0x02 : audioStreamType(network);
            ok = pidValue(value, stream.pid);
            if (ok)
                program.streams.push_back(stream);
        } else if (key == "stream") {
            const std::size_t colon = value.find(':');
            long long type = 0;
            ok = colon != std::string::npos && BroadcastText::parseNumber(value.substr(0, colon), type) && type > 0 &&
                 type < 0x100 && pidValue(value.substr(colon + 1), stream.pid);
            stream.type = static_cast<int>(type);
            stream.kind = type == 0x02 || type == 0x1B ? StreamKind::Video : StreamKind::Data;
            if (ok)
                program.streams.push_back(stream);
        }
        if (!ok) {
            error = "program: cannot read \"" + words[i] + "\"";
            return false;
        }
    }
    if (program.pmtPid == 0) {
        error = "program needs pmt=PID";
        return false;
    }
    return true;
}

bool parseFault(const std::string &text, Multiplex &multiplex, std::string &error)
{
    for (const std::string &part : BroadcastText::split(text, ',')) {
        const std::string word = BroadcastText::lower(part);
        const std::size_t equals = word.find('=');
        const std::string key = BroadcastText::trim(word.substr(0, equals));
        const std::string value = equals == std::string::npos ? std::string() : word.substr(equals + 1);
        long long number = 0;
        if (key == "silence") {
            multiplex.faults.silence = true;
        } else if (key == "sync-loss") {
            multiplex.faults.syncLoss = true;
        } else if (key == "no-pat") {
            multiplex.faults.noPat = true;
        } else if (key == "scrambled") {
            multiplex.faults.allScrambled = true;
        } else if (key == "errors" && BroadcastText::parseNumber(value, number) && number >= 0 && number <= 100) {
            multiplex.faults.errorPercent = static_cast<int>(number);
        } else if (key == "refuse" && BroadcastText::parseNumber(value, number) && number != 0) {
            multiplex.refuseTune = static_cast<std::int32_t>(static_cast<std::uint32_t>(number));
        } else {
            error = "unknown fault \"" + part + "\"";
            return false;
        }
    }
    return true;
}

} // namespace

bool BroadcastDescription::isNetworkType(const std::string &name)
{
    return name == "atsc" || name == "cable" || name == "dvb-t" || name == "dtmb";
}

bool BroadcastDescription::load(const std::string &path, std::string &error)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        error = "cannot open " + path;
        return false;
    }
    std::ostringstream text;
    text << file.rdbuf();
    return parse(text.str(), error);
}

bool BroadcastDescription::parse(const std::string &text, std::string &error)
{
    m_multiplexes.clear();
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        const std::size_t comment = line.find('#');
        if (comment != std::string::npos && (comment == 0 || line[comment - 1] == ' ' || line[comment - 1] == '\t'))
            line.erase(comment);
        line = BroadcastText::trim(line);
        if (line.empty())
            continue;
        const std::string where = "line " + std::to_string(number) + ": ";
        if (line.front() == '[') {
            const std::string network = BroadcastText::lower(BroadcastText::trim(line.substr(1, line.find(']') - 1)));
            if (line.back() != ']' || !isNetworkType(network)) {
                error = where + "a section names a network type: [atsc], [cable], [dvb-t] or [dtmb]";
                return false;
            }
            Multiplex multiplex;
            multiplex.network = network;
            multiplex.line = number;
            m_multiplexes.push_back(multiplex);
            continue;
        }
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos || m_multiplexes.empty()) {
            error = where + "expected \"key = value\" inside a section";
            return false;
        }
        const std::string key = BroadcastText::lower(BroadcastText::trim(line.substr(0, equals)));
        std::string problem;
        if (!setValue(m_multiplexes.back(), key, BroadcastText::trim(line.substr(equals + 1)), problem)) {
            error = where + problem;
            return false;
        }
    }
    for (Multiplex &multiplex : m_multiplexes) {
        if (multiplex.frequencyKhz == 0 && !(multiplex.network == "atsc" && multiplex.channel > 0)) {
            error = "line " + std::to_string(multiplex.line) + ": a multiplex needs a frequency (or an atsc channel)";
            return false;
        }
        if (multiplex.transportStreamId == 0)
            multiplex.transportStreamId = multiplex.channel;
    }
    return true;
}

bool BroadcastDescription::setValue(Multiplex &multiplex, const std::string &key, const std::string &value,
                                    std::string &error)
{
    long long number = 0;
    const bool numeric = BroadcastText::parseNumber(value, number);
    bool ok = true;
    if (key == "channel") {
        ok = numeric && number > 0;
        multiplex.channel = static_cast<int>(number);
    } else if (key == "frequency") {
        ok = numeric && number > 0;
        multiplex.frequencyKhz = static_cast<long>(number);
    } else if (key == "modulation") {
        multiplex.modulation = value;
    } else if (key == "tsid") {
        ok = numeric && number > 0 && number <= 0xFFFF;
        multiplex.transportStreamId = static_cast<int>(number);
    } else if (key == "video-size") {
        const std::size_t x = value.find('x');
        long long width = 0;
        long long height = 0;
        ok = x != std::string::npos && BroadcastText::parseNumber(value.substr(0, x), width) &&
             BroadcastText::parseNumber(value.substr(x + 1), height) && width >= 16 && width <= 4095 && height >= 16 &&
             height <= 4095;
        multiplex.width = static_cast<int>(width);
        multiplex.height = static_cast<int>(height);
    } else if (key == "program") {
        Program program;
        if (!parseProgram(multiplex.network, value, program, error))
            return false;
        multiplex.programs.push_back(program);
    } else if (key == "strength" || key == "quality") {
        ok = numeric;
        (key == "strength" ? multiplex.signal.strength : multiplex.signal.quality) = static_cast<long>(number);
    } else if (key == "locked" || key == "present") {
        ok = BroadcastText::parseFlag(value, key == "locked" ? multiplex.signal.locked : multiplex.signal.present);
    } else if (key == "fault") {
        return parseFault(value, multiplex, error);
    } else {
        error = "unknown key \"" + key + "\"";
        return false;
    }
    if (!ok)
        error = "cannot read " + key + " \"" + value + "\"";
    return ok;
}

const Multiplex *BroadcastDescription::find(const std::vector<std::string> &networks, long kHz) const
{
    for (const Multiplex &multiplex : m_multiplexes) {
        for (const std::string &network : networks) {
            if (network == multiplex.network && multiplex.receives(kHz))
                return &multiplex;
        }
    }
    return nullptr;
}

} // namespace lab
