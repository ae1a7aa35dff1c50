// CIntArray, CDblArray, CBoolArray, CDateArray, CPtrArray and CStrArray against vectors.
#ifndef ARRAYS_H
#define ARRAYS_H

#include "twins.h"

#include <cfloat>
#include <cmath>

// ---- Elements side by side: values, dates, pointers -------------------------------------------------------------

// For each element: its array's name, its text, its order, what a slot holds that it has left, and some worth trying.
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
    std::ostringstream text;
    text << static_cast<void*>(pItem);
    return pItem != nullptr ? text.str() : "(nil)";
}
template <class T>
T Order(T value)
{
    return value;
}
inline string Order(const CDate& date) { return date.ToStr(); }
template <class T>
T Vacated(T)
{
    return T();
}
inline CDate Vacated(const CDate&) { return "00000000"; }
inline void DrawElement(CChoices& choices, int& iValue) { iValue = choices.AnyInt(); }
inline void DrawElement(CChoices& choices, bool& bValue) { bValue = choices.Byte() % 2 == 1; }
inline void DrawElement(CChoices& choices, double& dValue)
{
    const double adValues[] = {0.0, -0.0, NAN, -NAN, HUGE_VAL, -DBL_MAX, 4.9e-324, 0.1 + 0.2, 0.3, -2.5};
    dValue                  = adValues[choices.Byte() % 10];
}
inline void DrawElement(CChoices& choices, CDate& date)
{
    const CDate aDates[] = {CDate(), "", "00000000", "2024", "\xff", 20240229, 20231231};
    date                 = aDates[choices.Byte() % 7];
}

/// What is known of a slot; nothing of those in a first buffer.
template <class TValue>
struct SSlot
{
    string Text() const { return TextOf(value); }

    TValue value = TValue();
    bool bKnown  = true;
};

template <class TArray>
struct SLine : SSlots<SSlot<decltype(std::declval<const TArray&>().GetAtLast())>>
{
    using Value = decltype(std::declval<const TArray&>().GetAtLast());
    using CBase = SSlots<SSlot<Value>>;
    using CBase::iSize, CBase::bOwner, CBase::aSlots, CBase::Slot, CBase::GetBufferSize, CBase::IsValid;

    static constexpr bool s_bItems = std::is_same_v<TArray, CPtrArray>;

    /// Changes the capacity; all spare slots are new then. Items have a text of their own when there is no memory.
    void Enlarge(std::int64_t iCapacity, const char* pszItems)
    {
        if (!this->Ask(iCapacity, sizeof(Value), std::is_trivial_v<Value> ? 0 : sizeof(std::size_t)))
            throw CException(0, "%s%s Out of memory", Name(Value()), s_bItems ? pszItems : " -");
        aSlots.resize(static_cast<std::size_t>(iSize));
        aSlots.resize(static_cast<std::size_t>(iCapacity));
    }

    SSlot<Value>& Checked(const char* pszOperation, int i)
    {
        if (!IsValid(i))
            throw CException(0, "%s::%s : Invalid Index(%d:%d)", Name(Value()), pszOperation, iSize - 1, i);
        return Slot(i);
    }

    Value GetAt(int i) { return Checked("GetAt", i).value; }
    std::conditional_t<s_bItems, Value, Value&> operator[](int i) { return Checked("operator[]", i).value; }
    Value GetAtLast()
    {
        if (iSize == 0)
            throw CException(0, "%s::GetAtLast : Empty", Name(Value()));
        return Slot(iSize - 1).value;
    }
    int Find(const Value& value)
    {
        int i = 0;
        while (i < iSize && !(Order(Slot(i).value) == Order(value)))
            ++i;
        return i < iSize ? i : -1;
    }
    bool IsIn(const Value& value) { return Find(value) >= 0; }
    string Repr(const char* pszSep = ", ", bool bHeader = true)
    {
        return this->List(string(Name(Value())).erase(strlen(Name(Value())) - 2), pszSep, bHeader);
    }

    void SetAt(int i, const Value& value)
    {
        SSlot<Value>& slot = Checked("SetAt", i);
        if (Order(slot.value) != Order(value))
            Drop(i);
        slot.value = value;
    }

