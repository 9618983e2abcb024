// The identity parsers of device discovery over arbitrary text: instance IDs, device paths and
// the codes cut out of them.
#include "Utf16Text.h"

#include <DeviceIdParser.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using sorvane::DeviceIdParser;

void requireCode(const kel::String &code)
{
    for (int i = 0; i < code.length(); ++i) {
        if (!DeviceIdParser::isAlphaNum(code[i]))
            std::abort();
    }
}

void requireCodes(const DeviceIdParser::Codes &codes)
{
    requireCode(codes.vendor);
    requireCode(codes.device);
    requireCode(codes.subsys);
    requireCode(codes.rev);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const kel::String text = fuzz::utf16Text(data, size);

    kel::String code(L"unchanged");
    if (DeviceIdParser::codeAfter(kel::String(L"VID_"), text, code))
        requireCode(code);
    else if (code != kel::String(L"unchanged"))
        std::abort();

    DeviceIdParser::Codes codes;
    DeviceIdParser::readInstanceIdCodes(text, codes);
    requireCodes(codes);

    DeviceIdParser::PathIdentity identity;
    const kel::String candidate = text.toUpper();
    if (DeviceIdParser::readDevicePath(candidate, identity)) {
        // The instance ID is the enumerator and the next two parts, so it holds two more "\".
        if (identity.guid.isEmpty() || identity.guid.length() > candidate.length())
            std::abort();
        int separators = 0;
        for (int i = 0; i < identity.deviceInstanceId.length(); ++i)
            separators += identity.deviceInstanceId[i] == L'\\';
        if (separators < 2)
            std::abort();
    } else if (!identity.guid.isEmpty()) {
        std::abort();
    }
    requireCodes(identity.codes);
    return 0;
}
