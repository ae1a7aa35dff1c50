// CIntHash, CDblHash, CStrHash and CPtrHash, as an owner and as a holder, against a list of keys in the order of their
// buckets, with what their values print as.
#ifndef TABLES_H
#define TABLES_H

#include "engine.h"

#include <algorithm>
#include <map>
#include <optional>
#include <type_traits>

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

struct CAnyTable
{
    virtual ~CAnyTable()                                    = default;
    virtual void Prepare(int iState)                        = 0;
    virtual void Check()                                    = 0;
    virtual void Renew(CChoices& choices, CFault& fault)    = 0;
    virtual void Set(CChoices& choices, CFault& fault)      = 0;
    virtual void Remove(CChoices& choices, CFault& fault)   = 0;
    virtual void GetFirst(CChoices& choices, CFault& fault) = 0;
    virtual void GetList(CChoices& choices, CFault& fault)  = 0;
    virtual void GetKeys(CChoices& choices, CFault& fault)  = 0;
    virtual void Dump(CChoices& choices, CFault& fault)     = 0;
};

/// One of the tables. aOwner is what its constructor takes before the number of buckets: nothing, or whether it owns.
template <class THash, class TList, class TValue, bool... aOwner>
class CTable : public CAnyTable
{
public:
    /// The class's name without "Hash", and how printf prints a value.
    CTable(const char* pszClass, const char* pszFormat) : m_strClass(pszClass), m_pszFormat(pszFormat) {}

    void Prepare(int iState) override
    {
        CFault none;
        CChoices least(nullptr, 0);
        Renew(least, none);
        for (int i = 0; i < (iState < 2 ? 2 * iState : s_bTexts ? 34 : 32); ++i) // two keys, with full lists
        {
            const std::uint8_t aBytes[] = {static_cast<std::uint8_t>(i % 2), 1, 1};
            CChoices choices(aBytes, sizeof aBytes);
            Set(choices, none);
        }
        Check();
    }

    void Check() override
    {
        CStrArray arrKeys(1);
        m_hash->GetKeys(arrKeys), arrKeys.Add("");
        int iCount = 0;
        m_strKeys.clear();
        for (const auto& [iBucket, key] : m_keys)
        {
            TList list;
            Same("found", 0, m_hash->Get(key.strKey.c_str(), &list));
            Same(key.strKey.c_str(), key.strValues, Text(list));
            m_strKeys += key.strKey + "|", iCount += key.iCount;
        }
        Same("keys", m_strKeys, string(arrKeys.Join("|").ToStr()));
        Same("buckets", m_iHashSize, m_hash->GetHashSize());
        Same("values", iCount, m_hash->GetDataCnt());
        Same("items", s_bOwner ? iCount : 0, CItem::s_iAlive);
    }

    void Renew(CChoices& choices, CFault& fault) override
    {
        m_keys.clear();
        if (choices.Byte() % 2 > 0)
            return Same("failure", "", fault.Run([&] { m_hash->Clear(); }));
        m_iHashSize          = choices.Between(1, 8);
        const auto Construct = [&] { m_hash.emplace(aOwner..., m_iHashSize); };
        if (Failed(fault, fault.Run(Construct), "0 " + m_strClass + "Hash() Out of memory"))
            Construct();
    }

    void Set(CChoices& choices, CFault& fault) override
    {
        const char* pszKey  = DrawKey(choices);
        const bool bReplace = choices.Byte() % 2 == 0;
        const TValue value  = Draw(choices);
        int iResult         = 0;
        string strThrown    = fault.Run([&] { iResult = m_hash->Set(pszKey, value, bReplace); });
        if (Failed(fault, iResult != 0 ? std::to_string(iResult) : strThrown, Ways()))
        {
            if constexpr (s_bOwner) // which has not taken the item over
                delete value;
            return;
        }
        const string strKey = pszKey;
        const int iHash     = THash::HashFunc(pszKey, static_cast<int>(strKey.size()));
        auto itKey          = Find(strKey);
        if (itKey == m_keys.end())
            itKey = m_keys.emplace(iHash % m_iHashSize, SKey{strKey, "", 0});
        SKey& key     = itKey->second;
        key.iCount    = bReplace ? 1 : key.iCount + 1;
        key.strValues = (key.iCount > 1 ? key.strValues + ", " : "") + Text(value);
    }

    void Remove(CChoices& choices, CFault& fault) override
    {
        const char* pszKey = DrawKey(choices);
        Same("failure", "", fault.Run([&] { m_hash->Remove(pszKey); }));
        if (const auto itKey = Find(pszKey); itKey != m_keys.end())
            m_keys.erase(itKey);
    }

    void GetFirst(CChoices& choices, CFault& fault) override { Get<CFirst>(choices, fault); }
    void GetList(CChoices& choices, CFault& fault) override { Get<TList>(choices, fault); }

