// CPtrHashOf<T>: a CPtrHash that owns its items and knows their class. Items are T&, and come and go as std::unique_ptr<T>.
// Not part of bedplate.h: it takes <memory>. Everything here is inline, and takes no longer than CPtrHash itself.
//
//     class CShip : public CPtrArrayItem { public: int m_iCrew = 0; };
//
//     CPtrHashOf<CShip> hashShips;
//     hashShips.FindOrAdd("Argo").m_iCrew = 50;
//     hashShips.Set("Pinta", std::unique_ptr<CShip>(new CShip()));
//     for (const auto& entry : hashShips)
//         printf("%s %d\n", entry.m_pszKey, entry.m_value.m_iCrew);
#ifndef BEDPLATE_TYPED_H
#define BEDPLATE_TYPED_H

#include "exception.h"
#include "ptr_hash.h"

#include <memory>

/// T is derived from CPtrArrayItem, not virtually. As in CPtrHash, except for what is said here.
template <class T>
class CPtrHashOf
{
public:
    /// Makes a table with iHashSize empty buckets; throws for a size of 0 or less.
    explicit CPtrHashOf(int iHashSize = 101) : m_hash(true, iHashSize) {}

    int GetHashSize() const { return m_hash.GetHashSize(); }
    int GetDataCnt() const { return m_hash.GetDataCnt(); }
    int GetKeyCnt() const { return m_hash.GetKeyCnt(); }

    /// Tells whether the key, a const char* or a CString, is there.
    template <class TKey>
    bool IsIn(const TKey& key) const
    {
        return m_hash.IsIn(key);
    }

    /// Returns the key's first item, or null when the key is not there.
    template <class TKey>
    T* Find(const TKey& key)
    {
        return static_cast<T*>(m_hash.Get(key));
    }
    /// The same for a const table.
    template <class TKey>
    const T* Find(const TKey& key) const
    {
        return static_cast<const T*>(m_hash.Get(key));
    }

    /// Returns the key's first item; one made by T() when the key is not there.
    ///   Throws    code 0, "CPtrHash::FindOrAdd : Out of memory", and what T() and Set throw; the table is as it was.
    template <class TKey>
    T& FindOrAdd(const TKey& key)
    {
        if (T* pFound = Find(key))
            return *pFound;
        std::unique_ptr<T> pNew(new T());
        T& item = *pNew;
        if (Set(key, std::move(pNew)) != 0)
            throw CException("CPtrHash::FindOrAdd : Out of memory", 0);
        return item;
    }

    /// Adds an item behind the key's items or, with bReplace, makes it the only one.
    ///   Returns   0 or -99; the item is the caller's unless it is 0.
    ///   Throws    code 0, "CPtrHash::Set : Null item", and what CPtrHash::Set throws; the item is the caller's.
    template <class TKey>
    int Set(const TKey& key, std::unique_ptr<T>&& pItem, bool bReplace = false)
    {
        if (pItem == nullptr)
            throw CException("CPtrHash::Set : Null item", 0);
        const int iResult = m_hash.Set(key, pItem.get(), bReplace);
        if (iResult == 0)
            pItem.release();
        return iResult;
    }

    /// Gives back the key's first item and removes the key with all others; null when it is not there.
    template <class TKey>
    std::unique_ptr<T> Detach(const TKey& key)
    {
        CPtrArrayItem** pPlace = m_hash.Find(key);
        if (pPlace == nullptr)
            return nullptr;
        std::unique_ptr<T> pItem(static_cast<T*>(*pPlace));
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

    /// Returns the table for what only reads: the list of a key's items, all keys, the dump.
    const CPtrHash& GetHash() const { return m_hash; }

    // ---- Going through all keys -----------------------------------------------------------------------------

    /// What begin() and end() return: dereferences to a CHashEntry, a key and its first item.
    template <class TBase, class TItem>
    class CIteratorOf
    {
    public:
        explicit CIteratorOf(TBase it) : m_it(it) {}

        CHashEntry<TItem> operator*() const
        {
            const auto entry = *m_it;
            return {entry.m_pszKey, static_cast<TItem&>(*entry.m_value)};
        }
        CIteratorOf& operator++()
        {
            ++m_it;
            return *this;
        }
        bool operator==(const CIteratorOf& it) const { return m_it == it.m_it; }
        bool operator!=(const CIteratorOf& it) const { return m_it != it.m_it; }

    private:
        TBase m_it;
    };
    typedef CIteratorOf<CPtrHash::CIterator, T> CIterator;
    typedef CIteratorOf<CPtrHash::CConstIterator, const T> CConstIterator;

    /// Returns the place of the first key, for range-for; iterators survive what CPtrHash's do.
    CIterator begin() { return CIterator(m_hash.begin()); }
    /// As above, for a const table.
    CConstIterator begin() const { return CConstIterator(m_hash.begin()); }
    /// Returns the place behind the last key.
    CIterator end() { return CIterator(m_hash.end()); }
    /// As above, for a const table.
    CConstIterator end() const { return CConstIterator(m_hash.end()); }

private:
    CPtrHash m_hash;
};

#endif
