// What goes through a hash table in the order of its buckets.
#ifndef BEDPLATE_HASH_LISTING_H
#define BEDPLATE_HASH_LISTING_H

#include "arrays/str_array_filler.h"
#include "cstream.h"
#include "hash_entry.h"
#include "strings/stream_printing.h"
#include "tables/hash_node.h"

namespace bedplate_private
{
template <class THash>
struct HashListing
{
    using Node = CHashNode<THash>;

    /// Nodes lie anywhere in memory, and whether one is the last of its bucket cannot be foretold: without fetching the heads
    /// of coming buckets, each node is waited for. GetKeys of 100,000 keys takes 1.7 times as long then.
    static constexpr int s_iAhead = 8;

    /// Returns the first node of the buckets from iBucket on, or null.
    static Node* FirstFrom(const THash& hash, int iBucket)
    {
        for (int i = iBucket; hash.m_iDataCnt > 0 && i < hash.m_iHashSize; ++i)
        {
            if (hash.m_iHashSize - i > s_iAhead)
                __builtin_prefetch(hash.m_pHashBag[i + s_iAhead]);
            if (hash.m_pHashBag[i] != nullptr)
                return hash.m_pHashBag[i];
        }
        return nullptr;
    }

    static Node* NextOf(const THash& hash, const Node* pNode)
    {
        return pNode->m_pNext != nullptr ? pNode->m_pNext : FirstFrom(hash, pNode->m_iHash + 1);
    }

    /// Leads an iterator to the next node, or to the first one if it was nowhere yet.
    static void Advance(const THash& hash, CHashPosition& position)
    {
        const Node* pOld = static_cast<const Node*>(position.m_pNode);
        Node* pNode      = pOld != nullptr ? NextOf(hash, pOld) : FirstFrom(hash, 0);
        position         = {};
        if (pNode != nullptr)
            position = {pNode, pNode->m_key.Text(), &pNode->First()};
    }

    static void GetKeys(const THash& hash, CStrArray& arrKeys)
    {
        CStrArrayFiller filler(arrKeys);
        for (Node* pNode = FirstFrom(hash, 0); pNode != nullptr; pNode = NextOf(hash, pNode))
            filler.Add(pNode->m_key.Text(), pNode->m_key.m_uSize);
    }

    static void DumpBucket(Node* pHead, CStreamLine& line, CStream& stream)
    {
        (line << "Hash : " << pHead->m_iHash).AppendTo(stream);
        int iKeys = 0;
        for (Node* pNode = pHead; pNode != nullptr; pNode = pNode->m_pNext)
        {
            (line << "  Key : [" << pNode->Key() << "](" << pHead->m_iHash << ")").AppendTo(stream);
            line << "      : [";
            AppendElements(line.GetText(), *CNodeList<THash>(*pNode), ", ");
            (line << "]").AppendTo(stream);
            ++iKeys;
        }
        (line << "      (Hash(" << pHead->m_iHash << ") Cnt : " << iKeys << ")").AppendTo(stream);
    }

    static void Dump(const THash& hash, CStream* pStream)
    {
        if (pStream == nullptr)
            return;
        CStreamLine line;
        (line << "Total HashBag size : " << hash.m_iHashSize << ", DataCnt : " << hash.m_iDataCnt)
            .AppendTo(*pStream);
        for (Node* pHead = FirstFrom(hash, 0); pHead != nullptr; pHead = FirstFrom(hash, pHead->m_iHash + 1))
            DumpBucket(pHead, line, *pStream);
    }
};
} // namespace bedplate_private

#endif
