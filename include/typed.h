// Containers of the caller's own objects that know the objects' class. Not part of bedplate.h, so that only
// programs which want them pay for <memory>.
//
//     #include <bedplate/bedplate.h>
//     #include <bedplate/typed.h>
//
//     class CShip : public CPtrArrayItem { ... };
//
//     CPtrArrayOf<CShip> arrShips;
//     arrShips.AddNew("Argo").SetCrew(50);
//     arrShips.Add(std::unique_ptr<CShip>(new CShip("Ark")));
//     for (CShip& ship : arrShips)
//         ship.Launch();
//     std::unique_ptr<CShip> pArgo = arrShips.Detach(0);
//
//     CPtrHashOf<CShip> hashShips;
//     hashShips.FindOrAdd("Argo").SetCrew(50);
//     for (const auto& entry : hashShips)
//         printf("%s %d\n", entry.m_pszKey, entry.m_value.GetCrew());
//
// Everything here is inline and forwards to the containers of pointers; nothing of it is in the shared object.
#ifndef BEDPLATE_TYPED_H
#define BEDPLATE_TYPED_H

#include "exception.h"
#include "ptr_array.h"
#include "ptr_hash.h"

#include <cstddef>
#include <iterator>
#include <memory>
#include <type_traits>
#include <utility>

/// An owner of TItems, which are derived from CPtrArrayItem: a CPtrArray whose elements are TItem&, never null. It can be
/// moved, not copied. As with CPtrArray, a const array's items may be changed, and failures and capacities are those of
/// CPtrArray. An item that could not be taken over is deleted.
template <class TItem>
class CPtrArrayOf
{
public:
    /// What begin() and end() return: a random-access iterator that gives the TItem&. To sort, use Sort.
    typedef bedplate_private::CSlotIterator<TItem, CPtrArrayItem* const> CIterator;

    /// Makes an empty array without a buffer.
    CPtrArrayOf() : m_arrItems(true)
    {
        static_assert(std::is_base_of<CPtrArrayItem, TItem>::value, "an item is derived from CPtrArrayItem");
    }

    /// Takes over what arrSource, an owner of TItems alone, holds: for items that a CPtrArray has had so far.
    explicit CPtrArrayOf(CPtrArray&& arrSource) : m_arrItems(std::move(arrSource)) {}

    /// Takes over other's items; other is empty then.
    CPtrArrayOf(CPtrArrayOf&& other) noexcept = default;
    /// Deletes its items and takes over other's; other is empty then.
    CPtrArrayOf& operator=(CPtrArrayOf&& other) = default;

    /// Returns the array of pointers behind this one, for Repr, IsIn and functions that read a CPtrArray.
    const CPtrArray& GetArray() const { return m_arrItems; }

    // ---- Reading ------------------------------------------------------------------------------------------

    /// Returns the number of items.
    int GetSize() const { return m_arrItems.GetSize(); }
    /// Tells whether there is no item.
    bool IsEmpty() const { return GetSize() == 0; }
    /// Returns item iIndex; throws as CPtrArray::GetAt.
    TItem& GetAt(int iIndex) const { return static_cast<TItem&>(*m_arrItems.GetAt(iIndex)); }
    /// Returns item iIndex; throws as CPtrArray::operator[].
    TItem& operator[](int iIndex) const { return static_cast<TItem&>(*m_arrItems[iIndex]); }
    /// Returns the last item; throws as CPtrArray::GetAtLast.
    TItem& GetAtLast() const { return static_cast<TItem&>(*m_arrItems.GetAtLast()); }
    /// Returns the first item's place.
    CIterator begin() const { return CIterator(m_arrItems.begin()); }
    /// Returns the place behind the last item.
    CIterator end() const { return CIterator(m_arrItems.end()); }

    // ---- Changing -----------------------------------------------------------------------------------------

