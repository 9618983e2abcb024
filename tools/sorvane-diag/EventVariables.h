// Fills what an event's text leaves open: the library posts some events without the variables
// their text names ("The country is set to {CountryName}."). The host puts in what it knows,
// so that no person reads a placeholder, and the report keeps the variable it added.
#pragma once

#include <ruvo/DiagBackend.h>

#include <string>

namespace sorvane {
namespace diag {

class EventVariables {
public:
    // The event with every "{name}" of its text given a value.
    static ruvo::PostedEvent completed(const ruvo::PostedEvent &event);

private:
    // What the host knows of a variable the library left out.
    static std::wstring hostValue(const std::wstring &name);
};

} // namespace diag
} // namespace sorvane
