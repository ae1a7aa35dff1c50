// What the families of the arrays have in common. A model of an array has the array's operations, written anew over
// std::deque; each row of the table says once what is done to both.
#ifndef TWINS_H
#define TWINS_H

#include "engine.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <optional>
#include <string_view>
#include <utility>

inline int GrowthStep(int iSize) { return std::clamp(iSize / 8, 4, 1024); }

/// What a model consists of.
template <class TSlot>
struct SSlots
{
    int Size() const { return static_cast<int>(aSlots.size()); }
    TSlot& Slot(int i) { return aSlots[static_cast<std::size_t>(i)]; }
    bool IsValid(int i) const { return i >= 0 && i < Size(); }

    /// Puts the texts of the elements behind a header.
    template <class TText>
    string Join(string strAll, const char* pszSep, TText ToText) const
    {
        for (const TSlot& slot : aSlots)
            strAll += (&slot != &aSlots.front() && pszSep != nullptr ? pszSep : "") + ToText(slot);
        return strAll;
    }
    template <class TText>
    string List(const string& strTag, const char* pszSep, bool bHeader, TText ToText) const
    {
        if (aSlots.empty())
            return "<" + strTag + ": unset>";
        const string strSizes  = std::to_string(Size()) + "/" + std::to_string(iCapacity);
        const string strHeader = strTag + ":(" + strSizes + ")" + (pszSep != nullptr ? pszSep : "(null)");
        return Join(bHeader ? strHeader : "", pszSep, ToText);
    }

    std::deque<TSlot> aSlots;
    int iCapacity = 0;
    bool bOwner   = false;
    bool bFails   = false; // whether there is no memory for this operation
};

constexpr char s_szNoText[] = "-11 at cstring.cpp( lines), (new char[m_iBufferSize]) failed(std::bad_alloc)";

/// What an operation is called with.
template <class T, class TValue>
struct SArguments
{
    int i, n;
    TValue value;
    const char* pszSep;
    T* pOther;
};

/// Two arrays with their models. Operations are done to those whose turn it is.
template <class TModel>
class CTwins
{
public:
    using CArray = typename TModel::CArray;

    static constexpr int s_iStates = 3; // fresh, with room, full

    struct SRow
    {
        const char* szName;
        std::function<void(CTwins&, CChoices&, CFault&)> Do;
    };

    void Prepare(int iState, CChoices& choices)
    {
        CFault none;
        const auto Add   = Edit([](auto& a, auto& x) { return a.Add(x.value); });
        const auto IsMet = [&]
        { return Model().Size() > 2 && (Model().Size() == Model().iCapacity) == (iState == 2); };
        for (int i = 0; i < 2; ++i, Turn())
            for (Renew(i > 0); iState > 0 && !IsMet();)
                Add(*this, choices, none);
        Check();
    }

    void Check()
    {
        for (int i = 0; i < 2; ++i, Turn())
        {
            Same("size", Model().Size(), Array().GetSize());
            Same("capacity", Model().iCapacity, Array().GetBufferSize());
            Model().Compare(Array());
        }
        m_source.Check(Model());
    }

private:
    CArray& Array() { return *m_aArrays[m_iTurn]; }
    TModel& Model() { return m_aModels[m_iTurn]; }
    void Turn() { m_iTurn = 1 - m_iTurn; }

    /// Replaces the array by a new one.
    void Renew(bool bOwner)
    {
        Model().RemoveAll();
        Model().bOwner = bOwner && TModel::s_bItems;
        if constexpr (TModel::s_bItems)
            m_aArrays[m_iTurn].emplace(bOwner);
        else
            m_aArrays[m_iTurn].emplace();
    }

    /// Draws an index, mostly a good one; a number, mostly small, else large or out of reach; and the rest.
    void Draw(CChoices& choices)
    {
        static constexpr int s_aiOutOfReach[]    = {INT_MIN, INT_MAX, 1 << 28};
        static constexpr const char* s_aszSeps[] = {", ", "", nullptr, "--"};
        const int iKind = choices.Byte(), iOther = iKind % 16 > 0 ? 1 - m_iTurn : m_iTurn; // or itself
        m_args.i      = iKind % 8 > 0 ? choices.Between(-1, Model().Size() + 1) : choices.AnyInt();
        m_args.n      = iKind == 255  ? choices.Between(7900, 9400)
                        : iKind > 240 ? s_aiOutOfReach[iKind % 3]
                                      : choices.Between(-2, 40);
        m_args.pszSep = s_aszSeps[choices.Byte() % 4];
        m_args.pOther = &*m_aArrays[iOther];
        m_copies      = {m_args.i, m_args.n, {}, m_args.pszSep, &m_aModels[iOther]};
        m_source.Draw(choices, Model(), Array(), m_args, m_copies);
    }

