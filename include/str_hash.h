// CStrHash: a hash table from texts to lists of texts. As CIntHash, except that lists are CStrArrays, which copy the
// texts, and that messages say "CStrHash". A failing list throws CStrArray's code -11.
#ifndef BEDPLATE_STR_HASH_H
#define BEDPLATE_STR_HASH_H

#include "cstream.h"
#include "str_array.h"

class BEDPLATE_API CStrHash
{
public:
    /// Makes a table with iHashSize empty buckets; throws for a size of 0 or less.
    explicit CStrHash(int iHashSize = 101);

    /// Removes all keys and releases the buckets.
    ~CStrHash();

    CStrHash(const CStrHash&)            = delete;
    CStrHash& operator=(const CStrHash&) = delete;

    /// Returns the hash value of the first iCount bytes of pszText, as CIntHash::HashFunc.
    static int HashFunc(const char* pszText, int iCount);

    /// Returns the number of buckets.
    BEDPLATE_INLINE int GetHashSize() const { return m_iHashSize; }
    /// Returns the number of values, over all keys.
    BEDPLATE_INLINE int GetDataCnt() const { return m_iDataCnt; }

    /// Adds a copy of pszValue, which is only read, behind the key's values or, with bReplace, makes it the only one;
    /// a null text counts as empty. Returns 0 or -99.
    int Set(const char* pszKey, char* pszValue, bool bReplace = false);

    /// The same for a text that is a literal or a const char*.
    template <class TChar>
    int Set(const char* pszKey, TChar* pszValue, bool bReplace = false,
            typename bedplate_private::ConstCharOnly<TChar>::Type = 0)
    {
        return Set(pszKey, const_cast<char*>(pszValue), bReplace);
    }

    /// Assigns the key's first text to *pValue, unless that is null; returns 0, or -1 when the key is not there.
    int Get(const char* pszKey, CString* pValue);
    /// Assigns the key's values to *pArray, unless that is null; returns 0, or -1 when the key is not there.
    int Get(const char* pszKey, CStrArray* pArray);
    /// Replaces what arrKeys holds by the keys, bucket by bucket.
    void GetKeys(CStrArray& arrKeys);
    /// Removes the key with all its values; nothing when it is not there.
    void Remove(const char* pszKey);
    /// Removes all keys. The buckets stay.
    void Clear();
    /// Appends a listing to *pStream, unless that is null.
    void Dump(CStream* pStream);

private:
    friend struct bedplate_private::HashDesign<CStrHash>;
    friend struct bedplate_private::LayoutCheck;

    bedplate_private::CHashNode<CStrArray>** m_pHashBag = nullptr;
    int m_iHashSize                                     = 0;
    int m_iDataCnt                                      = 0;
};

#endif
