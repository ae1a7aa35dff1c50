// CIntArray, CDblArray, CBoolArray, CDateArray, CPtrArray and CStrArray against one model. It has the arrays' operations,
// written anew over std::deque; each row of the table says once what is done to an array and to its model.
#ifndef ARRAYS_H
#define ARRAYS_H

#include "engine.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <optional>
#include <set>

// ---- Elements ----------------------------------------------------------------------------------------------------

/// An element of CStrArray.
struct SElement
{
    operator const char*() const { return strText.c_str(); }
    bool operator==(const char* psz) const { return psz != nullptr && strcmp(*this, psz) == 0; }
    bool operator==(const SElement& other) const { return pStr == other.pStr && strText == other.strText; }
    bool operator<(const SElement& other) const { return strcmp(*this, other) < 0; }

    void operator=(const char* psz) { strText = psz != nullptr ? psz : ""; }

    string strText;
    const CString* pStr = nullptr; // stays while the element does; unknown at first
};

// For each element: its array's name, its text, whether the array shows it, and some worth trying.
constexpr const char* Name(int) { return "CIntArray"; }
constexpr const char* Name(double) { return "CDblArray"; }
constexpr const char* Name(bool) { return "CBoolArray"; }
constexpr const char* Name(CPtrArrayItem*) { return "CPtrArray"; }
constexpr const char* Name(const char*) { return "CStrArray"; }
inline const char* Name(const CDate&) { return "CDateArray"; }
inline string TextOf(int iValue) { return std::to_string(iValue); }
inline string TextOf(double dValue) { return std::to_string(dValue); } // as "%f"
inline string TextOf(bool bValue) { return bValue ? "Y" : "N"; }
inline string TextOf(const CDate& date) { return date.ToStr(); }
inline string TextOf(const SElement& element) { return element.strText; }
inline string TextOf(CPtrArrayItem* pItem)
{
    char szText[32];
    snprintf(szText, sizeof szText, "%p", static_cast<void*>(pItem));
    return szText;
}
template <class T>
bool IsIt(const T& left, const T& right)
{
    return memcmp(&left, &right, sizeof right) == 0;
}
inline bool IsIt(const SElement& element, const CString& str)
{
    return element.pStr == &str &&
           element.strText == string(str.ToStr(), static_cast<std::size_t>(str.GetLength()));
}
inline bool IsIt(const string& strText, const CString& str) { return strText == str.ToStr(); }
inline void DrawNew(CChoices& choices, int& iValue) { iValue = choices.AnyInt(); }
inline void DrawNew(CChoices& choices, bool& bValue) { bValue = choices.Byte() % 2 == 1; }
inline void DrawNew(CChoices& choices, double& dValue)
{
    static constexpr double s_ad[] = {0.0, 1e308, 4.9e-324, 0.1 + 0.2, 0.3, -2.5};
    dValue                         = s_ad[choices.Byte() % 6];
}
inline void DrawNew(CChoices& choices, CDate& date)
{
    const CDate aDates[] = {CDate(), "00000000", "2024", "\xff", 20240229, 20231231};
    date                 = aDates[choices.Byte() % 6];
}

/// Items that are alive, and those deleted in this operation. What nobody has deleted goes at the end.
struct SItems
{
    struct SItem : CPtrArrayItem
    {
        explicit SItem(SItems& items) : m_items(items) { items.alive.insert(this); }
        ~SItem() override { m_items.alive.erase(this), m_items.aDeleted.push_back(this); }
        SItems& m_items;
    };

    SItems() { aDeleted.reserve(4096); } // an item must not need memory to say that it is deleted
    ~SItems()
    {
        while (!alive.empty())
            delete *alive.begin();
    }

    std::set<CPtrArrayItem*> alive;
    std::vector<CPtrArrayItem*> aDeleted;
};

// ---- The model ---------------------------------------------------------------------------------------------------

inline int GrowthStep(int iSize) { return std::clamp(iSize / 8, 4, 1024); }

template <class TArray>
struct SState
{
    using Value = std::decay_t<decltype(std::declval<TArray&>().GetAt(0))>;
    using Slot  = std::conditional_t<std::is_same_v<TArray, CStrArray>, SElement, Value>;

    std::deque<Slot> aSlots;
    int iCapacity = 0;
    bool bOwner   = false;
};

