#include "ModuleRegistration.h"

#include <ruvo/DiagModule.h>

namespace sorvane {

namespace {

// Each declaration builds its key from a narrow literal; the temporary goes at the end of
// the statement. The framework owns what it returns.
ruvo::Event *declareEvent(const char *key)
{
    return ruvo::DiagModule::createEvent(ruvo::RuvoString(key));
}

ruvo::Parameter *declareParameter(const char *key, ruvo::DataType::Type type, bool flagA, bool flagB)
{
    return ruvo::DiagModule::createParameter(ruvo::RuvoString(key), type, ruvo::RuvoString(""), flagA, flagB);
}

ruvo::LocalizedString *declareString(const char *key)
{
    return ruvo::DiagModule::createLocalizedString(ruvo::RuvoString(key));
}

const ruvo::DataType::Type UINT32 = ruvo::DataType::UINT32;
const ruvo::DataType::Type BOOLEAN = ruvo::DataType::BOOLEAN;
const ruvo::DataType::Type DOUBLE = ruvo::DataType::DOUBLE;
const ruvo::DataType::Type STRING = ruvo::DataType::STRING;

} // namespace

// Static initialisation runs these in the order written: events, parameters, strings.
ruvo::Event *g_badParametersRange = declareEvent("BadParametersRange");
ruvo::Event *g_warningWindowSetupProblem = declareEvent("WarningWindowSetupProblem");
ruvo::Event *g_warningDeviceNotFound = declareEvent("WarningDeviceNotFound");
ruvo::Event *g_warnHardwareDoesNotSupportAnalogTVInput = declareEvent("WarningHardwareDoesNotSupportAnalogTVCapture");
ruvo::Event *g_warnHardwareDoesNotSupportDigitalTVInput = declareEvent("WarningHardwareDoesNotSupportDigitalTVCapture");
ruvo::Event *g_errorCreatingFilterGraph = declareEvent("ErrorCreatingFilterGraph");
ruvo::Event *g_errorRenderingVideoStream = declareEvent("ErrorRenderingVideoStream");
ruvo::Event *g_infoSignalDetected = declareEvent("InfoSignalDetected");
ruvo::Event *g_mediaCenterIsRunning = declareEvent("MediaCenterIsRunning");
ruvo::Event *g_errorDeviceInUse = declareEvent("ErrorDeviceInUse");
ruvo::Event *g_fastAccessRunning = declareEvent("FastAccessRunning");
ruvo::Event *g_errorCapturingFrames = declareEvent("ErrorCapturingFrames");
ruvo::Event *g_userClickedFail = declareEvent("UserClickedFail");
ruvo::Event *g_errorNoSignal = declareEvent("ErrorNoSignal");
ruvo::Event *g_errorNoSignalWithTip = declareEvent("ErrorNoSignalWithTip");
ruvo::Event *g_errorCannotRunDVBTest = declareEvent("CannotRunDVBTest");
ruvo::Event *g_setCountryName = declareEvent("SetCountryName");

ruvo::Parameter *g_testRunTime = declareParameter("TestRunTime", UINT32, false, true);
ruvo::Parameter *g_msgBoxTimeout = declareParameter("MsgBoxTimeout", UINT32, false, true);
ruvo::Parameter *g_checkTVCable = declareParameter("CheckTVCable", BOOLEAN, false, true);
ruvo::Parameter *g_stopOnSignal = declareParameter("StopOnSignal", BOOLEAN, false, true);
ruvo::Parameter *g_checksPerChannel = declareParameter("ChecksPerChannel", UINT32, false, true);
ruvo::Parameter *g_signalType = declareParameter("SignalType", STRING, false, true);
ruvo::Parameter *g_askCountryCode1 = declareParameter("AskCountryCode1", BOOLEAN, false, true);
ruvo::Parameter *g_askCountryCode2 = declareParameter("AskCountryCode2", BOOLEAN, false, true);
ruvo::Parameter *g_touchscreenFactor = declareParameter("TouchscreenFactor", DOUBLE, true, false);
ruvo::Parameter *g_interactive = declareParameter("Interactive", BOOLEAN, false, true);
ruvo::Parameter *g_TVStartChannel = declareParameter("TVStartChannel", UINT32, false, true);
ruvo::Parameter *g_TVEndChannel = declareParameter("TVEndChannel", UINT32, false, true);
ruvo::Parameter *g_FMRadioStartChannel = declareParameter("FMRadioStartChannel", DOUBLE, false, true);
ruvo::Parameter *g_FMRadioEndChannel = declareParameter("FMRadioEndChannel", DOUBLE, false, true);
ruvo::Parameter *g_digitalStartChannel = declareParameter("DigitalStartChannel", UINT32, false, true);
ruvo::Parameter *g_digitalEndChannel = declareParameter("DigitalEndChannel", UINT32, false, true);
ruvo::Parameter *g_country = declareParameter("Country", STRING, false, true);
ruvo::Parameter *g_useMinorChannelTechnique = declareParameter("UseMinorChannelTechnique", BOOLEAN, false, true);
ruvo::Parameter *g_captureDelay = declareParameter("CaptureDelay", UINT32, false, true);

ruvo::LocalizedString *g_defaultName = declareString("DefaultName");
ruvo::LocalizedString *g_checkCableConnectedTitle = declareString("CheckCableConnectedTitle");
ruvo::LocalizedString *g_checkCableConnectedMessage = declareString("CheckCableConnectedMessage");
ruvo::LocalizedString *g_pleaseSelectCountry = declareString("PleaseSelectCountry");
ruvo::LocalizedString *g_OKButton = declareString("OKButton");
ruvo::LocalizedString *g_testingChannel = declareString("TestingChannel");
ruvo::LocalizedString *g_didTestPass = declareString("DidTestPass");
ruvo::LocalizedString *g_pass = declareString("Pass");
ruvo::LocalizedString *g_fail = declareString("Fail");

void init()
{
    ruvo::DiagModule::registerLibrary(ruvo::RuvoString("libSorvane"));
}

} // namespace sorvane
