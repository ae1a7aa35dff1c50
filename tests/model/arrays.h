// CIntArray, CDblArray, CBoolArray, CDateArray, CPtrArray and CStrArray against one model. It has the arrays' operations,
// written anew over std::deque; each row of the table says once what is done to an array and to its model.
#ifndef ARRAYS_H
#define ARRAYS_H

#include "engine.h"

#include <cmath>
#include <deque>
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

// For each element: its array's name, whether the array shows it, and some worth trying.
constexpr const char* Name(int) { return "CIntArray"; }
constexpr const char* Name(double) { return "CDblArray"; }
constexpr const char* Name(bool) { return "CBoolArray"; }
constexpr const char* Name(CPtrArrayItem*) { return "CPtrArray"; }
constexpr const char* Name(const char*) { return "CStrArray"; }
inline const char* Name(const CDate&) { return "CDateArray"; }
inline string TextOf(const SElement& element) { return element.strText; }
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
inline bool IsIt(const char* pszText, const CString& str) { return str == pszText; }
inline void DrawNew(CChoices& choices, int& iValue) { iValue = choices.AnyInt(); }
inline void DrawNew(CChoices& choices, bool& bValue) { bValue = choices.Byte() % 2 == 1; }
inline void DrawNew(CChoices& choices, double& dValue)
{
    static constexpr double s_ad[] = {0.0, 1e308, 4.9e-324, 0.1 + 0.2, 0.3, -2.5};
    const int iKind                = choices.Byte();
    dValue = iKind < 128 ? s_ad[iKind % 6] : std::ldexp(choices.AnyInt() | 1, iKind - 150);
}
inline void DrawNew(CChoices& choices, CDate& date)
{
    const CDate aDates[] = {CDate(), "", "00000000", "2024022", "\xff", 20240229, 20231231};
    date                 = aDates[choices.Byte() % 7];
}

/// What an element is sorted by. Unset dates, which are equal to the empty text, come first.
template <class T>
const T& SortedBy(const T& value)
{
    return value;
}
inline auto SortedBy(const CDate& date) { return std::pair(date.IsSet(), date); }

/// Items that are alive, and those deleted in this operation. What nobody has deleted goes at the end.
struct SItems
{
    struct SItem : CPtrArrayItem
    {
        explicit SItem(SItems& items) : m_items(items) { items.alive.insert(this); }
        ~SItem() override
        {
            m_items.alive.erase(this);
            m_items.aDeleted.push_back(this);
        }
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

/// Returns how many slots a full array of iSize elements gains.
inline int GrowthStep(int iSize) { return iSize < 40 ? 4 : iSize < 8200 ? iSize / 8 : 1024; }

// ---- The model ---------------------------------------------------------------------------------------------------

template <class TArray>
struct SState
{
    using Value = std::decay_t<decltype(std::declval<TArray&>().GetAt(0))>;
    using Slot  = std::conditional_t<std::is_same_v<TArray, CStrArray>, SElement, Value>;

    std::deque<Slot> aSlots;
    int iCapacity = 0;
    bool bOwner   = false;
    std::vector<CPtrArrayItem*> aDropped; // by the operation
};

template <class TArray>
struct SModel : SState<TArray>
{
    using State = SState<TArray>;
    using State::aSlots, State::iCapacity, State::bOwner, State::aDropped, typename State::Value,
        typename State::Slot;

    static constexpr bool s_bItems   = std::is_same_v<TArray, CPtrArray>,
                          s_bTexts   = !std::is_same_v<Value, Slot>,
                          s_bLenient = s_bItems || s_bTexts; // about an index

    SModel() = default;
    SModel(const SModel& other) : State() { *this = other; }
    SModel(SModel&& other) noexcept : State(other) { other.Lose(); }
    SModel& operator=(SModel&& other)
    {
        *this  = std::as_const(other);
        bOwner = other.bOwner;
        if (this != &other)
            other.Lose();
        return *this;
    }
    void Lose() { static_cast<State&>(*this) = {{}, 0, bOwner, {}}; }

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
        if constexpr (s_bTexts) // an element has memory for a short text from the start, or is not inserted
            bUndone = value != nullptr && strlen(value) - 1 < 7;
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
    Value Detach(int i)
    {
        const Value value = Checked("Detach", i);
        aSlots.erase(aSlots.begin() + i);
        return value;
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
        bUndone = true;
        for (; !aSlots.empty(); aSlots.pop_front())
            Drop(aSlots.front());
    }
    void RemoveAll()
    {
        Clear();
        iCapacity = 0;
    }
    void GrowBuffer(int n) { iCapacity += n < 1 ? GrowthStep(Size()) : n > iCapacity ? n : 0; }
    void Reset(int n, Value value)
    {
        const State before = *this;
        aSlots.clear();
        iCapacity = s_bItems ? iCapacity : 0;
        if (!s_bItems)
            KeepForFailure();
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
        bUndone = true;
        if (n > iCapacity)
            iCapacity = iCapacity == 0 ? n : std::max(iCapacity + GrowthStep(Size()), n);
        aSlots.resize(static_cast<std::size_t>(n));
        return 0;
    }
    void FreeExtra() { iCapacity = Size(); }
    SModel& operator=(const SModel& other)
    {
        if (this == &other)
            return *this;
        const int iKept = s_bTexts && !other.aSlots.empty() ? iCapacity : 0;
        RemoveAll();
        iCapacity = iKept;
        KeepForFailure();
        bOwner = false;
        if (s_bTexts)
            SetSize(other.Size());
        else if (s_bItems || other.iCapacity > 0)
            GrowBuffer(s_bItems ? other.Size() : other.iCapacity);
        aSlots.clear();
        for (const Slot& slot : other.aSlots)
            Add(slot);
        bUndone = false;
        return *this;
    }
    void Sort()
    {
        Sort([](const Slot& left, const Slot& right) { return SortedBy(left) < SortedBy(right); });
        if constexpr (s_bTexts) // equal ones come in any order
            for (Slot& slot : aSlots)
                slot.pStr = nullptr;
    }

