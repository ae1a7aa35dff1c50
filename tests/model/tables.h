// CIntHash, CDblHash, CStrHash and CPtrHash, as an owner and as a holder, against a list of keys in the order of their
// buckets, with what their values print as.
#ifndef TABLES_H
#define TABLES_H

#include "engine.h"

#include <map>

struct CItem : CPtrArrayItem
{
    CItem() { ++s_iAlive; }
    ~CItem() override { --s_iAlive; }

    static inline int s_iAlive = 0;
};

/// A list that is an owner until it is assigned to.
struct COwnerList : CPtrArray
{
    COwnerList() : CPtrArray(true) {}
};

/// One of the tables. aOwner is what its constructor takes before the number of buckets: nothing, or whether it owns.
template <class THash, class TList, class TValue, bool... aOwner>
class CTable
{
public:
    static constexpr int s_iStates = 3; // empty, with full lists, and with an index that is about to grow
    static const SOperation<CTable> s_aOperations[10];

    void Prepare(int iState, CChoices&)
    {
        CFault none;
        CChoices least(nullptr, 0);
        Renew(least, none);
        for (int i = 0; i < (iState < 2 ? 2 * iState : s_bTexts ? 34 : 32); ++i) // two keys, with full lists
            SetKey(Key(i % 2), Draw(least), false, none);
        for (int i = 2; i < 13 && iState == 2; ++i) // the index is about to grow
            SetKey(Key(i), Draw(least), false, none);
        Check();
    }

    void Check()
    {
        CStrArray arrKeys(1);
        std::as_const(*m_hash).GetKeys(arrKeys);
        arrKeys.Add("");
        int iCount = 0;
        string strFirst, strFirstFound;
        m_strKeys.clear();
        for (const auto& [iBucket, key] : m_keys)
        {
            TList list;
            Same("found", 0, std::as_const(*m_hash).Get(CString(key.strKey.c_str()), &list));
            Same(key.strKey.c_str(), key.strValues, Text(list));
            iCount += key.iCount;
            m_strKeys += key.strKey + "|";
            strFirst += key.strKey + "=" + First(key) + "|";
        }
        for (const auto& entry : *m_hash)
            strFirstFound += string(entry.m_pszKey) + "=" + Text(entry.m_value) + "|";
        Same("keys", m_strKeys, string(arrKeys.Join("|").ToStr()));
        Same("first values", strFirst, strFirstFound);
        Same("buckets", m_iHashSize, m_hash->GetHashSize());
        Same("values", iCount, m_hash->GetDataCnt());
        Same("keys", static_cast<int>(m_keys.size()), m_hash->GetKeyCnt());
        Same("items", s_bOwner ? iCount : 0, CItem::s_iAlive);
    }

    void Renew(CChoices& choices, CFault& fault)
    {
        m_keys.clear();
        if (choices.Byte() % 2 > 0)
            return Same("failure", "", fault.Run([&] { m_hash->Clear(); }));
        m_iHashSize = choices.Between(1, 8);
        SetRandomBytes(choices.Byte() % 3 > 0 ? 0xC5 : 0); // with 0, all keys collide
        const auto Construct = [&] { m_hash.emplace(aOwner..., m_iHashSize); };
        if (Failed(fault, fault.Run(Construct), "0 " + s_strClass + "Hash() Out of memory"))
            Construct();
    }

    /// To a new table and back, the first one being in use meanwhile, or not.
    void Move(CChoices& choices, CFault&)
    {
        THash hash(std::move(*m_hash));
        Same("empty", 0, m_hash->GetDataCnt() + m_hash->GetKeyCnt() + (m_hash->begin() != m_hash->end()));
        Same("buckets", m_iHashSize, m_hash->GetHashSize());
        Same("not found", false, m_hash->IsIn(DrawKey(choices)));
        if (choices.Byte() % 2 > 0)
            Same("set", 0, m_hash->Set("b", Draw(choices)) + m_hash->Get(CString("b"), nullptr));
        if (choices.Byte() % 2 > 0)
            m_hash->Clear();
        *m_hash = std::move(hash);
        Same("empty", -1, hash.Get(DrawKey(choices), nullptr) + hash.GetKeyCnt());
    }

