// The four hash tables for typed suites: types that are made alike, values for them, and how these print.
#ifndef HASH_TABLES_H
#define HASH_TABLES_H

#include "list_model.h"

struct CItemHash : CPtrHash
{
    explicit CItemHash(int iHashSize) : CPtrHash(true, iHashSize) {}
};
struct CItemList : CPtrArray
{
    CItemList() : CPtrArray(true) {} // until it is assigned to
};

inline string Printed(int iValue) { return std::to_string(iValue); }
inline string Printed(double dValue) { return std::to_string(dValue); } // as "%f"
inline string Printed(const CString& str) { return Bytes(str); }
inline string Printed(const char* psz) { return psz; }
inline string Printed(void* pItem) { return Print("%p", pItem); }

/// Puts a value into the variable, items being new; returns the letters in which the classes for it differ.
inline string Assign(int& iValue, int i) { return iValue = i % 3 == 0 ? INT_MIN + i : i, "Int"; }
inline string Assign(double& dValue, int i) { return dValue = i % 5 == 0 ? -1e300 : i / 8.0, "Dbl"; }
inline string Assign(const char*& psz, int i)
{
    return psz = i % 3 == 0 ? "" : i % 3 == 1 ? "%, \xe4" : "of ten bytes", "Str";
}
inline string Assign(CPtrArrayItem*& pItem, int i)
{
    return pItem = i % 9 == 1 ? nullptr : new CCountedItem(i), "Ptr";
}

/// TFirst is what the Get of the first value stores.
template <class THash, class TList, class TFirst, class TValue>
struct STable
{
    using Hash  = THash;
    using List  = TList;
    using First = TFirst;
    using Value = TValue;
};

using CTables =
    testing::Types<STable<CIntHash, CIntArray, int, int>, STable<CDblHash, CDblArray, double, double>,
                   STable<CStrHash, CStrArray, CString, const char*>,
                   STable<CItemHash, CItemList, CPtrArrayItem*, CPtrArrayItem*>>;

template <class THash>
string Dumped(THash& hash)
{
    CStream stream;
    hash.Dump(&stream);
    return string(stream.ToStr(), Unsigned(stream.GetLength()));
}

#endif
