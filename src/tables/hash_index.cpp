#include "tables/hash_index.h"

#include "base/short_bytes.h"

#include <climits>
#include <sys/auxv.h>

using bedplate_private::CHashIndex;
using bedplate_private::LoadWord;
using CWord = std::uintptr_t;

namespace
{
/// Returns both halves of a product, one laid over the other: each bit of the factors has its effect on many.
CWord Mix(CWord uLeft, CWord uRight)
{
#ifdef __SIZEOF_INT128__
    __extension__ using CProduct = unsigned __int128;
#else
    using CProduct = std::uint64_t;
#endif
    const CProduct uProduct = CProduct{uLeft} * uRight;
    return static_cast<CWord>(uProduct) ^ static_cast<CWord>(uProduct >> CHAR_BIT * sizeof(CWord));
}

/// Returns less than a word of bytes as a number, in which texts of one length differ.
CWord LoadFew(const char* pBytes, std::size_t iCount)
{
    const auto Half = [=](std::size_t i) { return std::uint64_t{LoadWord<std::uint32_t>(pBytes + i)}; };
    if (iCount >= 4) // of 8
        return static_cast<CWord>(Half(0) << 32 | Half(iCount - 4));
    const auto Byte = [=](std::size_t i) { return CWord{static_cast<unsigned char>(pBytes[i])}; };
    return iCount == 0 ? 0 : Byte(0) << 16 | Byte(iCount / 2) << 8 | Byte(iCount - 1);
}
} // namespace

/// Takes the random bytes that the system gives each process, or fixed ones where there are none. The C library makes
/// secrets of them, so they are mixed.
void CHashIndex::Seed()
{
    constexpr std::size_t iWords = 16 / sizeof(CWord);
    static const char szFixed[]  = "in plain sight!";
    const unsigned long uAddress = getauxval(AT_RANDOM);
    CWord aWords[iWords];
    memcpy(aWords, uAddress != 0 ? reinterpret_cast<const char*>(uAddress) : szFixed, sizeof aWords);
    m_uSeed   = Mix(aWords[0], ~aWords[iWords - 1]);
    m_uFactor = Mix(aWords[1], aWords[iWords - 2]);
}

std::uint32_t CHashIndex::Hash(std::string_view svKey) const
{
    const char* pBytes = svKey.data();
    std::size_t iLeft  = svKey.size();
    CWord uHash        = m_uSeed ^ iLeft;
    for (; iLeft > sizeof(CWord); iLeft -= sizeof(CWord), pBytes += sizeof(CWord))
        uHash = Mix(uHash ^ LoadWord<CWord>(pBytes), m_uFactor);
    // The last word takes in bytes of the word before, if there is one.
    const CWord uLast = svKey.size() >= sizeof(CWord) ? LoadWord<CWord>(pBytes + iLeft - sizeof(CWord))
                                                      : LoadFew(pBytes, iLeft);
    uHash             = Mix(uHash ^ uLast, m_uFactor);
    return static_cast<std::uint32_t>(uHash ^ uHash >> CHAR_BIT * sizeof(CWord) / 2);
}

/// Returns an empty index without a seed, or null when there is no memory.
CHashIndex* CHashIndex::New(std::uint64_t uCapacity)
{
    const std::uint64_t uSize = sizeof(CHashIndex) + uCapacity * sizeof(CSlot);
    if (uCapacity > UINT32_MAX || uSize > PTRDIFF_MAX)
        return nullptr;
    auto* pIndex = static_cast<CHashIndex*>(calloc(static_cast<std::size_t>(uSize), 1));
    if (pIndex != nullptr)
        pIndex->m_uCapacity = static_cast<std::uint32_t>(uCapacity);
    return pIndex;
}

bool CHashIndex::MakeRoom(CHashIndex*& pIndex)
{
    constexpr std::uint64_t uFirstCapacity = 8;
    const std::uint32_t uCapacity          = pIndex != nullptr ? pIndex->m_uCapacity : 0;
    const std::uint32_t uFree              = pIndex != nullptr ? uCapacity - pIndex->m_uCount : 0;
    if (uFree > uCapacity / 5)
        return true;
    CHashIndex* pGrown = New(uCapacity > 0 ? std::uint64_t{uCapacity} + uCapacity / 2 : uFirstCapacity);
    if (pGrown == nullptr)
        return uFree > 1; // a free slot ends every search
    if (pIndex != nullptr)
        pIndex->MoveTo(*pGrown);
    else
        pGrown->Seed();
    free(pIndex);
    pIndex = pGrown;
    return true;
}

/// Gives an empty index the seed and the pairs of this one.
void CHashIndex::MoveTo(CHashIndex& index)
{
    index.m_uSeed   = m_uSeed;
    index.m_uFactor = m_uFactor;
    for (CSlot* pSlot = Slots(); pSlot != Slots() + m_uCapacity; ++pSlot)
    {
        if (pSlot->m_pNode != nullptr)
            index.Add(pSlot->m_uHash, pSlot->m_pNode);
    }
}

void CHashIndex::Add(std::uint32_t uHash, void* pNode)
{
    CSlot* pSlot = Home(uHash);
    while (pSlot->m_pNode != nullptr)
        pSlot = Next(pSlot);
    *pSlot = {pNode, uHash};
    ++m_uCount;
}

void CHashIndex::Remove(CSlot* pSlot)
{
    // A pair behind the gap fills it unless its home is behind the gap, too.
    for (CSlot* pNext = Next(pSlot); pNext->m_pNode != nullptr; pNext = Next(pNext))
    {
        const CSlot* pHome = Home(pNext->m_uHash);
        const bool bStays = pSlot < pNext ? pSlot < pHome && pHome <= pNext : pSlot < pHome || pHome <= pNext;
        if (bStays)
            continue;
        *pSlot = *pNext;
        pSlot  = pNext;
    }
    pSlot->m_pNode = nullptr;
    --m_uCount;
}
