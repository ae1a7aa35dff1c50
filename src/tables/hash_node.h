// A key of a hash table with its values. Nearly all keys have one, which stands in the node itself; with a second one they
// get a list. The bytes of the key and a NUL stand behind the node, in the same block.
#ifndef BEDPLATE_HASH_NODE_H
#define BEDPLATE_HASH_NODE_H

#include "arrays/array_access.h"
#include "cstring.h"
#include "strings/string_design.h"
#include "tables/hash_index.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>

namespace bedplate_private
{
/// What a table's unit states about it:
///     Array            the class of a key's list of values
///     Value            what is added to the list
///     Elem             what the list holds
///     s_szName         the class name in messages
///     IsOwner(hash)    whether lists own what they hold, which are pointers then
///     List(bOwner)     returns an empty list
template <class THash>
struct HashTraits;

/// What is the same in the tables that own nothing.
template <class TArray>
struct PlainHashTraits
{
    using Array = TArray;

    template <class THash>
    static bool IsOwner(const THash&)
    {
        return false;
    }
    static TArray List(bool) { return TArray(); }
};

template <class THash>
struct CHashNode
{
    using Traits = HashTraits<THash>;
    using Array  = typename Traits::Array;
    using Value  = typename Traits::Value;
    using Elem   = typename Traits::Elem;

    static constexpr bool s_bTexts = std::is_same_v<Elem, CString>;

    // Which member is alive, the node knows.
    union CValues
    {
        CValues() {}
        ~CValues() {}

        Elem m_value;
        Array* m_pList;
    };

    CHashNode* m_pNext;
    CHashNode* m_pBack;
    CValues m_values;
    int m_iHash; // the bucket
    CHashKey m_key;

    /// Returns the node of a key.
    static CHashNode* Of(CHashKey* pKey)
    {
        static_assert(sizeof(CHashNode) ==
                          2 * sizeof(CHashNode*) + sizeof(CValues) + sizeof(int) + sizeof(CHashKey),
                      "nothing stands between the key's length and its bytes");
        return reinterpret_cast<CHashNode*>(reinterpret_cast<char*>(pKey + 1) - sizeof(CHashNode));
    }

    /// Deletes a node that no table holds; what its value points to is the caller's.
    struct CDelete
    {
        void operator()(CHashNode* pNode) const { Delete(pNode, false); }
    };
    using CHolder = std::unique_ptr<CHashNode, CDelete>;

    // ---- Life -------------------------------------------------------------------------------------------------

    /// Returns a node with one value, or null when there is no memory for it. A text that is its value throws what
    /// strings throw.
    static CHolder New(std::string_view svKey, Value value)
    {
        std::unique_ptr<void, CDeleteBlock> pBlock(NewBlock(svKey));
        if (pBlock == nullptr)
            return nullptr;
        auto* pNode = ::new (pBlock.get()) CHashNode;
        pNode->SetOne(value);
        CHolder pNew(static_cast<CHashNode*>(pBlock.release()));
        pNode->m_key.m_uSize = static_cast<unsigned>(svKey.size()) & INT_MAX;
        *CopyBytes(pNode->m_key.Text(), svKey.data(), svKey.size()) = '\0';
        return pNew;
    }

    /// Deletes a node and its values, with what they point to if they own that.
    static void Delete(CHashNode* pNode, bool bOwner)
    {
        pNode->DestroyValues(bOwner);
        operator delete(pNode);
    }

    // ---- The links: the head of a bucket leads back to its tail --------------------------------------------------

    static void Link(CHashNode*& pHead, CHashNode* pNode)
    {
        pNode->m_pNext                                       = nullptr;
        pNode->m_pBack                                       = pHead != nullptr ? pHead->m_pBack : pNode;
        (pHead != nullptr ? pHead->m_pBack->m_pNext : pHead) = pNode;
        pHead->m_pBack                                       = pNode;
    }

    static void Unlink(CHashNode*& pHead, CHashNode* pNode)
    {
        CHashNode* pNext                                   = pNode->m_pNext;
        (pNode == pHead ? pHead : pNode->m_pBack->m_pNext) = pNext;
        CHashNode* pBehind                                 = pNext != nullptr ? pNext : pHead;
        if (pBehind != nullptr)
            pBehind->m_pBack = pNode->m_pBack;
    }

    // ---- The key ----------------------------------------------------------------------------------------------

