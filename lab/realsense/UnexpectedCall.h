// The stand-in runtime's traps for table slots its callers must not reach: each records
// "Unexpected call PXCSession slot 5" (the interface and the slot number) in the journal and
// fails, so that a caller whose table is out of step with the published one is seen at once.
#pragma once

#include "realsense/SdkInterface.h"

namespace lab {
namespace realsense {

class UnexpectedCall {
public:
    enum Interface { SESSION, CAPTURE };

    // A slot whose function returns a status.
    template <Interface Of, int Slot>
    static sdk::Status status(void *)
    {
        record(Of, Slot);
        return sdk::kFeatureUnsupported;
    }
    // A slot whose function returns an object.
    template <Interface Of, int Slot>
    static void *object(void *)
    {
        record(Of, Slot);
        return nullptr;
    }

private:
    static void record(Interface of, int slot);
};

} // namespace realsense
} // namespace lab
