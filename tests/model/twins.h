// What the families of the arrays have in common. A model of an array has the array's operations, written anew over
// std::vector; each row of a family's table says once what is done to both.
#ifndef TWINS_H
#define TWINS_H

#include "engine.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

inline int GrowthStep(int iSize) { return std::clamp(iSize / 8, 4, 1024); }

/// The slots of a model, as many as the capacity, and memory that can be told to fail.
template <class TSlot>
struct SSlots
{
    int GetBufferSize() const { return static_cast<int>(aSlots.size()); }
    TSlot& Slot(int i) { return aSlots.data()[i]; }
    bool IsValid(int i) const { return i >= 0 && i < iSize; }

    /// Asks for memory, and returns whether it is to be had. Large buffers may be reserved: the request is unknown, -1.
    bool Ask(std::int64_t iCount, std::size_t iElement, std::size_t iHead = 0)
    {
        const std::int64_t iBytes = iCount * static_cast<std::int64_t>(iElement);
        iAsked = iCount < 8192 && iBytes <= 65536 ? iBytes + static_cast<std::int64_t>(iHead) : -1;
        return --iFailing != 0 && iCount <= INT_MAX && iBytes <= 128 << 20;
    }

    string Join(const char* pszSep = ",") const
    {
        string strAll;
        for (int i = 0; i < iSize; ++i)
            strAll += (i > 0 && pszSep != nullptr ? pszSep : "") + aSlots.data()[i].Text();
        return strAll;
    }

    string List(const string& strTag, const char* pszSep, bool bHeader)
    {
        if (iSize == 0)
            return "<" + strTag + ": unset>";
        const string strSizes = std::to_string(iSize) + "/" + std::to_string(GetBufferSize());
        return (bHeader ? strTag + ":(" + strSizes + ")" + (pszSep != nullptr ? pszSep : "(null)") : "") +
               Join(pszSep);
    }

    std::vector<TSlot> aSlots;
    int iSize           = 0;
    bool bOwner         = false;
    int iFailing        = 0; // which request of the operation fails
    std::int64_t iAsked = 0; // the bytes of the last request
};

/// What an operation is called with.
template <class T, class TValue>
struct SArguments
{
    int i, n;
    TValue value;
    const char* pszSep;
    T* pOther;
};

/// An array, which std::optional can hold so: its copy constructor takes what is not const.
template <class TArray>
struct SHolder
{
    template <class... TArgs>
    explicit SHolder(TArgs&&... args) : arr(args...)
    {
    }
    SHolder(const SHolder&) = delete;

    TArray arr;
};

/// Two arrays with their models. Operations are done to those whose turn it is.
template <class TFamily, class TArray, class TModel>
class CTwins
{
public:
    static constexpr int s_iStates = 3; // fresh, with room, full

    struct SRow
    {
        const char* szName;
        std::function<void(TFamily&, CChoices&, CFault&)> Do;
    };

    void Prepare(int iState, CChoices& choices)
    {
        CFault none;
        const auto Add   = Edit([](auto& a, auto& x) { return a.Add(x.value); });
        const auto IsMet = [&]
        { return Model().iSize > 2 && (Model().iSize == Model().GetBufferSize()) == (iState == 2); };
        for (int i = 0; i < 2; ++i, Turn())
            for (Renew(i > 0); iState > 0 && !IsMet();)
                Add(Family(), choices, none);
        m_iTurn = choices.Byte() % 2;
        Check();
    }

    void Check()
    {
        for (int i = 0; i < 2; ++i, Turn())
            Model().Compare(Array());
    }

    TFamily& Family() { return static_cast<TFamily&>(*this); }
    std::optional<SHolder<TArray>>& Holder() { return m_aArrays[m_iTurn]; }
    TArray& Array() { return Holder()->arr; }
    TModel& Model() { return m_aModels[m_iTurn]; }
    void Turn() { m_iTurn = 1 - m_iTurn; }

    /// Replaces the array by a new one.
    void Renew(bool bOwner)
    {
        Model().RemoveAll();
        if constexpr (std::is_same_v<TArray, CPtrArray>)
            Holder().emplace(Model().bOwner = bOwner);
        else
            Holder().emplace();
    }

