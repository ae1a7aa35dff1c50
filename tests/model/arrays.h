// CIntArray, CDblArray, CBoolArray, CDateArray, CPtrArray and CStrArray against deques.
#ifndef ARRAYS_H
#define ARRAYS_H

#include "twins.h"

#include <cfloat>
#include <cmath>
#include <set>

// ---- Elements side by side: values, dates, pointers -------------------------------------------------------------

// For each element: its array's name, its text, and some worth trying.
constexpr const char* Name(int) { return "CIntArray"; }
constexpr const char* Name(double) { return "CDblArray"; }
constexpr const char* Name(bool) { return "CBoolArray"; }
constexpr const char* Name(CPtrArrayItem*) { return "CPtrArray"; }
inline const char* Name(const CDate&) { return "CDateArray"; }
inline string TextOf(int iValue) { return std::to_string(iValue); }
inline string TextOf(double dValue) { return std::to_string(dValue); } // as "%f"
inline string TextOf(bool bValue) { return bValue ? "Y" : "N"; }
inline string TextOf(const CDate& date) { return date.ToStr(); }
inline string TextOf(CPtrArrayItem* pItem)
{
    char szText[32];
    snprintf(szText, sizeof szText, "%p", static_cast<void*>(pItem));
    return szText;
}

/// Where values come from. It knows the items that are alive, and deletes what nobody has deleted.
class CValues
{
    using CPointers = std::vector<CPtrArrayItem*>;

    struct SItem : CPtrArrayItem
    {
        explicit SItem(CValues& values) : m_values(values) { values.m_aItems.insert(this); }
        ~SItem() override { m_values.m_aItems.erase(this), m_values.m_aDeleted.push_back(this); }
        CValues& m_values;
    };

public:
    CValues() { m_aDeleted.reserve(4096); } // an item must not need memory to say that it is deleted
    ~CValues()
    {
        while (!m_aItems.empty())
            delete *m_aItems.begin();
    }

    /// Draws an element, often one that is there. For an owner that is null or new, and only once.
    template <class TModel, class TArgs, class TCopies>
    void Draw(CChoices& choices, TModel& model, typename TModel::CArray&, TArgs& args, TCopies& copies)
    {
        const int i = choices.Between(-model.Size() - 1, model.Size() - 1);
        if (model.IsValid(i) && !model.bOwner)
            args.value = model.Slot(i);
        else
            DrawNew(choices, args.value);
        if (model.bOwner && args.n <= 20000)
            args.n = copies.n = std::min(args.n, 1);
        copies.value = args.value;
    }

    /// Compares the items that were deleted in an operation with those that should be.
    template <class TModel>
    void Check(TModel& model)
    {
        if constexpr (TModel::s_bItems)
            if (model.aDropped != m_aDeleted)
                throw CMismatch("deleted items differ from those to be deleted");
        model.aDropped.clear(), m_aDeleted.clear();
    }

private:
    void DrawNew(CChoices& choices, int& iValue) { iValue = choices.AnyInt(); }
    void DrawNew(CChoices& choices, bool& bValue) { bValue = choices.Byte() % 2 == 1; }
    void DrawNew(CChoices& choices, double& dValue)
    {
        const double adValues[] = {0.0, -0.0, NAN, -NAN, HUGE_VAL, -DBL_MAX, 4.9e-324, 0.1 + 0.2, 0.3, -2.5};
        dValue                  = adValues[choices.Byte() % 10];
    }
    void DrawNew(CChoices& choices, CDate& date)
    {
        const CDate aDates[] = {CDate(), "", "00000000", "2024", "\xff", 20240229, 20231231};
        date                 = aDates[choices.Byte() % 7];
    }
    void DrawNew(CChoices& choices, CPtrArrayItem*& pItem)
    {
        pItem = choices.Byte() % 4 == 0 ? nullptr : new SItem(*this);
    }

    std::set<CPtrArrayItem*> m_aItems;
    CPointers m_aDeleted; // in this operation
};

template <class TArray>
struct SLine : SSlots<decltype(std::declval<const TArray&>().GetAtLast())>
{
    using CArray  = TArray;
    using CSource = CValues;
    using Value   = decltype(std::declval<const TArray&>().GetAtLast());
    using CState  = SSlots<Value>;
    using CState::aSlots, CState::iCapacity, CState::bOwner, CState::Size, CState::Slot, CState::IsValid;

    static constexpr bool s_bItems = std::is_same_v<TArray, CPtrArray>, s_bTexts = false;