    /// Does the same to the array and to its model, and compares what they throw. Returns whether there was memory enough.
    template <class TArrayCall, class TModelCall>
    bool Both(CFault& fault, TArrayCall ArrayCall, TModelCall ModelCall)
    {
        const string strThrown               = WithoutLine(fault.Run(ArrayCall));
        const typename TModel::CState before = Model();
        Model().bFails                       = fault.WasHit();
        const string strExpected             = CFault().Run(ModelCall);
        const bool bEnough                   = strThrown.rfind("-11", 0) != 0;
        if (bEnough || strExpected != "")
            Same("thrown", strExpected, bEnough ? strThrown : strThrown.substr(0, strExpected.size()));
        else
            Same("had to fail", true, fault.WasHit());
        if constexpr (TModel::s_bTexts)
            if (!bEnough && m_aArrays[m_iTurn])
                Model().Settle(before, Array(), strThrown);
        return bEnough;
    }

    /// Makes an operation of what is done to an array and to its model, and must return the same.
    template <class TCall>
    static auto Edit(TCall Call)
    {
        return [Call](CTwins& f, CChoices& choices, CFault& fault)
        {
            f.Draw(choices);
            decltype(Call(f.Array(), f.m_args)) found{}, expected{};
            const bool bEnough = f.Both(
                fault, [&] { found = Call(f.Array(), f.m_args); },
                [&] { expected = Call(f.Model(), f.m_copies); });
            if (bEnough && memcmp(&expected, &found, sizeof found) != 0) // the sign of zero counts
                throw CMismatch("result differs");
        };
    }

    /// The same for operations that return a text, whose memory is CString's business.
    template <class TCall>
    static auto Make(TCall Call)
    {
        return [Call](CTwins& f, CChoices& choices, CFault& fault)
        {
            f.Draw(choices);
            string strExpected;
            const string strFails = CFault().Run([&] { strExpected = Call(f.Model(), f.m_copies); });
            const auto Compare    = [&](const CString& str)
            {
                Same("text", std::string_view(strExpected), std::string_view(str.ToStr()));
                Same("capacity", std::max(str.GetLength() + 1, str.IsEmpty() ? 8 : 0), str.GetBufferSize());
            };
            const string strThrown = fault.Run([&] { Compare(Call(f.Array(), f.m_args)); });
            Same("thrown", fault.WasHit() ? s_szNoText : strFails, WithoutLine(strThrown));
        };
    }

    /// Replaces the array by a new one, by each of the constructors.
    static void DoConstruct(CTwins& f, CChoices& choices, CFault& fault)
    {
        const int iKind  = choices.Byte() % 4,
                  iOther = 1 - f.m_iTurn; // an owner, a holder, with elements, a copy
        f.Draw(choices);
        f.Renew(iKind == 0 || (iKind == 2 && f.Model().bOwner));
        auto& holder     = f.m_aArrays[f.m_iTurn];
        const auto Build = [&, x = f.m_args]
        {
            if constexpr (TModel::s_bTexts)
                holder.emplace(x.n);
            else if constexpr (TModel::s_bItems)
                holder.emplace(x.n, x.value, f.Model().bOwner);
            else
                holder.emplace(x.n, x.value);
        };
        if (iKind == 2)
            f.Both(fault, Build, [&] { f.Model().Reset(f.m_args.n, f.m_copies.value); });
        else if (iKind == 3)
            f.Both(
                fault, [&] { holder.emplace(*f.m_aArrays[iOther]); },
                [&] { f.Model() = f.m_aModels[iOther]; });
        if (!holder)
            f.Renew(false);
    }