    /// Draws an index, mostly a good one; a number, mostly small, else large or out of reach; and the rest.
    void Draw(CChoices& choices)
    {
        static constexpr int s_aiOutOfReach[]    = {INT_MIN, INT_MAX, 1 << 28};
        static constexpr const char* s_aszSeps[] = {", ", "", nullptr, "--"};
        const int iKind                          = choices.Byte();
        m_args.i        = iKind % 8 > 0 ? choices.Between(-1, Model().iSize + 1) : choices.AnyInt();
        m_args.n        = iKind == 255  ? choices.Between(7000, 20000)
                          : iKind > 240 ? s_aiOutOfReach[iKind % 3]
                                        : choices.Between(-2, 40);
        m_args.pszSep   = s_aszSeps[choices.Byte() % 4];
        m_args.pOther   = &m_aArrays[1 - m_iTurn]->arr;
        m_copies.pOther = &m_aModels[1 - m_iTurn];
        Family().DrawValue(choices);
        m_copies.i = m_args.i, m_copies.n = m_args.n, m_copies.pszSep = m_args.pszSep;
    }

    /// Does the same to the array and to its model, and compares what they throw and ask for.
    template <class TArrayCall, class TModelCall>
    void Both(CFault& asked, TArrayCall ArrayCall, TModelCall ModelCall)
    {
        CFault none; // how many requests a large array of texts makes is not known
        CFault& fault = std::is_same_v<TArray, CStrArray> && Model().GetBufferSize() >= 8192 ? none : asked;
        string strThrown          = WithoutLine(fault.Run(ArrayCall));
        const std::size_t iReason = strThrown.find("std::bad_array_new_length"); // of some compilers
        if (iReason != string::npos)
            strThrown.replace(iReason, 25, "std::bad_alloc");
        const std::int64_t iAsked = static_cast<std::int64_t>(LastRequest());
        Model().iFailing          = fault.WasHit() ? fault.GetNth() : 0;
        Model().iAsked            = 0;
        Same("thrown", CFault().Run(ModelCall), strThrown);
        if (Model().iAsked >= 0)
            Same("bytes asked for", Model().iAsked, iAsked);
    }

    /// Makes an operation of what is done to an array and to its model, and must return the same.
    template <class TCall>
    static auto Edit(TCall Call)
    {
        return [Call](TFamily& family, CChoices& choices, CFault& fault)
        {
            family.Draw(choices);
            decltype(Call(family.Array(), family.m_args)) found{}, expected{};
            family.Both(
                fault, [&] { found = Call(family.Array(), family.m_args); },
                [&] { expected = Call(family.Model(), family.m_copies); });
            if (memcmp(&expected, &found, sizeof found) != 0) // the sign of zero counts
                throw CMismatch("result differs");
        };
    }

    /// The same for operations that return a text, whose memory is CString's business.
    template <class TCall>
    static auto Make(TCall Call)
    {
        return [Call](TFamily& family, CChoices& choices, CFault& fault)
        {
            family.Draw(choices);
            string strExpected, strText;
            const string strFails =
                CFault().Run([&] { strExpected = Call(family.Model(), family.m_copies); });
            const int iCapacity = strExpected.empty() ? 8 : static_cast<int>(strExpected.size()) + 1;
            const auto Compare  = [&](const CString& str)
            {
                Same("text", std::string_view(strExpected), std::string_view(str.ToStr()));
                Same("capacity", iCapacity, str.GetBufferSize());
            };
            const string strThrown =
                WithoutLine(fault.Run([&] { Compare(Call(family.Array(), family.m_args)); }));
            Same("thrown", fault.WasHit() ? s_szNoText : strFails, strThrown);
        };
    }

    /// Replaces the array by a new one, by each of the constructors.
    static void DoConstruct(TFamily& family, CChoices& choices, CFault& fault)
    {
        const int iKind = choices.Byte() % 4; // an owner, a holder, one with elements, a copy
        family.Draw(choices);
        auto& holder = family.Holder();
        family.Renew(iKind == 0 || (iKind == 2 && family.Model().bOwner));
        if (iKind < 2)
            return;
        holder.reset();
        family.Both(
            fault,
            [&]
            {
                iKind == 2 ? TModel::Build(holder, family.m_args, family.Model().bOwner)
                           : void(holder.emplace(*family.m_args.pOther));
            },
            [&] {
                iKind == 2 ? family.Model().Build(family.m_args)
                           : void(family.Model() = *family.m_copies.pOther);
            });
        if (!holder)
            family.Renew(false);
    }

    static constexpr char s_szNoText[] =
        "-11 at cstring.cpp( lines), (new char[m_iBufferSize]) failed(std::bad_alloc)";

    SArguments<TArray, typename TModel::Value> m_args;
    SArguments<TModel, typename TModel::Value> m_copies;

private:
    std::optional<SHolder<TArray>> m_aArrays[2];
    TModel m_aModels[2];
    int m_iTurn = 0;
};

#endif
