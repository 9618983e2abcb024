#include "CommandContext.h"
#include "CaptureClasses.h"
#include "DeviceChooser.h"
#include "DeviceIdentity.h"
#include "DeviceRecords.h"
#include "DeviceStopWait.h"
#include "FailureExplanation.h"
#include "LibraryErrors.h"
#include "HostError.h"
#include "RunReport.h"
#include "Terminal.h"
#include "UsageError.h"

#include <CaptureException.h>
#include <ModuleRegistration.h>
#include <ruvo/DiagModule.h>

namespace sorvane {
namespace diag {

CommandContext::CommandContext(const HostOptions &options, Terminal &terminal, RunReport &report)
    : m_options(options), m_terminal(terminal), m_report(report), m_enumerated(false)
{
}

const std::vector<ruvo::DiagDevice> &CommandContext::devices()
{
    if (!m_enumerated) {
        RunReport::Phase timing(m_report, L"enumeration");
        CaptureDevice::enumerateDevices(m_captureDevices);
        for (const CaptureDevice &device : m_captureDevices)
            m_devices.push_back(DeviceRecords::recordFor(device));
        m_enumerated = true;
    }
    return m_devices;
}

const kel::Array<CaptureDevice> &CommandContext::captureDevices()
{
    devices();
    return m_captureDevices;
}

bool CommandContext::chooseDevice(const ruvo::DeviceCapability &fitting, const std::wstring &kind,
                                  ruvo::DiagDevice &chosen)
{
    return chooseDevice(
        [fitting](const ruvo::DiagDevice &device) { return device.deviceCapabilities().isCapable(fitting); }, kind,
        std::wstring(), chosen);
}

bool CommandContext::chooseDevice(const std::function<bool(const ruvo::DiagDevice &)> &fits, const std::wstring &kind,
                                  const std::wstring &how, ruvo::DiagDevice &chosen)
{
    const DeviceChooser::Choice choice = DeviceChooser::choose(devices(), m_options.device, fits, kind);
    if (choice.ambiguous)
        throw UsageError(choice.problem);
    if (choice.index < 0) {
        say(choice.problem);
        return false;
    }
    chosen = m_devices[choice.index];
    m_report.setDevice(chosen, choice.index);
    const std::wstring why =
        m_options.device.empty() ? L" (the first " + kind + how + L"; --device chooses another)" : L"";
    m_terminal.line(L"Device " + std::to_wstring(choice.index) + L": " + chosen.name().wstr() + why);
    return true;
}

ruvo::TestResult CommandContext::chooseCaptureDevice(ruvo::DiagDevice &chosen)
{
    // Without --device a person most likely means a webcam, not a capture card's black
    // picture; any video capture device when there is no webcam.
    bool webcam = false;
    for (const ruvo::DiagDevice &device : devices())
        webcam = webcam || device.deviceCapabilities().isCapable(ruvo::DeviceCapability::Webcam());
    const bool preferWebcam = m_options.device.empty() && webcam;
    if (!chooseDevice(preferWebcam ? ruvo::DeviceCapability::Webcam() : ruvo::DeviceCapability::VideoCapture(),
                      preferWebcam ? L"webcam" : L"video capture device", chosen))
        return ruvo::TestResult::NODEVICE();
    return canCapture(chosen);
}

bool CommandContext::isDigitalTunerOnly(const ruvo::DiagDevice &device)
{
    const ruvo::DeviceCapability &capabilities = device.deviceCapabilities();
    if (capabilities.isCapable(ruvo::DeviceCapability::Webcam()) ||
        capabilities.isCapable(ruvo::DeviceCapability::AnalogTVTuner()))
        return false;
    if (capabilities.isCapable(ruvo::DeviceCapability::DigitalTVTuner()))
        return true;
    for (const CaptureDevice &listed : captureDevices()) {
        if (listed.name() == device.name())
            return DeviceIdentity::kindOf(listed) == L"digital tuner";
    }
    return false;
}

ruvo::TestResult CommandContext::canCapture(const ruvo::DiagDevice &device)
{
    // A digital tuner delivers a transport stream, not pictures: the capture classes would
    // fail on it in ways that read like a broken camera.
    if (isDigitalTunerOnly(device)) {
        say(device.name().wstr() + L" is a digital TV tuner, not a camera or video capture device: the digital "
                                   L"scans atsc, clearqam, dvbt and ocur test it (`sorvane-diag list` shows each "
                                   L"device's kind).");
        return ruvo::TestResult::NOTSUPPORTED();
    }
    if (device.deviceCapabilities().isCapable(ruvo::DeviceCapability::VideoCapture()))
        return ruvo::TestResult::PASS();
    say(device.name().wstr() + L" is listed, but Windows could not open it as a video capture device: it may "
                               L"have been unplugged (`sorvane-diag list --verbose` shows its record).");
    return ruvo::TestResult::NODEVICE();
}

std::wstring CommandContext::windowTitle(const ruvo::DiagDevice &device)
{
    return L"sorvane-diag: " + device.name().wstr();
}

ruvo::TestResult CommandContext::runTest(const std::wstring &phase, const std::function<void()> &test)
{
    RunReport::Phase timing(m_report, phase);
    const size_t eventsBefore = m_report.eventCount();
    const size_t errorsBefore = LibraryErrors::count();
    const long stoppingBefore = DeviceStopWait::notableSeconds();
    try {
        test();
        DeviceStopWait::testEnded();
        m_terminal.finishProgress();
        const long stopping = DeviceStopWait::notableSeconds() - stoppingBefore;
        if (stopping > 0)
            say(FailureExplanation::slowStop(stopping));
        return ruvo::TestResult::PASS();
    } catch (const CaptureException &failure) {
        DeviceStopWait::testEnded();
        // A range scanned to its end without a signal is finished: its bar ends full, although
        // the library's last report is that of the last channel's start.
        if (failure.getResult() == ruvo::TestResult::NOSIGNAL()) {
            m_report.addPercent(100);
            m_terminal.fillProgress();
        }
        m_terminal.finishProgress();
        failure.postEvents();
        if (failure.getErrorCode() != 0) {
            m_report.setErrorCode(failure.getErrorCode());
            m_terminal.line(L"Windows code " + HostError::describe(static_cast<HRESULT>(failure.getErrorCode())));
        }
        const FailureExplanation::Facts facts = {failure.getResult(),
                                                 m_report.eventsSince(eventsBefore),
                                                 static_cast<long>(failure.getErrorCode()),
                                                 LibraryErrors::since(errorsBefore),
                                                 phase,
                                                 DeviceStopWait::notableSeconds() - stoppingBefore,
                                                 LibraryErrors::activitiesSince(errorsBefore)};
        const std::wstring explanation = FailureExplanation::of(facts);
        if (!explanation.empty())
            say(explanation);
        return failure.getResult();
    }
}

void CommandContext::defaultParameter(const std::wstring &key, const std::wstring &value)
{
    ruvo::Parameter *parameter = ruvo::DiagModule::findParameter(kel::String(key));
    ruvo::Value typed;
    if (!parameter || parameter->isset() || !ruvo::Value::parse(parameter->type(), kel::String(value), typed))
        return;
    parameter->set(typed);
    m_report.addParameter(key, value);
    m_terminal.line(key + L" is not set: using " + value + L".");
}

unsigned CommandContext::captureDelay()
{
    return g_captureDelay->isset() ? g_captureDelay->value().valueUint32() : 0;
}

void CommandContext::say(const std::wstring &message)
{
    m_report.addMessage(message);
    m_terminal.line(message);
}

} // namespace diag
} // namespace sorvane
