// `depth`: the Intel RealSense cameras the RealSense runtime reports, through the library's
// enumIntelRealSenseDevice.
#pragma once

#include "Command.h"

#include <rssdk/RealSenseSdk.h>
#include <kel/Array.h>

namespace sorvane {
namespace diag {

class JsonWriter;

class DepthCommand : public Command {
public:
    std::wstring name() const override { return L"depth"; }
    std::wstring summary() const override;
    std::wstring help() const override;
    bool takesDevice() const override { return false; }
    ruvo::TestResult run(CommandContext &context) override;

private:
    typedef kel::Array<PXCCapture::DeviceInfo> Cameras;

    // Whether any of the SDK's dispatch keys names a runtime.
    static bool runtimeNamed();
    // Why nothing was listed, in one sentence.
    static std::wstring whyNone();
    static std::vector<std::wstring> table(const Cameras &cameras);
    static void writeCameras(JsonWriter &json, const Cameras &cameras);
};

} // namespace diag
} // namespace sorvane
