// CPtrHash: a hash table from texts to lists of objects, which it may own. As CIntHash, except that lists are CPtrArrays
// and that messages say "CPtrHash".
//
//     CPtrHash hashShips(true); // an owner
//     hashShips.Set("Argo", new CShip());
//     CShip* pShip = static_cast<CShip*>(hashShips.Get("Argo"));
//
// An owner deletes the items that a key loses: in Set with bReplace, Remove, Clear and destruction. It must not be given
// an item twice. An item whose Set failed is still the caller's. The lists that Get hands out own nothing.
//
// An item may look into its table while it is deleted. It finds what will be there afterwards: in Set, the new item alone;
// in Remove, no such key; in Clear and destruction, the keys that are still to be removed, without its own.
#ifndef BEDPLATE_PTR_HASH_H
#define BEDPLATE_PTR_HASH_H

#include "cstream.h"
#include "hash_entry.h"
#include "ptr_array.h"
#include "str_array.h"

class BEDPLATE_API CPtrHash
{
public:
    /// Makes a table with iHashSize empty buckets, an owner if bOwner is true; throws for a size of 0 or less.
    explicit CPtrHash(bool bOwner, int iHashSize = 101);

    /// Removes all keys and releases the buckets.
    ~CPtrHash();

    CPtrHash(const CPtrHash&)            = delete;
    CPtrHash& operator=(const CPtrHash&) = delete;

    /// Takes over all that hashSource holds, ownership included. hashSource is then empty, has as many buckets as before, and may be
    /// used as before; see CIntHash.
    CPtrHash(CPtrHash&& hashSource) noexcept;
    /// Removes all keys, then takes over what hashSource holds.
    CPtrHash& operator=(CPtrHash&& hashSource) noexcept;

    /// Returns the hash value of the first iCount bytes of pszText, as CIntHash::HashFunc.
    static int HashFunc(const char* pszText, int iCount);

    /// Returns the number of buckets.
    BEDPLATE_INLINE int GetHashSize() const { return m_iHashSize; }
    /// Returns the number of values, over all keys.
    BEDPLATE_INLINE int GetDataCnt() const { return m_iDataCnt; }
    /// Returns the number of keys.
    int GetKeyCnt() const;

    /// Tells whether the key is there.
    bool IsIn(const char* pszKey) const;
    /// Returns the place of the key's first item, or null when the key is not there; see CIntHash. Who
    /// stores another item there has taken the old one out of the table.
    BEDPLATE_INLINE CPtrArrayItem** Find(const char* pszKey)
    {
        return const_cast<CPtrArrayItem**>(static_cast<const CPtrHash*>(this)->Find(pszKey));
    }
    /// The same for a const table.
    CPtrArrayItem* const* Find(const char* pszKey) const;

    /// Stores the key's first item in *pItem, unless that is null; returns 0, or -1 when the key is not there.
    int Get(const char* pszKey, CPtrArrayItem** pItem) const;
    /// The same for a table that is not const.
    BEDPLATE_INLINE int Get(const char* pszKey, CPtrArrayItem** pItem)
    {
        return static_cast<const CPtrHash*>(this)->Get(pszKey, pItem);
    }
    /// Assigns the key's values to *pArray, unless that is null; returns 0, or -1 when the key is not there.
    int Get(const char* pszKey, CPtrArray* pArray) const;
    /// The same for a table that is not const.
    BEDPLATE_INLINE int Get(const char* pszKey, CPtrArray* pArray)
    {
        return static_cast<const CPtrHash*>(this)->Get(pszKey, pArray);
    }
    /// Only asks for the key; returns 0, or -1 when it is not there.
    int Get(const char* pszKey, decltype(nullptr)) const { return IsIn(pszKey) ? 0 : -1; }
    /// The same for a table that is not const.
    int Get(const char* pszKey, decltype(nullptr)) { return IsIn(pszKey) ? 0 : -1; }
    /// Returns the key's first item; null when the key is not there or the item is null.
    CPtrArrayItem* Get(const char* pszKey) const;
    /// The same for a table that is not const.
    BEDPLATE_INLINE CPtrArrayItem* Get(const char* pszKey)
    {
        return static_cast<const CPtrHash*>(this)->Get(pszKey);
    }