    int Insert(int i, const Value& value, int iStep, const char* pszOperation)
    {
        const bool bFirst = GetBufferSize() == 0;
        if (bFirst)
            Enlarge(s_bItems ? 16 : 4, "::Add :");
        else if (iSize == GetBufferSize())
            Enlarge(std::int64_t{iSize} + iStep, pszOperation);
        for (SSlot<Value>& slot : aSlots)
            slot.bKnown &= !bFirst || !std::is_trivial_v<Value>;
        aSlots.erase(aSlots.begin() + iSize++);
        aSlots.insert(aSlots.begin() + i, {value, true});
        return i;
    }
    int Add(const Value& value) { return Insert(iSize, value, GrowthStep(iSize), "::GrowBuffer :"); }
    int InsertAt(int i, const Value& value)
    {
        if (s_bItems)
            return i < 0 ? -1 : Insert(std::min(i, iSize), value, std::min(iSize, 1 << 20), "::InsertAt :");
        if (i != iSize)
            Checked("InsertAt", i);
        return Add(value),
               std::rotate(aSlots.begin() + i, aSlots.begin() + iSize - 1, aSlots.begin() + iSize), i;
    }

    int RemoveAt(int i)
    {
        if (s_bItems && !IsValid(i))
            return -1;
        Checked("RemoveAt", i);
        Drop(i);
        aSlots.erase(aSlots.begin() + i);
        aSlots.insert(aSlots.begin() + --iSize, {Vacated(Value()), true});
        return i;
    }
    void RemoveLast() { iSize > 0 ? RemoveAt(iSize - 1) : 0; }

    /// Notes that an item goes, which an owner deletes.
    void Drop(int i)
    {
        if (bOwner && Slot(i).value != Value())
            aDropped.push_back(Slot(i).value);
    }

    void Clear()
    {
        for (int i = 0; i < iSize; ++i)
            Drop(i);
        iSize = 0;
        aSlots.assign(aSlots.size(), {});
    }
    void RemoveAll() { Clear(), aSlots.clear(); }

    void GrowBuffer(int n)
    {
        if (n < 1 || n > GetBufferSize())
            Enlarge(std::int64_t{GetBufferSize()} + (n < 1 ? GrowthStep(iSize) : n), "::GrowBuffer :");
    }

    void Reset(int n, const Value& value)
    {
        const bool bHeld = s_bItems && IsIn(value);
        for (int i = 0; i < iSize; ++i)
            if (Slot(i).value != value)
                Drop(i);
        iSize = bHeld ? 1 : 0;
        aSlots.resize(s_bItems ? aSlots.size() : 0);
        std::fill_n(aSlots.begin(), iSize, SSlot<Value>{value, true});
        GrowBuffer(n);
        iSize = std::max(n, 0);
        std::fill_n(aSlots.begin(), iSize, SSlot<Value>{value, true});
    }

    SLine& operator=(const SLine& other)
    {
        if (this == &other)
            return *this;
        RemoveAll();
        if (s_bItems)
            GrowBuffer(other.iSize);
        else if (other.GetBufferSize() > 0)
            Enlarge(other.GetBufferSize(), "");
        std::copy_n(other.aSlots.begin(), s_bItems ? other.iSize : GetBufferSize(), aSlots.begin());
        iSize  = other.iSize;
        bOwner = false;
        return *this;
    }

    template <class TArguments>
    static void Build(std::optional<SHolder<TArray>>& holder, const TArguments& args, bool bNewOwner)
    {
        if constexpr (s_bItems)
            holder.emplace(args.n, args.value, bNewOwner);
        else
            holder.emplace(args.n, args.value);
    }
    template <class TArguments>
    void Build(const TArguments& args)
    {
        Reset(args.n, args.value);
    }

    void Compare(TArray& arr)
    {
        const TArray& arrSame = arr;
        Same("size", iSize, arr.GetSize());
        Same("capacity", GetBufferSize(), arr.GetBufferSize());
        Same("end", arrSame.begin() + iSize, arrSame.end());
        Same("writable end", arr.begin() + iSize, arr.end());
        for (int i = 0; i < (s_bItems ? iSize : GetBufferSize()); ++i)
            CompareValue(Slot(i), arrSame.begin()[i]);
    }
    static void CompareValue(const SSlot<Value>& slot, const Value& found)
    {
        if (slot.bKnown && memcmp(&slot.value, &found, sizeof found) != 0) // the sign of zero counts
            throw CMismatch("value: expected " + slot.Text() + ", found " + TextOf(found));
    }

