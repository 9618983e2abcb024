// What the library declares to the framework: its parameters, events and localized
// strings, each kept in an exported global for the library and its calling test modules.
#pragma once

#include "SorvaneExport.h"

#include <ruvo/Event.h>
#include <ruvo/LocalizedString.h>
#include <ruvo/Parameter.h>

namespace sorvane {

// Registers the library with the framework. Called once by the test module after loading.
SORVANE_API void init();

// Events.
SORVANE_API extern ruvo::Event *g_badParametersRange;
SORVANE_API extern ruvo::Event *g_warningWindowSetupProblem;
SORVANE_API extern ruvo::Event *g_warningDeviceNotFound;
SORVANE_API extern ruvo::Event *g_warnHardwareDoesNotSupportAnalogTVInput;
SORVANE_API extern ruvo::Event *g_warnHardwareDoesNotSupportDigitalTVInput;
SORVANE_API extern ruvo::Event *g_errorCreatingFilterGraph;
SORVANE_API extern ruvo::Event *g_errorRenderingVideoStream;
SORVANE_API extern ruvo::Event *g_infoSignalDetected;
SORVANE_API extern ruvo::Event *g_mediaCenterIsRunning;
SORVANE_API extern ruvo::Event *g_errorDeviceInUse;
SORVANE_API extern ruvo::Event *g_fastAccessRunning;
SORVANE_API extern ruvo::Event *g_errorCapturingFrames;
SORVANE_API extern ruvo::Event *g_userClickedFail;
SORVANE_API extern ruvo::Event *g_errorNoSignal;
SORVANE_API extern ruvo::Event *g_errorNoSignalWithTip;
SORVANE_API extern ruvo::Event *g_errorCannotRunDVBTest;
SORVANE_API extern ruvo::Event *g_setCountryName;

// Parameters.
SORVANE_API extern ruvo::Parameter *g_testRunTime;
SORVANE_API extern ruvo::Parameter *g_msgBoxTimeout;
SORVANE_API extern ruvo::Parameter *g_checkTVCable;
SORVANE_API extern ruvo::Parameter *g_stopOnSignal;
SORVANE_API extern ruvo::Parameter *g_checksPerChannel;
SORVANE_API extern ruvo::Parameter *g_signalType;
SORVANE_API extern ruvo::Parameter *g_askCountryCode1;
SORVANE_API extern ruvo::Parameter *g_askCountryCode2;
SORVANE_API extern ruvo::Parameter *g_touchscreenFactor;
SORVANE_API extern ruvo::Parameter *g_interactive;
SORVANE_API extern ruvo::Parameter *g_TVStartChannel;
SORVANE_API extern ruvo::Parameter *g_TVEndChannel;
SORVANE_API extern ruvo::Parameter *g_FMRadioStartChannel;
SORVANE_API extern ruvo::Parameter *g_FMRadioEndChannel;
SORVANE_API extern ruvo::Parameter *g_digitalStartChannel;
SORVANE_API extern ruvo::Parameter *g_digitalEndChannel;
SORVANE_API extern ruvo::Parameter *g_country;
SORVANE_API extern ruvo::Parameter *g_useMinorChannelTechnique;
SORVANE_API extern ruvo::Parameter *g_captureDelay;

// Localized strings.
SORVANE_API extern ruvo::LocalizedString *g_defaultName;
SORVANE_API extern ruvo::LocalizedString *g_checkCableConnectedTitle;
SORVANE_API extern ruvo::LocalizedString *g_checkCableConnectedMessage;
SORVANE_API extern ruvo::LocalizedString *g_pleaseSelectCountry;
SORVANE_API extern ruvo::LocalizedString *g_OKButton;
SORVANE_API extern ruvo::LocalizedString *g_testingChannel;
SORVANE_API extern ruvo::LocalizedString *g_didTestPass;
SORVANE_API extern ruvo::LocalizedString *g_pass;
SORVANE_API extern ruvo::LocalizedString *g_fail;

} // namespace sorvane