    void Set(CChoices& choices, CFault& fault)
    {
        const char* pszKey  = DrawKey(choices);
        const bool bReplace = choices.Byte() % 2 == 0;
        SetKey(pszKey, Draw(choices), bReplace, fault);
    }

    /// Each of many keys meets the failure; where that is the index's, it goes on until that is full.
    void Many(CChoices& choices, CFault& fault)
    {
        const int iFirst = choices.Byte(), iStep = choices.Between(-7, 7),
                  iCount = choices.Between(1, s_iKeys);
        for (int i = 0; i < iCount; ++i)
            iStep > 0 ? RemoveKey(Key(iFirst + i * iStep), fault)
                      : SetKey(Key(iFirst + i), Draw(choices), false, fault);
    }

    void Remove(CChoices& choices, CFault& fault) { RemoveKey(DrawKey(choices), fault); }

    void GetFirst(CChoices& choices, CFault& fault) { Get<CFirst>(choices, fault); }
    void GetList(CChoices& choices, CFault& fault) { Get<TList>(choices, fault); }

    void GetKeys(CChoices&, CFault& fault)
    {
        CStrArray arrKeys(1);
        Failed(fault, fault.Run([&] { m_hash->GetKeys(arrKeys); }), Ways());
        const string strFound = arrKeys.Join("|").ToStr();
        Same("keys before a failure", m_strKeys.substr(0, strFound.size()), strFound);
    }

    void Dump(CChoices&, CFault& fault)
    {
        CStream streamAll(1 << 16), stream(1 << 16);
        m_hash->Dump(nullptr);
        m_hash->Dump(&streamAll);
        Failed(fault, fault.Run([&] { m_hash->Dump(&stream); }), Ways());
        const string strFound = stream.ToStr();
        Same("lines before a failure", string(streamAll.ToStr()).substr(0, strFound.size()), strFound);
        Same("whole lines", true, strFound.empty() || strFound.back() == '\n');
    }

private:
    static constexpr bool s_bTexts        = std::is_same_v<THash, CStrHash>;
    static constexpr bool s_bOwner        = (aOwner || ... || false);
    static constexpr bool s_bItems        = std::is_pointer_v<TValue> && !s_bTexts;
    static constexpr bool s_bInts         = std::is_same_v<TValue, int>;
    static constexpr int s_iKeys          = 64;
    static inline const string s_strClass = s_bTexts ? "CStr" : s_bItems ? "CPtr" : s_bInts ? "CInt" : "CDbl";
    using CFirst                          = std::conditional_t<s_bTexts, CString, TValue>;

    struct SKey
    {
        string strKey, strValues;
        int iCount;
    };

    void SetKey(const char* pszKey, TValue value, bool bReplace, CFault& fault)
    {
        const string strKey = pszKey;
        auto itKey          = Find(strKey);
        int iResult         = 0;
        string strFailure   = fault.Run([&] { iResult = m_hash->Set(pszKey, value, bReplace); });
        if (iResult != 0)
            strFailure = std::to_string(iResult);
        // The index of some keys goes on as it is when it cannot grow.
        const bool bIndexStays = itKey == m_keys.end() && m_keys.size() > 12 && strFailure.empty();
        if (!bIndexStays && Failed(fault, strFailure, Ways()))
        {
            if constexpr (s_bOwner) // which has not taken the item over
                delete value;
            return;
        }
        const int iHash = THash::HashFunc(pszKey, static_cast<int>(strKey.size()));
        if (itKey == m_keys.end())
            itKey = m_keys.emplace(iHash % m_iHashSize, SKey{strKey, "", 0});
        SKey& key     = itKey->second;
        key.iCount    = bReplace ? 1 : key.iCount + 1;
        key.strValues = (key.iCount > 1 ? key.strValues + ", " : "") + Text(value);
    }

    void RemoveKey(const char* pszKey, CFault& fault)
    {
        Same("failure", "", fault.Run([&] { m_hash->Remove(pszKey); }));
        if (const auto itKey = Find(pszKey); itKey != m_keys.end())
            m_keys.erase(itKey);
    }

