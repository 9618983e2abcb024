// What a running command works with: the options, the terminal, the report, the devices,
// and the way a test module calls the library and takes its result.
#pragma once

#include "HostOptions.h"

#include <CaptureDevice.h>

#include <ruvo/DiagDevice.h>
#include <ruvo/TestResult.h>

#include <functional>
#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class RunReport;
class Terminal;

class CommandContext {
public:
    CommandContext(const HostOptions &options, Terminal &terminal, RunReport &report);

    const HostOptions &options() const { return m_options; }
    Terminal &terminal() { return m_terminal; }
    RunReport &report() { return m_report; }

    // The framework's records of the system's capture devices, enumerated by the library on
    // first use; record i is capture device i.
    const std::vector<ruvo::DiagDevice> &devices();
    const kel::Array<CaptureDevice> &captureDevices();
    // The device given by --device, or the first with `fitting`; `kind` names it for a
    // person ("webcam"). False, with the reason printed and reported, when there is none.
    bool chooseDevice(const ruvo::DeviceCapability &fitting, const std::wstring &kind, ruvo::DiagDevice &chosen);
    // The same, with what fits decided by `fits`; `how` says why the default fits ("by its
    // name"), empty for nothing.
    bool chooseDevice(const std::function<bool(const ruvo::DiagDevice &)> &fits, const std::wstring &kind,
                      const std::wstring &how, ruvo::DiagDevice &chosen);
    // PASS when the library can capture video from `device`; otherwise the result to end
    // with, the reason said: NODEVICE for a listed camera whose filter no longer binds (it has
    // no capabilities), NOTSUPPORTED for a digital tuner, naming the commands that fit it.
    ruvo::TestResult canCapture(const ruvo::DiagDevice &device);
    // Any video capture device, for preview and recording. PASS when this build of the
    // library has the class that captures it, otherwise the result to end with.
    ruvo::TestResult chooseCaptureDevice(ruvo::DiagDevice &chosen);
    // The title of the video window and of the library's questions.
    static std::wstring windowTitle(const ruvo::DiagDevice &device);

    // Runs one library operation as a test module does: PASS when it returns; when it
    // throws a CaptureException, its events are posted and its result taken.
    ruvo::TestResult runTest(const std::wstring &phase, const std::function<void()> &test);
    // The result of a command whose capture class this build of the library lacks.
    // A sentence from the host, shown and kept in the report.
    void say(const std::wstring &message);
    // Sets a framework parameter the command needs, when the command line left it unset.
    void defaultParameter(const std::wstring &key, const std::wstring &value);
    // The capture delay a test module passes to a webcam: the "CaptureDelay" parameter, 0
    // when unset.
    static unsigned captureDelay();

private:
    // A digital TV tuner that is neither a camera nor an analog tuner card.
    bool isDigitalTunerOnly(const ruvo::DiagDevice &device);

    const HostOptions &m_options;
    Terminal &m_terminal;
    RunReport &m_report;
    bool m_enumerated;
    kel::Array<CaptureDevice> m_captureDevices;
    std::vector<ruvo::DiagDevice> m_devices;
};

} // namespace diag
} // namespace sorvane