    std::vector<Value> aDropped; // by this operation
};

template <class TArray>
class CLine : public CTwins<CLine<TArray>, TArray, SLine<TArray>>
{
    using CBase     = CTwins<CLine, TArray, SLine<TArray>>;
    using CPointers = std::vector<CPtrArrayItem*>;
    using CElement  = typename SLine<TArray>::Value;

    static constexpr bool s_bItems = SLine<TArray>::s_bItems;

    struct SItem : CPtrArrayItem
    {
        explicit SItem(CPointers& aDeleted) : m_aDeleted(aDeleted) {}
        ~SItem() override { m_aDeleted.push_back(this); }
        CPointers& m_aDeleted;
    };

public:
    using CBase::Array, CBase::Model, CBase::Edit, CBase::Make;

    CLine() { m_aDeleted.reserve(4096); } // an item must not need memory to say that it is deleted
    ~CLine()
    {
        for (int i = 0; i < 2; ++i, this->Turn())
            this->Holder().reset();
        for (CPtrArrayItem* pItem : m_aItems)
            if (std::find(m_aDeleted.begin(), m_aDeleted.end(), pItem) == m_aDeleted.end())
                delete pItem;
    }

    void Check()
    {
        CBase::Check();
        if constexpr (s_bItems)
        {
            if (Model().aDropped != m_aDeleted)
                throw CMismatch("deleted items differ from those to be deleted");
            for (CPtrArrayItem* pItem : m_aDeleted)
                m_aItems.erase(std::find(m_aItems.begin(), m_aItems.end(), pItem));
            Model().aDropped.clear(), m_aDeleted.clear();
        }
    }

    /// Draws an element, often one that is there. For an owner that is null or new, and only once.
    void DrawValue(CChoices& choices)
    {
        auto& args      = this->m_args;
        const int iKind = choices.Byte();
        if constexpr (s_bItems)
        {
            const std::size_t iItem = static_cast<std::size_t>(iKind / 4);
            args.value              = iKind % 4 == 0 ? nullptr
                                      : iKind % 4 == 1 && !Model().bOwner && iItem < m_aItems.size()
                                          ? m_aItems[iItem]
                                          : m_aItems.emplace_back(new SItem(m_aDeleted));
            if (Model().bOwner && args.value != nullptr && args.n <= 20000)
                args.n = std::min(args.n, 1);
        }
        else if (Model().IsValid(iKind / 2))
            args.value = Model().Slot(iKind / 2).value;
        else
            DrawElement(choices, args.value);
        this->m_copies.value = args.value;
    }

    /// Equal values come in any order, and all do when there is a NaN.
    static void DoSort(CLine& family, CChoices&, CFault& fault)
    {
        if constexpr (!s_bItems)
        {
            TArray& arr = family.Array();
            auto& model = family.Model();
            family.Both(
                fault, [&] { arr.Sort(); }, [] {});
            std::vector<SSlot<CElement>> aOld(model.aSlots.begin(), model.aSlots.begin() + model.iSize), aNew;
            for (const CElement& value : arr)
                aNew.push_back({value, true});
            std::copy(aNew.begin(), aNew.end(), model.aSlots.begin());
            const auto IsLess = [](const auto& left, const auto& right)
            { return Order(left.value) < Order(right.value); };
            const auto IsUnordered = [](const auto& slot) { return Order(slot.value) != Order(slot.value); };
            Same("sorted", true,
                 std::is_sorted(aNew.begin(), aNew.end(), IsLess) ||
                     std::any_of(aNew.begin(), aNew.end(), IsUnordered));
            const auto BytesAreLess = [](const auto& left, const auto& right)
            { return memcmp(&left.value, &right.value, sizeof left.value) < 0; };
            std::sort(aOld.begin(), aOld.end(), BytesAreLess),
                std::sort(aNew.begin(), aNew.end(), BytesAreLess);
            for (std::size_t i = 0; i < aOld.size(); ++i)
                model.CompareValue(aOld[i], aNew[i].value);
        }
    }

