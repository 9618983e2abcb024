// `formats`: every video device's stream capabilities: subtype, frame size and frame rates.
#pragma once

#include "Command.h"
#include "StreamCapability.h"

#include <CaptureDevice.h>
#include <ruvo/DiagDevice.h>

#include <vector>

namespace sorvane {
namespace diag {

class JsonWriter;

class FormatsCommand : public Command {
public:
    std::wstring name() const override { return L"formats"; }
    std::wstring summary() const override;
    std::wstring help() const override;
    ruvo::TestResult run(CommandContext &context) override;

    // "YUY2  640x480  30 fps (5-30)".
    static std::wstring describe(const StreamCapability &capability);

private:
    struct Listing {
        int index;
        std::wstring name;
        std::vector<StreamCapability> capabilities;
        std::wstring problem;
    };

    // The device's index as `list` shows it.
    static int indexOf(const std::vector<ruvo::DiagDevice> &devices, const ruvo::DiagDevice &device);
    static Listing list(const CaptureDevice &device, int index);
    static const DSMoniker *captureMoniker(const CaptureDevice &device);
    static void show(CommandContext &context, const Listing &listing);
    static void write(JsonWriter &json, const std::vector<Listing> &listings);
    static std::wstring rate(double fps);
};

} // namespace diag
} // namespace sorvane
