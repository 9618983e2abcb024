// A digital scan without --device on a system without a tuner of its kind: it says so, names
// the digital tuners there are, and ends with NODEVICE before anything is tuned. The lab's own
// devices are put aside for each test.
#include "HostProgram.h"

#include <lab/ScopedLabDevices.h>

#include <gtest/gtest.h>

using lab::ScopedLabDevices;
using sorvane::test::contains;
using sorvane::test::HostProgram;

namespace {

const DWORD kNoDevice = 12;

const wchar_t *const kAtscCardAlone =
    L"[bda-tuner]\nname = Test ATSC Tuner\n"
    L"path = \\\\?\\pci#ven_14f1&dev_8852&subsys_d0129999&rev_04#4&79&0&00e1#"
    L"{71985f48-1ca1-11d3-9cc8-00c04f7971e0}\\{8b884e32-fbca-11de-b16f-000000009999}\n"
    L"networks = atsc\n";

} // namespace

TEST(SorvaneDiagMissingTunerTest, AScanWithoutATunerOfItsKindSaysSo)
{
    const ScopedLabDevices atscAlone(kAtscCardAlone, ScopedLabDevices::LabDevices::Hidden);
    const struct {
        const wchar_t *command;
        const char *sentence;
    } cases[] = {
        {L"ocur", "No digital tuner's name says it is an OpenCable receiver (the digital tuners are: Test ATSC "
                  "Tuner). If one of them is, name it with --device."},
        {L"dvbt", "No digital tuner's name says it is a DVB-T or DTMB tuner (the digital tuners are: Test ATSC "
                  "Tuner). If one of them is, name it with --device."},
    };
    for (const auto &c : cases) {
        const HostProgram::Outcome outcome = HostProgram::run({c.command});
        EXPECT_EQ(kNoDevice, outcome.exitCode) << outcome.out << outcome.err;
        EXPECT_TRUE(contains(outcome.out, c.sentence)) << outcome.out;
        EXPECT_FALSE(contains(outcome.out, "Scanning")) << outcome.out;
    }
}

TEST(SorvaneDiagMissingTunerTest, AScanOnASystemWithoutDigitalTunersSaysSo)
{
    const ScopedLabDevices nothing(L"", ScopedLabDevices::LabDevices::Hidden);
    const HostProgram::Outcome outcome = HostProgram::run({L"atsc"});
    EXPECT_EQ(kNoDevice, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, "The system has no digital TV tuner at all.")) << outcome.out;
}
