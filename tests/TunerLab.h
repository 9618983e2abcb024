// The lab's analog TV cards as the tuner tests use them: framework device records
// (LabDeviceRecord), and the journal of what was done to a card.
#pragma once

#include "LabTest.h"
#include "LabDeviceRecord.h"
#include "Outcome.h"
#include "WindowWatcher.h"

#include <CaptureException.h>
#include <lab/LabControl.h>

#include <atlbase.h>
#include <dshow.h>
#include <kel/String.h>
#include <ruvo/DiagDevice.h>
#include <ruvo/Event.h>
#include <string>
#include <vector>

namespace sorvane {
namespace test {

// A card with IAMTVTuner (TV and FM) and a crossbar.
const wchar_t *const kLabTVCard = L"Lab Analog TV Tuner";
// A capture card with a crossbar but no tuner.
const wchar_t *const kLabCaptureCard = L"Lab Analog Capture Card";

inline ruvo::DiagDevice labTVCard()
{
    return LabDeviceRecord::find(kLabTVCard, ruvo::DeviceCapability::VideoCapture() |
                                                 ruvo::DeviceCapability::AnalogTVTuner() |
                                                 ruvo::DeviceCapability::FMRadioTuner());
}

// The card's journal entries that begin with `prefix`, in order.
inline std::vector<std::wstring> journalOf(const std::wstring &device, const std::wstring &prefix)
{
    std::vector<std::wstring> entries;
    for (const std::wstring &entry : lab::journal(device)) {
        if (entry.compare(0, prefix.size(), prefix) == 0)
            entries.push_back(entry);
    }
    return entries;
}

// The channels tuned, as "Channel <n> antenna|cable TV|FM".
// An event's variable as text, "(unset)" when the event does not carry it.
inline std::string eventVariable(const ruvo::Event *event, const char *name)
{
    ruvo::Value value;
    if (!event || !event->variables().get(kel::String(name), value))
        return "(unset)";
    return narrow(value.toKELString());
}

inline std::vector<std::wstring> tunedChannels(const std::wstring &device)
{
    return journalOf(device, L"Channel ");
}

// True when no capture window of the library is left in this program.
using sorvane::test::outcomeOf;

// A test on the lab's analog cards: their journals start empty, the TV card's settings may
// be overridden for the test, and every lab object and capture window is gone at the end.
class TunerLabTest : public LabTest {
protected:
    static void SetUpTestSuite() { LabDeviceRecord::discover(); }

    void SetUp() override
    {
        LabTest::SetUp();
        lab::clearJournal(kLabTVCard);
        lab::clearJournal(kLabCaptureCard);
        // Wine's video renderer takes RGB as it is: the tuner tests need no format converter.
        card.set(L"format", L"RGB24 320x240 30");
    }

    void setTVRange(uint32_t start, uint32_t end)
    {
        setParameter("TVStartChannel", ruvo::Value(start));
        setParameter("TVEndChannel", ruvo::Value(end));
    }

    lab::DeviceOverride card{kLabTVCard};
};

} // namespace test
} // namespace sorvane
