// Key to value map without order. put() replaces, insert() keeps the earlier value.
#pragma once

#include <kel/Array.h>
#include <kel/String.h>
#include <unordered_map>

namespace kel {

template <class K>
struct DefaultHash : std::hash<K> {
};
template <>
struct DefaultHash<String> : StringHash {
};

template <class K, class V, class H = DefaultHash<K>>
class HashTable {
public:
    explicit HashTable(int buckets = 16) : m_map(buckets > 0 ? buckets : 16) {}

    int size() const { return static_cast<int>(m_map.size()); }
    bool isEmpty() const { return m_map.empty(); }
    bool contains(const K &key) const { return m_map.find(key) != m_map.end(); }

    void put(const K &key, const V &value) { m_map[key] = value; }
    bool insert(const K &key, const V &value) { return m_map.insert(std::make_pair(key, value)).second; }
    bool remove(const K &key) { return m_map.erase(key) > 0; }
    void clear() { m_map.clear(); }

    const V *lookup(const K &key) const
    {
        typename Map::const_iterator it = m_map.find(key);
        return it == m_map.end() ? nullptr : &it->second;
    }
    V *lookup(const K &key)
    {
        typename Map::iterator it = m_map.find(key);
        return it == m_map.end() ? nullptr : &it->second;
    }
    bool get(const K &key, V &out) const
    {
        const V *found = lookup(key);
        if (found)
            out = *found;
        return found != nullptr;
    }
    Array<K> keys() const
    {
        Array<K> result;
        for (typename Map::const_iterator it = m_map.begin(); it != m_map.end(); ++it)
            result.add(it->first);
        return result;
    }

private:
    typedef std::unordered_map<K, V, H> Map;
    Map m_map;
};

} // namespace kel
