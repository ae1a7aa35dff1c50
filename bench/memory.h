// What memory takes by itself: the requests to new, and the copies into what they return, that the documented capacities
// call for. Where that is most of an operation's time, nothing else about it can be much faster.
#ifndef BEDPLATE_BENCH_MEMORY_H
#define BEDPLATE_BENCH_MEMORY_H

#include "workload.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace bench
{
/// The contestant that only asks for memory. It is reported beside the peers.
inline CWho MemoryAlone() { return {"memory alone", s_dUnjudged}; }

/// Returns new memory that holds a copy of iUsed bytes.
inline char* NewBytes(std::size_t iSize, const char* pBytes, std::size_t iUsed)
{
    char* pNew = new char[iSize];
    std::memcpy(pNew, pBytes, iUsed);
    benchmark::DoNotOptimize(pNew);
    return pNew;
}

inline char* NewText(const std::string& strText)
{
    return NewBytes(strText.size() + 1, strText.c_str(), strText.size() + 1);
}

/// Asks for what one string needs.
inline void RequestText(const std::string& strText) { delete[] NewText(strText); }

/// Asks for what strings need that have something else already.
inline void RequestTexts(const std::vector<std::string>& texts)
{
    std::vector<char*> table(texts.size());
    std::transform(texts.begin(), texts.end(), table.begin(), NewText);
    for (char* pText : table)
        delete[] pText;
}

/// Asks for what a table needs for new keys with a value each: a node, the key and a list. Returns it.
inline std::vector<std::unique_ptr<char[]>> RequestNodes(const std::vector<std::string>& keys)
{
    constexpr std::size_t iNode = 2 * (sizeof(char*) + 2 * sizeof(int)) + 2 * sizeof(char*);
    constexpr std::size_t iList = 4 * sizeof(int);
    std::vector<std::unique_ptr<char[]>> blocks;
    blocks.reserve(3 * keys.size());
    for (const std::string& strKey : keys)
    {
        blocks.emplace_back(NewBytes(iNode, "", 0));
        blocks.emplace_back(NewText(strKey));
        blocks.emplace_back(NewBytes(iList, "", 0));
    }
    return blocks;
}

/// Asks for what something needs that grows from nothing to lEnd units, NextCapacity(capacity) at a time. Above lExact
/// units, one eighth more is held ready.
template <class TNextCapacity>
void RequestGrowth(long lEnd, std::size_t iUnit, long lExact, TNextCapacity NextCapacity)
{
    long lCapacity = NextCapacity(0L), lReserved = lCapacity;
    char* pBytes = NewBytes(static_cast<std::size_t>(lReserved) * iUnit, "", 0);
    while (lCapacity < lEnd)
    {
        const std::size_t iUsed = static_cast<std::size_t>(lCapacity) * iUnit;
        lCapacity               = NextCapacity(lCapacity);
        if (lCapacity <= lReserved)
            continue;
        lReserved  = lCapacity > lExact ? lCapacity + lCapacity / 8 : lCapacity;
        char* pNew = NewBytes(static_cast<std::size_t>(lReserved) * iUnit, pBytes, iUsed);
        delete[] pBytes;
        pBytes = pNew;
    }
    delete[] pBytes;
}

/// Asks for what an array needs that elements are appended to.
inline void RequestArray(long lCount, std::size_t iElement)
{
    RequestGrowth(lCount, iElement, 8192,
                  [](long lCapacity) { return lCapacity + std::clamp(lCapacity / 8, 4L, 1024L); });
}

/// Asks for what a string needs that pieces are appended to.
inline void RequestAppends(long lPieces, long lPiece)
{
    RequestGrowth(lPieces * lPiece + 1, 1, 4097,
                  [=](long lCapacity) { return lCapacity + lPiece + (lCapacity == 0 ? 1 : 0); });
}

/// Asks for what an array of strings needs: a table, and for each element an object and a text.
inline void RequestStrings(const std::vector<std::string>& texts)
{
    struct CElement
    {
        char* m_pText;
        int m_aiCounts[2];
    };
    std::vector<CElement*> table(texts.size());
    for (CElement*& pElement : table)
        pElement = new CElement();
    for (std::size_t i = 0; i < texts.size(); ++i)
        table[i]->m_pText = NewText(texts[i]);
    for (CElement* pElement : table)
    {
        delete[] pElement->m_pText;
        delete pElement;
    }
}
} // namespace bench

#endif
