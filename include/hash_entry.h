// What the hash tables hand out in range-for: a key with its first value.
//
//     CIntHash hashWords;
//     for (const auto& entry : hashWords)
//         printf("%s %d\n", entry.m_pszKey, entry.m_value);
//     for (auto [pszWord, iCount] : hashWords) // from C++17; iCount is a reference into the table
//         iCount = 0;
#ifndef BEDPLATE_HASH_ENTRY_H
#define BEDPLATE_HASH_ENTRY_H

#include "api.h"

/// A key of a table and the first of its values, both in place.
template <class TValue>
struct CHashEntry
{
    const char* m_pszKey; ///< The key, which lives until it is removed.
    TValue& m_value;      ///< Its first value, which lives until the key's values change.
};

namespace bedplate_private
{
/// Where an iterator of a table is: at a node and what that holds, or behind the last one at null.
struct CHashPosition
{
    const void* m_pNode;
    const char* m_pszKey;
    void* m_pValue;
};

/// What begin() and end() of a table return. An entry is made when it is looked at: it is taken by value or by
/// const reference.
template <class THash, class TValue>
class CHashIterator
{
public:
    /// Makes the iterator behind the last key.
    CHashIterator() : m_pHash(nullptr), m_position() {}
    /// Makes the iterator at the first key.
    explicit CHashIterator(const THash& hash) : m_pHash(&hash), m_position() { ++*this; }

    CHashEntry<TValue> operator*() const
    {
        return {m_position.m_pszKey, *static_cast<TValue*>(m_position.m_pValue)};
    }

    CHashIterator& operator++()
    {
        m_pHash->Advance(m_position);
        return *this;
    }

    bool operator==(const CHashIterator& it) const { return m_position.m_pNode == it.m_position.m_pNode; }
    bool operator!=(const CHashIterator& it) const { return !(*this == it); }

private:
    const THash* m_pHash;
    CHashPosition m_position;
};
} // namespace bedplate_private

#endif
