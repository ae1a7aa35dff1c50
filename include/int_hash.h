// CIntHash: a hash table from texts to lists of ints. CDblHash, CStrHash and CPtrHash are the same design for doubles,
// texts and objects; what stands here holds for them too.
//
//     CIntHash hashAges;
//     hashAges.Set("Ada", 36, true);  // a map: always replace
//     hashAges.Set("Ada", 37, true);
//     int iAge = 0;
//     if (hashAges.Get("Ada", &iAge) == 0)
//         printf("%d\n", iAge); // 37
//
// Each key has one or more values. Set appends to them or replaces them, so a table serves as a map and as a multimap.
// Keys differ as bytes do, case included; a null key counts as the empty one, which is a key like any other. What takes
// a key also takes a CString, up to its first NUL.
//
// Order. The number of buckets is chosen at construction. It decides on the order in which GetKeys, Dump and range-for go
// through the keys, and in which Clear removes them: bucket by bucket, within a bucket as they were first set. It decides
// on nothing else: an operation on a key takes the same time with any number of buckets.
//
// A Set that throws or returns -99 leaves the table exactly as it was. Exceptions of the strings and arrays inside pass
// through: code -11 from the strings, code 0, "<array class> - Out of memory", from the arrays.
//
// Tables are moved, not copied. Several threads may read one table at a time, by its const operations; one that changes it,
// or a value in it, must be alone with it.
#ifndef BEDPLATE_INT_HASH_H
#define BEDPLATE_INT_HASH_H

#include "cstream.h"
#include "hash_entry.h"
#include "int_array.h"
#include "str_array.h"

class BEDPLATE_API CIntHash
{
public:
    /// Makes a table with iHashSize empty buckets.
    ///   Throws    code 0, "CIntHash() Invalid size(<iHashSize>)", for 0 or less; code 0,
    ///             "CIntHash() Out of memory".
    explicit CIntHash(int iHashSize = 101);

    /// Removes all keys, as Clear does, and releases the buckets.
    ~CIntHash();

    CIntHash(const CIntHash&)            = delete;
    CIntHash& operator=(const CIntHash&) = delete;

    /// Takes over all that hashSource holds, without moving a key or a value. hashSource is then empty, has as many
    /// buckets as before, and may be used as before; its next new key makes them anew, and Set returns -99 if it cannot.
    CIntHash(CIntHash&& hashSource) noexcept;

    /// Removes all keys, as Clear does, and takes over what hashSource holds, as construction does, the number of buckets
    /// included. Moving a table into itself changes nothing.
    CIntHash& operator=(CIntHash&& hashSource) noexcept;

    /// Returns the hash value, 0 to 2^30 - 1, of the first iCount bytes of pszText; 0 for a null text and for an iCount
    /// of 0 or less. A key's bucket is the hash value of all its bytes modulo GetHashSize().
    ///   Example   HashFunc("abc", 3) -> 26499
    static int HashFunc(const char* pszText, int iCount);

    // ---- Reading: in constant time, without allocation, unless said -------------------------------------------

    /// Returns the number of buckets.
    BEDPLATE_INLINE int GetHashSize() const { return m_iHashSize; }

    /// Returns the number of values, over all keys.
    BEDPLATE_INLINE int GetDataCnt() const { return m_iDataCnt; }

    /// Returns the number of keys.
    int GetKeyCnt() const;

    /// Tells whether the key is there.
    bool IsIn(const char* pszKey) const;
    bool IsIn(const CString& strKey) const { return IsIn(strKey.ToStr()); }

    /// Returns the place of the key's first value, or null when the key is not there.
    ///   Pointers  it dies when the key gets a second value, has its values replaced, or is removed; other keys' changes
    ///             do not matter to it.
    ///   Example   if (int* piCount = hash.Find("word")) ++*piCount; else hash.Set("word", 1);
    BEDPLATE_INLINE int* Find(const char* pszKey) { return const_cast<int*>(Const().Find(pszKey)); }
    const int* Find(const char* pszKey) const;
    int* Find(const CString& strKey) { return Find(strKey.ToStr()); }
    const int* Find(const CString& strKey) const { return Find(strKey.ToStr()); }

    /// Stores the key's first value in *pValue; a null pointer only asks for the key.
    ///   Returns   0; -1, and nothing is stored, when the key is not there.
    int Get(const char* pszKey, int* pValue) const;
    BEDPLATE_INLINE int Get(const char* pszKey, int* pValue) { return Const().Get(pszKey, pValue); }
    int Get(const CString& strKey, int* pValue) const { return Get(strKey.ToStr(), pValue); }

