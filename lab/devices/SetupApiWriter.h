// Writes SetupAPI records as an installed system has them:
//   HKLM\System\CurrentControlSet\Enum\<instance id>               the device
//   HKLM\System\CurrentControlSet\Control\Class\{class}            its setup class (IMAGE, MEDIA)
//   HKLM\System\CurrentControlSet\Control\Class\{class}\NNNN       its driver key ("Driver")
//   C:\windows\inf\oemN.inf                                        its driver package
#pragma once

#include <string>
#include <vector>

#include "devices/SetupApiRecord.h"
#include "devices/WrittenItems.h"

namespace lab {

class SetupApiWriter {
public:
    // keepExisting: refuse an instance ID that is already present rather than overwrite it.
    static HRESULT write(const std::vector<SetupApiRecord> &records, bool keepExisting, WrittenItems &written,
                         std::wstring &error);

    static std::wstring enumKey(const std::wstring &instanceId);
    // The folder the system searches for driver packages.
    static std::wstring infFolder();

private:
    // The device key and its driver key ("Driver" = {class}\NNNN).
    static HRESULT writeRecord(const SetupApiRecord &record, const std::wstring &driver, const std::wstring &infName,
                               bool keepExisting, WrittenItems &written, std::wstring &error);
};

} // namespace lab
