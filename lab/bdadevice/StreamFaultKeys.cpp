#include "bdadevice/StreamFaultKeys.h"

#include "common/DeviceState.h"

namespace lab {

StreamFaults StreamFaultKeys::read(const DeviceState &device)
{
    StreamFaults faults;
    faults.silence = device.flag(L"fault.silence");
    faults.syncLoss = device.flag(L"fault.syncloss");
    const long long percent = device.integer(L"fault.errors", 0);
    faults.errorPercent = percent < 0 ? 0 : (percent > 100 ? 100 : static_cast<int>(percent));
    faults.noPat = device.flag(L"fault.nopat");
    faults.allScrambled = device.flag(L"fault.scrambled");
    return faults;
}

} // namespace lab