    /// Equal elements come in any order, and all do when there is a NaN.
    static void DoSort(CTwins& f, CChoices&, CFault& fault)
    {
        f.Both(
            fault, [&] { f.Array().Sort(); }, [] {});
        auto& aSlots = f.Model().aSlots;
        auto itNext  = aSlots.begin();
        for (const auto& element : f.Array())
        {
            const auto it = std::find_if(itNext, aSlots.end(),
                                         [&](const auto& slot) { return TModel::IsIt(slot, element); });
            Same("element known", true, it != aSlots.end());
            std::iter_swap(it, itNext++);
        }
        Same("sorted", true, f.Model().IsSorted());
    }

    /// The operations; the kinds of arrays differ in how they resize, and in a few more.
    static std::vector<SRow> Rows()
    {
        std::vector<SRow> aRows{
            {"turn", [](CTwins& f, CChoices&, CFault&) { f.Turn(); }},
            {"Add", Edit([](auto& a, auto& x) { return a.Add(x.value); })},
            {"InsertAt", Edit([](auto& a, auto& x) { return a.InsertAt(x.i, x.value); })},
            {"IsIn", Edit([](auto& a, auto& x) { return a.IsIn(x.value); })},
            {"Repr", Make([](auto& a, auto& x) { return a.Repr(x.pszSep, x.i % 2 == 0); })},
            {"SetAt", Edit([](auto& a, auto& x) { return a.SetAt(x.i, x.value), 0; })},
            {"RemoveAt", Edit([](auto& a, auto& x) { return a.RemoveAt(x.i); })},
            {"RemoveLast", Edit([](auto& a, auto&) { return a.RemoveLast(), 0; })},
            {"Clear", Edit([](auto& a, auto&) { return a.Clear(), 0; })},
            {"RemoveAll", Edit([](auto& a, auto&) { return a.RemoveAll(), 0; })},
            {"=", Edit([](auto& a, auto& x) { return &(a = *x.pOther) == &a; })},
            {"construction", &CTwins::DoConstruct},
        };
        const auto More = [&](std::initializer_list<SRow> rows) { aRows.insert(aRows.end(), rows); };
        if constexpr (TModel::s_bTexts)
            More({
                {"[]", Edit([](auto& a, auto& x) { return PutNul(a, x.i); })},
                {"GetAt", Edit([](auto& a, auto& x) { return a.GetAt(x.i)[0] == '\0'; })},
                {"GetAtLast", Make([](auto& a, auto&) { return a.GetAtLast(); })},
                {"Join", Make([](auto& a, auto& x) { return a.Join(x.value); })},
                {"SetSize", Edit([](auto& a, auto& x) { return a.SetSize(x.n); })},
                {"FreeExtra", Edit([](auto& a, auto&) { return a.FreeExtra(), 0; })},
            });
        else
            More({
                {"GetAt", Edit([](auto& a, auto& x) { return a.GetAt(x.i); })},
                {"[]", Edit([](auto& a, auto& x) { return a[x.i]; })},
                {"GetAtLast", Edit([](auto& a, auto&) { return a.GetAtLast(); })},
                {"SetAt same", Edit([](auto& a, auto& x) { return a.SetAt(x.i, a.GetAt(x.i)), 0; })},
                {"GrowBuffer", Edit([](auto& a, auto& x) { return a.GrowBuffer(x.n), 0; })},
                {"Reset", Edit([](auto& a, auto& x) { return a.Reset(x.n, x.value), 0; })},
                {"Reset held",
                 Edit([](auto& a, auto& x)
                      { return a.Reset(x.n > 20000 ? x.n : std::min(x.n, 1), a.GetAt(x.i)), 0; })},
            });
        if constexpr (!TModel::s_bItems)
            More({{"Find", Edit([](auto& a, auto& x) { return a.Find(x.value); })},
                  {"Sort", &CTwins::DoSort}});
        if constexpr (!TModel::s_bItems && !TModel::s_bTexts)
            More({{"[] =", Edit([](auto& a, auto& x) { return a[x.i] = x.value, 0; })}});
        return aRows;
    }

    typename TModel::CSource m_source; // of the values, alive for longer than the arrays
    TModel m_aModels[2];
    std::optional<CArray> m_aArrays[2];
    int m_iTurn = 0;
    SArguments<CArray, typename TModel::Value> m_args;
    SArguments<TModel, typename TModel::Value> m_copies;

public:
    inline static const std::vector<SRow> s_aOperations = Rows();
};

#endif
