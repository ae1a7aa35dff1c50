// The one design behind the hash tables: a fixed number of buckets, each the head of a chain of nodes in the order in
// which their keys came. Each unit names its table's HashTraits, derives nothing and forwards its operations here:
//
//     Array               the class of a key's list of values
//     Value               what is added to the list
//     s_szName            the class name in messages
//     s_szOutOfMemory     the text of a failed bucket allocation
//     NewNode(hash, key)  returns a new node with an empty list
//     NewList(hash)       returns an empty list
//     s_iOwnBuffer        the capacity of a list of one value, if a list of that capacity may be made one in place; else 0
#ifndef BEDPLATE_HASH_DESIGN_H
#define BEDPLATE_HASH_DESIGN_H

#include "arrays/array_access.h"
#include "arrays/str_array_filler.h"
#include "base/short_bytes.h"
#include "cstream.h"
#include "exception.h"
#include "strings/stream_printing.h"
#include "strings/string_design.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace bedplate_private
{
template <class THash>
struct HashTraits;

/// A key with its values.
template <class TArray>
struct CHashNode
{
    /// The arguments behind the key make the list.
    template <class... TListArgs>
    explicit CHashNode(std::string_view svKey, TListArgs... listArgs)
        : m_strKey(StringDesign::FromBytes(svKey)), m_arrValues(listArgs...)
    {
    }

    int m_iHash = 0;
    CString m_strKey;
    TArray m_arrValues;
    CHashNode* m_pNext = nullptr;
};

/// A hash value in the making: each byte shifts it by four bits and adds to it, and then its top four bits are folded back.
/// Bytes and the folded bits are signed; keys with high-bit characters depend on it.
class CHashValue
{
public:
    /// This many characters of ASCII come to less than 2^28: there is nothing to fold back.
    static constexpr int s_iNeverFolded = 6;

    /// Takes in a character of ASCII that is among the first s_iNeverFolded.
    void AddFirst(char ch) { m_uValue = (m_uValue << 4) + static_cast<unsigned char>(ch); }

    void Add(char ch)
    {
        // The bits that the value folds back, now that it is shifted; those that it drops go by themselves.
        m_uValue =
            ((m_uValue << 4) ^ (TopBits() << 8)) + static_cast<std::uint32_t>(static_cast<signed char>(ch));
    }

    int Get() const { return static_cast<int>(((m_uValue & 0x0FFFFFFFu) ^ (TopBits() << 4)) & 0x3FFFFFFFu); }

private:
    /// The top four bits as a signed number.
    std::uint32_t TopBits() const
    {
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(m_uValue) >> 28);
    }

    std::uint32_t m_uValue = 0; // its top bits are not folded back yet
};

template <class THash>
struct HashDesign
{
    using Traits = HashTraits<THash>;
    using Array  = typename Traits::Array;
    using Value  = typename Traits::Value;
    using Node   = CHashNode<Array>;

    // ---- Life -------------------------------------------------------------------------------------------------

    static void Construct(THash& hash, int iHashSize)
    {
        if (iHashSize <= 0)
            throw CException(0, "%s() Invalid size(%d)", Traits::s_szName, iHashSize);
        try
        {
            hash.m_pHashBag = new Node*[static_cast<std::size_t>(iHashSize)]();
        }
        catch (...) // whatever the allocator throws
        {
            throw CException(Traits::s_szOutOfMemory, 0);
        }
        hash.m_iHashSize = iHashSize;
    }

    static void Destruct(THash& hash)
    {
        Clear(hash);
        delete[] hash.m_pHashBag;
        hash.m_pHashBag  = nullptr;
        hash.m_iHashSize = 0;
    }

    static int HashFunc(const char* pszText, int iCount)
    {
        CHashValue hash;
        for (int i = 0; pszText != nullptr && i < iCount; ++i)
            hash.Add(pszText[i]);
        return hash.Get();
    }

    // ---- Finding ----------------------------------------------------------------------------------------------

    /// Where a key belongs: its bucket, and the link that leads to its node, or the null link at the chain's end.
    struct CPlace
    {
        int m_iBucket;
        Node** m_pLink;
        std::string_view m_svKey;
    };

