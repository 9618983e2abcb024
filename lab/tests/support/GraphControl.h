// What the lab tests' hand-built graphs do alike: run, stop, and empty a graph.
#pragma once

#include <windows.h>
#include <dshow.h>

namespace labtest {

class GraphControl {
public:
    static HRESULT run(IGraphBuilder *graph);
    static HRESULT stop(IGraphBuilder *graph);
    // Removes every filter left in the graph, those the builder inserted too.
    static void removeAllFilters(IGraphBuilder *graph);
};

} // namespace labtest