    /// Appends an item; a null one is not taken.
    ///   Returns   its index, or -1.
    int Add(std::unique_ptr<TItem> pItem) { return InsertAt(GetSize(), std::move(pItem)); }

    /// Appends new TItem(args...).
    ///   Returns   the item.
    template <class... TArgs>
    TItem& AddNew(TArgs&&... args)
    {
        return (*this)[Add(std::unique_ptr<TItem>(new TItem(std::forward<TArgs>(args)...)))];
    }

    /// Inserts an item before item iIndex, or appends it when iIndex is beyond the end; a null one is not taken.
    ///   Returns   the position used, or -1, also for a negative iIndex.
    int InsertAt(int iIndex, std::unique_ptr<TItem> pItem)
    {
        if (pItem == nullptr || iIndex < 0)
            return -1;
        const int iPos =
            iIndex < GetSize() ? m_arrItems.InsertAt(iIndex, pItem.get()) : m_arrItems.Add(pItem.get());
        pItem.release();
        return iPos;
    }

    /// Replaces item iIndex, which is deleted; throws as CPtrArray::SetAt. A null item changes nothing.
    void SetAt(int iIndex, std::unique_ptr<TItem> pItem)
    {
        if (pItem == nullptr)
            return;
        m_arrItems.SetAt(iIndex, pItem.get());
        pItem.release();
    }

    /// Removes item iIndex without deleting it; throws as CPtrArray::Detach.
    ///   Returns   the item.
    std::unique_ptr<TItem> Detach(int iIndex)
    {
        return std::unique_ptr<TItem>(static_cast<TItem*>(m_arrItems.Detach(iIndex)));
    }

    /// Removes and deletes item iIndex; returns iIndex, or -1 when it is out of bounds.
    int RemoveAt(int iIndex) { return m_arrItems.RemoveAt(iIndex); }
    /// Removes and deletes the last item; nothing when there is none.
    void RemoveLast() { m_arrItems.RemoveLast(); }
    /// Removes and deletes all items. The buffer stays.
    void Clear() { m_arrItems.Clear(); }
    /// Removes and deletes all items, and releases the buffer.
    void RemoveAll() { m_arrItems.RemoveAll(); }

    /// Sorts the items by an order of the caller's: Order(left, right) tells whether the item left comes first by returning
    /// true, or a negative number. Those of which neither comes first stay in their order.
    ///   Throws    as CPtrArray::Sort.
    ///   Example   Sort([](const CShip& left, const CShip& right) { return left.Age() < right.Age(); })
    template <class TOrder>
    void Sort(TOrder Order)
    {
        m_arrItems.Sort(
            [&Order](CPtrArrayItem* pLeft, CPtrArrayItem* pRight)
            { return Order(static_cast<const TItem&>(*pLeft), static_cast<const TItem&>(*pRight)); });
    }

private:
    CPtrArray m_arrItems;
};

/// A table that owns its items, TItems, which are derived from CPtrArrayItem: a CPtrHash whose items are TItem&, never null.
/// Keys are texts or CStrings. Failures are those of CPtrHash; an item that could not be taken over is deleted.
template <class TItem>
class CPtrHashOf
{
public:
    /// Makes a table with iHashSize empty buckets; throws for a size of 0 or less.
    explicit CPtrHashOf(int iHashSize = 101) : m_hash(true, iHashSize)
    {
        static_assert(std::is_base_of<CPtrArrayItem, TItem>::value, "an item is derived from CPtrArrayItem");
    }

    /// Returns the table of pointers behind this one, for the list of a key's items, GetKeys, Dump, and functions that read
    /// a CPtrHash.
    const CPtrHash& GetHash() const { return m_hash; }

    /// Returns the number of keys.
    int GetKeyCnt() const { return m_hash.GetKeyCnt(); }
    /// Returns the number of items, over all keys.
    int GetDataCnt() const { return m_hash.GetDataCnt(); }