template <class TArray>
struct SModel : SState<TArray>
{
    using State = SState<TArray>;
    using State::aSlots, State::iCapacity, State::bOwner, typename State::Value, typename State::Slot;

    static constexpr bool s_bItems   = std::is_same_v<TArray, CPtrArray>,
                          s_bTexts   = !std::is_same_v<Value, Slot>,
                          s_bLenient = s_bItems || s_bTexts; // about an index

    SModel() = default;
    SModel(const SModel& other) : State() { *this = other; }

    int Size() const { return static_cast<int>(aSlots.size()); }
    bool IsValid(int i) const { return i >= 0 && i < Size(); }
    Slot& Checked(const char* pszOperation, int i)
    {
        return IsValid(i) ? aSlots[static_cast<std::size_t>(i)]
                          : throw CException(0, "%s::%s : Invalid %s(%d:%d)", Name(Value()), pszOperation,
                                             s_bTexts ? "index" : "Index", Size() - 1, i);
    }
    Value GetAt(int i) { return Checked("GetAt", i); }
    Slot& operator[](int i) { return Checked("operator[]", i); }
    Value GetAtLast()
    {
        return aSlots.empty() ? throw CException(0, "%s::GetAtLast : Empty", Name(Value())) : aSlots.back();
    }
    int Find(Value value)
    {
        const auto it = std::find(aSlots.begin(), aSlots.end(), value);
        return it != aSlots.end() ? static_cast<int>(it - aSlots.begin()) : -1;
    }
    bool IsIn(Value value) { return Find(value) >= 0; }
    string Join(const char* pszSep, string strAll = "")
    {
        for (int i = 0; i < Size(); ++i)
            strAll += (i > 0 && pszSep != nullptr ? pszSep : "") + TextOf((*this)[i]);
        return strAll;
    }
    string Repr(const char* pszSep, bool bHeader)
    {
        const string strTag(Name(Value()), strlen(Name(Value())) - 2);
        const string strSizes = ":(" + TextOf(Size()) + "/" + TextOf(iCapacity) + ")";
        if (aSlots.empty())
            return "<" + strTag + ": unset>";
        return Join(pszSep, bHeader ? strTag + strSizes + (pszSep != nullptr ? pszSep : "(null)") : "");
    }

    void SetAt(int i, Value value)
    {
        if (s_bTexts && !IsValid(i))
            return;
        Slot& slot = Checked("SetAt", i);
        if (!(slot == value))
            Drop(slot);
        slot = value;
    }
    int Insert(int i, Value value, int iStep)
    {
        if (Size() == iCapacity)
            iCapacity += iCapacity > 0 ? iStep : s_bItems ? 16 : s_bTexts ? 1 : 4;
        *aSlots.insert(aSlots.begin() + i, Slot()) = value;
        if constexpr (s_bTexts) // no memory for a short text: not inserted
            bStays = value != nullptr && strlen(value) - 1 < 7;
        return i;
    }
    int Add(Value value) { return Insert(Size(), value, GrowthStep(Size())); }
    int InsertAt(int i, Value value)
    {
        if (s_bLenient && i < 0)
            return -1;
        if (!s_bLenient && i != Size())
            Checked("InsertAt", i);
        return Insert(std::min(i, Size()), value, s_bItems ? Size() : GrowthStep(Size()));
    }
    int RemoveAt(int i)
    {
        if (s_bLenient && !IsValid(i))
            return -1;
        Drop(Checked("RemoveAt", i));
        aSlots.erase(aSlots.begin() + i);
        return i;
    }
    void RemoveLast() { aSlots.empty() ? 0 : RemoveAt(Size() - 1); }

