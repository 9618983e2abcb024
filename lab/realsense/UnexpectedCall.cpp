#include "realsense/UnexpectedCall.h"

#include "realsense/RuntimeJournal.h"

#include <string>

namespace lab {
namespace realsense {

void UnexpectedCall::record(Interface of, int slot)
{
    const wchar_t *name = of == SESSION ? L"PXCSession" : L"PXCCapture";
    RuntimeJournal::record(L"Unexpected call " + std::wstring(name) + L" slot " + std::to_wstring(slot));
}

} // namespace realsense
} // namespace lab
