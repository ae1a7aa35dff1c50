// CDblHash: a hash table from texts to lists of doubles. As CIntHash, except that lists are CDblArrays, which the dump
// renders ("%f"), and that messages say "CDblHash".
#ifndef BEDPLATE_DBL_HASH_H
#define BEDPLATE_DBL_HASH_H

#include "cstream.h"
#include "dbl_array.h"
#include "hash_entry.h"
#include "str_array.h"

class BEDPLATE_API CDblHash
{
public:
    /// Makes a table with iHashSize empty buckets; throws for a size of 0 or less.
    explicit CDblHash(int iHashSize = 101);

    /// Removes all keys and releases the buckets.
    ~CDblHash();

    CDblHash(const CDblHash&)            = delete;
    CDblHash& operator=(const CDblHash&) = delete;

    /// Takes over all that hashSource holds. hashSource is then empty, has as many buckets as before, and may be
    /// used as before; see CIntHash.
    CDblHash(CDblHash&& hashSource) noexcept;
    /// Removes all keys, then takes over what hashSource holds.
    CDblHash& operator=(CDblHash&& hashSource) noexcept;

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
    /// Returns the place of the key's first value, or null when the key is not there; see CIntHash.
    BEDPLATE_INLINE double* Find(const char* pszKey)
    {
        return const_cast<double*>(static_cast<const CDblHash*>(this)->Find(pszKey));
    }
    /// The same for a const table.
    const double* Find(const char* pszKey) const;

    /// Stores the key's first value in *pValue, unless that is null; returns 0, or -1 when the key is not there.
    int Get(const char* pszKey, double* pValue) const;
    /// The same for a table that is not const.
    BEDPLATE_INLINE int Get(const char* pszKey, double* pValue)
    {
        return static_cast<const CDblHash*>(this)->Get(pszKey, pValue);
    }
    /// Assigns the key's values to *pArray, unless that is null; returns 0, or -1 when the key is not there.
    int Get(const char* pszKey, CDblArray* pArray) const;
    /// The same for a table that is not const.
    BEDPLATE_INLINE int Get(const char* pszKey, CDblArray* pArray)
    {
        return static_cast<const CDblHash*>(this)->Get(pszKey, pArray);
    }
    /// Only asks for the key; returns 0, or -1 when it is not there.
    int Get(const char* pszKey, decltype(nullptr)) const { return IsIn(pszKey) ? 0 : -1; }
    /// The same for a table that is not const.
    int Get(const char* pszKey, decltype(nullptr)) { return IsIn(pszKey) ? 0 : -1; }

    /// Replaces what arrKeys holds by the keys, bucket by bucket.
    void GetKeys(CStrArray& arrKeys) const;
    /// The same for a table that is not const.
    BEDPLATE_INLINE void GetKeys(CStrArray& arrKeys) { static_cast<const CDblHash*>(this)->GetKeys(arrKeys); }
    /// Appends a listing to *pStream, unless that is null.
    void Dump(CStream* pStream) const;
    /// The same for a table that is not const.
    BEDPLATE_INLINE void Dump(CStream* pStream) { static_cast<const CDblHash*>(this)->Dump(pStream); }

    /// What begin() returns: dereferences to a CHashEntry, a key and a reference to its first value.
    typedef bedplate_private::CHashIterator<CDblHash, double> CIterator;
    /// As above, for a const table.
    typedef bedplate_private::CHashIterator<CDblHash, const double> CConstIterator;

    /// Returns the place of the first key, for range-for; equal to end() when there is none.
    CIterator begin() { return CIterator(*this); }
    /// As above, for a const table.
    CConstIterator begin() const { return CConstIterator(*this); }
    /// Returns the place behind the last key.
    CIterator end() { return CIterator(); }
    /// As above, for a const table.
    CConstIterator end() const { return CConstIterator(); }

    /// Adds dValue behind the key's values or, with bReplace, makes it the only one; returns 0 or -99.
    int Set(const char* pszKey, double dValue, bool bReplace = false);
    /// Removes the key with all its values; nothing when it is not there.
    void Remove(const char* pszKey);
    /// Removes all keys. The buckets stay.
    void Clear();

    /// The same operations for keys that are CStrings.
    bool IsIn(const CString& strKey) const { return IsIn(strKey.ToStr()); }
    /// As above.
    double* Find(const CString& strKey) { return Find(strKey.ToStr()); }
    /// As above.
    const double* Find(const CString& strKey) const { return Find(strKey.ToStr()); }
    /// As above.
    int Get(const CString& strKey, double* pValue) const { return Get(strKey.ToStr(), pValue); }
    /// As above.
    int Get(const CString& strKey, CDblArray* pArray) const { return Get(strKey.ToStr(), pArray); }
    /// As above.
    int Get(const CString& strKey, decltype(nullptr)) const { return Get(strKey.ToStr(), nullptr); }
    /// As above.
    int Set(const CString& strKey, double dValue, bool bReplace = false)
    {
        return Set(strKey.ToStr(), dValue, bReplace);
    }
    /// As above.
    void Remove(const CString& strKey) { Remove(strKey.ToStr()); }

private:
    friend struct bedplate_private::HashDesign<CDblHash>;
    friend struct bedplate_private::HashListing<CDblHash>;
    friend struct bedplate_private::LayoutCheck;
    friend class bedplate_private::CHashIterator<CDblHash, double>;
    friend class bedplate_private::CHashIterator<CDblHash, const double>;

    void Advance(bedplate_private::CHashPosition& position) const;

    bedplate_private::CHashNode<CDblHash>** m_pHashBag = nullptr;
    int m_iHashSize                                    = 0;
    int m_iDataCnt                                     = 0;
    bedplate_private::CHashIndex* m_pIndex             = nullptr;
};

#endif
