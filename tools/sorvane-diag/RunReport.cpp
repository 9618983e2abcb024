#include "RunReport.h"
#include "HostPaths.h"
#include "JsonWriter.h"
#include "ResultCodes.h"

#include <windows.h>

#include <cwchar>

namespace sorvane {
namespace diag {

namespace {

void writeValue(JsonWriter &json, const ruvo::Value &value)
{
    switch (value.type()) {
    case ruvo::DataType::UINT32:
        json.value(static_cast<int64_t>(value.valueUint32()));
        break;
    case ruvo::DataType::BOOLEAN:
        json.value(value.valueBool());
        break;
    case ruvo::DataType::DOUBLE:
        json.value(value.valueDouble());
        break;
    case ruvo::DataType::STRING:
        json.value(value.toKELString().wstr());
        break;
    default:
        json.null();
        break;
    }
}

// "VideoCapture, Webcam" as ["VideoCapture", "Webcam"].
void writeCapabilities(JsonWriter &json, const ruvo::DeviceCapability &capabilities)
{
    json.beginArray();
    const kel::String names = capabilities.toString().toKELString();
    if (!names.isEmpty()) {
        const kel::Array<kel::String> parts = names.split(L',');
        for (const kel::String &part : parts)
            json.value(part.trim().wstr());
    }
    json.endArray();
}

std::wstring forwardSlashes(std::wstring path)
{
    for (wchar_t &c : path) {
        if (c == L'\\')
            c = L'/';
    }
    return path;
}

// A source file of the library by its place in the project ("modules/src/.../Webcam.cpp"),
// not by where the build machine kept the project (an absolute path, or one relative to the
// build folder). The project's root is where this very file was compiled from.
std::wstring projectPath(const std::wstring &file)
{
    std::wstring path = forwardSlashes(file);
    const std::wstring own = forwardSlashes(kel::String(__FILE__).wstr());
    const std::wstring ownPlace = L"tools/sorvane-diag/RunReport.cpp";
    if (own.size() > ownPlace.size() && own.compare(own.size() - ownPlace.size(), ownPlace.size(), ownPlace) == 0) {
        const std::wstring root = own.substr(0, own.size() - ownPlace.size());
        if (path.compare(0, root.size(), root) == 0)
            path = path.substr(root.size());
    }
    while (path.compare(0, 3, L"../") == 0 || path.compare(0, 2, L"./") == 0)
        path = path.substr(path[1] == L'.' ? 3 : 2);
    return path;
}

std::wstring hexCode(long code)
{
    wchar_t text[16];
    swprintf(text, 16, L"0x%08lX", static_cast<unsigned long>(code));
    return text;
}

} // namespace

RunReport::Phase::Phase(RunReport &report, const std::wstring &name)
    : m_report(report), m_name(name), m_startMs(report.elapsedMs())
{
}

RunReport::Phase::~Phase()
{
    m_report.addTiming(m_name, m_report.elapsedMs() - m_startMs);
}

RunReport::RunReport()
    : m_start(std::chrono::steady_clock::now()), m_hasDevice(false), m_listed(false), m_hasErrorCode(false),
      m_errorCode(0), m_hasResult(false), m_exitCode(0)
{
    m_device.index = -1;
}

int64_t RunReport::elapsedMs() const
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - m_start).count();
}

size_t RunReport::eventCount() const
{
    const Hold hold(m_lock);
    return m_events.size();
}

std::vector<ruvo::PostedEvent> RunReport::eventsSince(size_t first) const
{
    const Hold hold(m_lock);
    if (first >= m_events.size())
        return std::vector<ruvo::PostedEvent>();
    return std::vector<ruvo::PostedEvent>(m_events.begin() + static_cast<std::ptrdiff_t>(first), m_events.end());
}

std::wstring RunReport::lastProgressText() const
{
    const Hold hold(m_lock);
    for (auto entry = m_progress.rbegin(); entry != m_progress.rend(); ++entry) {
        if (entry->kind == ProgressEntry::TEXT)
            return entry->text;
    }
    return std::wstring();
}

void RunReport::setCommand(const std::wstring &command)
{
    const Hold hold(m_lock);
    m_command = command;
}

