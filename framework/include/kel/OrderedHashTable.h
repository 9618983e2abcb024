// Key to value map that keeps insertion order: keys and values live in two parallel
// arrays, an index maps keys to positions. Access by index out of range is an assertion.
#pragma once

#include <kel/Array.h>
#include <kel/HashTable.h>

namespace kel {

template <class K, class V, class H = DefaultHash<K>>
class OrderedHashTable {
public:
    explicit OrderedHashTable(int buckets = 16) : m_index(buckets) {}

    int size() const { return m_keys.size(); }
    bool isEmpty() const { return m_keys.isEmpty(); }
    bool contains(const K &key) const { return m_index.contains(key); }

    // Adds at the end; an existing key keeps its earlier value and position.
    bool insert(const K &key, const V &value)
    {
        if (!m_index.insert(key, m_keys.size()))
            return false;
        m_keys.add(key);
        m_values.add(value);
        return true;
    }
    // Adds at the end, or replaces the value of an existing key in place.
    void put(const K &key, const V &value)
    {
        const int *at = m_index.lookup(key);
        if (at)
            m_values[*at] = value;
        else
            insert(key, value);
    }
    bool remove(const K &key)
    {
        const int *at = m_index.lookup(key);
        if (!at)
            return false;
        const int position = *at;
        m_keys.removeAt(position);
        m_values.removeAt(position);
        reindex();
        return true;
    }
    void clear()
    {
        m_index.clear();
        m_keys.clear();
        m_values.clear();
    }

    const V *lookup(const K &key) const
    {
        const int *at = m_index.lookup(key);
        return at ? &m_values[*at] : nullptr;
    }
    V *lookup(const K &key)
    {
        const int *at = m_index.lookup(key);
        return at ? &m_values[*at] : nullptr;
    }
    bool get(const K &key, V &out) const
    {
        const V *found = lookup(key);
        if (found)
            out = *found;
        return found != nullptr;
    }
    int indexOf(const K &key) const
    {
        const int *at = m_index.lookup(key);
        return at ? *at : -1;
    }

    const K &keyAt(int index) const { return m_keys[index]; }
    const V &valueAt(int index) const { return m_values[index]; }
    V &valueAt(int index) { return m_values[index]; }
    const Array<K> &keys() const { return m_keys; }
    const Array<V> &values() const { return m_values; }

private:
    void reindex()
    {
        m_index.clear();
        for (int i = 0; i < m_keys.size(); ++i)
            m_index.put(m_keys[i], i);
    }

    HashTable<K, int, H> m_index;
    Array<K> m_keys;
    Array<V> m_values;
};

} // namespace kel