    static CPlace FindPlace(const THash& hash, const char* pszKey)
    {
        CHashValue value;
        const char* pszEnd = pszKey;
        for (; static_cast<signed char>(*pszEnd) > 0 && pszEnd - pszKey < CHashValue::s_iNeverFolded;
             ++pszEnd)
            value.AddFirst(*pszEnd);
        for (; *pszEnd != '\0'; ++pszEnd)
            value.Add(*pszEnd);
        const std::string_view svKey(pszKey, static_cast<std::size_t>(pszEnd - pszKey));
        const int iBucket =
            static_cast<int>(static_cast<unsigned>(value.Get()) % static_cast<unsigned>(hash.m_iHashSize));
        Node** pLink = &hash.m_pHashBag[iBucket];
        while (*pLink != nullptr && !Matches((*pLink)->m_strKey, svKey))
            pLink = &(*pLink)->m_pNext;
        return {iBucket, pLink, svKey};
    }

    /// Keys are made from texts, so the length of one is that of its text.
    static bool Matches(const CString& strKey, std::string_view svKey)
    {
        return static_cast<std::size_t>(strKey.GetLength()) == svKey.size() &&
               AreBytesEqual(strKey.ToStr(), svKey.data(), svKey.size());
    }

    /// A null key counts as the empty one.
    static const char* KeyText(const char* pszKey) { return pszKey != nullptr ? pszKey : ""; }

    /// Returns the key's list of values, which is never empty, or null.
    static const Array* FindList(const THash& hash, const char* pszKey)
    {
        const Node* pNode = *FindPlace(hash, KeyText(pszKey)).m_pLink;
        return pNode != nullptr ? &pNode->m_arrValues : nullptr;
    }

    /// Stores the key's first value in *pTarget; a null pTarget only asks for the key.
    template <class TTarget>
    static int GetFirst(const THash& hash, const char* pszKey, TTarget* pTarget)
    {
        const Array* pList = FindList(hash, pszKey);
        if (pList == nullptr)
            return -1;
        if (pTarget != nullptr)
            *pTarget = pList->GetAt(0);
        return 0;
    }

    static int GetList(const THash& hash, const char* pszKey, Array* pTarget)
    {
        const Array* pList = FindList(hash, pszKey);
        if (pList == nullptr)
            return -1;
        if (pTarget != nullptr)
            *pTarget = *pList;
        return 0;
    }

    /// Has the processor fetch the next buckets' nodes and keys, which lie anywhere in memory, while one is worked on.
    static void FetchAhead(const THash& hash, int iBucket)
    {
        constexpr int iNodes = 8;
        constexpr int iKeys  = 4;
        if (iBucket >= hash.m_iHashSize - iNodes)
            return;
        __builtin_prefetch(hash.m_pHashBag[iBucket + iNodes]);
        if (const Node* pNode = hash.m_pHashBag[iBucket + iKeys])
            __builtin_prefetch(pNode->m_strKey.ToStr());
    }

    static void GetKeys(const THash& hash, CStrArray& arrKeys)
    {
        CStrArrayFiller filler(arrKeys);
        for (int i = 0; i < hash.m_iHashSize; ++i)
        {
            FetchAhead(hash, i);
            for (const Node* pNode = hash.m_pHashBag[i]; pNode != nullptr; pNode = pNode->m_pNext)
                filler.Add(pNode->m_strKey.ToStr(), static_cast<std::size_t>(pNode->m_strKey.GetLength()));
        }
    }

    // ---- Changing ---------------------------------------------------------------------------------------------

    /// Returns a new node for the key, or null when there is no memory for the node itself. What its key text throws
    /// goes to the caller.
    static std::unique_ptr<Node> NewNode(const THash& hash, std::string_view svKey)
    {
        try
        {
            return std::unique_ptr<Node>(Traits::NewNode(hash, svKey));
        }
        catch (const CException&)
        {
            throw;
        }
        catch (...) // whatever the allocator throws
        {
            return nullptr;
        }
    }

