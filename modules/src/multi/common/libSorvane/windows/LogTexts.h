// Texts of log lines that a reader of the library's log (the console host) looks for, to tell
// apart failures that post the same event: the library writes them from here and the reader
// matches them from here, so that a changed text changes both sides.
#pragma once

namespace sorvane {

struct LogTexts {
    // "IMediaControl::Run() failed: <code's text>": the device refused to start.
    static constexpr const wchar_t *RUN_FAILED = L"IMediaControl::Run() failed: ";
    // "SetFormat failed: <code's text>": a webcam refused a capability.
    static constexpr const wchar_t *SET_FORMAT_FAILED = L"SetFormat failed: ";
    // A sample without data.
    static constexpr const wchar_t *EMPTY_SAMPLE = L"IMediaSample::GetActualDataLength returned <= 0.";
    // "FramesSavedCheck: <seconds> second timeout hit".
    static constexpr const wchar_t *TIMEOUT_BEFORE = L"FramesSavedCheck: ";
    static constexpr const wchar_t *TIMEOUT_AFTER = L" second timeout hit";
    // "Unable to capture <wanted> frames, got <got>".
    static constexpr const wchar_t *SHORTFALL_BEFORE = L"Unable to capture ";
    static constexpr const wchar_t *SHORTFALL_AFTER = L" frames, got ";
    // "m_tuner->SignalPresent returned hr/signalPresent: 0x<code>/<strength>".
    static constexpr const wchar_t *SIGNAL_PRESENT_ANSWER = L"m_tuner->SignalPresent returned hr/signalPresent: 0x";
    // "put_TuneRequest failed: <code's text>": a digital tuner refused a channel.
    static constexpr const wchar_t *TUNE_REFUSED = L"put_TuneRequest failed: ";
    // A Clear QAM channel whose stream brought no packet, and one without a program in the clear.
    static constexpr const wchar_t *NO_PACKETS = L"No packets, no transport stream on this channel";
    static constexpr const wchar_t *NO_CLEAR_PROGRAM = L"Return of -1 --> no clear programs found";
    // The reads of a digital tuner's signal statistics over its topology.
    static constexpr const wchar_t *NODE_TYPES_FAILED = L"getSignalStrength::Cannot get node types: ";
    static constexpr const wchar_t *QUALITY_FAILED = L"Topo sig qual failed: ";
    static constexpr const wchar_t *LOCK_FAILED = L"Topo sig lock failed: ";
    static constexpr const wchar_t *PRESENT_FAILED = L"Topo sig present failed: ";
};

} // namespace sorvane