    template <class TOrder>
    void Sort(TOrder Order)
    {
        std::stable_sort(aSlots.begin(), aSlots.end(), Order);
    }

    /// Notes that the operation leaves this state if it finds no memory from now on.
    void KeepForFailure() { kept = *this; }

    /// Takes over the documented state that an operation leaves which found no memory, for a text or for the array: it may
    /// have emptied texts of those that it was to change.
    void Fail(const State& before, const TArray& arr, bool bText)
    {
        const State done = *this;
        const auto Has   = [](const auto& aAll, const Slot& slot)
        { return std::count(aAll.begin(), aAll.end(), slot) > 0; };
        if (!bText || bUndone)
            static_cast<State&>(*this) = kept;
        if constexpr (s_bTexts)
            for (int i = 0; bText && i < std::min(Size(), arr.GetSize()); ++i)
                if (arr[i].IsEmpty() && !(*this)[i].strText.empty() &&
                    !(Has(before.aSlots, (*this)[i]) && Has(done.aSlots, (*this)[i])))
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
        bUndone = false;
    }

    State kept;           // what the operation leaves if it finds no memory for the array
    bool bUndone = false; // whether it leaves that, too, if it finds no memory for a text
};

// ---- The family --------------------------------------------------------------------------------------------------

/// Two arrays with their models. Operations are done to those whose turn it is.
template <class TArray>
class CTwins
{
    using CModel = SModel<TArray>;
    using Value  = typename CModel::Value;

public:
    static constexpr int s_iStates = 4; // fresh, with room, full, emptied

    using SRow = SOperation<CTwins>;

    void Prepare(int iState, CChoices& choices)
    {
        for (int i = 0; i < 2; ++i)
        {
            Renew(i > 0);
            while (iState > 0 &&
                   (Model().Size() < 3 || (Model().Size() == Model().iCapacity) != (iState == 2)))
            {
                DrawArguments(choices, false);
                Model().Add(m_value);
                Array().Add(m_value);
            }
            if (iState == 3)
            {
                Model().Clear();
                Array().Clear();
                Model().aDropped.clear();
                m_items.aDeleted.clear();
            }
            Turn();
        }
        Check();
    }