    /// CPtrArray has no Find.
    template <class T>
    static int FindIn(T& a, const CElement& value)
    {
        if constexpr (s_bItems)
            return a.IsIn(value);
        else
            return a.Find(value);
    }

    inline static const typename CBase::SRow s_aOperations[] = {
        {"turn", [](CLine& family, CChoices&, CFault&) { family.Turn(); }},
        {"Add", Edit([](auto& a, auto& x) { return a.Add(x.value); })},
        {"InsertAt", Edit([](auto& a, auto& x) { return a.InsertAt(x.i, x.value); })},
        {"GetAt", Edit([](auto& a, auto& x) { return a.GetAt(x.i); })},
        {"[]", Edit([](auto& a, auto& x) { return a[x.i]; })},
        {"[] =", Edit(
                     [](auto& a, auto& x)
                     {
                         auto&& slot = a[x.i];
                         return slot = x.value, 0;
                     })},
        {"GetAtLast", Edit([](auto& a, auto&) { return a.GetAtLast(); })},
        {"IsIn", Edit([](auto& a, auto& x) { return a.IsIn(x.value); })},
        {"Find", Edit([](auto& a, auto& x) { return FindIn(a, x.value); })},
        {"Repr()", Make([](auto& a, auto&) { return a.Repr(); })},
        {"Repr", Make([](auto& a, auto& x) { return a.Repr(x.pszSep, x.i % 2 == 0); })},
        {"SetAt", Edit([](auto& a, auto& x) { return a.SetAt(x.i, x.value), 0; })},
        {"SetAt same", Edit([](auto& a, auto& x) { return a.SetAt(x.i, a.GetAt(x.i)), 0; })},
        {"RemoveAt", Edit([](auto& a, auto& x) { return a.RemoveAt(x.i); })},
        {"RemoveLast", Edit([](auto& a, auto&) { return a.RemoveLast(), 0; })},
        {"Clear", Edit([](auto& a, auto&) { return a.Clear(), 0; })},
        {"RemoveAll", Edit([](auto& a, auto&) { return a.RemoveAll(), 0; })},
        {"GrowBuffer", Edit([](auto& a, auto& x) { return a.GrowBuffer(x.n), 0; })},
        {"Reset", Edit([](auto& a, auto& x) { return a.Reset(x.n, x.value), 0; })},
        {"Reset held", Edit([](auto& a, auto& x)
                            { return a.Reset(x.n > 20000 ? x.n : std::min(x.n, 1), a.GetAt(x.i)), 0; })},
        {"=", Edit([](auto& a, auto& x) { return &(a = *x.pOther) == &a; })},
        {"= itself", Edit([](auto& a, auto&) { return &(a = *&a) == &a; })},
        {"Sort", &CLine::DoSort},
        {"construction", &CBase::DoConstruct},
    };

private:
    CPointers m_aItems, m_aDeleted; // those alive, and those deleted in this operation
};

// ---- Elements of their own: texts --------------------------------------------------------------------------------

struct SElement
{
    string Text() const { return strBytes.c_str(); }

    string strBytes;
    int iCapacity       = 8;
    bool bBuffer        = true;
    const CString* pStr = nullptr; // stays while the element does; unknown at first
};

struct STexts : SSlots<SElement>
{
    using Value = const char*;

    void Need(std::int64_t iCount, std::size_t iElement, const char* pszUnit, const char* pszExpression)
    {
        if (!Ask(iCount, iElement))
            throw CException(-11, "at %s.cpp( lines), (new %s) failed(std::bad_alloc)", pszUnit,
                             pszExpression);
    }
    void NeedTable(std::int64_t iCount, const char* pszExpression)
    {
        Need(iCount, sizeof(CString*), "str_array", pszExpression);
    }

