#include "FormatsCommand.h"
#include "CommandContext.h"
#include "JsonWriter.h"
#include "RunReport.h"
#include "StreamCapsReader.h"
#include "Terminal.h"

#include <iomanip>
#include <sstream>

namespace sorvane {
namespace diag {

std::wstring FormatsCommand::summary() const
{
    return L"list each video device's formats, frame sizes and rates";
}

std::wstring FormatsCommand::help() const
{
    return L"Usage: sorvane-diag formats [--device DEVICE]\n"
           L"\n"
           L"Lists the stream capabilities of every video capture device (or of DEVICE), as its\n"
           L"capture pin offers them: subtype (RGB24, YUY2, MJPG ...), frame size, the frame rate\n"
           L"of the capability and the range of rates the device allows. The report's \"formats\"\n"
           L"member holds the same per device.\n"
           L"Result: PASS when every device listed its formats, NODEVICE when there is no device,\n"
           L"FAIL when a device could not be asked.\n";
}

ruvo::TestResult FormatsCommand::run(CommandContext &context)
{
    std::vector<Listing> listings;
    if (context.options().device.empty()) {
        const std::vector<ruvo::DiagDevice> &devices = context.devices();
        context.report().setDevices(devices);
        // Only a device with an analog capture filter has a capture pin to ask: a digital
        // tuner's stream is a transport stream.
        const kel::Array<CaptureDevice> &captureDevices = context.captureDevices();
        for (size_t i = 0; i < devices.size(); ++i) {
            if (!captureDevices[static_cast<int>(i)].analogFilterName().isEmpty())
                listings.push_back(list(captureDevices[static_cast<int>(i)], static_cast<int>(i)));
        }
    } else {
        ruvo::DiagDevice device;
        if (!context.chooseDevice(ruvo::DeviceCapability::VideoCapture(), L"video capture device", device))
            return ruvo::TestResult::NODEVICE();
        const int index = indexOf(context.devices(), device);
        listings.push_back(list(context.captureDevices()[index], index));
    }
    if (listings.empty()) {
        context.say(L"The system lists no video capture devices.");
        return ruvo::TestResult::NODEVICE();
    }
    bool complete = true;
    for (const Listing &listing : listings) {
        show(context, listing);
        complete = complete && listing.problem.empty();
    }
    context.report().addSection(L"formats", [listings](JsonWriter &json) { write(json, listings); });
    return complete ? ruvo::TestResult::PASS() : ruvo::TestResult::FAIL();
}

int FormatsCommand::indexOf(const std::vector<ruvo::DiagDevice> &devices, const ruvo::DiagDevice &device)
{
    for (size_t i = 0; i < devices.size(); ++i) {
        if (devices[i].name() == device.name() && devices[i].osLocator() == device.osLocator())
            return static_cast<int>(i);
    }
    return -1;
}

FormatsCommand::Listing FormatsCommand::list(const CaptureDevice &device, int index)
{
    Listing listing;
    listing.index = index;
    listing.name = device.name().wstr();
    const DSMoniker *capture = captureMoniker(device);
    if (!capture) {
        listing.problem = L"no video input device of that name";
        return listing;
    }
    StreamCapsReader::read(capture->filterName().wstr(), capture->devicePath().wstr(), listing.capabilities,
                           listing.problem);
    return listing;
}

// The device's analog capture filter, the one whose pin lists the formats.
const DSMoniker *FormatsCommand::captureMoniker(const CaptureDevice &device)
{
    for (int i = 0; i < device.monikers().size(); ++i) {
        const DSMoniker &moniker = device.monikers()[i];
        if (moniker.captureStreamType() == CaptureStreamType::ANALOG() && !moniker.filterName().isEmpty())
            return &moniker;
    }
    return nullptr;
}

std::wstring FormatsCommand::rate(double fps)
{
    // Two decimals keep 29.97 and turn 59.9999 (a 166666 x 100 ns frame time) into 60.
    std::wostringstream out;
    out << std::fixed << std::setprecision(2) << fps;
    std::wstring text = out.str();
    text.erase(text.find_last_not_of(L'0') + 1);
    if (!text.empty() && text.back() == L'.')
        text.pop_back();
    return text;
}

std::wstring FormatsCommand::describe(const StreamCapability &capability)
{
    std::wstring text = capability.subtype;
    text.append(capability.subtype.size() < 6 ? 6 - capability.subtype.size() : 1, L' ');
    std::wstring size = std::to_wstring(capability.width) + L"x" + std::to_wstring(capability.height);
    size.append(size.size() < 10 ? 10 - size.size() : 1, L' ');
    text += size + rate(capability.fps) + L" fps";
    if (capability.minFps > 0 && capability.maxFps > 0 &&
        (capability.minFps != capability.fps || capability.maxFps != capability.fps))
        text += L" (" + rate(capability.minFps) + L"-" + rate(capability.maxFps) + L")";
    return text;
}

void FormatsCommand::show(CommandContext &context, const Listing &listing)
{
    context.terminal().line(L"[" + std::to_wstring(listing.index) + L"] " + listing.name);
    if (!listing.problem.empty()) {
        context.terminal().line(L"      formats unknown: " + listing.problem);
        return;
    }
    if (listing.capabilities.empty())
        context.terminal().line(L"      no video formats");
    for (const StreamCapability &capability : listing.capabilities)
        context.terminal().line(L"      " + describe(capability));
}

void FormatsCommand::write(JsonWriter &json, const std::vector<Listing> &listings)
{
    json.beginArray();
    for (const Listing &listing : listings) {
        json.beginObject();
        json.field(L"index", listing.index);
        json.field(L"name", listing.name);
        if (!listing.problem.empty())
            json.field(L"problem", listing.problem);
        json.key(L"formats").beginArray();
        for (const StreamCapability &capability : listing.capabilities) {
            json.beginObject();
            json.field(L"subtype", capability.subtype);
            json.field(L"width", capability.width);
            json.field(L"height", capability.height);
            json.field(L"fps", capability.fps);
            json.field(L"minFps", capability.minFps);
            json.field(L"maxFps", capability.maxFps);
            json.endObject();
        }
        json.endArray();
        json.endObject();
    }
    json.endArray();
}

} // namespace diag
} // namespace sorvane
