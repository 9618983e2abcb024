// Finds a value type's fixed member by its name, in any case. Built once from the list of
// member functions; the members are function-local statics, so the pointers stay valid.
#pragma once

#include <kel/HashTable.h>
#include <kel/String.h>
#include <cstddef>

namespace sorvane {

template <class T>
class NamedMemberLookup {
public:
    typedef const T &(*Member)();

    template <size_t N>
    explicit NamedMemberLookup(const Member (&members)[N])
    {
        for (size_t i = 0; i < N; ++i)
            m_byName.insert(members[i]().name(), &members[i]());
    }

    // Names are stored upper case; `text` is upper-cased before the lookup.
    const T &find(const kel::String &text, const T &notFound) const
    {
        const T *const *found = m_byName.lookup(text.toUpper());
        return found ? **found : notFound;
    }

private:
    kel::HashTable<kel::String, const T *> m_byName;
};

} // namespace sorvane