    /// Assigns the key's values to *pArray; a null pointer only asks for the key.
    ///   Returns   0; -1, and nothing is assigned, when the key is not there.
    ///   Throws    as the array's assignment.
    ///   Cost      that of the array's assignment.
    int Get(const char* pszKey, CIntArray* pArray) const;
    BEDPLATE_INLINE int Get(const char* pszKey, CIntArray* pArray) { return Const().Get(pszKey, pArray); }
    int Get(const CString& strKey, CIntArray* pArray) const { return Get(strKey.ToStr(), pArray); }

    /// Only asks for the key.
    int Get(const char* pszKey, decltype(nullptr)) const { return IsIn(pszKey) ? 0 : -1; }
    int Get(const char* pszKey, decltype(nullptr)) { return IsIn(pszKey) ? 0 : -1; }
    int Get(const CString& strKey, decltype(nullptr)) const { return Get(strKey.ToStr(), nullptr); }

    /// Replaces what arrKeys holds by the keys, bucket by bucket.
    ///   Throws    as CStrArray::Add; arrKeys then holds the keys added before.
    ///   Cost      O(keys + buckets).
    void GetKeys(CStrArray& arrKeys) const;
    BEDPLATE_INLINE void GetKeys(CStrArray& arrKeys) { Const().GetKeys(arrKeys); }

    /// Appends a listing of all buckets in use, their keys and values to *pStream; nothing when that is null.
    ///   Throws    code -11 as CString; the lines before are then written. A stream that cannot grow is not reported.
    ///   Cost      O(listing + buckets).
    ///   Example   8 buckets, Set("a", 1), Set("a", 2), Set("i", 5) ->
    ///             Total HashBag size : 8, DataCnt : 3
    ///             Hash : 1
    ///               Key : [a](1)
    ///                   : [1, 2]
    ///               Key : [i](1)
    ///                   : [5]
    ///                   (Hash(1) Cnt : 2)
    void Dump(CStream* pStream) const;
    BEDPLATE_INLINE void Dump(CStream* pStream) { Const().Dump(pStream); }

    // ---- Going through all keys: O(keys + buckets) --------------------------------------------------------------

    /// What begin() returns: dereferences to a CHashEntry, a key and a reference to its first value.
    typedef bedplate_private::CHashIterator<CIntHash, int> CIterator;
    typedef bedplate_private::CHashIterator<CIntHash, const int> CConstIterator;

    /// Returns the place of the first key, for range-for; equal to end() when there is none. Iterators survive changes of
    /// values, new keys, which they may or may not come to, and the removal of other keys than the one they are at.
    CIterator begin() { return CIterator(*this); }
    CConstIterator begin() const { return CConstIterator(*this); }
    /// Returns the place behind the last key.
    CIterator end() { return CIterator(); }
    CConstIterator end() const { return CConstIterator(); }

    // ---- Changing ---------------------------------------------------------------------------------------------

    /// Adds iValue behind the key's values or, with bReplace, makes it the only one.
    ///   Returns   0; -99 when there is no memory for a new key, or for the list that a second value takes. The table is
    ///             then as it was.
    ///   Throws    as said above; the table is then as it was. A key for which alone there is not enough memory throws
    ///             what a CString of it would.
    ///   Cost      O(1) on average; O(values) when a list grows or is replaced.
    ///   Example   Set("a", 1); Set("a", 2) -> {1, 2}; Set("a", 3, true) -> {3}
    int Set(const char* pszKey, int iValue, bool bReplace = false);
    int Set(const CString& strKey, int iValue, bool bReplace = false)
    {
        return Set(strKey.ToStr(), iValue, bReplace);
    }

    /// Removes the key with all its values; nothing when it is not there. O(values).
    void Remove(const char* pszKey);
    void Remove(const CString& strKey) { Remove(strKey.ToStr()); }

    /// Removes all keys, bucket by bucket. The buckets stay.
    void Clear();

private:
    friend struct bedplate_private::HashDesign<CIntHash>;
    friend struct bedplate_private::HashListing<CIntHash>;
    friend struct bedplate_private::LayoutCheck;
    friend class bedplate_private::CHashIterator<CIntHash, int>;
    friend class bedplate_private::CHashIterator<CIntHash, const int>;

    const CIntHash& Const() const { return *this; }
    void Advance(bedplate_private::CHashPosition& position) const;

    bedplate_private::CHashNode<CIntHash>** m_pHashBag = nullptr;
    int m_iHashSize                                    = 0;
    int m_iDataCnt                                     = 0;
    bedplate_private::CHashIndex* m_pIndex             = nullptr;
};

#endif
