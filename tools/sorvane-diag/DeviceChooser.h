// Picks the device a command works on: by index, by name, or the first one that fits.
#pragma once

#include <ruvo/DiagDevice.h>

#include <functional>
#include <string>
#include <vector>

namespace sorvane {
namespace diag {

class DeviceChooser {
public:
    struct Choice {
        int index;              // -1 when nothing was chosen
        std::wstring problem;   // why not, as a sentence
        bool ambiguous = false; // the name fits several devices: a command-line mistake
    };

    // `selector`: empty for the first device with `fitting`; all digits for an index as
    // `list` prints it; otherwise a name: the exact friendly name (any case) of one device or
    // a part of exactly one friendly name. A name that fits several is ambiguous, and the
    // problem gives each one's index. `kind` names what the command wants ("webcam").
    static Choice choose(const std::vector<ruvo::DiagDevice> &devices, const std::wstring &selector,
                         const ruvo::DeviceCapability &fitting, const std::wstring &kind);
    // The same, with what fits decided by `fits`.
    typedef std::function<bool(const ruvo::DiagDevice &)> Fits;
    static Choice choose(const std::vector<ruvo::DiagDevice> &devices, const std::wstring &selector, const Fits &fits,
                         const std::wstring &kind);

private:
    static Choice byIndex(const std::vector<ruvo::DiagDevice> &devices, const std::wstring &selector);
    static Choice byName(const std::vector<ruvo::DiagDevice> &devices, const std::wstring &selector);
    static Choice severalFit(const std::vector<ruvo::DiagDevice> &devices, const std::wstring &selector,
                             const std::vector<int> &fitting);
    static Choice firstFitting(const std::vector<ruvo::DiagDevice> &devices, const Fits &fits,
                               const std::wstring &kind);
    static Choice none(const std::wstring &problem);
};

} // namespace diag
} // namespace sorvane
