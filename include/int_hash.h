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
// Keys differ as bytes do, case included; a null key counts as the empty one, which is a key like any other. The number
// of buckets is chosen at construction and never changes: an operation on a key takes time in proportion to the keys
// of its bucket. Within a bucket, keys stand in the order in which they were first set.
//
// A Set that throws or returns -99 leaves the table exactly as it was. Exceptions of the strings and arrays inside pass
// through: code -11 from the strings, code 0, "<array class> - Out of memory", from the arrays. A table is not copied.
//
// Several threads may read one table at a time, by Get, GetKeys, Dump and its other operations that change nothing; one
// that changes it must be alone with it.
#ifndef BEDPLATE_INT_HASH_H
#define BEDPLATE_INT_HASH_H

#include "cstream.h"
#include "int_array.h"
#include "str_array.h"

class BEDPLATE_API CIntHash
{
public:
    /// Makes a table with iHashSize empty buckets; a prime number near the number of keys serves well.
    ///   Throws    code 0, "CIntHash() Invalid size(<iHashSize>)", for 0 or less; code 0,
    ///             "CIntHash() Out of memory".
    explicit CIntHash(int iHashSize = 101);

    /// Removes all keys and releases the buckets.
    ~CIntHash();

    CIntHash(const CIntHash&)            = delete;
    CIntHash& operator=(const CIntHash&) = delete;

    /// Returns the hash value, 0 to 2^30 - 1, of the first iCount bytes of pszText; 0 for a null text and for an iCount
    /// of 0 or less. A key's bucket is the hash value of all its bytes modulo GetHashSize().
    ///   Example   HashFunc("abc", 3) -> 26499
    static int HashFunc(const char* pszText, int iCount);

    /// Returns the number of buckets.
    BEDPLATE_INLINE int GetHashSize() const { return m_iHashSize; }

    /// Returns the number of values, over all keys.
    BEDPLATE_INLINE int GetDataCnt() const { return m_iDataCnt; }

    /// Adds iValue behind the key's values or, with bReplace, makes it the only one.
    ///   Returns   0; -99 when there is no memory for the node of a new key. The table is then as it was.
    ///   Throws    as said above; the table is then as it was.
    ///   Example   Set("a", 1); Set("a", 2) -> {1, 2}; Set("a", 3, true) -> {3}
    int Set(const char* pszKey, int iValue, bool bReplace = false);

    /// Stores the key's first value in *pValue; a null pointer only asks for the key.
    ///   Returns   0; -1, and nothing is stored, when the key is not there.
    int Get(const char* pszKey, int* pValue);

    /// Assigns the key's values to *pArray; a null pointer only asks for the key.
    ///   Returns   0; -1, and nothing is assigned, when the key is not there.
    ///   Throws    as the array's assignment.
    int Get(const char* pszKey, CIntArray* pArray);

    /// Replaces what arrKeys holds by the keys, bucket by bucket.
    ///   Throws    as CStrArray::Add; arrKeys then holds the keys added before.
    void GetKeys(CStrArray& arrKeys);

    /// Removes the key with all its values; nothing when it is not there.
    void Remove(const char* pszKey);

    /// Removes all keys. The buckets stay.
    void Clear();

    /// Appends a listing of all buckets in use, their keys and values to *pStream; nothing when that is null.
    ///   Throws    code -11 as CString; the lines before are then written. A stream that cannot grow is not reported.
    ///   Example   8 buckets, Set("a", 1), Set("a", 2), Set("i", 5) ->
    ///             Total HashBag size : 8, DataCnt : 3
    ///             Hash : 1
    ///               Key : [a](1)
    ///                   : [1, 2]
    ///               Key : [i](1)
    ///                   : [5]
    ///                   (Hash(1) Cnt : 2)
    void Dump(CStream* pStream);

private:
    friend struct bedplate_private::HashDesign<CIntHash>;
    friend struct bedplate_private::LayoutCheck;

    bedplate_private::CHashNode<CIntArray>** m_pHashBag = nullptr;
    int m_iHashSize                                     = 0;
    int m_iDataCnt                                      = 0;
};

#endif
