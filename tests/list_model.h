// A model of the growable arrays, edits for arrays and models alike, and an item that notes its deletion.
#ifndef LIST_MODEL_H
#define LIST_MODEL_H

#include "support.h"

#include <cstdio>

/// Returns what snprintf prints.
template <class... TArgs>
string Print(const char* pszFormat, TArgs... args)
{
    char szText[400];
    return string(szText, Unsigned(snprintf(szText, sizeof szText, pszFormat, args...)));
}

/// Has the operations of an array; bItems tells CPtrArray, whose InsertAt and Reset grow by rules of their own.
template <class TValue, bool bItems>
struct SListModel
{
    std::vector<TValue> aValues;
    int iCapacity = 0;

    int GetSize() const { return Signed(aValues.size()); }
    int Add(const TValue& value) { return Insert(GetSize(), value, GrowthStep(GetSize())); }
    void SetAt(int i, const TValue& value) { aValues[Unsigned(i)] = value; }
    int RemoveAt(int i) { return aValues.erase(aValues.begin() + i), i; }
    void RemoveLast() { aValues.resize(Unsigned(std::max(GetSize() - 1, 0))); }
    void Clear() { aValues.clear(); }
    void RemoveAll() { *this = {}; }
    void GrowBuffer(int i) { iCapacity += i < 1 ? GrowthStep(GetSize()) : i > iCapacity ? i : 0; }
    int InsertAt(int i, const TValue& value)
    {
        return Insert(i, value, bItems ? std::min(iCapacity, 1048576) : GrowthStep(GetSize()));
    }
    int Insert(int i, const TValue& value, int iStep)
    {
        iCapacity += GetSize() < iCapacity ? 0 : iCapacity > 0 ? iStep : bItems ? 16 : 4;
        return aValues.insert(aValues.begin() + i, value), i;
    }
    void Reset(int i, const TValue& value)
    {
        bItems ? Clear() : RemoveAll();
        GrowBuffer(i);
        aValues.assign(Unsigned(std::max(i, 0)), value);
    }
};

/// The edits of an array or a model; i is 0 to the size. The first three only let it grow.
template <class T, class TValue>
constexpr int (*s_aListEdits[])(T& a, int i, const TValue& value) = {
    [](T& a, int, const TValue& value) { return a.Add(value); },
    [](T& a, int i, const TValue& value) { return a.InsertAt(i, value); },
    [](T& a, int i, const TValue& value) { return i < a.GetSize() ? a.SetAt(i, value), i : -1; },
    [](T& a, int i, const TValue&) { return i < a.GetSize() ? a.RemoveAt(i) : (a.RemoveLast(), 0); },
    [](T& a, int, const TValue&) { return a.RemoveLast(), 0; },
    [](T& a, int i, const TValue&) { return a.GrowBuffer(i - 1), 0; },
    [](T& a, int i, const TValue& value) { return a.Reset(std::min(i - 1, 1), value), 0; },
    [](T& a, int, const TValue&) { return a.Clear(), 0; },
    [](T& a, int, const TValue&) { return a.RemoveAll(), 0; },
};

/// What GetAt, operator[], SetAt and GetAtLast throw for indexes out of bounds.
template <class TArray, class TValue>
void ExpectIndexTexts(const string& strClass, TArray& arr, TValue value)
{
    for (int i : {INT_MIN, -1, arr.GetSize(), INT_MAX})
    {
        const string strEnd = Print(" : Invalid Index(%d:%d)", arr.GetSize() - 1, i);
        EXPECT_EQ(strClass + "GetAt" + strEnd, Thrown([&] { (void)arr.GetAt(i); }));
        EXPECT_EQ(strClass + "operator[]" + strEnd, Thrown([&] { (void)arr[i]; }));
        EXPECT_EQ(strClass + "SetAt" + strEnd, Thrown([&] { arr.SetAt(i, value); }));
    }
    const string strLast = Thrown([&] { (void)arr.GetAtLast(); });
    EXPECT_EQ(arr.GetSize() > 0 ? "nothing" : strClass + "GetAtLast : Empty", strLast);
}

/// Writes its number into a log when it is deleted: who, in which order, how often.
struct CCountedItem : CPtrArrayItem
{
    static inline std::vector<int> s_aDeleted =
        std::vector<int>(1000); // with room: logging must not allocate

    explicit CCountedItem(int iNumber) : m_iNumber(iNumber) {}
    ~CCountedItem() override { s_aDeleted.push_back(m_iNumber); }

    int m_iNumber;
};

#endif
