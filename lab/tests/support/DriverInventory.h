// What driver inventory code on Windows learns of a device's installed driver, asked in the
// order such code asks: install parameters, the compatible driver list (built, then appended),
// its first member, the member's detail into a fixed buffer, then the driver selected and its
// files queued (DI_NOVCP) by the class installer and scanned from the queue.
#pragma once

#include <windows.h>
#include <setupapi.h>

#include <string>
#include <vector>

namespace labtest {

struct DriverFacts {
    SP_DRVINFO_DATA_V2_W info = {};
    std::wstring infFile;
    // Target paths of the queued files, in queue order.
    std::vector<std::wstring> files;
};

// False when a step Windows would take fails; `facts` holds what was learnt by then.
bool readDriver(HDEVINFO set, SP_DEVINFO_DATA &device, DriverFacts &facts);

} // namespace labtest