    void GetKeys(CChoices&, CFault& fault) override
    {
        CStrArray arrKeys(1);
        Failed(fault, fault.Run([&] { m_hash->GetKeys(arrKeys); }), Ways());
        const string strFound = arrKeys.Join("|").ToStr();
        Same("keys before a failure", m_strKeys.substr(0, strFound.size()), strFound);
    }

    void Dump(CChoices&, CFault& fault) override
    {
        CStream streamAll(1 << 16), stream(1 << 16);
        m_hash->Dump(&streamAll);
        Failed(fault, fault.Run([&] { m_hash->Dump(nullptr), m_hash->Dump(&stream); }), Ways());
        const string strFound = stream.ToStr();
        Same("lines before a failure", string(streamAll.ToStr()).substr(0, strFound.size()), strFound);
        Same("whole lines", true, strFound.empty() || strFound.back() == '\n');
    }

private:
    static constexpr bool s_bTexts = std::is_same_v<THash, CStrHash>;
    static constexpr bool s_bOwner = (aOwner || ... || false);
    using CFirst                   = std::conditional_t<s_bTexts, CString, TValue>;

    struct SKey
    {
        string strKey, strValues;
        int iCount;
    };

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
            strExpected = itKey->second.strValues.substr(
                0, std::is_same_v<TTarget, CFirst> ? itKey->second.strValues.find(", ") : string::npos);
        if (Failed(fault, fault.Run([&] { iResult -= m_hash->Get(pszKey, pTarget); }), Ways()))
            return;
        Same("difference of results", 0, iResult);
        Same("values", strExpected, Text(target));
    }

    static const char* DrawKey(CChoices& choices)
    {
        static constexpr const char* s_aszKeys[] = {"", "a", "A", "f", "i", "q", "\xe9t\xe9", "abcdefghij"};
        return s_aszKeys[choices.Byte() % 8];
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
        else if constexpr (std::is_pointer_v<TValue>)
            return choices.Byte() % 4 > 0 ? &s_item : nullptr;
        else
            return static_cast<TValue>(choices.AnyInt() / 8.0);
    }

    string Ways() const
    {
        return "-99|-11 cstring.cpp char[m_iBufferSize]|-11 cstring.cpp char[iLen]|-11 str_array.cpp CString|"
               "-11 str_array.cpp CString*[m_iBufferSize]|-11 str_array.cpp CString*[iNewMax]|"
               "0 CPtrArray::Add : Out of memory|0 CPtrArray::GrowBuffer : Out of memory|0 " +
               m_strClass + "Array - Out of memory";
    }
    string Text(TValue value) const
    {
        char szText[64];
        return string(szText, static_cast<std::size_t>(snprintf(szText, sizeof szText, m_pszFormat, value)));
    }
    string Text(const CString& str) const { return str.ToStr(); }
    string Text(const TList& list) const { return list.Repr(", ", false).ToStr(); }

    const string m_strClass;
    const char* const m_pszFormat;
    int m_iHashSize = 0;
    std::multimap<int, SKey> m_keys; // by buckets, and those of one bucket in the order in which they came
    string m_strKeys;                // all of them, for the failure of an operation
    std::optional<THash> m_hash;
};

class CTables
{
public:
    static constexpr char s_szName[] = "tables";
    static constexpr int s_iStates   = 15;
    static const SOperation<CTables> s_aOperations[8];

    void Prepare(int iState, CChoices&)
    {
        CAnyTable* const apTables[] = {&m_ints, &m_doubles, &m_texts, &m_held, &m_owned};
        m_pTable                    = apTables[iState / 3];
        m_pTable->Prepare(iState % 3);
    }
    void Check() { m_pTable->Check(); }
    CAnyTable& operator*() { return *m_pTable; } // for std::invoke, which does the operations

private:
    CTable<CIntHash, CIntArray, int> m_ints{"CInt", "%d"};
    CTable<CDblHash, CDblArray, double> m_doubles{"CDbl", "%f"};
    CTable<CStrHash, CStrArray, const char*> m_texts{"CStr", "%s"};
    CTable<CPtrHash, COwnerList, CPtrArrayItem*, false> m_held{"CPtr", "%p"};
    CTable<CPtrHash, COwnerList, CPtrArrayItem*, true> m_owned{"CPtr", "%p"};
    CAnyTable* m_pTable = nullptr;
};

/// Set stands twice, so that there is more in the tables.
inline const SOperation<CTables> CTables::s_aOperations[] = {
    {"Renew", &CAnyTable::Renew},     {"Set", &CAnyTable::Set},           {"Set", &CAnyTable::Set},
    {"Remove", &CAnyTable::Remove},   {"GetFirst", &CAnyTable::GetFirst}, {"GetList", &CAnyTable::GetList},
    {"GetKeys", &CAnyTable::GetKeys}, {"Dump", &CAnyTable::Dump}};

#endif