    void Check()
    {
        for (int i = 0; i < 2; ++i)
        {
            Model().Compare(Array());
            Turn();
        }
        if (Model().aDropped != m_items.aDeleted)
            throw CMismatch("deleted items differ from those to be deleted");
        Model().aDropped.clear();
        m_items.aDeleted.clear();
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

    /// Draws mostly a good index and a small number. An owner may hold an item only once.
    void DrawArguments(CChoices& choices, bool bLarge)
    {
        static constexpr const char* s_apsz[] = {nullptr, "", ", "};
        m_iIndex = choices.Byte() % 8 > 0 ? choices.Between(-1, Model().Size() + 1) : choices.AnyInt();
        const bool bMany = choices.Byte() == 255 && bLarge && !Model().bOwner;
        const int iKind  = choices.Byte() % 4;
        const int iMany =
            iKind < 2 ? choices.Between(40, 9300) : (iKind == 2 ? 8192 : 32768) + choices.Between(-20, 20);
        m_iCount = bMany ? iMany : choices.Between(-2, Model().bOwner ? 1 : 40);
        m_pszSep = s_apsz[choices.Byte() % 3];
        DrawValue(choices);
    }

    /// Draws an element, often one that is there. For an owner it is null or new. A text may be a part of an element's own, or
    /// begin as others do.
    void DrawValue(CChoices& choices)
    {
        const int iHeld = choices.Between(-Model().Size() - 1, Model().Size() - 1), iKind = choices.Byte();
        if constexpr (CModel::s_bTexts)
        {
            m_strText = (iKind % 4 == 1 ? "prefix " : iKind % 4 == 2 ? "prefix 8" : "");
            m_strText += choices.Text(iKind % 8 < 4 ? 2 : 12);
            if (iKind > 230)
                m_strText.resize(static_cast<std::size_t>(choices.LengthAtAnEdge()), 'x');
            m_value = iHeld >= 0       ? Array().GetAt(iHeld) + iKind % (Array()[iHeld].GetLength() + 1)
                      : iKind % 4 == 0 ? nullptr
                                       : AtTheEnd(m_strText);
        }
        else if (iHeld >= 0 && !Model().bOwner)
            m_value = Model()[iHeld];
        else if constexpr (CModel::s_bItems)
            m_value = iKind % 4 == 0 ? nullptr : new SItems::SItem(m_items);
        else
            DrawNew(choices, m_value);
    }

    /// Makes an operation of what is done to a model and to its array. Both must return or throw the same, unless there is
    /// no memory for the array.
    template <class TForm>
    static auto Do(TForm Form)
    {
        return [Call = WithResult(Form)](CTwins& f, CChoices& choices, CFault& fault)
        {
            f.DrawArguments(choices, fault.GetNth() == 0);
            const typename CModel::State before = f.Model(), otherBefore = f.Other(f.Model());
            f.Model().KeepForFailure();
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
            {
                Same("thrown", strExpected, strThrown);
                Same("result", strThrown.empty(), bSame);
                return;
            }
            Failed(fault, strThrown, s_strWays + "|0 " + Name(Value()) + " - Out of memory");
            static_cast<typename CModel::State&>(f.Other(f.Model())) = otherBefore;
            f.Model().Fail(before, f.Array(), strThrown.find("cstring.cpp") != string::npos);
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
            {"= moved", Do([](auto& a, auto& x) { a = std::move(x.Other(a)); })},
            {"move", Do([](auto& a, auto&) { a = std::decay_t<decltype(a)>(std::move(a)); })},
            {"= itself", Do([](auto& a, auto&) { return &(a = *&a) == &a; })},
            {"Add", Do([](auto& a, auto& x) { return a.Add(x.m_value); })},
            {"InsertAt", Do([](auto& a, auto& x) { return a.InsertAt(x.m_iIndex, x.m_value); })},
            {"GetAtLast", Do([](auto& a, auto&) { return a.GetAtLast(); })},
            {"IsIn", Do([](auto& a, auto& x) { return a.IsIn(x.m_value); })},
            {"Repr", Do([](auto& a, auto& x) { return a.Repr(x.m_pszSep, x.m_iIndex % 2 == 0); })},
            {"SetAt", Do([](auto& a, auto& x) { a.SetAt(x.m_iIndex, x.m_value); })},
            {"RemoveAt", Do([](auto& a, auto& x) { return a.RemoveAt(x.m_iIndex); })},
            {"RemoveLast", Do([](auto& a, auto&) { a.RemoveLast(); })},
            {"Clear", Do([](auto& a, auto&) { a.Clear(); })},
            {"RemoveAll", Do([](auto& a, auto&) { a.RemoveAll(); })},
        };
        const auto More = [&](std::initializer_list<SRow> rows) { aRows.insert(aRows.end(), rows); };
        if constexpr (CModel::s_bTexts)
            More({{"Join", Do([](auto& a, auto& x) { return a.Join(x.m_value); })},
                  {"SetSize", Do([](auto& a, auto& x) { return a.SetSize(x.m_iCount); })},
                  {"Sort by", Do([](auto& a, auto&)
                                 { a.Sort([](const char* l, const char* r) { return strcmp(r, l) < 0; }); })},
                  {"FreeExtra", Do([](auto& a, auto&) { a.FreeExtra(); })}});
        else
            More({{"[]", Do([](auto& a, auto& x) { return a[x.m_iIndex]; })},
                  {"GetAt, SetAt", Do([](auto& a, auto& x) { a.SetAt(x.m_iIndex, a.GetAt(x.m_iIndex)); })},
                  {"GrowBuffer", Do([](auto& a, auto& x) { a.GrowBuffer(x.m_iCount); })},
                  {"Reset", Do([](auto& a, auto& x) { a.Reset(x.m_iCount, x.m_value); })},
                  {"Reset held", Do([](auto& a, auto& x) { a.Reset(x.m_iCount, a.GetAt(x.m_iIndex)); })}});
        if constexpr (CModel::s_bItems)
            More({{"Detach", Do([](auto& a, auto& x) { return a.Detach(x.m_iIndex); })},
                  {"Sort by", Do([](auto& a, auto&)
                                 { a.Sort([](CPtrArrayItem* l, CPtrArrayItem* r) { return l < r; }); })}});
        else
            More({{"Find", Do([](auto& a, auto& x) { return a.Find(x.m_value); })},
                  {"Sort", Do([](auto& a, auto&) { a.Sort(); })},
                  {"[] =", Do([](auto& a, auto& x) { a[x.m_iIndex] = x.m_value; })}});
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

struct CArrays : SFamilies<CTwins<CIntArray>, CTwins<CDblArray>, CTwins<CBoolArray>, CTwins<CDateArray>,
                           CTwins<CPtrArray>, CTwins<CStrArray>>
{
    static constexpr char s_szName[] = "arrays";
};

#endif