    std::string_view Key() { return {m_key.Text(), m_key.m_uSize}; }

    // ---- The values -------------------------------------------------------------------------------------------

    int Count() const { return m_key.m_bList ? m_values.m_pList->GetSize() : 1; }

    Elem& First() { return m_key.m_bList ? const_cast<Elem&>(*m_values.m_pList->begin()) : m_values.m_value; }

    /// Gives a node that has no values its only one.
    void SetOne(Value value)
    {
        ::new (&m_values.m_value) Elem(value);
        m_key.m_bList = false;
    }

    /// Adds a value, or leaves the values as they were. Returns false when there is no memory for the list that a second
    /// value takes; what lists throw goes to the caller.
    bool Append(Value value, bool bOwner)
    {
        if (m_key.m_bList)
        {
            AddTo(*m_values.m_pList, value);
            return true;
        }
        std::unique_ptr<Array> pList(new (std::nothrow) Array(Traits::List(bOwner)));
        if (pList == nullptr)
            return false;
        // An owner has room for the second item once it has for the first: it never deletes that.
        if constexpr (s_bTexts)
            pList->Add(First().ToStr());
        else
            pList->Add(First());
        pList->Add(value);
        DestroyValues(false);
        m_values.m_pList = pList.release();
        m_key.m_bList    = true;
        return true;
    }

    /// Objects of ours may be moved as bytes.
    void SwapValues(CHashNode& node)
    {
        const auto Bytes = [](CHashNode& of) { return reinterpret_cast<char*>(&of.m_values); };
        std::swap_ranges(Bytes(*this), Bytes(*this) + sizeof(CValues), Bytes(node));
        const bool bList   = m_key.m_bList;
        m_key.m_bList      = node.m_key.m_bList;
        node.m_key.m_bList = bList;
    }

    void DestroyValues(bool bOwner)
    {
        if (m_key.m_bList)
            delete m_values.m_pList;
        else if constexpr (!std::is_pointer_v<Elem>)
            m_values.m_value.~Elem();
        else if (bOwner)
            delete m_values.m_value;
    }

private:
    struct CDeleteBlock
    {
        void operator()(void* pBlock) const { operator delete(pBlock); }
    };

    /// Returns memory for a node, or null. A key that no string could hold, or for which memory is short while there is
    /// some for the node, throws what a string of it throws.
    static void* NewBlock(std::string_view svKey)
    {
        if (svKey.size() < INT_MAX - sizeof(CHashNode))
        {
            if (void* pBlock = operator new(sizeof(CHashNode) + svKey.size() + 1, std::nothrow))
                return pBlock;
        }
        void* pSmall = operator new(sizeof(CHashNode), std::nothrow);
        operator delete(pSmall);
        if (pSmall != nullptr)
            StringDesign::FromBytes(svKey);
        return nullptr;
    }

    /// Takes back the element that a list of texts keeps when its text could not be set.
    static void AddTo(Array& arr, Value value)
    {
        const int iOldSize = arr.GetSize();
        try
        {
            arr.Add(value);
        }
        catch (...)
        {
            ArrayAccess::Shorten(arr, iOldSize);
            throw;
        }
    }
};

/// The values of a node as a list, with the capacity that lists have after as many calls of Add.
template <class THash>
class CNodeList
{
public:
    using Node  = CHashNode<THash>;
    using Array = typename Node::Array;

    explicit CNodeList(Node& node) : m_pList(node.m_key.m_bList ? node.m_values.m_pList : &m_arrOne)
    {
        if constexpr (Node::s_bTexts)
            m_aSlots[0] = &node.First();
        else
            m_aSlots[0] = node.First();
        ArrayAccess::Show(m_arrOne, m_aSlots, 1, s_iSlots);
    }
    ~CNodeList() { ArrayAccess::Show(m_arrOne, static_cast<CSlot*>(nullptr), 0, 0); }

    CNodeList(const CNodeList&)            = delete;
    CNodeList& operator=(const CNodeList&) = delete;

    const Array& operator*() const { return *m_pList; }

private:
    static constexpr int s_iSlots = 4;

    using CSlot = std::conditional_t<Node::s_bTexts, CString*, typename Node::Elem>;

    CSlot m_aSlots[s_iSlots] = {};
    Array m_arrOne           = HashTraits<THash>::List(false);
    const Array* m_pList;
};
} // namespace bedplate_private

#endif