    /// Sets a text, of the bytes before a NUL if there is one.
    void Set(SElement& element, const string& strText)
    {
        const int iNeeded = strText.empty() ? 8 : static_cast<int>(strText.size()) + 1;
        element.strBytes.clear();
        if (!element.bBuffer || strText.empty() || element.iCapacity < iNeeded)
        {
            element.iCapacity = iNeeded;
            element.bBuffer   = false;
            Need(iNeeded, 1, "cstring", "char[m_iBufferSize]");
            element.bBuffer = true;
        }
        element.strBytes = strText;
    }

    /// Sets a text as Clear and Set would, in one request at most.
    void SetAnew(SElement& element, const string& strText)
    {
        const int iNeeded = std::max(static_cast<int>(strText.size()) + 1, 8);
        if (!element.bBuffer || element.iCapacity != iNeeded)
        {
            Vacate(element);
            element.iCapacity = iNeeded;
            Need(iNeeded, 1, "cstring", "char[m_iBufferSize]");
            element.bBuffer = true;
        }
        element.strBytes = strText;
    }
    static void Vacate(SElement& element) { element = {"", 8, false, element.pStr}; }

    int SetSize(int n)
    {
        const int iOld = GetBufferSize();
        if (n < 0)
            return -1;
        if (n == 0)
            return RemoveAll(), 0;
        for (int i = iSize; i < std::min(n, iOld); ++i)
            if (!Slot(i).bBuffer || Slot(i).iCapacity != 8 || !Slot(i).strBytes.empty())
                Set(Slot(i), "");
        Reserve(n, n);
        for (int i = n; i < iSize; ++i)
            Set(Slot(i), "");
        iSize = n;
        return 0;
    }

    /// Makes slots for n elements; the new ones below iUsed get a buffer each.
    void Reserve(int n, int iUsed = 0)
    {
        const int iOld = GetBufferSize();
        if (n <= iOld)
            return;
        const std::int64_t iCapacity =
            iOld == 0 ? n : std::max<std::int64_t>(std::int64_t{iOld} + GrowthStep(iSize), n);
        NeedTable(iCapacity, iOld == 0 ? "CString*[m_iBufferSize]" : "CString*[iNewMax]");
        for (std::int64_t i = iOld; i < iCapacity; ++i)
        {
            Need(1, sizeof(CString), "str_array", "CString");
            if (i < iUsed)
                Need(8, 1, "cstring", "char[m_iBufferSize]");
        }
        aSlots.resize(static_cast<std::size_t>(iCapacity), SElement{"", 8, false, nullptr});
        for (int i = iOld; i < iUsed; ++i)
            Slot(i).bBuffer = true;
    }

    int Add(const char* psz) { return InsertAt(iSize, psz); }
    int InsertAt(int i, const char* psz)
    {
        if (i < 0)
            return -1;
        const int iPos = std::min(i, iSize);
        Reserve(iSize + 1);
        ++iSize;
        std::rotate(&Slot(iPos), &Slot(iSize - 1), &Slot(iSize - 1) + 1);
        SetAnew(Slot(iPos), psz != nullptr ? psz : "");
        return iPos;
    }
    void SetAt(int i, const char* psz)
    {
        if (IsValid(i))
            Set(Slot(i), psz != nullptr ? psz : "");
    }
    int RemoveAt(int i)
    {
        if (!IsValid(i))
            return -1;
        std::rotate(&Slot(i), &Slot(i) + 1, &Slot(iSize - 1) + 1);
        return RemoveLast(), i;
    }
    void RemoveLast()
    {
        if (iSize > 0)
            --iSize, Set(Slot(iSize), "");
    }
    void Clear()
    {
        for (int i = 0; i < iSize; ++i)
            Set(Slot(i), "");
        iSize = 0;
    }
    void RemoveAll() { aSlots.clear(), iSize = 0; }
    void FreeExtra()
    {
        if (iSize != GetBufferSize() && iSize > 0)
            NeedTable(iSize, "CString*[m_iSize]");
        aSlots.resize(static_cast<std::size_t>(iSize));
    }
    STexts& operator=(const STexts& other)
    {
        if (this == &other)
            return *this;
        if (other.iSize == 0)
            return RemoveAll(), *this;
        const int iOld = std::exchange(iSize, 0);
        try
        {
            Reserve(other.iSize);
            for (int i = 0; i < other.iSize; ++i)
                SetAnew(Slot(iSize++), other.aSlots.data()[i].Text());
        }
        catch (const CException&)
        {
            const int iSet = iSize;
            iSize          = iSet > 0 ? other.iSize : 0;
            std::for_each(aSlots.begin() + iSet, aSlots.begin() + std::max(iSize, iOld), Vacate);
            throw;
        }
        std::for_each(aSlots.begin() + iSize, aSlots.begin() + std::max(iSize, iOld), Vacate);
        return *this;
    }