void RunReport::addParameter(const std::wstring &key, const std::wstring &value)
{
    const Hold hold(m_lock);
    m_parameters.push_back(std::make_pair(key, value));
}

void RunReport::setDevice(const ruvo::DiagDevice &device, int index)
{
    const Hold hold(m_lock);
    m_hasDevice = true;
    m_device.record = device;
    m_device.index = index;
}

void RunReport::setDevices(const std::vector<ruvo::DiagDevice> &devices)
{
    const Hold hold(m_lock);
    m_listed = true;
    m_devices.clear();
    for (size_t i = 0; i < devices.size(); ++i) {
        Device device = {devices[i], static_cast<int>(i)};
        m_devices.push_back(device);
    }
}

void RunReport::setIdentities(const std::vector<DeviceIdentity> &identities)
{
    const Hold hold(m_lock);
    m_identities = identities;
}

void RunReport::addEvent(const ruvo::PostedEvent &event)
{
    const Hold hold(m_lock);
    m_events.push_back(event);
}

void RunReport::addProgressText(const std::wstring &text)
{
    const Hold hold(m_lock);
    ProgressEntry entry = {elapsedMs(), ProgressEntry::TEXT, text, 0};
    m_progress.push_back(entry);
}

void RunReport::addPercent(int percent)
{
    const Hold hold(m_lock);
    ProgressEntry entry = {elapsedMs(), ProgressEntry::PERCENT, std::wstring(), percent};
    m_progress.push_back(entry);
}

void RunReport::addPercentReset()
{
    const Hold hold(m_lock);
    ProgressEntry entry = {elapsedMs(), ProgressEntry::RESET, std::wstring(), 0};
    m_progress.push_back(entry);
}

void RunReport::addFile(const std::wstring &path, const std::wstring &kind)
{
    const Hold hold(m_lock);
    FileEntry entry = {path, kind, HostPaths::fileSize(path)};
    m_fileEntries.push_back(entry);
    m_files.push_back(path);
}

void RunReport::addTiming(const std::wstring &name, int64_t milliseconds)
{
    const Hold hold(m_lock);
    m_timings.push_back(std::make_pair(name, milliseconds));
}

void RunReport::setErrorCode(long code)
{
    const Hold hold(m_lock);
    m_hasErrorCode = true;
    m_errorCode = code;
}

void RunReport::addMessage(const std::wstring &message)
{
    const Hold hold(m_lock);
    m_messages.push_back(message);
}

void RunReport::addSection(const std::wstring &key, const std::function<void(JsonWriter &)> &write)
{
    const Hold hold(m_lock);
    m_sections.push_back(std::make_pair(key, write));
}

void RunReport::setResult(const ruvo::TestResult &result)
{
    const Hold hold(m_lock);
    m_hasResult = true;
    m_result = result;
}

void RunReport::setExitCode(int exitCode)
{
    const Hold hold(m_lock);
    m_exitCode = exitCode;
}

void RunReport::writeDevice(JsonWriter &json, const Device &device, const DeviceIdentity *identity)
{
    json.beginObject();
    json.field(L"index", device.index);
    json.field(L"name", device.record.name().wstr());
    json.field(L"description", device.record.description().wstr());
    json.field(L"osLocator", device.record.osLocator().wstr());
    json.key(L"capabilities");
    writeCapabilities(json, device.record.deviceCapabilities());
    json.key(L"properties").beginObject();
    const kel::OrderedHashTable<kel::String, ruvo::Value> &properties = device.record.properties();
    for (int i = 0; i < properties.size(); ++i) {
        json.key(properties.keyAt(i).wstr());
        writeValue(json, properties.valueAt(i));
    }
    json.endObject();
    if (identity) {
        json.key(L"identity");
        identity->write(json);
    }
    json.endObject();
}

