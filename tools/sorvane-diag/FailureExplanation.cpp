#include "FailureExplanation.h"
#include "HostError.h"
#include "ResultCodes.h"

#include <LogTexts.h>

#include <cwchar>

namespace sorvane {
namespace diag {

std::wstring FailureExplanation::of(const Facts &facts)
{
    const std::wstring explanation = ofResult(facts);
    if (facts.stoppingSeconds <= 0)
        return explanation;
    // The wait for the device to stop is part of how long the person waited for this result.
    return (explanation.empty() ? std::wstring(L"What happened:") : explanation) + L" " +
           slowStop(facts.stoppingSeconds);
}

std::wstring FailureExplanation::slowStop(long seconds)
{
    return L"Stopping the device then took " + std::to_wstring(seconds) +
           L" s: its driver hangs when the capture stops (a second Ctrl+C quits without waiting for it).";
}

std::wstring FailureExplanation::ofResult(const Facts &facts)
{
    if (posted(facts, "WarningDeviceNotFound"))
        return L"What happened: the device is listed but Windows could not open it" + codeText(facts.errorCode) +
               L"; it may have been unplugged. The library reports that as " + ResultCodes::name(facts.result) +
               L". Check the device is connected and run `sorvane-diag list`.";
    if (facts.phase == L"scan")
        return scanFailed(facts);
    if (posted(facts, "ErrorCapturingFrames") || posted(facts, "ErrorNoSignal")) {
        const std::wstring frames = framesNotDelivered(facts);
        if (!frames.empty())
            return frames;
    }
    if (facts.result == ruvo::TestResult::FAIL() && facts.events.empty() && !facts.libraryErrors.empty())
        return L"What happened: the library reported \"" + facts.libraryErrors.front() + L"\".";
    return std::wstring();
}

// One event stands for several failures; the library's error lines tell them apart.
std::wstring FailureExplanation::framesNotDelivered(const Facts &facts)
{
    const std::wstring run = errorLine(facts, LogTexts::RUN_FAILED);
    if (!run.empty())
        return L"What happened: the device refused to start streaming (" + run +
               L"), so no frame came. Another program or a driver problem may hold it.";
    const std::wstring format = errorLine(facts, LogTexts::SET_FORMAT_FAILED);
    if (!format.empty())
        return L"What happened: the device refused the video format the library asked for (" + format +
               L"), so no frame came.";
    if (!errorLine(facts, LogTexts::EMPTY_SAMPLE).empty())
        return L"What happened: the device sent samples with nothing in them, so no frame could be kept.";
    const std::wstring timeout = errorLine(facts, LogTexts::TIMEOUT_AFTER);
    if (!timeout.empty())
        return timedOut(facts, timeout);
    if (posted(facts, "ErrorNoSignal"))
        return L"What happened: the device started but delivered no frame before the library's time-out.";
    if (!facts.libraryErrors.empty())
        return L"What happened: the library reported \"" + facts.libraryErrors.front() + L"\".";
    return L"What happened: the device started but delivered fewer frames than asked for.";
}

// "FramesSavedCheck: 70 second timeout hit" and "Unable to capture 2 frames, got 0": the
// time-out was retried on the next capability, so the last event only says frames are missing.
// A timed-out attempt keeps none of its frames, so a camera that stopped sending after a few
// cannot be told from one that sent nothing.
std::wstring FailureExplanation::timedOut(const Facts &facts, const std::wstring &timeout)
{
    const size_t begin = timeout.find(LogTexts::TIMEOUT_BEFORE) + std::wcslen(LogTexts::TIMEOUT_BEFORE);
    const size_t end = timeout.find(LogTexts::TIMEOUT_AFTER, begin);
    return L"What happened: the device started but did not deliver " + framesAskedFor(facts) +
           L" within the library's time-out of " + timeout.substr(begin, end - begin) +
           L" seconds: a camera that sends nothing, or stops sending, looks like this.";
}

std::wstring FailureExplanation::framesAskedFor(const Facts &facts)
{
    unsigned long wanted = 0;
    unsigned long got = 0;
    const std::wstring shortfall = errorLine(facts, LogTexts::SHORTFALL_BEFORE);
    const std::wstring format = std::wstring(LogTexts::SHORTFALL_BEFORE) + L"%lu" + LogTexts::SHORTFALL_AFTER + L"%lu";
    if (swscanf(shortfall.c_str(), format.c_str(), &wanted, &got) != 2 || wanted == 0)
        return L"its frames";
    if (wanted == 1)
        return L"the frame asked for";
    return L"the " + std::to_wstring(wanted) + L" frames asked for";
}

// A scan's events say no signal was found and ask about the cabling; that is wrong when the
// tuner never answered the question.
std::wstring FailureExplanation::scanFailed(const Facts &facts)
{
    const std::wstring analog = signalCheckFailed(facts);
    if (!analog.empty())
        return analog;
    const std::wstring statistics = statisticsUnread(facts);
    return statistics.empty() ? digitalChannelFaults(facts) : statistics;
}

std::wstring FailureExplanation::digitalChannelFaults(const Facts &facts)
{
    std::vector<std::wstring> said;
    for (size_t i = 0; i < facts.libraryErrors.size(); ++i) {
        const std::wstring fault = channelFault(facts.libraryErrors[i]);
        if (fault.empty())
            continue;
        const std::wstring activity = i < facts.activities.size() ? facts.activities[i] : std::wstring();
        const size_t number = activity.find_last_of(L' ');
        const std::wstring where =
            number == std::wstring::npos ? std::wstring() : L"channel " + activity.substr(number + 1) + L": ";
        const std::wstring sentence = where + fault;
        bool repeated = false;
        for (const std::wstring &earlier : said)
            repeated = repeated || earlier == sentence;
        if (!repeated)
            said.push_back(sentence);
    }
    if (said.empty())
        return std::wstring();
    std::wstring text = L"What happened: ";
    for (size_t i = 0; i < said.size(); ++i)
        text += (i ? L"; " : L"") + said[i];
    return text + L". The library counts each of these as a channel without signal, but the tuner was reached "
                  L"and answered: they are not what a loose antenna or cable looks like.";
}

std::wstring FailureExplanation::channelFault(const std::wstring &line)
{
    if (line.find(LogTexts::TUNE_REFUSED) != std::wstring::npos)
        return refusedTune(line);
    if (line.find(LogTexts::NO_CLEAR_PROGRAM) != std::wstring::npos)
        return L"a transport stream arrived, but the library found no program in the clear in it: every "
               L"program scrambled (encrypted), or no program table it could read";
    if (line.find(LogTexts::NO_PACKETS) != std::wstring::npos)
        return L"the tuner accepted the tune, but not one byte of transport stream arrived while the library "
               L"listened: nothing is broadcast there, or the tuner did not lock";
    return std::wstring();
}

// "... put_TuneRequest failed: SYS: ... (hr=0x8007001F)".
std::wstring FailureExplanation::refusedTune(const std::wstring &line)
{
    static const std::wstring kCode = L"hr=0x";
    const size_t at = line.find(kCode);
    const std::wstring code =
        at == std::wstring::npos
            ? std::wstring()
            : L" (" +
                  HostError::describe(static_cast<HRESULT>(wcstoul(line.c_str() + at + kCode.size(), nullptr, 16))) +
                  L")";
    return L"the tuner refused the tune" + code +
           L", so the channel was never received: the card or its driver "
           L"would not tune there";
}

// A digital tuner whose signal statistics cannot be read: the library logs the failed read
// and counts the channel as silent.
std::wstring FailureExplanation::statisticsUnread(const Facts &facts)
{
    static const wchar_t *const kReads[] = {LogTexts::QUALITY_FAILED, LogTexts::LOCK_FAILED, LogTexts::PRESENT_FAILED,
                                            LogTexts::NODE_TYPES_FAILED};
    size_t failures = 0;
    std::wstring first;
    for (const std::wstring &line : facts.libraryErrors) {
        for (const wchar_t *read : kReads) {
            if (line.find(read) == std::wstring::npos)
                continue;
            if (!failures++)
                first = line;
            break;
        }
    }
    if (!failures)
        return std::wstring();
    return L"What happened: the tuner's signal statistics could not be read " + times(failures) + L" (\"" + first +
           L"\"), and the library counts a channel it cannot read as no signal. The card or its driver did not "
           L"answer, whatever the antenna or cable: run the scan again, and if it repeats, check the driver.";
}

std::wstring FailureExplanation::times(size_t count)
{
    return count == 1 ? std::wstring(L"once") : std::to_wstring(count) + L" times";
}

// An analog tuner whose SignalPresent call fails.
std::wstring FailureExplanation::signalCheckFailed(const Facts &facts)
{
    static const std::wstring kAnswer = LogTexts::SIGNAL_PRESENT_ANSWER;
    size_t failures = 0;
    std::wstring first;
    for (const std::wstring &line : facts.libraryErrors) {
        const size_t at = line.find(kAnswer);
        if (at == std::wstring::npos)
            continue;
        if (!failures++)
            first = line.substr(at + kAnswer.size(), line.find(L'/', at + kAnswer.size()) - at - kAnswer.size());
    }
    if (!failures)
        return std::wstring();
    const HRESULT code = static_cast<HRESULT>(wcstoul(first.c_str(), nullptr, 16));
    return L"What happened: the tuner's own signal check failed " + times(failures) + L" (SignalPresent answered " +
           HostError::describe(code) +
           L"), and the library counts a failed check as no signal. The card or its driver did not "
           L"answer, whatever the cabling: run the scan again, and if it repeats, check the driver.";
}

bool FailureExplanation::posted(const Facts &facts, const char *key)
{
    for (const ruvo::PostedEvent &event : facts.events) {
        if (event.key == kel::String(key))
            return true;
    }
    return false;
}

std::wstring FailureExplanation::errorLine(const Facts &facts, const wchar_t *part)
{
    for (const std::wstring &line : facts.libraryErrors) {
        if (line.find(part) != std::wstring::npos)
            return line;
    }
    return std::wstring();
}

std::wstring FailureExplanation::codeText(long code)
{
    return code ? L" (" + HostError::describe(static_cast<HRESULT>(code)) + L")" : std::wstring();
}

} // namespace diag
} // namespace sorvane