    /// Changes the capacity. Items have a text of their own when there is no memory.
    void Enlarge(std::int64_t iNew, const char* pszItems)
    {
        if (this->bFails || iNew * std::int64_t{sizeof(Value)} > std::int64_t{s_iTooLarge})
            throw CException(0, "%s%s Out of memory", Name(Value()), s_bItems ? pszItems : " -");
        iCapacity = static_cast<int>(iNew);
    }

    Value& Checked(const char* pszOperation, int i)
    {
        if (!IsValid(i))
            throw CException(0, "%s::%s : Invalid Index(%d:%d)", Name(Value()), pszOperation, Size() - 1, i);
        return Slot(i);
    }

    Value GetAt(int i) { return Checked("GetAt", i); }
    Value& operator[](int i) { return Checked("operator[]", i); }
    Value GetAtLast()
    {
        if (aSlots.empty())
            throw CException(0, "%s::GetAtLast : Empty", Name(Value()));
        return aSlots.back();
    }
    int Find(const Value& value)
    {
        const auto it = std::find(aSlots.begin(), aSlots.end(), value);
        return it != aSlots.end() ? static_cast<int>(it - aSlots.begin()) : -1;
    }
    bool IsIn(const Value& value) { return Find(value) >= 0; }
    string Repr(const char* pszSep, bool bHeader)
    {
        const string strName = Name(Value());
        return this->List(strName.substr(0, strName.size() - 2), pszSep, bHeader,
                          [](const Value& value) { return TextOf(value); });
    }

    void SetAt(int i, const Value& value)
    {
        if (!(Checked("SetAt", i) == value))
            Drop(i);
        Slot(i) = value;
    }

    int Insert(int i, const Value& value, int iStep, const char* pszOperation)
    {
        if (iCapacity == 0)
            Enlarge(s_bItems ? 16 : 4, "::Add :");
        else if (Size() == iCapacity)
            Enlarge(std::int64_t{iCapacity} + iStep, pszOperation);
        aSlots.insert(aSlots.begin() + i, value);
        return i;
    }
    int Add(const Value& value) { return Insert(Size(), value, GrowthStep(Size()), "::GrowBuffer :"); }
    int InsertAt(int i, const Value& value)
    {
        if (s_bItems)
            return i < 0 ? -1 : Insert(std::min(i, Size()), value, std::min(Size(), 1 << 20), "::InsertAt :");
        if (i != Size())
            Checked("InsertAt", i);
        return Insert(i, value, GrowthStep(Size()), "");
    }

    int RemoveAt(int i)
    {
        if (s_bItems && !IsValid(i))
            return -1;
        Checked("RemoveAt", i);
        Drop(i);
        aSlots.erase(aSlots.begin() + i);
        return i;
    }
    void RemoveLast() { aSlots.empty() ? 0 : RemoveAt(Size() - 1); }

    /// Notes that an item goes, which an owner deletes.
    void Drop(int i)
    {
        if (bOwner && Slot(i) != Value())
            aDropped.push_back(Slot(i));
    }

    void Clear()
    {
        for (int i = 0; i < Size(); ++i)
            Drop(i);
        aSlots.clear();
    }
    void RemoveAll() { Clear(), iCapacity = 0; }

    void GrowBuffer(int n)
    {
        if (n < 1 || n > iCapacity)
            Enlarge(std::int64_t{iCapacity} + (n < 1 ? GrowthStep(Size()) : n), "::GrowBuffer :");
    }

    void Reset(int n, const Value value)
    {
        const bool bHeld = s_bItems && IsIn(value);
        for (int i = 0; i < Size(); ++i)
            if (Slot(i) != value)
                Drop(i);
        aSlots.assign(bHeld ? 1 : 0, value);
        iCapacity = s_bItems ? iCapacity : 0;
        GrowBuffer(n);
        aSlots.assign(static_cast<std::size_t>(std::max(n, 0)), value);
    }

    SLine& operator=(const SLine& other)
    {
        if (this == &other)
            return *this;
        RemoveAll();
        if (s_bItems)
            GrowBuffer(other.Size());
        else if (other.iCapacity > 0)
            Enlarge(other.iCapacity, "");
        aSlots = other.aSlots;
        bOwner = false;
        return *this;
    }

    static bool IsIt(const Value& left, const Value& right)
    {
        return memcmp(&left, &right, sizeof right) == 0; // the sign of zero counts
    }
    bool IsSorted() const
    {
        const auto IsNaN = [](const Value& value) { return !(value == value); };
        return std::is_sorted(aSlots.begin(), aSlots.end()) ||
               std::any_of(aSlots.begin(), aSlots.end(), IsNaN);
    }

