// What the index of a hash table knows of keys: their texts and their hash values.
#ifndef BEDPLATE_HASH_KEY_H
#define BEDPLATE_HASH_KEY_H

#include "base/short_bytes.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <sys/auxv.h>

namespace bedplate_private
{
/// The end of a node: the length of its key, whose bytes and a NUL stand behind it.
struct CHashKey
{
    unsigned m_uSize : 31;
    bool m_bList : 1; // the node's

    char* Text() { return reinterpret_cast<char*>(this + 1); }

    /// Compares by words, as most keys are too short for a call of the C library to pay.
    bool Is(std::string_view svKey)
    {
        using CWord = std::uintptr_t;
        if (m_uSize != svKey.size())
            return false;
        if (m_uSize < sizeof(CWord))
            return AreBytesEqual(Text(), svKey.data(), m_uSize);
        const std::size_t iLast = m_uSize - sizeof(CWord);
        const auto IsWord       = [=, pText = Text()](std::size_t i)
        { return LoadWord<CWord>(pText + i) == LoadWord<CWord>(svKey.data() + i); };
        for (std::size_t i = 0; i < iLast; i += sizeof(CWord))
        {
            if (!IsWord(i))
                return false;
        }
        return IsWord(iLast);
    }
};

/// A hash function that is seeded, once a process: nobody can choose keys that it does not keep apart. It is not the
/// documented one, which decides on buckets alone.
class CSeededHash
{
public:
    /// Takes the random bytes that the system gives each process, or fixed ones where there are none. The C library makes
    /// secrets of them, so they are mixed.
    CSeededHash()
    {
        constexpr std::size_t iWords = 16 / sizeof(CWord);
        static const char szFixed[]  = "in plain sight!";
        const unsigned long uAddress = getauxval(AT_RANDOM);
        CWord aWords[iWords];
        memcpy(aWords, uAddress != 0 ? reinterpret_cast<const char*>(uAddress) : szFixed, sizeof aWords);
        m_uSeed   = Mix(aWords[0], ~aWords[iWords - 1]);
        m_uFactor = Mix(aWords[1], aWords[iWords - 2]);
    }

    /// Returns the hash value of a text, which is odd. Random bytes of zero, as tests have them, give all the highest one.
    std::uint32_t operator()(std::string_view svText) const
    {
        const char* pBytes = svText.data();
        CWord uHash        = m_uSeed ^ svText.size();
        if (svText.size() < sizeof(CWord))
        {
            uHash ^= LoadFew(pBytes, svText.size());
        }
        else
        {
            // The last word takes in bytes of the word before.
            const char* pLast = pBytes + svText.size() - sizeof(CWord);
            for (; pBytes < pLast; pBytes += sizeof(CWord))
                uHash = Mix(uHash ^ LoadWord<CWord>(pBytes), m_uFactor);
            uHash ^= LoadWord<CWord>(pLast);
        }
        constexpr int iSurplus = CHAR_BIT * (sizeof(CWord) - sizeof(std::uint32_t));
        return ~static_cast<std::uint32_t>(Mix(uHash, m_uFactor) >> iSurplus) | 1;
    }

private:
    using CWord = std::uintptr_t;

    /// Returns both halves of a product, one laid over the other: each bit of the factors has its effect on many.
    static CWord Mix(CWord uLeft, CWord uRight)
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
    static CWord LoadFew(const char* pBytes, std::size_t iCount)
    {
        const auto Half = [=](std::size_t i) { return std::uint64_t{LoadWord<std::uint32_t>(pBytes + i)}; };
        if (iCount >= 4) // of 8
            return static_cast<CWord>(Half(0) << 32 | Half(iCount - 4));
        const auto Byte = [=](std::size_t i) { return CWord{static_cast<unsigned char>(pBytes[i])}; };
        return iCount == 0 ? 0 : Byte(0) << 16 | Byte(iCount / 2) << 8 | Byte(iCount - 1);
    }

    CWord m_uSeed;
    CWord m_uFactor;
};
} // namespace bedplate_private

#endif