    /// Appends the value, or leaves the list as it was.
    static void Append(THash& hash, Array& arr, Value value)
    {
        const int iOldSize = arr.GetSize();
        try
        {
            arr.Add(value);
            ++hash.m_iDataCnt;
        }
        catch (...)
        {
            Shorten(arr, iOldSize);
            throw;
        }
    }

    /// Removes the element that a string list keeps when its text could not be set. Emptying that string may fail in
    /// turn, which does no harm: the element is gone.
    static void Shorten(Array& arr, int iSize)
    {
        try
        {
            if (arr.GetSize() > iSize)
                arr.RemoveLast();
        }
        catch (const CException&)
        {
        }
    }

    /// Makes the value the list's only one. The old values go when the new list and the count stand: an item may look
    /// into its table while it is deleted.
    static void Replace(THash& hash, Array& arr, Value value)
    {
        if (arr.GetBufferSize() == Traits::s_iOwnBuffer)
        {
            hash.m_iDataCnt += 1 - arr.GetSize();
            arr.Clear();
            arr.Add(value);
            return;
        }
        Array arrNew = Traits::NewList(hash);
        arrNew.Add(value);
        ArrayAccess::Swap(arr, arrNew);
        hash.m_iDataCnt += arr.GetSize() - arrNew.GetSize();
    }

    static int Set(THash& hash, const char* pszKey, Value value, bool bReplace)
    {
        const CPlace place = FindPlace(hash, KeyText(pszKey));
        if (Node* pNode = *place.m_pLink)
        {
            if (bReplace)
                Replace(hash, pNode->m_arrValues, value);
            else
                Append(hash, pNode->m_arrValues, value);
            return 0;
        }
        std::unique_ptr<Node> pNew = NewNode(hash, place.m_svKey);
        if (pNew == nullptr)
            return -99;
        pNew->m_iHash = place.m_iBucket;
        pNew->m_arrValues.Add(value);
        *place.m_pLink = pNew.release();
        ++hash.m_iDataCnt;
        return 0;
    }

    /// Takes the node at a link out of its chain and destroys it.
    static void RemoveNode(THash& hash, Node** pLink)
    {
        Node* pNode = *pLink;
        *pLink      = pNode->m_pNext;
        hash.m_iDataCnt -= pNode->m_arrValues.GetSize();
        delete pNode;
    }

    static void Remove(THash& hash, const char* pszKey)
    {
        const CPlace place = FindPlace(hash, KeyText(pszKey));
        if (*place.m_pLink != nullptr)
            RemoveNode(hash, place.m_pLink);
    }

    static void Clear(THash& hash)
    {
        for (int i = 0; i < hash.m_iHashSize; ++i)
        {
            while (hash.m_pHashBag[i] != nullptr)
                RemoveNode(hash, &hash.m_pHashBag[i]);
        }
    }

    // ---- Dumping ----------------------------------------------------------------------------------------------

    static void DumpBucket(const Node* pHead, CStream& stream)
    {
        PrintLine(stream, "Hash : %d", pHead->m_iHash);
        int iKeys = 0;
        for (const Node* pNode = pHead; pNode != nullptr; pNode = pNode->m_pNext)
        {
            PrintLine(stream, "  Key : [%s](%d)", pNode->m_strKey.ToStr(), pNode->m_iHash);
            PrintLine(stream, "      : [%s]", pNode->m_arrValues.Repr(", ", false).ToStr());
            ++iKeys;
        }
        PrintLine(stream, "      (Hash(%d) Cnt : %d)", pHead->m_iHash, iKeys);
    }

    static void Dump(const THash& hash, CStream* pStream)
    {
        if (pStream == nullptr)
            return;
        PrintLine(*pStream, "Total HashBag size : %d, DataCnt : %d", hash.m_iHashSize, hash.m_iDataCnt);
        for (int i = 0; i < hash.m_iHashSize; ++i)
        {
            FetchAhead(hash, i);
            if (hash.m_pHashBag[i] != nullptr)
                DumpBucket(hash.m_pHashBag[i], *pStream);
        }
    }
};
} // namespace bedplate_private

#endif
