#include "ListCommand.h"
#include "CommandContext.h"
#include "DeviceIdentity.h"
#include "RunReport.h"
#include "Terminal.h"

#include <algorithm>

namespace sorvane {
namespace diag {

namespace {

const wchar_t *const kColumnGap = L"  ";
const wchar_t *const kMissing = L"-";

std::wstring orMissing(const kel::String &value)
{
    return value.isEmpty() ? std::wstring(kMissing) : value.wstr();
}

std::wstring vendorAndProduct(const CaptureDevice &device)
{
    if (device.vendorIdCode().isEmpty() && device.deviceIdCode().isEmpty())
        return kMissing;
    return orMissing(device.vendorIdCode()) + L":" + orMissing(device.deviceIdCode());
}

} // namespace

std::wstring ListCommand::summary() const
{
    return L"list the capture devices the library finds";
}

std::wstring ListCommand::help() const
{
    return L"Usage: sorvane-diag list [--verbose] [--json FILE]\n"
           L"\n"
           L"Lists the capture devices libSorvane finds (its DirectShow monikers merged with the\n"
           L"SetupAPI records of the same hardware): index, name, kind (webcam, analog tuner,\n"
           L"digital tuner, video capture), bus, VID:PID and driver version. The index or the name\n"
           L"picks a device for the other commands (--device).\n"
           L"\n"
           L"  -v, --verbose           the library's full record of each device: its monikers and\n"
           L"                          SetupAPI records with every field\n"
           L"\n"
           L"With --json each device carries its framework record and its identity: instance ID,\n"
           L"vendor, device, subsystem and revision codes, bus, location, manufacturer, driver\n"
           L"provider, version, date, INF and file, analog and digital filter names, and the\n"
           L"capabilities with their standards.\n"
           L"Result: PASS when there is at least one device, NODEVICE when there is none.\n";
}

ruvo::TestResult ListCommand::run(CommandContext &context)
{
    const std::vector<ruvo::DiagDevice> &records = context.devices();
    const kel::Array<CaptureDevice> &devices = context.captureDevices();
    context.report().setDevices(records);
    std::vector<DeviceIdentity> identities;
    for (const CaptureDevice &device : devices)
        identities.push_back(DeviceIdentity::of(device));
    context.report().setIdentities(identities);
    if (devices.isEmpty()) {
        context.say(L"The library finds no capture devices.");
        return ruvo::TestResult::NODEVICE();
    }
    context.terminal().line(std::to_wstring(devices.size()) +
                            (devices.size() == 1 ? L" capture device:" : L" capture devices:"));
    if (context.options().verbose) {
        for (int i = 0; i < devices.size(); ++i)
            context.terminal().line(verboseRecord(devices[i], i));
    } else {
        context.terminal().line(formatTable(tableOf(devices)));
    }
    return ruvo::TestResult::PASS();
}

std::vector<ListCommand::Row> ListCommand::tableOf(const kel::Array<CaptureDevice> &devices)
{
    std::vector<Row> rows;
    rows.push_back({L"#", L"Name", L"Kind", L"Bus", L"VID:PID", L"Driver"});
    for (int i = 0; i < devices.size(); ++i) {
        const CaptureDevice &device = devices[i];
        const std::wstring bus = DeviceIdentity::busOf(device);
        rows.push_back({std::to_wstring(i), orMissing(device.name()), DeviceIdentity::kindOf(device),
                        bus.empty() ? std::wstring(kMissing) : bus, vendorAndProduct(device),
                        orMissing(device.driverVersion())});
    }
    return rows;
}

// Columns as wide as their widest cell; the last one is not padded.
std::wstring ListCommand::formatTable(const std::vector<Row> &rows)
{
    std::vector<size_t> widths(rows.front().size(), 0);
    for (const Row &row : rows) {
        for (size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], row[column].size());
    }
    std::wstring text;
    for (size_t r = 0; r < rows.size(); ++r) {
        std::wstring line = kColumnGap;
        for (size_t column = 0; column < rows[r].size(); ++column) {
            const std::wstring &cell = rows[r][column];
            line += cell;
            if (column + 1 < rows[r].size())
                line += std::wstring(widths[column] - cell.size(), L' ') + kColumnGap;
        }
        text += (r ? L"\n" : L"") + line;
    }
    return text;
}

std::wstring ListCommand::verboseRecord(const CaptureDevice &device, int index)
{
    return L"[" + std::to_wstring(index) + L"] " + device.name().wstr() + L"\n" +
           device.toFormattedString(kel::String(L"    ")).wstr();
}

} // namespace diag
} // namespace sorvane
