// What Windows' capture graph builder does for a card whose tuner is a filter of its own: before
// it searches from a capture filter, every unconnected input of that filter with a medium is
// connected to the output of a TV tuner filter with the same medium, the tuner added to the
// graph. (Windows adds a crossbar the same way; the lab's cards answer IAMCrossbar on the
// capture filter, so only the tuner is looked for.)
#pragma once

#include <windows.h>
#include <dshow.h>

#include <atlbase.h>

#include "tuner/PinMedium.h"

namespace lab {

class UpstreamTuner {
public:
    // Connects the tuners `filter` needs in `graph`; failures leave the graph as it was.
    static void connectAbove(IGraphBuilder *graph, IBaseFilter *filter);

private:
    static void connectInput(IGraphBuilder *graph, IPin *input, const PinMedium &medium);
    // The output pin of `tuner` with `medium`, or null.
    static CComPtr<IPin> outputWith(IBaseFilter *tuner, const PinMedium &medium);
};

} // namespace lab
