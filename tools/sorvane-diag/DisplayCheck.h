// Whether a person can see what the library shows in windows (its message boxes, the country
// dialog): not under Wine's null graphics driver, nor in a window station without a visible
// desktop (a service), nor without a monitor.
#pragma once

namespace sorvane {
namespace diag {

class DisplayCheck {
public:
    static bool canShowWindows();

private:
    static bool wineDrawsNothing();
    static bool visibleWindowStation();
};

} // namespace diag
} // namespace sorvane
