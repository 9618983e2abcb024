// Everything one run of the host did, kept for the --json report: the command, the device,
// the parameters set, the events with their variables, the progress history, the files
// written, the timings and the result.
#pragma once

#include "DeviceIdentity.h"

#include <StreamHealth.h>
#include <ruvo/DiagBackend.h>
#include <ruvo/DiagDevice.h>
#include <ruvo/TestResult.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace sorvane {
namespace diag {

class JsonWriter;

class RunReport {
public:
    // Times one phase of the run from construction to destruction, exception or not.
    class Phase {
    public:
        Phase(RunReport &report, const std::wstring &name);
        ~Phase();
        Phase(const Phase &) = delete;
        Phase &operator=(const Phase &) = delete;

    private:
        RunReport &m_report;
        std::wstring m_name;
        int64_t m_startMs;
    };

    RunReport();

    void setCommand(const std::wstring &command);
    // A framework parameter set for this run, by the command line or as the host's default.
    void addParameter(const std::wstring &key, const std::wstring &value);
    void setDevice(const ruvo::DiagDevice &device, int index);
    void setDevices(const std::vector<ruvo::DiagDevice> &devices);
    // What the library found about each listed device, in the order of setDevices.
    void setIdentities(const std::vector<DeviceIdentity> &identities);
    void addEvent(const ruvo::PostedEvent &event);
    void addProgressText(const std::wstring &text);
    void addPercent(int percent);
    void addPercentReset();
    void addFile(const std::wstring &path, const std::wstring &kind);
    void addTiming(const std::wstring &name, int64_t milliseconds);
    void setErrorCode(long code);
    // A sentence from the host itself ("no webcam found ...").
    void addMessage(const std::wstring &message);
    void setResult(const ruvo::TestResult &result);
    void setExitCode(int exitCode);
    // A command's own member of the report (`depth`'s cameras ...), written after the devices.
    void addSection(const std::wstring &key, const std::function<void(JsonWriter &)> &write);
    // The transport stream of the channel a digital scan found.
    void setStreamHealth(const StreamHealth &health, int quality);

    int64_t elapsedMs() const;
    size_t eventCount() const;
    std::vector<ruvo::PostedEvent> eventsSince(size_t first) const;
    // The last progress text the library reported ("Testing channel 3"); empty when none.
    std::wstring lastProgressText() const;
    const std::vector<std::wstring> &files() const { return m_files; }
    std::string toJson() const;

private:
    // The second Ctrl+C writes the report from the console's own thread while the test runs.
    typedef std::lock_guard<std::recursive_mutex> Hold;

    struct ProgressEntry {
        int64_t atMs;
        enum Kind { TEXT, PERCENT, RESET } kind;
        std::wstring text;
        int percent;
    };
    struct FileEntry {
        std::wstring path;
        std::wstring kind;
        int64_t bytes;
    };
    struct Device {
        ruvo::DiagDevice record;
        int index;
    };

    static void writeDevice(JsonWriter &json, const Device &device, const DeviceIdentity *identity = nullptr);
    void writeEvents(JsonWriter &json) const;
    void writeProgress(JsonWriter &json) const;
    void writeFiles(JsonWriter &json) const;
    void writeTimings(JsonWriter &json) const;

    std::chrono::steady_clock::time_point m_start;
    std::wstring m_command;
    std::vector<std::pair<std::wstring, std::wstring>> m_parameters;
    bool m_hasDevice;
    Device m_device;
    std::vector<Device> m_devices;
    std::vector<DeviceIdentity> m_identities;
    bool m_listed;
    std::vector<ruvo::PostedEvent> m_events;
    std::vector<ProgressEntry> m_progress;
    std::vector<FileEntry> m_fileEntries;
    std::vector<std::wstring> m_files;
    std::vector<std::pair<std::wstring, int64_t>> m_timings;
    std::vector<std::wstring> m_messages;
    std::vector<std::pair<std::wstring, std::function<void(JsonWriter &)>>> m_sections;
    bool m_hasErrorCode;
    long m_errorCode;
    bool m_hasResult;
    bool m_hasStreamHealth = false;
    StreamHealth m_streamHealth;
    int m_streamQuality = 0;
    void writeStreamHealth(JsonWriter &json) const;
    ruvo::TestResult m_result;
    int m_exitCode;
    mutable std::recursive_mutex m_lock;
};

} // namespace diag
} // namespace sorvane