    /// Tells whether the key is there.
    template <class TKey>
    bool IsIn(const TKey& key) const
    {
        return m_hash.IsIn(key);
    }

    /// Returns the key's first item, or null when the key is not there.
    template <class TKey>
    TItem* Find(const TKey& key)
    {
        return static_cast<TItem*>(m_hash.Get(key));
    }
    template <class TKey>
    const TItem* Find(const TKey& key) const
    {
        return static_cast<const TItem*>(m_hash.Get(key));
    }

    /// Returns the key's first item; one made by TItem() when the key is not there.
    ///   Throws    code 0, "CPtrHash::FindOrAdd : Out of memory", and what TItem() and Set throw; the table is as it was.
    template <class TKey>
    TItem& FindOrAdd(const TKey& key)
    {
        if (TItem* pFound = Find(key))
            return *pFound;
        TItem* pNew = new TItem();
        if (Set(key, std::unique_ptr<TItem>(pNew)) != 0)
            throw CException("CPtrHash::FindOrAdd : Out of memory", 0);
        return *pNew;
    }

    /// Adds an item behind the key's items or, with bReplace, makes it the only one.
    ///   Returns   0; -1, and nothing changes, for a null item; -99 as CPtrHash::Set.
    template <class TKey>
    int Set(const TKey& key, std::unique_ptr<TItem> pItem, bool bReplace = false)
    {
        const int iResult = pItem != nullptr ? m_hash.Set(key, pItem.get(), bReplace) : -1;
        if (iResult == 0)
            pItem.release();
        return iResult;
    }

    /// Gives back the key's first item and removes the key with all others; null when it is not there.
    template <class TKey>
    std::unique_ptr<TItem> Detach(const TKey& key)
    {
        CPtrArrayItem** pPlace = m_hash.Find(key);
        if (pPlace == nullptr)
            return nullptr;
        std::unique_ptr<TItem> pItem(static_cast<TItem*>(*pPlace));
        *pPlace = nullptr;
        m_hash.Remove(key);
        return pItem;
    }

    /// Removes the key with all its items.
    template <class TKey>
    void Remove(const TKey& key)
    {
        m_hash.Remove(key);
    }
    /// Removes all keys.
    void Clear() { m_hash.Clear(); }

    // ---- Going through all keys -----------------------------------------------------------------------------

    /// What begin() and end() return: dereferences to a CHashEntry, a key and its first item.
    template <class TBase, class TEntry>
    class CIteratorOf
    {
    public:
        /// Makes an iterator of one of CPtrHash's, which begin() and end() do.
        explicit CIteratorOf(TBase it) : m_it(it) {}

        /// Returns the key and its first item.
        CHashEntry<TEntry> operator*() const
        {
            const auto entry = *m_it;
            return {entry.m_pszKey, static_cast<TEntry&>(*entry.m_value)};
        }
        /// Goes on to the next key; returns this iterator.
        CIteratorOf& operator++()
        {
            ++m_it;
            return *this;
        }
        /// Tells whether both stand at the same key.
        bool operator==(const CIteratorOf& it) const { return m_it == it.m_it; }
        /// Tells whether they stand at different keys.
        bool operator!=(const CIteratorOf& it) const { return m_it != it.m_it; }

    private:
        TBase m_it;
    };
    /// A place in a table.
    typedef CIteratorOf<CPtrHash::CIterator, TItem> CIterator;
    /// A place in a const table.
    typedef CIteratorOf<CPtrHash::CConstIterator, const TItem> CConstIterator;

    /// Returns the place of the first key, for range-for; iterators survive what CPtrHash's do.
    CIterator begin() { return CIterator(m_hash.begin()); }
    CConstIterator begin() const { return CConstIterator(m_hash.begin()); }
    /// Returns the place behind the last key.
    CIterator end() { return CIterator(m_hash.end()); }
    CConstIterator end() const { return CConstIterator(m_hash.end()); }

private:
    CPtrHash m_hash;
};

#endif