    /// Notes that an item goes, which an owner deletes.
    void Drop(const Slot& slot)
    {
        if constexpr (s_bItems)
            if (bOwner && slot != nullptr)
                aDropped.push_back(slot);
    }
    void Clear()
    {
        for (bStays = true; !aSlots.empty(); aSlots.pop_front())
            Drop(aSlots.front());
    }
    void RemoveAll() { Clear(), iCapacity = 0; }
    void GrowBuffer(int n) { iCapacity += n < 1 ? GrowthStep(Size()) : n > iCapacity ? n : 0; }
    void Reset(int n, Value value)
    {
        const State before = *this;
        aSlots.clear();
        iCapacity = s_bItems ? iCapacity : 0;
        if (!s_bItems)
            KeepOnFailure();
        GrowBuffer(n);
        for (const Slot& slot : before.aSlots)
            if (slot != value)
                Drop(slot);
        aSlots.assign(static_cast<std::size_t>(std::max(n, 0)), value);
    }
    int SetSize(int n)
    {
        if (n < 0)
            return -1;
        if (n == 0)
            RemoveAll();
        bStays = true;
        if (n > iCapacity)
            iCapacity = iCapacity == 0 ? n : std::max(iCapacity + GrowthStep(Size()), n);
        return aSlots.resize(static_cast<std::size_t>(n)), 0;
    }
    void FreeExtra() { iCapacity = Size(); }
    SModel& operator=(const SModel& other)
    {
        if (this == &other)
            return *this;
        const int iKept = s_bTexts && !other.aSlots.empty() ? iCapacity : 0;
        RemoveAll();
        iCapacity = iKept;
        KeepOnFailure();
        bOwner = false;
        if (s_bTexts)
            SetSize(other.Size());
        else if (s_bItems || other.iCapacity > 0)
            GrowBuffer(s_bItems ? other.Size() : other.iCapacity);
        aSlots.clear();
        for (const Slot& slot : other.aSlots)
            Add(slot);
        bStays = false;
        return *this;
    }
    void Sort()
    {
        std::sort(aSlots.begin(), aSlots.end());
        if constexpr (s_bTexts) // equal ones come in any order
            for (Slot& slot : aSlots)
                slot.pStr = nullptr;
    }

    /// Notes that this is what the operation leaves if it finds no memory from now on.
    void KeepOnFailure()
    {
        onFailure         = *this;
        iDroppedOnFailure = aDropped.size();
    }

    /// Takes over the documented state that a failed operation has left. Strings that it was to change may have lost their
    /// texts if it was a string that got no memory.
    void Settle(const State& before, const TArray& arr, bool bString)
    {
        aDropped.resize(iDroppedOnFailure);
        const State done           = *this;
        static_cast<State&>(*this) = bString && !bStays ? done : onFailure;
        const auto Has             = [](const auto& aIn, const Slot& slot)
        { return std::find(aIn.begin(), aIn.end(), slot) != aIn.end(); };
        if constexpr (s_bTexts)
            for (int i = 0; bString && i < std::min(Size(), arr.GetSize()); ++i)
                if (arr[i].IsEmpty() && !(Has(before.aSlots, (*this)[i]) && Has(done.aSlots, (*this)[i])))
                    (*this)[i] = "";
    }

    void Compare(const TArray& arr)
    {
        Same("size", Size(), arr.GetSize());
        Same("capacity", iCapacity, arr.GetBufferSize());
        auto it = arr.begin();
        for (Slot& slot : aSlots)
        {
            auto& found = *it++;
            if constexpr (s_bTexts)
                slot.pStr = slot.pStr != nullptr ? slot.pStr : &found;
            if (!IsIt(slot, found))
                throw CMismatch("element: expected " + TextOf(slot));
        }
        Same("end", true, it == arr.end());
        bStays = false;
    }

    bool bStays = false; // whether the elements stay if the operation finds no memory for a text
    State onFailure;     // what it leaves otherwise
    std::vector<CPtrArrayItem*> aDropped; // by it
    std::size_t iDroppedOnFailure = 0;    // how many of them otherwise
};

// ---- The family --------------------------------------------------------------------------------------------------

/// Two arrays with their models. Operations are done to those whose turn it is.
template <class TArray>
class CTwins
{
    using CModel = SModel<TArray>;
    using Value  = typename CModel::Value;

public:
    static constexpr int s_iStates = 3; // fresh, with room, full

    using SRow = SOperation<CTwins>;

    void Prepare(int iState, CChoices& choices)
    {
        const auto IsMet = [&](const CModel& model)
        { return model.Size() > 2 && (model.Size() == model.iCapacity) == (iState == 2); };
        for (int i = 0; i < 2; ++i, Turn())
            for (Renew(i > 0); iState > 0 && !IsMet(Model());)
                Draw(choices, false), Model().Add(m_value), Array().Add(m_value);
        Check();
    }

    void Check()
    {
        for (int i = 0; i < 2; ++i, Turn())
            Model().Compare(Array());
        if (Model().aDropped != m_items.aDeleted)
            throw CMismatch("deleted items differ from those to be deleted");
        Model().aDropped.clear(), m_items.aDeleted.clear();
    }