    void Compare(TArray& arr)
    {
        const TArray& arrSame = arr;
        Same("writable end", arr.begin() + Size(), arr.end());
        Same("end", arrSame.begin() + Size(), arrSame.end());
        for (int i = 0; i < Size(); ++i)
            if (const Value& found = arrSame.begin()[i]; !IsIt(Slot(i), found))
                throw CMismatch("value: expected " + TextOf(Slot(i)) + ", found " + TextOf(found));
    }

    std::vector<Value> aDropped; // by this operation
};

// ---- Elements of their own: texts --------------------------------------------------------------------------------

struct SElement
{
    string Text() const { return strBytes.c_str(); }

    string strBytes;
    int iCapacity       = 8;       // 0 if not known since a failure
    const CString* pStr = nullptr; // stays while the element does; unknown at first
};

struct STexts : SSlots<SElement>
{
    using CArray = CStrArray;
    using CState = SSlots<SElement>;
    using Value  = const char*;

    static constexpr bool s_bItems = false, s_bTexts = true;

    /// Where texts come from; often from an element's own.
    struct CSource
    {
        template <class TArgs, class TCopies>
        void Draw(CChoices& choices, const STexts& model, CStrArray& arr, TArgs& args, TCopies& copies)
        {
            const int iKind = choices.Byte(), i = iKind / 4;
            m_strText  = choices.Text(12);
            args.value = iKind % 16 == 0 ? nullptr : m_strText.c_str();
            if (iKind % 4 == 1 && model.IsValid(i))
            {
                args.value = arr.GetAt(i) + choices.Between(0, static_cast<int>(strlen(arr.GetAt(i))));
                m_strText  = args.value;
            }
            copies.value = args.value != nullptr ? m_strText.c_str() : nullptr;
        }
        void Check(STexts&) {}

        string m_strText;
    };

    /// Makes slots for n elements.
    void Reserve(int n)
    {
        if (n <= iCapacity)
            return;
        const int iStepped = iCapacity == 0 ? n : std::max(iCapacity + GrowthStep(Size()), n);
        if (iStepped > static_cast<int>(s_iTooLarge / sizeof(CString*)))
            throw CException(-11, "at str_array.cpp( lines), (new CString*[");
        iCapacity = iStepped;
    }

    int SetSize(int n)
    {
        if (n < 0)
            return -1;
        if (n == 0)
            return RemoveAll(), 0;
        bStays = true;
        Reserve(n);
        return aSlots.resize(static_cast<std::size_t>(n)), 0;
    }
    void Reset(int n, const char*) { SetSize(n); }

    int Add(const char* psz) { return InsertAt(Size(), psz); }
    int InsertAt(int i, const char* psz)
    {
        if (i < 0)
            return -1;
        Reserve(Size() + 1);
        i = std::min(i, Size());
        aSlots.insert(aSlots.begin() + i, SElement());
        return SetAt(i, psz), i;
    }
    void SetAt(int i, const char* psz)
    {
        if (!IsValid(i))
            return;
        SElement& element = Slot(i);
        element.strBytes  = psz != nullptr ? psz : "";
        if (element.strBytes.empty())
            element.iCapacity = 8;
        else if (element.iCapacity > 0)
            element.iCapacity = std::max(element.iCapacity, static_cast<int>(element.strBytes.size()) + 1);
    }
    int RemoveAt(int i) { return IsValid(i) ? aSlots.erase(aSlots.begin() + i), i : -1; }
    void RemoveLast() { RemoveAt(Size() - 1); }
    void Clear() { aSlots.clear(), bStays = true; }
    void RemoveAll() { aSlots.clear(), iCapacity = 0; }
    void FreeExtra() { iCapacity = Size(); }
    STexts& operator=(const STexts& other)
    {
        if (this == &other)
            return *this;
        if (other.aSlots.empty())
            return RemoveAll(), *this;
        bAnew = true;
        aSlots.clear();
        Reserve(other.Size());
        for (const SElement& element : other.aSlots)
            Add(element.strBytes.c_str());
        return *this;
    }

    SElement& operator[](int i)
    {
        if (!IsValid(i))
            throw CException(0, "CStrArray::operator[] : Invalid index(%d:%d)", Size() - 1, i);
        return Slot(i);
    }
    string GetAt(int i) { return IsValid(i) ? Slot(i).Text() : ""; }
    string GetAtLast()
    {
        if (aSlots.empty())
            throw CException("CStrArray::GetAtLast : Empty", 0);
        return aSlots.back().Text();
    }
    int Find(const char* psz)
    {
        int i = 0;
        while (i < Size() && (psz == nullptr || Slot(i).Text() != psz))
            ++i;
        return i < Size() ? i : -1;
    }
    bool IsIn(const char* psz) { return Find(psz) >= 0; }
    string Join(const char* pszSep) { return CState::Join("", pszSep, std::mem_fn(&SElement::Text)); }
    string Repr(const char* pszSep, bool bHeader)
    {
        return List("CStrArr", pszSep, bHeader, std::mem_fn(&SElement::Text));
    }