void RunReport::writeEvents(JsonWriter &json) const
{
    json.key(L"events").beginArray();
    for (const ruvo::PostedEvent &event : m_events) {
        json.beginObject();
        json.field(L"severity", event.severity == ruvo::PostedEvent::ERROR_EVENT ? L"error" : L"warning");
        json.field(L"key", event.key.wstr());
        json.field(L"message", event.message.wstr());
        json.key(L"variables").beginObject();
        for (int i = 0; i < event.variables.size(); ++i) {
            json.key(event.variables.nameAt(i).wstr());
            writeValue(json, event.variables.valueAt(i));
        }
        json.endObject();
        json.field(L"source", projectPath(event.file.wstr()) + L":" + std::to_wstring(event.line));
        json.endObject();
    }
    json.endArray();
}

void RunReport::writeProgress(JsonWriter &json) const
{
    json.key(L"progress").beginArray();
    for (const ProgressEntry &entry : m_progress) {
        json.beginObject();
        json.field(L"atMs", entry.atMs);
        if (entry.kind == ProgressEntry::TEXT)
            json.field(L"text", entry.text);
        else if (entry.kind == ProgressEntry::PERCENT)
            json.field(L"percent", entry.percent);
        else
            json.field(L"reset", true);
        json.endObject();
    }
    json.endArray();
}

void RunReport::writeFiles(JsonWriter &json) const
{
    json.key(L"files").beginArray();
    for (const FileEntry &file : m_fileEntries) {
        json.beginObject();
        json.field(L"path", file.path);
        json.field(L"kind", file.kind);
        json.field(L"bytes", file.bytes);
        json.endObject();
    }
    json.endArray();
}

void RunReport::writeTimings(JsonWriter &json) const
{
    json.key(L"timings").beginObject();
    for (const auto &timing : m_timings)
        json.field(timing.first + L"Ms", timing.second);
    json.field(L"totalMs", elapsedMs());
    json.endObject();
}

void RunReport::setStreamHealth(const StreamHealth &health, int quality)
{
    const Hold hold(m_lock);
    m_hasStreamHealth = true;
    m_streamHealth = health;
    m_streamQuality = quality;
}

void RunReport::writeStreamHealth(JsonWriter &json) const
{
    const StreamHealth &health = m_streamHealth;
    json.key(L"streamHealth").beginObject();
    json.field(L"quality", m_streamQuality);
    json.field(L"packets", health.packets);
    json.field(L"durationMs", health.durationMs);
    json.field(L"priority1Clean", health.clean());
    json.field(L"syncLosses", health.syncLosses);
    json.field(L"syncByteErrors", health.syncByteErrors);
    json.field(L"patErrors", health.patErrors);
    json.field(L"patMissing", health.patMissing);
    json.field(L"continuityErrors", health.continuityErrors);
    json.field(L"pmtErrors", health.pmtErrors);
    json.field(L"pmtMissing", health.pmtMissing);
    json.field(L"pidErrors", health.pidErrors);
    json.endObject();
}

std::string RunReport::toJson() const
{
    const Hold hold(m_lock);
    JsonWriter json;
    json.beginObject();
    json.field(L"program", L"sorvane-diag");
    json.field(L"command", m_command);
    if (m_hasResult) {
        json.field(L"result", ResultCodes::name(m_result));
        json.field(L"resultText", ResultCodes::words(m_result));
    } else {
        json.key(L"result").null();
    }
    json.field(L"exitCode", m_exitCode);
    if (m_hasErrorCode)
        json.field(L"errorCode", hexCode(m_errorCode));
    json.key(L"messages").beginArray();
    for (const std::wstring &message : m_messages)
        json.value(message);
    json.endArray();

    json.key(L"parameters").beginObject();
    for (const auto &parameter : m_parameters)
        json.field(parameter.first, parameter.second);
    json.endObject();
    if (m_hasDevice) {
        json.key(L"device");
        writeDevice(json, m_device);
    }
    if (m_listed) {
        json.key(L"devices").beginArray();
        for (size_t i = 0; i < m_devices.size(); ++i)
            writeDevice(json, m_devices[i], i < m_identities.size() ? &m_identities[i] : nullptr);
        json.endArray();
    }
    for (const auto &section : m_sections) {
        json.key(section.first);
        section.second(json);
    }
    writeEvents(json);
    writeProgress(json);
    writeFiles(json);
    writeTimings(json);
    if (m_hasStreamHealth)
        writeStreamHealth(json);
    json.endObject();
    return json.text();
}

} // namespace diag
} // namespace sorvane
