// CPtrHash: a hash table from texts to lists of objects, which it may own. As CIntHash, in whose header the operations are
// documented, except that lists are CPtrArrays and that messages say "CPtrHash".
//
//     CPtrHash hashShips(true); // an owner
//     hashShips.Set("Argo", new CShip());
//     CShip* pShip = static_cast<CShip*>(hashShips.Get("Argo"));
//
// An owner deletes the items that a key loses: in Set with bReplace, Remove, Clear and destruction. It must not be given
// an item twice. An item whose Set failed is still the caller's. The lists that Get hands out own nothing. Moving a table takes
// its items and their ownership along.
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
    /// Makes a table as CIntHash does, an owner if bOwner is true.
    explicit CPtrHash(bool bOwner, int iHashSize = 101);

    ~CPtrHash();
    CPtrHash(const CPtrHash&)            = delete;
    CPtrHash& operator=(const CPtrHash&) = delete;
    CPtrHash(CPtrHash&& hashSource) noexcept;
    CPtrHash& operator=(CPtrHash&& hashSource) noexcept;

    static int HashFunc(const char* pszText, int iCount);

    BEDPLATE_INLINE int GetHashSize() const { return m_iHashSize; }
    BEDPLATE_INLINE int GetDataCnt() const { return m_iDataCnt; }
    int GetKeyCnt() const;
    bool IsIn(const char* pszKey) const;
    bool IsIn(const CString& strKey) const { return IsIn(strKey.ToStr()); }

    /// As CIntHash::Find. Who stores another item there has taken the old one out of the table.
    BEDPLATE_INLINE CPtrArrayItem** Find(const char* pszKey)
    {
        return const_cast<CPtrArrayItem**>(Const().Find(pszKey));
    }
    CPtrArrayItem* const* Find(const char* pszKey) const;
    CPtrArrayItem** Find(const CString& strKey) { return Find(strKey.ToStr()); }
    CPtrArrayItem* const* Find(const CString& strKey) const { return Find(strKey.ToStr()); }

    int Get(const char* pszKey, CPtrArrayItem** pItem) const;
    BEDPLATE_INLINE int Get(const char* pszKey, CPtrArrayItem** pItem) { return Const().Get(pszKey, pItem); }
    int Get(const CString& strKey, CPtrArrayItem** pItem) const { return Get(strKey.ToStr(), pItem); }
    int Get(const char* pszKey, CPtrArray* pArray) const;
    BEDPLATE_INLINE int Get(const char* pszKey, CPtrArray* pArray) { return Const().Get(pszKey, pArray); }
    int Get(const CString& strKey, CPtrArray* pArray) const { return Get(strKey.ToStr(), pArray); }
    int Get(const char* pszKey, decltype(nullptr)) const { return IsIn(pszKey) ? 0 : -1; }
    int Get(const char* pszKey, decltype(nullptr)) { return IsIn(pszKey) ? 0 : -1; }
    int Get(const CString& strKey, decltype(nullptr)) const { return Get(strKey.ToStr(), nullptr); }

    /// Returns the key's first item; null when the key is not there or the item is null.
    CPtrArrayItem* Get(const char* pszKey) const;
    BEDPLATE_INLINE CPtrArrayItem* Get(const char* pszKey) { return Const().Get(pszKey); }
    CPtrArrayItem* Get(const CString& strKey) const { return Get(strKey.ToStr()); }

    void GetKeys(CStrArray& arrKeys) const;
    BEDPLATE_INLINE void GetKeys(CStrArray& arrKeys) { Const().GetKeys(arrKeys); }
    void Dump(CStream* pStream) const;
    BEDPLATE_INLINE void Dump(CStream* pStream) { Const().Dump(pStream); }

    typedef bedplate_private::CHashIterator<CPtrHash, CPtrArrayItem*> CIterator;
    typedef bedplate_private::CHashIterator<CPtrHash, CPtrArrayItem* const> CConstIterator;
    CIterator begin() { return CIterator(*this); }
    CConstIterator begin() const { return CConstIterator(*this); }
    CIterator end() { return CIterator(); }
    CConstIterator end() const { return CConstIterator(); }

    int Set(const char* pszKey, CPtrArrayItem* pItem, bool bReplace = false);
    int Set(const CString& strKey, CPtrArrayItem* pItem, bool bReplace = false)
    {
        return Set(strKey.ToStr(), pItem, bReplace);
    }
    void Remove(const char* pszKey);
    void Remove(const CString& strKey) { Remove(strKey.ToStr()); }
    void Clear();

private:
    friend struct bedplate_private::HashDesign<CPtrHash>;
    friend struct bedplate_private::HashListing<CPtrHash>;
    friend struct bedplate_private::HashTraits<CPtrHash>;
    friend struct bedplate_private::LayoutCheck;
    friend class bedplate_private::CHashIterator<CPtrHash, CPtrArrayItem*>;
    friend class bedplate_private::CHashIterator<CPtrHash, CPtrArrayItem* const>;

    const CPtrHash& Const() const { return *this; }
    void Advance(bedplate_private::CHashPosition& position) const;

    bedplate_private::CHashNode<CPtrHash>** m_pHashBag = nullptr;
    int m_iHashSize                                    = 0;
    int m_iDataCnt                                     = 0;
    bool m_bOwner                                      = false;
    bedplate_private::CHashIndex* m_pIndex             = nullptr;
};

#endif