    static bool IsIt(const SElement& element, const CString& str) { return element.pStr == &str; }
    bool IsSorted() const
    {
        return std::is_sorted(aSlots.begin(), aSlots.end(),
                              [](const SElement& left, const SElement& right)
                              { return left.Text() < right.Text(); });
    }

    /// Takes over which of its documented states a failed operation has left; Compare sees to the rest. Strings that it was
    /// to change may have lost their texts, if it was a string that got no memory.
    void Settle(const CState& before, const CStrArray& arr, const string& strThrown)
    {
        const bool bString = strThrown == s_szNoText;
        if (!bString && strThrown.rfind("-11 at str_array.cpp( lines), (new CString", 0) != 0)
            throw CMismatch("failed: " + strThrown);
        const CState done = *this, cleared{{}, before.iCapacity};
        CState& state     = *this;
        if (bAnew)
            state = !bString || arr.GetSize() == 0 ? cleared : arr.GetSize() == Size() ? done : before;
        else
            state = bString && !bStays ? done : before;
        const auto Has = [](const CState& in, const SElement& x)
        {
            return std::any_of(in.aSlots.begin(), in.aSlots.end(),
                               [&](const SElement& element)
                               { return element.pStr == x.pStr && element.strBytes == x.strBytes; });
        };
        for (int i = 0; bString && i < std::min(Size(), arr.GetSize()); ++i)
            if (SElement& x = Slot(i);
                arr[i].IsEmpty() && (x.strBytes.empty() || !Has(before, x) || !Has(done, x)))
                x = {"", 0, x.pStr};
    }

    void Compare(const CStrArray& arr)
    {
        int i = 0;
        for (const CString& str : arr)
        {
            SElement& element = Slot(i);
            Same("bytes", std::string_view(element.strBytes.c_str(), element.strBytes.size() + 1),
                 std::string_view(str.ToStr(), static_cast<std::size_t>(str.GetLength()) + 1));
            if (element.iCapacity > 0)
                Same("element's capacity", element.iCapacity, str.GetBufferSize());
            Same("element", element.pStr != nullptr ? element.pStr : &arr[i], &str);
            Same("text", static_cast<const void*>(str.ToStr()), arr.GetAt(i++));
            element.pStr = &str;
        }
        Same("elements", Size(), i);
        bStays = bAnew = false;
    }

    // How the last operation leaves the array when a string gets no memory: with its elements, or with new ones.
    bool bStays = false, bAnew = false;
};

/// Writes a text with a NUL into an element.
inline int PutNul(CStrArray& arr, int i)
{
    CString& str = arr[i];
    memcpy(str.GetBuffer(3), "a\0c", 3);
    return str.ReleaseBuffer(3), str.GetLength();
}
inline int PutNul(STexts& texts, int i) { return texts[i] = {string("a\0c", 3), 4, texts[i].pStr}, 3; }

// ---- All of them -------------------------------------------------------------------------------------------------

/// Every array; the first byte chooses which.
struct CArrays
{
    static constexpr char s_szName[] = "arrays";
};

template <>
inline int RunBytes<CArrays>(const std::uint8_t* pBytes, std::size_t iCount)
{
    static constexpr int (*s_aRuns[])(const std::uint8_t*, std::size_t) = {
        RunBytes<CTwins<SLine<CIntArray>>>,  RunBytes<CTwins<SLine<CDblArray>>>,
        RunBytes<CTwins<SLine<CBoolArray>>>, RunBytes<CTwins<SLine<CDateArray>>>,
        RunBytes<CTwins<SLine<CPtrArray>>>,  RunBytes<CTwins<STexts>>};
    return iCount == 0 ? 0 : s_aRuns[*pBytes % std::size(s_aRuns)](pBytes + 1, iCount - 1);
}

template <class... TModels>
int RunArrayFaults(unsigned uSeeds)
{
    return (RunFaults<CTwins<TModels>>(uSeeds) + ...);
}
template <>
inline int RunFaults<CArrays>(unsigned uSeeds)
{
    return RunArrayFaults<SLine<CIntArray>, SLine<CDblArray>, SLine<CBoolArray>, SLine<CDateArray>,
                          SLine<CPtrArray>, STexts>(uSeeds);
}

#endif
