// The way from a key to its node: open addressing over pairs of a hash value and a node. The hash function is not the
// documented one, which decides on buckets alone, and is seeded: nobody can choose keys that it does not keep apart.
#ifndef BEDPLATE_HASH_INDEX_H
#define BEDPLATE_HASH_INDEX_H

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace bedplate_private
{
/// A block from the C allocator: this head, and the slots behind it. A pair stands in its home slot or, if that was taken,
/// in the first free one behind it, where the first slot follows the last.
class CHashIndex
{
public:
    struct CSlot
    {
        void* m_pNode; // null in a free slot
        std::uint32_t m_uHash;
    };

    /// Makes room for one more pair, where pIndex is null in a new index. A rather full index goes on as it is while there
    /// is no memory for a larger one. Returns whether there is room.
    static bool MakeRoom(CHashIndex*& pIndex);

    /// Deletes an index, which may be null.
    static void Delete(CHashIndex*& pIndex)
    {
        free(pIndex);
        pIndex = nullptr;
    }

    /// Returns how many pairs there are in an index, which may be null.
    static int Count(const CHashIndex* pIndex) { return pIndex ? static_cast<int>(pIndex->m_uCount) : 0; }

    /// Returns the hash value of a key, the same as long as there is an index.
    std::uint32_t Hash(std::string_view svKey) const;

    /// Returns the slot of a node of that hash value for which IsWanted is true, or null.
    template <class TIsWanted>
    CSlot* Find(std::uint32_t uHash, TIsWanted IsWanted)
    {
        CSlot* const pEnd = Slots() + m_uCapacity;
        CSlot* pSlot      = Home(uHash);
        while (pSlot->m_pNode != nullptr && !(pSlot->m_uHash == uHash && IsWanted(pSlot->m_pNode)))
            pSlot = __builtin_expect(pSlot + 1 != pEnd, 1) ? pSlot + 1 : Slots();
        return pSlot->m_pNode != nullptr ? pSlot : nullptr;
    }

    /// Adds a pair, for which there is room.
    void Add(std::uint32_t uHash, void* pNode);

    /// Removes the pair in a slot. Pairs behind it may move.
    void Remove(CSlot* pSlot);

private:
    static CHashIndex* New(std::uint64_t uCapacity);
    void Seed();
    void MoveTo(CHashIndex& index);

    CSlot* Slots() { return reinterpret_cast<CSlot*>(this + 1); }

    /// Hash values are spread over the slots in their order.
    CSlot* Home(std::uint32_t uHash) { return Slots() + (std::uint64_t{uHash} * m_uCapacity >> 32); }

    CSlot* Next(CSlot* pSlot) { return ++pSlot != Slots() + m_uCapacity ? pSlot : Slots(); }

    std::uintptr_t m_uSeed;
    std::uintptr_t m_uFactor;
    std::uint32_t m_uCapacity;
    std::uint32_t m_uCount;
};
} // namespace bedplate_private

#endif