    static string First(const SKey& key) { return key.strValues.substr(0, key.strValues.find(", ")); }

    auto Find(const string& strKey)
    {
        return std::find_if(m_keys.begin(), m_keys.end(),
                            [&](const auto& it) { return it.second.strKey == strKey; });
    }

    /// Compares a Get of the first value or of all.
    template <class TTarget>
    void Get(CChoices& choices, CFault& fault)
    {
        TTarget target{};
        TTarget* pTarget   = choices.Byte() % 4 > 0 ? &target : nullptr;
        const char* pszKey = DrawKey(choices);
        string strExpected = Text(target);
        const auto itKey   = Find(pszKey);
        int iResult        = itKey != m_keys.end() ? 0 : -1;
        if (iResult == 0 && pTarget != nullptr)
            strExpected = std::is_same_v<TTarget, CFirst> ? First(itKey->second) : itKey->second.strValues;
        if (Failed(fault, fault.Run([&] { iResult -= m_hash->Get(pszKey, pTarget); }), Ways()))
            return;
        Same("difference of results", 0, iResult);
        Same("values", strExpected, Text(target));
    }

    /// Some keys of all lengths around those of words.
    static const char* Key(int i)
    {
        static constexpr const char* s_aszFew[] = {"", "a", "A", "f", "i", "q", "\xe9t\xe9", "abcdefghij"};
        char szMore[24];
        snprintf(szMore, sizeof szMore, "%.*s%d", i % s_iKeys % 21, "xxxxxxxxxxxxxxxxxxxxx", i % s_iKeys);
        return AtTheEnd(i % s_iKeys < 8 ? s_aszFew[i % s_iKeys] : szMore);
    }
    static const char* DrawKey(CChoices& choices)
    {
        const int iKind = choices.Byte();
        return Key(iKind < 128 ? iKind % 8 : iKind);
    }
    static TValue Draw(CChoices& choices)
    {
        static constexpr const char* s_aszTexts[] = {"", "a", "a text of some length",
                                                     "another text of some length"};
        static CPtrArrayItem s_item;
        if constexpr (s_bTexts)
            return s_aszTexts[choices.Byte() % 4];
        else if constexpr (s_bOwner)
            return new CItem();
        else if constexpr (s_bItems)
            return choices.Byte() % 4 > 0 ? &s_item : nullptr;
        else
            return static_cast<TValue>(choices.AnyInt() / 8.0);
    }

    string Ways() const { return s_strWays + "|-99|0 " + s_strClass + "Array - Out of memory"; }
    string Text(TValue value) const { return TextOf(value); }
    string Text(const CString& str) const { return str.ToStr(); }
    string Text(const TList& list) const { return list.Repr(", ", false).ToStr(); }

    int m_iHashSize = 0;
    std::multimap<int, SKey> m_keys; // by buckets, and those of one bucket in the order in which they came
    string m_strKeys;                // all of them, for the failure of an operation
    std::optional<THash> m_hash;
};

/// Set stands twice, so that there is more in the tables.
template <class THash, class TList, class TValue, bool... aOwner>
const SOperation<CTable<THash, TList, TValue, aOwner...>>
    CTable<THash, TList, TValue, aOwner...>::s_aOperations[] = {
        {"Renew", &CTable::Renew},       {"Move", &CTable::Move},       {"Set", &CTable::Set},
        {"Set", &CTable::Set},           {"Many", &CTable::Many},       {"Remove", &CTable::Remove},
        {"GetFirst", &CTable::GetFirst}, {"GetList", &CTable::GetList}, {"GetKeys", &CTable::GetKeys},
        {"Dump", &CTable::Dump}};

struct CTables
    : SFamilies<CTable<CIntHash, CIntArray, int>, CTable<CDblHash, CDblArray, double>,
                CTable<CStrHash, CStrArray, const char*>, CTable<CPtrHash, COwnerList, CPtrArrayItem*, false>,
                CTable<CPtrHash, COwnerList, CPtrArrayItem*, true>>
{
    static constexpr char s_szName[] = "tables";
};

#endif
