// Whether a window this process opens can be seen by anyone: not in a window station without
// a display (a service) nor under Wine's null graphics driver, where dialogs and message boxes
// open but nobody sees them.
#pragma once

namespace sorvane {
namespace diag {

class VisibleDesktop {
public:
    static bool present();

private:
    static bool wineWithoutDisplay();
    static bool stationVisible();
};

} // namespace diag
} // namespace sorvane
