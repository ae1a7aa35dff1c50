// The way from a key to its node: open addressing over hash values.
#ifndef BEDPLATE_HASH_INDEX_H
#define BEDPLATE_HASH_INDEX_H

#include "tables/hash_key.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace bedplate_private
{
/// A block from the C allocator: this head, the keys, and their hash values, one of each for a slot. The values descend: a
/// key stands in its home slot, or as little behind it as higher ones leave it. Behind the last home there are some slots
/// more, so that no search goes on from the first one.
class CHashIndex
{
public:
    /// Where a key is, or would be.
    struct CPlace
    {
        CHashKey* m_pKey; // null when it is not there
        std::uint32_t m_uHash;
        std::size_t m_iSlot;
    };

    /// Returns an empty index, or null when there is no memory.
    static CHashIndex* New() { return New(CSeededHash(), 16); }

    /// Deletes an index, which may be null.
    static void Delete(CHashIndex*& pIndex)
    {
        free(pIndex);
        pIndex = nullptr;
    }

    /// Returns how many keys there are in an index, which may be null.
    static int Count(const CHashIndex* pIndex) { return pIndex ? static_cast<int>(pIndex->m_uCount) : 0; }

    /// Returns a key in an index, which may be null; null when it is not there. A null text counts as the empty one.
    static CHashKey* Find(const CHashIndex* pIndex, const char* pszKey);

    CPlace PlaceOf(std::string_view svKey) const;

    /// Adds a key at its place. A rather full index is replaced by one of twice the size, or goes on as it is while there is
    /// no memory for that. Returns false, and does nothing, when there is no room.
    static bool Add(CHashIndex*& pIndex, const CPlace& place, CHashKey* pKey);

    /// Removes the key at a place. Others may change their slots.
    void Remove(const CPlace& place);

    /// Calls Use for all keys.
    template <class TUse>
    void ForEach(TUse Use) const
    {
        for (std::size_t i = 0; i < m_iSlots; ++i)
        {
            if (m_puHashes[i] != s_uFree)
                Use(Keys()[i]);
        }
    }

private:
    static constexpr std::uint32_t s_uFree = 0; // of no key

    static CHashIndex* New(const CSeededHash& Hash, std::uint64_t uHomes);
    CHashIndex* NewLarger() const;
    CPlace Search(std::string_view svKey) const;
    std::size_t SlotOf(std::uint32_t uHash) const;
    void Insert(std::size_t iSlot, std::uint32_t uHash, CHashKey* pKey);

    bool IsRatherFull() const { return m_uCount >= m_uHomes / 16 * 13; }

    /// The last slot stays free: it ends every search.
    bool HasRoom() const { return m_puHashes[m_iSlots - 2] == s_uFree; }

    CHashKey** Keys() const { return reinterpret_cast<CHashKey**>(const_cast<CHashIndex*>(this) + 1); }

    std::size_t Home(std::uint32_t uHash) const
    {
        return static_cast<std::size_t>(std::uint64_t{~uHash} * m_uHomes >> 32);
    }

    CSeededHash m_Hash;
    std::uint32_t* m_puHashes;
    std::size_t m_iSlots;
    std::uint32_t m_uHomes;
    std::uint32_t m_uCount;
};
} // namespace bedplate_private

#endif
