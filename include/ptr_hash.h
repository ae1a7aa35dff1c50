// CPtrHash: a hash table from texts to lists of objects, which it may own. As CIntHash, except that lists are CPtrArrays
// and that messages say "CPtrHash".
//
//     CPtrHash hashShips(true); // an owner
//     hashShips.Set("Argo", new CShip());
//     CShip* pShip = static_cast<CShip*>(hashShips.Get("Argo"));
//
// An owner deletes the items that a key loses: in Set with bReplace (once the new item is in place), Remove, Clear and
// destruction. It must not be given an item twice. An item whose Set failed is still the caller's. The lists that Get
// hands out own nothing.
#ifndef BEDPLATE_PTR_HASH_H
#define BEDPLATE_PTR_HASH_H

#include "cstream.h"
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

    /// Returns the hash value of the first iCount bytes of pszText, as CIntHash::HashFunc.
    static int HashFunc(const char* pszText, int iCount);

    /// Returns the number of buckets.
    BEDPLATE_INLINE int GetHashSize() const { return m_iHashSize; }
    /// Returns the number of values, over all keys.
    BEDPLATE_INLINE int GetDataCnt() const { return m_iDataCnt; }

    /// Adds pItem behind the key's items or, with bReplace, makes it the only one; returns 0 or -99.
    int Set(const char* pszKey, CPtrArrayItem* pItem, bool bReplace = false);
    /// Stores the key's first item in *pItem, unless that is null; returns 0, or -1 when the key is not there.
    int Get(const char* pszKey, CPtrArrayItem** pItem);
    /// Assigns the key's values to *pArray, unless that is null; returns 0, or -1 when the key is not there.
    int Get(const char* pszKey, CPtrArray* pArray);
    /// Returns the key's first item; null when the key is not there or the item is null.
    CPtrArrayItem* Get(const char* pszKey);
    /// Replaces what arrKeys holds by the keys, bucket by bucket.
    void GetKeys(CStrArray& arrKeys);
    /// Removes the key with all its values; nothing when it is not there.
    void Remove(const char* pszKey);
    /// Removes all keys. The buckets stay.
    void Clear();
    /// Appends a listing to *pStream, unless that is null.
    void Dump(CStream* pStream);

private:
    friend struct bedplate_private::HashDesign<CPtrHash>;
    friend struct bedplate_private::LayoutCheck;
    friend struct bedplate_private::HashTraits<CPtrHash>;

    bedplate_private::CHashNode<CPtrArray>** m_pHashBag = nullptr;
    int m_iHashSize                                     = 0;
    int m_iDataCnt                                      = 0;
    bool m_bOwner                                       = false;
};

#endif
