// The one design behind the hash tables: a fixed number of buckets, each a chain of nodes in the order in which their keys
// came, and an index that leads from a key to its node. The chains decide on the order in which keys are listed and
// removed, and on nothing else. Each unit names its table's HashTraits, derives nothing and forwards its operations here.
#ifndef BEDPLATE_HASH_DESIGN_H
#define BEDPLATE_HASH_DESIGN_H

#include "exception.h"
#include "tables/hash_index.h"
#include "tables/hash_listing.h"
#include "tables/hash_node.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace bedplate_private
{
template <class THash>
struct HashDesign
{
    using Traits = HashTraits<THash>;
    using Array  = typename Traits::Array;
    using Value  = typename Traits::Value;
    using Elem   = typename Traits::Elem;
    using Node   = CHashNode<THash>;

    // ---- Life -------------------------------------------------------------------------------------------------

    static void Construct(THash& hash, int iHashSize)
    {
        if (iHashSize <= 0)
            throw CException(0, "%s() Invalid size(%d)", Traits::s_szName, iHashSize);
        hash.m_iHashSize = iHashSize;
        if (!MakeBuckets(hash))
            throw CException(0, "%s() Out of memory", Traits::s_szName);
    }

    static bool MakeBuckets(THash& hash)
    try
    {
        hash.m_pHashBag = new Node*[static_cast<std::size_t>(hash.m_iHashSize)]();
        return true;
    }
    catch (...) // whatever the allocator throws
    {
        return false;
    }

    static void Destruct(THash& hash)
    {
        Clear(hash);
        CHashIndex::Delete(hash.m_pIndex);
        delete[] hash.m_pHashBag;
        hash.m_pHashBag  = nullptr;
        hash.m_iHashSize = 0;
        // A reader that the compiler cannot see: it would drop stores into an object that ends here.
        __asm__ volatile("" : : "r"(&hash) : "memory");
    }

    /// Gives a table that has nothing what another one holds. That makes its buckets again when it needs them.
    static void Take(THash& hash, THash& hashSource)
    {
        hash.m_pHashBag  = std::exchange(hashSource.m_pHashBag, nullptr);
        hash.m_iHashSize = hashSource.m_iHashSize;
        hash.m_iDataCnt  = std::exchange(hashSource.m_iDataCnt, 0);
        hash.m_pIndex    = std::exchange(hashSource.m_pIndex, nullptr);
    }

    static THash& Move(THash& hash, THash& hashSource)
    {
        if (&hash != &hashSource)
        {
            Destruct(hash);
            Take(hash, hashSource);
        }
        return hash;
    }

    // ---- Finding ----------------------------------------------------------------------------------------------

    /// Returns the node of a key, or null.
    static Node* Find(const THash& hash, const char* pszKey)
    {
        CHashKey* pKey = CHashIndex::Find(hash.m_pIndex, pszKey);
        return pKey != nullptr ? Node::Of(pKey) : nullptr;
    }

    static Elem* FindFirst(const THash& hash, const char* pszKey)
    {
        Node* pNode = Find(hash, pszKey);
        return pNode != nullptr ? &pNode->First() : nullptr;
    }

    /// Stores the key's first value in *pTarget; a null pTarget only asks for the key.
    template <class TTarget>
    static int GetFirst(const THash& hash, const char* pszKey, TTarget* pTarget)
    {
        Node* pNode = Find(hash, pszKey);
        if (pNode == nullptr)
            return -1;
        if (pTarget != nullptr)
            *pTarget = pNode->First();
        return 0;
    }

    static int GetList(const THash& hash, const char* pszKey, Array* pTarget)
    {
        Node* pNode = Find(hash, pszKey);
        if (pNode == nullptr)
            return -1;
        if (pTarget != nullptr)
            *pTarget = *CNodeList<THash>(*pNode);
        return 0;
    }

    // ---- Adding -----------------------------------------------------------------------------------------------

    /// Makes what a table has from its first key on, if it is not there. Returns whether it is there then.
    static bool IsReady(THash& hash)
    {
        return (hash.m_pHashBag != nullptr || MakeBuckets(hash)) &&
               (hash.m_pIndex != nullptr || (hash.m_pIndex = CHashIndex::New()) != nullptr);
    }

    /// The old values go when everything else stands: an item may look into its table while it is deleted.
    static int Replace(THash& hash, Node& node, Value value)
    {
        Node nodeOld;
        nodeOld.SetOne(value);
        nodeOld.SwapValues(node);
        hash.m_iDataCnt += 1 - nodeOld.Count();
        nodeOld.DestroyValues(Traits::IsOwner(hash));
        return 0;
    }

    static int SetNew(THash& hash, CHashIndex::CPlace place, std::string_view svKey, Value value)
    {
        const int iHash              = THash::HashFunc(svKey.data(), static_cast<int>(svKey.size()));
        typename Node::CHolder pNode = Node::New(svKey, value);
        if (pNode == nullptr || !CHashIndex::Add(hash.m_pIndex, place, &pNode->m_key))
            return -99;
        pNode->m_iHash = iHash % hash.m_iHashSize;
        Node::Link(hash.m_pHashBag[pNode->m_iHash], pNode.get());
        pNode.release();
        ++hash.m_iDataCnt;
        return 0;
    }

    static int Set(THash& hash, const char* pszKey, Value value, bool bReplace)
    {
        if (!IsReady(hash))
            return -99;
        const std::string_view svKey   = ViewOf(pszKey);
        const CHashIndex::CPlace place = hash.m_pIndex->PlaceOf(svKey);
        if (place.m_pKey == nullptr)
            return SetNew(hash, place, svKey, value);
        Node& node = *Node::Of(place.m_pKey);
        if (bReplace)
            return Replace(hash, node, value);
        if (!node.Append(value, Traits::IsOwner(hash)))
            return -99;
        ++hash.m_iDataCnt;
        return 0;
    }

    // ---- Removing ---------------------------------------------------------------------------------------------

    static void Remove(THash& hash, std::string_view svKey)
    {
        const CHashIndex::CPlace place = hash.m_pIndex ? hash.m_pIndex->PlaceOf(svKey) : CHashIndex::CPlace();
        if (place.m_pKey == nullptr)
            return;
        Node* pNode = Node::Of(place.m_pKey);
        hash.m_pIndex->Remove(place);
        Node::Unlink(hash.m_pHashBag[pNode->m_iHash], pNode);
        hash.m_iDataCnt -= pNode->Count();
        Node::Delete(pNode, Traits::IsOwner(hash));
    }

    /// An owner's items go in the order of the buckets and may look into the table meanwhile. Of what others hold, nobody
    /// sees in which order it goes.
    static void Clear(THash& hash)
    {
        if (!Traits::IsOwner(hash) && hash.m_pIndex != nullptr)
        {
            hash.m_pIndex->ForEach([](CHashKey* pKey) { Node::Delete(Node::Of(pKey), false); });
            CHashIndex::Delete(hash.m_pIndex);
            std::fill_n(hash.m_pHashBag, hash.m_iHashSize, nullptr);
            hash.m_iDataCnt = 0;
        }
        for (int i = 0; hash.m_iDataCnt > 0 && i < hash.m_iHashSize; ++i)
        {
            while (Node* pNode = hash.m_pHashBag[i])
                Remove(hash, pNode->Key());
        }
    }
};
} // namespace bedplate_private

#endif
