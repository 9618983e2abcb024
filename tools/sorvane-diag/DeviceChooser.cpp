#include "DeviceChooser.h"

#include <cwctype>

namespace sorvane {
namespace diag {

namespace {

std::wstring lower(const kel::String &text)
{
    return text.toLower().wstr();
}

bool allDigits(const std::wstring &text)
{
    if (text.empty())
        return false;
    for (const wchar_t c : text) {
        if (!iswdigit(c))
            return false;
    }
    return true;
}

} // namespace

DeviceChooser::Choice DeviceChooser::none(const std::wstring &problem)
{
    Choice choice = {-1, problem};
    return choice;
}

DeviceChooser::Choice DeviceChooser::choose(const std::vector<ruvo::DiagDevice> &devices, const std::wstring &selector,
                                            const ruvo::DeviceCapability &fitting, const std::wstring &kind)
{
    return choose(
        devices, selector,
        [fitting](const ruvo::DiagDevice &device) { return device.deviceCapabilities().isCapable(fitting); }, kind);
}

DeviceChooser::Choice DeviceChooser::choose(const std::vector<ruvo::DiagDevice> &devices, const std::wstring &selector,
                                            const Fits &fits, const std::wstring &kind)
{
    if (devices.empty())
        return none(L"The system lists no video capture devices.");
    if (selector.empty())
        return firstFitting(devices, fits, kind);
    if (allDigits(selector))
        return byIndex(devices, selector);
    return byName(devices, selector);
}

DeviceChooser::Choice DeviceChooser::byIndex(const std::vector<ruvo::DiagDevice> &devices, const std::wstring &selector)
{
    const unsigned long index = selector.size() > 9 ? devices.size() : wcstoul(selector.c_str(), nullptr, 10);
    if (index >= devices.size())
        return none(L"There is no device " + selector + L": the devices are numbered 0 to " +
                    std::to_wstring(devices.size() - 1) + L" (see `sorvane-diag list`).");
    Choice choice = {static_cast<int>(index), std::wstring()};
    return choice;
}

DeviceChooser::Choice DeviceChooser::byName(const std::vector<ruvo::DiagDevice> &devices, const std::wstring &selector)
{
    const std::wstring wanted = lower(kel::String(selector));
    std::vector<int> exact;
    std::vector<int> partial;
    for (size_t i = 0; i < devices.size(); ++i) {
        const std::wstring name = lower(devices[i].name());
        if (name == wanted)
            exact.push_back(static_cast<int>(i));
        else if (name.find(wanted) != std::wstring::npos)
            partial.push_back(static_cast<int>(i));
    }
    // An exact name wins over parts of longer ones, unless two devices share it (two cameras
    // of one model).
    const std::vector<int> &fitting = exact.empty() ? partial : exact;
    if (fitting.size() == 1) {
        Choice choice = {fitting[0], std::wstring()};
        return choice;
    }
    if (fitting.empty())
        return none(L"No device is called \"" + selector + L"\" (see `sorvane-diag list`).");
    return severalFit(devices, selector, fitting);
}

// Names alone may not tell the devices apart: each comes with the index that chooses it.
DeviceChooser::Choice DeviceChooser::severalFit(const std::vector<ruvo::DiagDevice> &devices,
                                                const std::wstring &selector, const std::vector<int> &fitting)
{
    std::wstring names;
    bool oneName = true;
    for (const int index : fitting) {
        names += (names.empty() ? L"" : L", ") + std::to_wstring(index) + L": " + devices[index].name().wstr();
        oneName = oneName && devices[index].name() == devices[fitting[0]].name();
    }
    const std::wstring how =
        oneName ? L"they share their name, so choose one by its index" : L"give more of the name, or the index of one";
    Choice choice = none(L"--device \"" + selector + L"\" fits several devices (" + names + L"); " + how +
                         L" (--device " + std::to_wstring(fitting[0]) + L").");
    choice.ambiguous = true;
    return choice;
}

DeviceChooser::Choice DeviceChooser::firstFitting(const std::vector<ruvo::DiagDevice> &devices, const Fits &fits,
                                                  const std::wstring &kind)
{
    for (size_t i = 0; i < devices.size(); ++i) {
        if (fits(devices[i])) {
            Choice choice = {static_cast<int>(i), std::wstring()};
            return choice;
        }
    }
    const std::wstring among = devices.size() == 1
                                   ? std::wstring(L"the one video capture device")
                                   : L"the " + std::to_wstring(devices.size()) + L" video capture devices";
    return none(L"No " + kind + L" was found among " + among + L" (see `sorvane-diag list`).");
}

} // namespace diag
} // namespace sorvane