    /// Replaces what arrKeys holds by the keys, bucket by bucket.
    void GetKeys(CStrArray& arrKeys) const;
    /// The same for a table that is not const.
    BEDPLATE_INLINE void GetKeys(CStrArray& arrKeys) { static_cast<const CPtrHash*>(this)->GetKeys(arrKeys); }
    /// Appends a listing to *pStream, unless that is null.
    void Dump(CStream* pStream) const;
    /// The same for a table that is not const.
    BEDPLATE_INLINE void Dump(CStream* pStream) { static_cast<const CPtrHash*>(this)->Dump(pStream); }

    /// What begin() returns: dereferences to a CHashEntry, a key and a reference to its first item.
    typedef bedplate_private::CHashIterator<CPtrHash, CPtrArrayItem*> CIterator;
    /// As above, for a const table.
    typedef bedplate_private::CHashIterator<CPtrHash, CPtrArrayItem* const> CConstIterator;

    /// Returns the place of the first key, for range-for; equal to end() when there is none.
    CIterator begin() { return CIterator(*this); }
    /// As above, for a const table.
    CConstIterator begin() const { return CConstIterator(*this); }
    /// Returns the place behind the last key.
    CIterator end() { return CIterator(); }
    /// As above, for a const table.
    CConstIterator end() const { return CConstIterator(); }

    /// Adds pItem behind the key's items or, with bReplace, makes it the only one; returns 0 or -99.
    int Set(const char* pszKey, CPtrArrayItem* pItem, bool bReplace = false);
    /// Removes the key with all its values; nothing when it is not there.
    void Remove(const char* pszKey);
    /// Removes all keys. The buckets stay.
    void Clear();

    /// The same operations for keys that are CStrings.
    bool IsIn(const CString& strKey) const { return IsIn(strKey.ToStr()); }
    /// As above.
    CPtrArrayItem** Find(const CString& strKey) { return Find(strKey.ToStr()); }
    /// As above.
    CPtrArrayItem* const* Find(const CString& strKey) const { return Find(strKey.ToStr()); }
    /// As above.
    int Get(const CString& strKey, CPtrArrayItem** pItem) const { return Get(strKey.ToStr(), pItem); }
    /// As above.
    int Get(const CString& strKey, CPtrArray* pArray) const { return Get(strKey.ToStr(), pArray); }
    /// As above.
    int Get(const CString& strKey, decltype(nullptr)) const { return Get(strKey.ToStr(), nullptr); }
    /// As above.
    CPtrArrayItem* Get(const CString& strKey) const { return Get(strKey.ToStr()); }
    /// As above.
    int Set(const CString& strKey, CPtrArrayItem* pItem, bool bReplace = false)
    {
        return Set(strKey.ToStr(), pItem, bReplace);
    }
    /// As above.
    void Remove(const CString& strKey) { Remove(strKey.ToStr()); }

private:
    friend struct bedplate_private::HashDesign<CPtrHash>;
    friend struct bedplate_private::HashListing<CPtrHash>;
    friend struct bedplate_private::LayoutCheck;
    friend struct bedplate_private::HashTraits<CPtrHash>;
    friend class bedplate_private::CHashIterator<CPtrHash, CPtrArrayItem*>;
    friend class bedplate_private::CHashIterator<CPtrHash, CPtrArrayItem* const>;

    void Advance(bedplate_private::CHashPosition& position) const;

    bedplate_private::CHashNode<CPtrHash>** m_pHashBag = nullptr;
    int m_iHashSize                                    = 0;
    int m_iDataCnt                                     = 0;
    bool m_bOwner                                      = false;
    bedplate_private::CHashIndex* m_pIndex             = nullptr;
};

#endif