    TArray& Array() { return *m_aArrays[m_iTurn]; }
    TArray& Other(TArray&) { return *m_aArrays[1 - m_iTurn]; }
    CModel& Model() { return m_aModels[m_iTurn]; }
    CModel& Other(CModel&) { return m_aModels[1 - m_iTurn]; }
    void Turn() { m_iTurn = 1 - m_iTurn; }

    /// Replaces the array by a new one.
    void Renew(bool bOwner)
    {
        Model().RemoveAll();
        Model().bOwner = bOwner && CModel::s_bItems;
        if constexpr (CModel::s_bItems)
            m_aArrays[m_iTurn].emplace(bOwner);
        else
            m_aArrays[m_iTurn].emplace();
    }

    /// Draws an index, mostly a good one, a number, mostly small, and an element, often one that is there. For an owner it
    /// is null or new, and only once. A text may be a part of an element's own.
    void Draw(CChoices& choices, bool bLarge)
    {
        const int iKind = choices.Byte(), iSize = Model().Size(),
                  iHeld = choices.Between(-iSize - 1, iSize - 1);
        m_iIndex        = iKind % 8 > 0 ? choices.Between(-1, iSize + 1) : choices.AnyInt();
        m_iCount        = iKind == 255 && bLarge && !Model().bOwner ? choices.Between(7900, 9400)
                                                                    : choices.Between(-2, Model().bOwner ? 1 : 40);
        m_pszSep        = iKind < 80 ? nullptr : iKind < 160 ? "" : ", ";
        m_strText       = choices.Text(12);
        if constexpr (CModel::s_bTexts)
            m_value = iHeld >= 0 ? Array().GetAt(iHeld) + choices.Byte() % (Array()[iHeld].GetLength() + 1)
                      : iKind % 4 == 0 ? nullptr
                                       : m_strText.c_str();
        else if (iHeld >= 0 && !Model().bOwner)
            m_value = Model()[iHeld];
        else if constexpr (CModel::s_bItems)
            m_value = iKind % 4 == 0 ? nullptr : new SItems::SItem(m_items);
        else
            DrawNew(choices, m_value);
    }

    /// Makes an operation of what is done to a model and to its array. Both must return or throw the same, unless there is
    /// no memory for the array.
    template <class TCall>
    static auto Do(TCall Call)
    {
        static constexpr char s_szNoMemory[] =
            "-11 cstring.cpp char[m_iBufferSize]|-11 str_array.cpp CString*[m_iBufferSize]|"
            "-11 str_array.cpp CString*[iNewMax]|-11 str_array.cpp CString*[m_iSize]|"
            "-11 str_array.cpp CString|0 CPtrArray::Add : Out of memory|"
            "0 CPtrArray::GrowBuffer : Out of memory|0 CPtrArray::InsertAt : Out of memory|0 ";
        return [Call](CTwins& f, CChoices& choices, CFault& fault)
        {
            f.Draw(choices, fault.GetNth() == 0);
            const typename CModel::State before = f.Model();
            f.Model().KeepOnFailure();
            decltype(Call(f.Model(), f)) expected{};
            const string strExpected = CFault().Run([&] { expected = Call(f.Model(), f); });
            bool bSame               = false;
            const string strThrown   = fault.Run(
                [&]
                {
                    auto&& found = Call(f.Array(), f);
                    bSame        = IsIt(expected, found);
                });
            if (!fault.WasHit() || strThrown.empty())
                return Same("thrown", strExpected, strThrown), Same("result", strThrown.empty(), bSame);
            Failed(fault, strThrown, s_szNoMemory + string(Name(Value())) + " - Out of memory");
            f.Model().Settle(before, f.Array(), strThrown.find("cstring.cpp") != string::npos);
        };
    }