    SElement& operator[](int i)
    {
        if (!IsValid(i))
            throw CException(0, "CStrArray::operator[] : Invalid index(%d:%d)", iSize - 1, i);
        return Slot(i);
    }
    string GetAt(int i) { return IsValid(i) ? Slot(i).Text() : ""; }
    string GetAtLast()
    {
        if (iSize == 0)
            throw CException("CStrArray::GetAtLast : Empty", 0);
        return Slot(iSize - 1).Text();
    }
    int Find(const char* psz)
    {
        const auto IsIt  = [=](const SElement& element) { return psz != nullptr && element.Text() == psz; };
        const auto itEnd = aSlots.begin() + iSize;
        const auto it    = std::find_if(aSlots.begin(), itEnd, IsIt);
        return it == itEnd ? -1 : static_cast<int>(it - aSlots.begin());
    }
    bool IsIn(const char* psz) { return Find(psz) >= 0; }
    string Repr(const char* pszSep = ", ", bool bHeader = true) { return List("CStrArr", pszSep, bHeader); }

    template <class TArguments>
    static void Build(std::optional<SHolder<CStrArray>>& holder, const TArguments& args, bool)
    {
        holder.emplace(args.n);
    }
    template <class TArguments>
    void Build(const TArguments& args)
    {
        SetSize(args.n);
    }

    void Compare(const CStrArray& arr)
    {
        Same("size", iSize, arr.GetSize());
        Same("capacity", GetBufferSize(), arr.GetBufferSize());
        int i = 0;
        for (const CString& str : arr)
        {
            SElement& element = Slot(i);
            Same("bytes", std::string_view(element.strBytes.c_str(), element.strBytes.size() + 1),
                 std::string_view(str.ToStr(), static_cast<std::size_t>(str.GetLength()) + 1));
            Same("element's capacity", element.iCapacity, str.GetBufferSize());
            Same("element", element.pStr != nullptr ? element.pStr : &arr[i], &str);
            Same("text", static_cast<const void*>(str.ToStr()), arr.GetAt(i++));
            element.pStr = &str;
        }
        Same("elements", iSize, i);
    }
};

/// Writes a text with a NUL into an element.
inline int PutNul(CStrArray& arr, int i)
{
    CString& str = arr[i];
    memcpy(str.GetBuffer(3), "a\0c", 3);
    return str.ReleaseBuffer(3), str.GetLength();
}
inline int PutNul(STexts& texts, int i)
{
    texts.Set(texts[i] = {"", 0, true, texts[i].pStr}, "abc");
    return texts[i].strBytes[1] = '\0', 3;
}

class CTexts : public CTwins<CTexts, CStrArray, STexts>
{
public:
    static const SRow s_aOperations[26];

    void DrawValue(CChoices& choices)
    {
        const int iKind = choices.Byte(), i = iKind / 4;
        m_strText    = choices.Text(12);
        m_args.value = iKind % 16 == 0 ? nullptr : m_strText.c_str();
        if (iKind % 4 == 1 && Model().IsValid(i)) // a part of an element's own text
        {
            m_args.value = Array()[i].ToStr() + choices.Between(0, static_cast<int>(Model().GetAt(i).size()));
            m_strText    = m_args.value;
        }
        m_copies.value = m_args.value != nullptr ? m_strText.c_str() : nullptr;
    }

