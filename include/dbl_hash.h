// CDblHash: a hash table from texts to lists of doubles. As CIntHash, except that lists are CDblArrays, which the dump
// renders ("%f"), and that messages say "CDblHash".
#ifndef BEDPLATE_DBL_HASH_H
#define BEDPLATE_DBL_HASH_H

#include "cstream.h"
#include "dbl_array.h"
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

    /// Returns the hash value of the first iCount bytes of pszText, as CIntHash::HashFunc.
    static int HashFunc(const char* pszText, int iCount);

    /// Returns the number of buckets.
    BEDPLATE_INLINE int GetHashSize() const { return m_iHashSize; }
    /// Returns the number of values, over all keys.
    BEDPLATE_INLINE int GetDataCnt() const { return m_iDataCnt; }

    /// Adds dValue behind the key's values or, with bReplace, makes it the only one; returns 0 or -99.
    int Set(const char* pszKey, double dValue, bool bReplace = false);
    /// Stores the key's first value in *pValue, unless that is null; returns 0, or -1 when the key is not there.
    int Get(const char* pszKey, double* pValue);
    /// Assigns the key's values to *pArray, unless that is null; returns 0, or -1 when the key is not there.
    int Get(const char* pszKey, CDblArray* pArray);
    /// Replaces what arrKeys holds by the keys, bucket by bucket.
    void GetKeys(CStrArray& arrKeys);
    /// Removes the key with all its values; nothing when it is not there.
    void Remove(const char* pszKey);
    /// Removes all keys. The buckets stay.
    void Clear();
    /// Appends a listing to *pStream, unless that is null.
    void Dump(CStream* pStream);

private:
    friend struct bedplate_private::HashDesign<CDblHash>;
    friend struct bedplate_private::LayoutCheck;

    bedplate_private::CHashNode<CDblArray>** m_pHashBag = nullptr;
    int m_iHashSize                                     = 0;
    int m_iDataCnt                                      = 0;
};

#endif