    static std::vector<SRow> Rows()
    {
        std::vector<SRow> aRows{
            {"turn", [](CTwins& f, CChoices&, CFault&) { f.Turn(); }},
            {"new", [](CTwins& f, CChoices& choices, CFault&) { f.Renew(choices.Byte() % 2 == 0); }},
            {"copy",
             Do([](auto& a, auto& x) { return std::decay_t<decltype(a)>(a).Repr(x.m_pszSep, true); })},
            {"=", Do([](auto& a, auto& x) { return &(a = x.Other(a)) == &a; })},
            {"= itself", Do([](auto& a, auto&) { return &(a = *&a) == &a; })},
            {"Add", Do([](auto& a, auto& x) { return a.Add(x.m_value); })},
            {"InsertAt", Do([](auto& a, auto& x) { return a.InsertAt(x.m_iIndex, x.m_value); })},
            {"GetAtLast", Do([](auto& a, auto&) { return a.GetAtLast(); })},
            {"IsIn", Do([](auto& a, auto& x) { return a.IsIn(x.m_value); })},
            {"Repr", Do([](auto& a, auto& x) { return a.Repr(x.m_pszSep, x.m_iIndex % 2 == 0); })},
            {"SetAt", Do([](auto& a, auto& x) { return a.SetAt(x.m_iIndex, x.m_value), 0; })},
            {"RemoveAt", Do([](auto& a, auto& x) { return a.RemoveAt(x.m_iIndex); })},
            {"RemoveLast", Do([](auto& a, auto&) { return a.RemoveLast(), 0; })},
            {"Clear", Do([](auto& a, auto&) { return a.Clear(), 0; })},
            {"RemoveAll", Do([](auto& a, auto&) { return a.RemoveAll(), 0; })},
        };
        const auto More = [&](std::initializer_list<SRow> rows) { aRows.insert(aRows.end(), rows); };
        if constexpr (CModel::s_bTexts)
            More({{"Join", Do([](auto& a, auto& x) { return a.Join(x.m_value); })},
                  {"SetSize", Do([](auto& a, auto& x) { return a.SetSize(x.m_iCount); })},
                  {"FreeExtra", Do([](auto& a, auto&) { return a.FreeExtra(), 0; })}});
        else
            More({{"[]", Do([](auto& a, auto& x) { return a[x.m_iIndex]; })},
                  {"GetAt, SetAt",
                   Do([](auto& a, auto& x) { return a.SetAt(x.m_iIndex, a.GetAt(x.m_iIndex)), 0; })},
                  {"GrowBuffer", Do([](auto& a, auto& x) { return a.GrowBuffer(x.m_iCount), 0; })},
                  {"Reset", Do([](auto& a, auto& x) { return a.Reset(x.m_iCount, x.m_value), 0; })},
                  {"Reset held",
                   Do([](auto& a, auto& x) { return a.Reset(x.m_iCount, a.GetAt(x.m_iIndex)), 0; })}});
        if constexpr (!CModel::s_bItems)
            More({{"Find", Do([](auto& a, auto& x) { return a.Find(x.m_value); })},
                  {"Sort", Do([](auto& a, auto&) { return a.Sort(), 0; })},
                  {"[] =", Do([](auto& a, auto& x) { return a[x.m_iIndex] = x.m_value, 0; })}});
        return aRows;
    }

    inline static const std::vector<SRow> s_aOperations = Rows();

private:
    SItems m_items; // alive for longer than the arrays
    CModel m_aModels[2];
    std::optional<TArray> m_aArrays[2];
    int m_iTurn = 0, m_iIndex, m_iCount; // the arguments of an operation, from here on
    const char* m_pszSep;
    Value m_value;
    string m_strText;
};

/// Every array; the first byte chooses which.
struct CArrays
{
    static constexpr char s_szName[] = "arrays";
};

template <>
inline int RunBytes<CArrays>(const std::uint8_t* pBytes, std::size_t iCount)
{
    static constexpr int (*s_aRuns[])(const std::uint8_t*, std::size_t) = {
        RunBytes<CTwins<CIntArray>>,  RunBytes<CTwins<CDblArray>>, RunBytes<CTwins<CBoolArray>>,
        RunBytes<CTwins<CDateArray>>, RunBytes<CTwins<CPtrArray>>, RunBytes<CTwins<CStrArray>>};
    return iCount == 0 ? 0 : s_aRuns[*pBytes % std::size(s_aRuns)](pBytes + 1, iCount - 1);
}

template <>
inline int RunFaults<CArrays>(unsigned uSeeds)
{
    return RunFaults<CTwins<CIntArray>>(uSeeds) + RunFaults<CTwins<CDblArray>>(uSeeds) +
           RunFaults<CTwins<CBoolArray>>(uSeeds) + RunFaults<CTwins<CDateArray>>(uSeeds) +
           RunFaults<CTwins<CPtrArray>>(uSeeds) + RunFaults<CTwins<CStrArray>>(uSeeds);
}

#endif
