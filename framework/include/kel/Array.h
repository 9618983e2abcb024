// A growable array of values. Index access out of range is an assertion.
#pragma once

#include <kel/AssertionFailure.h>
#include <algorithm>
#include <stdexcept>
#include <vector>

namespace kel {

template <class T>
class Array {
public:
    Array() {}
    explicit Array(int reserve) { m_items.reserve(reserve > 0 ? reserve : 0); }

    int size() const { return static_cast<int>(m_items.size()); }
    bool isEmpty() const { return m_items.empty(); }

    void add(const T &item) { m_items.push_back(item); }
    void insertAt(int index, const T &item)
    {
        checkIndex(index, size() + 1);
        m_items.insert(m_items.begin() + index, item);
    }
    void removeAt(int index)
    {
        checkIndex(index, size());
        m_items.erase(m_items.begin() + index);
    }
    void clear() { m_items.clear(); }

    T &operator[](int index)
    {
        checkIndex(index, size());
        return m_items[index];
    }
    const T &operator[](int index) const
    {
        checkIndex(index, size());
        return m_items[index];
    }
    T &at(int index) { return (*this)[index]; }
    const T &at(int index) const { return (*this)[index]; }

    int indexOf(const T &item) const
    {
        typename std::vector<T>::const_iterator it = std::find(m_items.begin(), m_items.end(), item);
        return it == m_items.end() ? -1 : static_cast<int>(it - m_items.begin());
    }
    bool contains(const T &item) const { return indexOf(item) >= 0; }

    typename std::vector<T>::const_iterator begin() const { return m_items.begin(); }
    typename std::vector<T>::const_iterator end() const { return m_items.end(); }
    typename std::vector<T>::iterator begin() { return m_items.begin(); }
    typename std::vector<T>::iterator end() { return m_items.end(); }

private:
    static void checkIndex(int index, int limit)
    {
        if (index < 0 || index >= limit) {
            KEL_ASSERT(index >= 0 && index < limit);
            // Reached only when an observer let execution continue past the assertion.
            throw std::out_of_range("kel::Array index");
        }
    }

    std::vector<T> m_items;
};

} // namespace kel