    /// Equal texts come in any order; the string objects are those from before.
    static void DoSort(CTexts& family, CChoices&, CFault& fault)
    {
        CStrArray& arr = family.Array();
        STexts& model  = family.Model();
        family.Both(
            fault, [&] { arr.Sort(); }, [] {});
        const auto itEnd  = model.aSlots.begin() + model.iSize;
        const auto IsLess = [](const SElement& left, const SElement& right)
        { return left.Text() < right.Text(); };
        for (int i = 0; i < model.iSize; ++i)
        {
            const auto IsIt = [&](const SElement& element) { return element.pStr == &arr[i]; };
            const auto it   = std::find_if(model.aSlots.begin() + i, itEnd, IsIt);
            Same("element known", true, it != itEnd);
            std::iter_swap(it, model.aSlots.begin() + i);
        }
        Same("sorted", true, std::is_sorted(model.aSlots.begin(), itEnd, IsLess));
    }

private:
    string m_strText;
};

inline const CTexts::SRow CTexts::s_aOperations[] = {
    {"turn", [](CTexts& family, CChoices&, CFault&) { family.Turn(); }},
    {"Add", Edit([](auto& a, auto& x) { return a.Add(x.value); })},
    {"InsertAt", Edit([](auto& a, auto& x) { return a.InsertAt(x.i, x.value); })},
    {"SetAt", Edit([](auto& a, auto& x) { return a.SetAt(x.i, x.value), 0; })},
    {"SetAt char*", Edit([](auto& a, auto& x) { return a.SetAt(x.i, const_cast<char*>(x.value)), 0; })},
    {"[]", Edit([](auto& a, auto& x) { return PutNul(a, x.i); })},
    {"GetAt", Edit([](auto& a, auto& x) { return a.GetAt(x.i)[0] == '\0'; })},
    {"RemoveAt", Edit([](auto& a, auto& x) { return a.RemoveAt(x.i); })},
    {"RemoveLast", Edit([](auto& a, auto&) { return a.RemoveLast(), 0; })},
    {"Clear", Edit([](auto& a, auto&) { return a.Clear(), 0; })},
    {"RemoveAll", Edit([](auto& a, auto&) { return a.RemoveAll(), 0; })},
    {"FreeExtra", Edit([](auto& a, auto&) { return a.FreeExtra(), 0; })},
    {"SetSize", Edit([](auto& a, auto& x) { return a.SetSize(x.n); })},
    {"=", Edit([](auto& a, auto& x) { return &(a = *x.pOther) == &a; })},
    {"= itself", Edit([](auto& a, auto&) { return &(a = *&a) == &a; })},
    {"Find", Edit([](auto& a, auto& x) { return a.Find(x.value); })},
    {"IsIn", Edit([](auto& a, auto& x) { return a.IsIn(x.value); })},
    {"GetAtLast", Make([](auto& a, auto&) { return a.GetAtLast(); })},
    {"Join()", Make([](auto& a, auto&) { return a.Join(); })},
    {"Join", Make([](auto& a, auto& x) { return a.Join(x.value); })},
    {"Join const", Make([](auto& a, auto& x) { return std::as_const(a).Join(x.pszSep); })},
    {"Repr()", Make([](auto& a, auto&) { return a.Repr(); })},
    {"Repr", Make([](auto& a, auto& x) { return a.Repr(x.value, x.i % 2 == 0); })},
    {"Repr sep", Make([](auto& a, auto& x) { return a.Repr(x.pszSep, x.i % 2 == 0); })},
    {"Sort", &CTexts::DoSort},
    {"construction", &CTexts::DoConstruct},
};

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
        RunBytes<CLine<CIntArray>>,  RunBytes<CLine<CDblArray>>, RunBytes<CLine<CBoolArray>>,
        RunBytes<CLine<CDateArray>>, RunBytes<CLine<CPtrArray>>, RunBytes<CTexts>};
    return iCount == 0 ? 0 : s_aRuns[*pBytes % std::size(s_aRuns)](pBytes + 1, iCount - 1);
}

template <>
inline int RunFaults<CArrays>(unsigned uSeeds)
{
    return RunFaults<CLine<CIntArray>>(uSeeds) + RunFaults<CLine<CDblArray>>(uSeeds) +
           RunFaults<CLine<CBoolArray>>(uSeeds) + RunFaults<CLine<CDateArray>>(uSeeds) +
           RunFaults<CLine<CPtrArray>>(uSeeds) + RunFaults<CTexts>(uSeeds);
}

#endif
