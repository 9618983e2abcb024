#include <ruvo/MessageCatalog.h>

namespace ruvo {

namespace {

struct Entry {
    const wchar_t *key;
    const wchar_t *text;
};

// English texts; "{name}" is replaced by the variable of that name when posted.
const Entry kEntries[] = {
    // Events.
    {L"BadParametersRange", L"The parameter {ParameterName} has the value {ParameterValue}, outside the allowed range "
                            L"{RangeMin} to {RangeMax}."},
    {L"WarningWindowSetupProblem", L"The video window could not be set up; the test goes on without it."},
    {L"WarningDeviceNotFound", L"The capture device was not found."},
    {L"WarningHardwareDoesNotSupportAnalogTVCapture", L"This hardware does not support analog TV capture."},
    {L"WarningHardwareDoesNotSupportDigitalTVCapture", L"This hardware does not support digital TV capture."},
    {L"ErrorCreatingFilterGraph", L"The capture graph for the device could not be built."},
    {L"ErrorRenderingVideoStream", L"The video stream could not be rendered."},
    {L"InfoSignalDetected", L"A signal was detected."},
    {L"MediaCenterIsRunning",
     L"Windows Media Center is running and holds the device. Close it and run the test again."},
    {L"ErrorDeviceInUse", L"The device is in use by another program."},
    {L"FastAccessRunning", L"FastAccess is running and holds the camera. Close it and run the test again."},
    {L"ErrorCapturingFrames", L"The device did not deliver the expected frames."},
    {L"UserClickedFail", L"The user judged the test as failed."},
    {L"ErrorNoSignal", L"No signal was found."},
    {L"ErrorNoSignalWithTip",
     L"No signal was found on channels {startchannel} to {endchannel}. Check that the antenna or cable is connected."},
    {L"CannotRunDVBTest", L"The DVB-T test cannot run on this system."},
    {L"SetCountryName", L"The country is set to {CountryName}."},
    // Localized strings.
    {L"DefaultName", L"Video Capture Device"},
    {L"CheckCableConnectedTitle", L"Check the cable"},
    {L"CheckCableConnectedMessage",
     L"No signal was found. Check that the antenna or cable is connected to the tuner, then choose Retry."},
    {L"PleaseSelectCountry", L"Please select your country:"},
    {L"OKButton", L"OK"},
    {L"TestingChannel", L"Testing channel {channel}"},
    {L"DidTestPass", L"Did the test pass?"},
    {L"Pass", L"Pass"},
    {L"Fail", L"Fail"},
};

const Entry *find(const kel::String &key)
{
    for (const Entry &entry : kEntries) {
        if (key == kel::String(entry.key))
            return &entry;
    }
    return nullptr;
}

} // namespace

kel::String MessageCatalog::text(const kel::String &key)
{
    const Entry *entry = find(key);
    return entry ? kel::String(entry->text) : key;
}

bool MessageCatalog::has(const kel::String &key)
{
    return find(key) != nullptr;
}

} // namespace ruvo
