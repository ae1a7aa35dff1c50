// CIntHash, CDblHash, CStrHash and CPtrHash, as an owner and as a holder, against a list of keys in the order of their
// buckets. Items note what they see of their table while they are deleted.
#ifndef TABLES_H
#define TABLES_H

#include "engine.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <optional>
#include <type_traits>

/// The documented hash function, step by step.
inline int DocumentedHash(const string& strKey)
{
    std::uint32_t uHash = 0;
    for (char ch : strKey)
    {
        uHash = static_cast<std::uint32_t>(std::int64_t{uHash} * 16 + static_cast<signed char>(ch));
        if (const std::uint32_t uTop = uHash & 0xF0000000)
            uHash ^= uTop ^ (uTop >> 24 | (uTop >= 0x80000000 ? 0xFFFFFF00 : 0));
    }
    return static_cast<int>(uHash & 0x3FFFFFFF);
}

struct CItem : CPtrArrayItem
{
    struct SLog
    {
        CPtrHash* pHash = nullptr;
        std::vector<int>
            aSeen; // item, first item under its key then, number of values then; with room for all
    };

    CItem(SLog& log, int iNumber, const char* pszKey) : m_log(log), m_iNumber(iNumber), m_strKey(pszKey) {}
    ~CItem() override
    {
        if (m_log.pHash != nullptr)
            for (int i : {m_iNumber, Number(m_log.pHash->Get(m_strKey.c_str())), m_log.pHash->GetDataCnt()})
                m_log.aSeen.push_back(i);
    }
    static int Number(CPtrArrayItem* p) { return p != nullptr ? static_cast<CItem*>(p)->m_iNumber : 0; }

    SLog& m_log;
    const int m_iNumber;
    const string m_strKey;
};

struct CAnyTable
{
    virtual ~CAnyTable()                                              = default;
    virtual void Build(int iState, CChoices& choices)                 = 0;
    virtual void Check()                                              = 0;
    virtual void Do(int iOperation, CChoices& choices, CFault& fault) = 0;
};

/// One of the tables. TValue is what the model holds, TFirst what the table's Get of the first value stores.
template <class THash, class TList, class TValue, class TFirst = TValue, bool bOwner = false>
class CTable : public CAnyTable
{
public:
    ~CTable() override { m_hash.reset(), m_log.pHash = nullptr; }

    void Build(int iState, CChoices& choices) override
    {
        m_log.aSeen.reserve(3000);
        Drop([&] { m_hash.reset(); });
        Make(m_hash, m_iHashSize = choices.Byte() % 2 == 0 ? choices.Between(1, 8) : 101);
        if constexpr (s_bItems)
            m_log.pHash = &*m_hash;
        CFault none;
        for (int iKey = 0; iKey < 3 * iState; ++iKey) // key 3's list gets full
            for (int i = 0; i < (iKey == 3 ? (s_bTexts ? 17 : 16) : 1 + iKey % 2); ++i)
                Set(s_aszKeys[iKey], choices, false, none);
    }

    void Check() override
    {
        CStream stream(1024);
        m_hash->Dump(&stream);
        Same("listing", Listing(), Content(stream));
        Same("buckets", m_iHashSize, m_hash->GetHashSize());
        Same("values", Count(), m_hash->GetDataCnt());
    }

    void Do(int iOperation, CChoices& choices, CFault& fault) override
    {
        static constexpr void (CTable::*s_aDo[])(const char*, CChoices&, CFault&) = {
            &CTable::Add,     &CTable::Replace, &CTable::Remove,   &CTable::Clear,    &CTable::GetFirst,
            &CTable::GetList, &CTable::GetKeys, &CTable::WriteAll, &CTable::HashFunc, &CTable::Construct};
        (this->*s_aDo[iOperation])(DrawKey(choices), choices, fault);
    }

private:
    static constexpr bool s_bItems           = std::is_same_v<THash, CPtrHash>,
                          s_bTexts           = std::is_same_v<THash, CStrHash>;
    static constexpr const char* s_aszKeys[] = {"", "a", "A", "i", "\xe9t\xe9", "abcdefghij"};

    struct SKey
    {
        int iBucket;
        string strKey;
        std::vector<TValue> aValues;
    };

    // ---- Operations -------------------------------------------------------------------------------------------

    void Add(const char* pszKey, CChoices& choices, CFault& fault) { Set(pszKey, choices, false, fault); }
    void Replace(const char* pszKey, CChoices& choices, CFault& fault) { Set(pszKey, choices, true, fault); }
    void Set(const char* pszKey, CChoices& choices, bool bReplace, CFault& fault)
    {
        const TValue value  = Draw(pszKey, choices);
        const string strKey = pszKey != nullptr ? pszKey : ""; // which may die with the old items
        const auto itKey    = Find(pszKey);
        const bool bNew     = itKey == m_aKeys.end();
        if (!bNew && bReplace)
            Foretell(*itKey, &value, Count() - Size(itKey->aValues) + 1);
        int iResult      = 0;
        string strThrown = fault.Run([&] { iResult = CallSet(pszKey, value, bReplace); });
        if (iResult != 0)
            strThrown = Text(iResult);
        const bool bFailed =
            Failed(fault, strThrown, (bNew ? "-99|-11 cstring.cpp char[m_iBufferSize]|" : "") + NoList());
        if (bFailed)
            m_aiForetold.clear();
        CheckDeleted();
        if constexpr (bOwner) // which has not taken the item over
            if (bFailed)
                delete value, m_log.aSeen.clear();
        if (bFailed)
            return;
        if (!bNew && bReplace)
            itKey->aValues.clear();
        if (!bNew)
            return itKey->aValues.push_back(value);
        const SKey keyNew{DocumentedHash(strKey) % m_iHashSize, strKey, {value}};
        const auto IsBehind = [&](const SKey& key) { return key.iBucket > keyNew.iBucket; };
        m_aKeys.insert(std::find_if(m_aKeys.begin(), m_aKeys.end(), IsBehind), keyNew);
    }

    void Remove(const char* pszKey, CChoices&, CFault& fault)
    {
        const auto itKey = Find(pszKey);
        if (itKey != m_aKeys.end())
            Foretell(*itKey, nullptr, Count() - Size(itKey->aValues));
        Same("failure", "", fault.Run([&] { m_hash->Remove(pszKey); }));
        CheckDeleted();
        if (itKey != m_aKeys.end())
            m_aKeys.erase(itKey);
    }

    void Clear(const char*, CChoices& choices, CFault& fault)
    {
        if (choices.Byte() % 2 == 0)
            return Build(choices.Between(0, 2), choices);
        Drop([&] { Same("failure", "", fault.Run([&] { m_hash->Clear(); })); });
    }

    void GetFirst(const char* pszKey, CChoices& choices, CFault& fault)
    {
        TFirst first{}, *pFirst = choices.Byte() % 4 > 0 ? &first : nullptr;
        if constexpr (s_bTexts) // a key in the target
            pszKey = (first = pszKey).ToStr();
        const auto itKey    = Find(pszKey);
        const bool bThere   = itKey != m_aKeys.end();
        const string strOld = Text(first), strNew = bThere ? Text(itKey->aValues[0]) : strOld;
        if constexpr (s_bItems)
            Same("item", bThere ? itKey->aValues[0] : nullptr, m_hash->Get(pszKey));
        int iResult            = bThere ? 0 : -1;
        const string strThrown = fault.Run([&] { iResult -= m_hash->Get(pszKey, pFirst); });
        const bool bFailed     = Failed(fault, strThrown, "-11 cstring.cpp char[m_iBufferSize]");
        Same("difference of results", 0, iResult);
        Same("first value", bFailed ? "" : pFirst != nullptr ? strNew : strOld, Text(first));
    }

    void GetList(const char* pszKey, CChoices& choices, CFault& fault)
    {
        TList list = NewList(), *pList = choices.Byte() % 4 > 0 ? &list : nullptr;
        if constexpr (s_bTexts) // a key in the target
            pszKey = list.GetAt(list.Add(pszKey));
        const auto itKey       = Find(pszKey);
        const bool bThere      = itKey != m_aKeys.end();
        int iResult            = bThere ? 0 : -1;
        const string strThrown = fault.Run([&] { iResult -= m_hash->Get(pszKey, pList); });
        if (Failed(fault, strThrown, NoList()))
            return Same("without a buffer", true, s_bTexts || list.GetBufferSize() == 0);
        Same("difference of results", 0, iResult);
        const std::vector<TValue> aNone(s_bTexts ? 1 : 0),
            &aValues = bThere && pList != nullptr ? itKey->aValues : aNone;
        Same("size", Size(aValues), list.GetSize());
        for (int i = 0; i < list.GetSize() && &aValues != &aNone; ++i)
            Same("value", true, aValues[static_cast<std::size_t>(i)] == list.GetAt(i));
        int iSlots = 0; // of an array that was filled one by one
        while (!s_bItems && iSlots < list.GetSize())
            iSlots += std::max(4, iSlots / 8);
        Same("slots", true, s_bTexts || list.GetBufferSize() == (s_bItems ? list.GetSize() : iSlots));
    }

    void GetKeys(const char*, CChoices&, CFault& fault)
    {
        CStrArray arrKeys(2);
        const string strThrown = fault.Run([&] { m_hash->GetKeys(arrKeys); });
        const bool bFailed     = Failed(fault, strThrown, NoTexts()); // emptying the array, or adding a key
        const int iSize = arrKeys.GetSize(), iKeys = Size(m_aKeys);
        Same("number", true, iSize == iKeys || (bFailed && (iSize < iKeys || iSize == 2)));
        for (int i = 0; i < std::min(iSize, iKeys); ++i)
            if (!bFailed || *arrKeys.GetAt(i) != '\0')
                Same("key", m_aKeys[static_cast<std::size_t>(i)].strKey, arrKeys.GetAt(i));
    }

    void WriteAll(const char*, CChoices& choices, CFault& fault)
    {
        const bool bRoom = choices.Byte() % 2 == 0;
        CStream stream(bRoom ? 20000 : 0, choices.Between(1, 64));
        const string strThrown = fault.Run([&] { m_hash->Dump(nullptr), m_hash->Dump(&stream); });
        const string strAll = Listing(), strFound = Content(stream);
        if (!fault.WasHit())
            return Same("listing and failure", strAll, strFound + strThrown);
        if (bRoom || !strThrown.empty()) // what a stream cannot take is lost in silence
            Failed(fault, strThrown, "-11 cstring.cpp char[iLen]|-11 cstring.cpp char[m_iBufferSize]");
        Same("the lines before", true, !bRoom || strAll.compare(0, strFound.size(), strFound) == 0);
        Same("whole lines", true, !bRoom || strFound.empty() || strFound.back() == '\n');
    }

    void HashFunc(const char*, CChoices& choices, CFault&)
    {
        string strText(static_cast<std::size_t>(choices.Between(0, 30)), 'a');
        for (char& ch : strText)
            ch = static_cast<char>(choices.Byte());
        const int iCount = choices.Between(0, static_cast<int>(strText.size())), iNone = choices.AnyInt();
        Same("hash value", DocumentedHash(strText.substr(0, static_cast<std::size_t>(iCount))),
             THash::HashFunc(strText.c_str(), iCount));
        Same("none", 0, THash::HashFunc(iNone > 0 ? nullptr : "a", iNone));
    }

    void Construct(const char*, CChoices& choices, CFault& fault)
    {
        const int iAny  = choices.AnyInt();
        const int iSize = iAny > 1024 && iAny < 40000000 ? iAny % 1024 + 1 : iAny;
        std::optional<THash> hash;
        const string strThrown = fault.Run([&] { Make(hash, iSize); });
        if (iSize <= 0)
            Same("failure", "0 " + Class("Hash() Invalid size(") + Text(iSize) + ")", strThrown);
        else if (iSize > 1024 || fault.WasHit())
            Same("failure", "0 " + Class("Hash() Out of memory"), strThrown);
        else
            Same("buckets", iSize, hash.value().GetHashSize());
    }

    // ---- Keys, values, texts ----------------------------------------------------------------------------------

    template <class T>
    static int Size(const std::vector<T>& a)
    {
        return static_cast<int>(a.size());
    }
    int Count() const
    {
        return std::accumulate(m_aKeys.begin(), m_aKeys.end(), 0,
                               [](int i, const SKey& key) { return i + Size(key.aValues); });
    }
    auto Find(const char* pszKey)
    {
        const auto IsIt = [=](const SKey& key) { return key.strKey == (pszKey != nullptr ? pszKey : ""); };
        return std::find_if(m_aKeys.begin(), m_aKeys.end(), IsIt);
    }
    const char* DrawKey(CChoices& choices)
    {
        const int iKind = choices.Byte() % 8;
        if (iKind == 0)
            return nullptr;
        if (iKind < 3 || m_aKeys.empty())
            return (m_strKey = iKind == 1 ? choices.Text(12) : s_aszKeys[choices.Between(0, 5)]).c_str();
        const SKey& key = m_aKeys[static_cast<std::size_t>(choices.Between(0, Size(m_aKeys) - 1))];
        if constexpr (s_bItems)
            if (iKind == 3 && key.aValues[0] != nullptr)
                return static_cast<CItem*>(key.aValues[0])->m_strKey.c_str(); // dies with the item
        return (m_strKey = key.strKey).c_str();
    }
    TValue Draw(const char* pszKey, CChoices& choices)
    {
        if constexpr (s_bTexts)
            return choices.Text(20);
        else if constexpr (!s_bItems)
            return static_cast<TValue>(choices.AnyInt() / (choices.Byte() % 2 == 0 ? TValue(1) : TValue(8)));
        else if (const int iKind = choices.Byte() % 8; iKind == 0)
            return nullptr;
        else if (iKind == 1 && m_aHeld.size() > 0)
            return m_aHeld[0].get();
        else
            return NewItem(pszKey != nullptr ? pszKey : "");
    }
    CItem* NewItem(const char* pszKey)
    {
        CItem* pItem = new CItem(m_log, ++m_iItems, pszKey);
        if (!bOwner)
            m_aHeld.emplace_back(pItem);
        return pItem;
    }
    int CallSet(const char* pszKey, const TValue& value, bool bReplace)
    {
        if constexpr (!s_bTexts)
            return m_hash->Set(pszKey, value, bReplace);
        else if (value.empty())
            return m_hash->Set(pszKey, static_cast<char*>(nullptr), bReplace);
        else
            return m_hash->Set(pszKey, value.c_str(), bReplace);
    }
    static TList NewList()
    {
        if constexpr (s_bItems)
            return TList(true); // until it is assigned to
        else
            return TList();
    }
    static void Make(std::optional<THash>& hash, int iSize)
    {
        if constexpr (s_bItems)
            hash.emplace(bOwner, iSize);
        else
            hash.emplace(iSize);
    }

    static string Text(int iValue) { return std::to_string(iValue); }
    static string Text(double dValue) { return std::to_string(dValue); } // as "%f"
    static string Text(const string& str) { return str; }
    static string Text(const CString& str) { return str.ToStr(); }
    static string Text(const void* pItem)
    {
        char szText[24];
        return string(szText, static_cast<std::size_t>(snprintf(szText, sizeof szText, "%p", pItem)));
    }
    static string Content(const CStream& stream)
    {
        return string(stream.ToStr(), static_cast<std::size_t>(stream.GetLength()));
    }
    static string Class(const char* pszRest)
    {
        const char* pszKind = s_bItems                      ? "CPtr"
                              : s_bTexts                    ? "CStr"
                              : std::is_same_v<TValue, int> ? "CInt"
                                                            : "CDbl";
        return string(pszKind) + pszRest;
    }
    /// How an array of texts, or a list, fails to get a buffer.
    static string NoTexts()
    {
        return "-11 str_array.cpp CString*[m_iBufferSize]|-11 str_array.cpp CString*[iNewMax]|-11 "
               "str_array.cpp CString|-11 cstring.cpp char[m_iBufferSize]";
    }
    static string NoList()
    {
        return s_bTexts   ? NoTexts()
               : s_bItems ? "0 CPtrArray::Add : Out of memory|0 CPtrArray::GrowBuffer : Out of memory"
                          : "0 " + Class("Array - Out of memory");
    }
    string Listing() const
    {
        string str = "Total HashBag size : " + Text(m_iHashSize) + ", DataCnt : " + Text(Count()) + "\n";
        int iKeys  = 0;
        for (const SKey& key : m_aKeys)
        {
            const string strBucket = Text(key.iBucket);
            str += (iKeys++ == 0 ? "Hash : " + strBucket + "\n" : "") + "  Key : [" + key.strKey + "](" +
                   strBucket + ")\n      : [";
            for (const TValue& value : key.aValues)
                str += (&value == key.aValues.data() ? "" : ", ") + Text(value);
            str += "]\n";
            if (&key == &m_aKeys.back() || (&key)[1].iBucket != key.iBucket)
                str += "      (Hash(" + strBucket + ") Cnt : " + Text(iKeys) + ")\n", iKeys = 0;
        }
        return str;
    }

    // ---- Deletion ---------------------------------------------------------------------------------------------

    /// Notes what the key's items will see when they are deleted: the first item under the key then, if there is one,
    /// and the number of values.
    void Foretell(const SKey& key, const TValue* pFirst, int iCount)
    {
        if constexpr (bOwner)
            for (CPtrArrayItem* pItem : key.aValues)
                if (pItem != nullptr)
                    for (int i :
                         {CItem::Number(pItem), pFirst != nullptr ? CItem::Number(*pFirst) : 0, iCount})
                        m_aiForetold.push_back(i);
    }
    void CheckDeleted()
    {
        Same("deleted items and what they saw", true, m_aiForetold == m_log.aSeen);
        m_aiForetold.clear(), m_log.aSeen.clear();
    }
    /// Makes a call that drops all keys, bucket by bucket.
    template <class TCall>
    void Drop(TCall Call)
    {
        int iCount = Count();
        for (const SKey& key : m_aKeys)
            Foretell(key, nullptr, iCount -= Size(key.aValues));
        Call();
        CheckDeleted();
        m_aKeys.clear();
    }

    CItem::SLog m_log;
    std::vector<int> m_aiForetold;
    std::vector<std::unique_ptr<CPtrArrayItem>> m_aHeld; // what a holder may hold
    int m_iItems = 0, m_iHashSize = 0;
    string m_strKey;
    std::vector<SKey> m_aKeys; // in the order of the buckets
    std::optional<THash> m_hash;
};

class CTables
{
public:
    static constexpr char s_szName[] = "tables";
    static constexpr int s_iStates   = 15;
    static const SOperation<CTables> s_aOperations[10];

    void Prepare(int iState, CChoices& choices)
    {
        using CItemPtr                                             = CPtrArrayItem*;
        static constexpr std::unique_ptr<CAnyTable> (*s_aMake[])() = {
            Make<CTable<CIntHash, CIntArray, int>>, Make<CTable<CDblHash, CDblArray, double>>,
            Make<CTable<CStrHash, CStrArray, string, CString>>,
            Make<CTable<CPtrHash, CPtrArray, CItemPtr, CItemPtr, false>>,
            Make<CTable<CPtrHash, CPtrArray, CItemPtr, CItemPtr, true>>};
        m_pTable = s_aMake[iState / 3]();
        m_pTable->Build(iState % 3, choices);
    }
    void Check() { m_pTable->Check(); }
    template <int iOperation>
    void Do(CChoices& choices, CFault& fault)
    {
        m_pTable->Do(iOperation, choices, fault);
    }

private:
    template <class TTable>
    static std::unique_ptr<CAnyTable> Make()
    {
        return std::make_unique<TTable>();
    }

    std::unique_ptr<CAnyTable> m_pTable;
};

inline const SOperation<CTables> CTables::s_aOperations[] = {
    {"Set", &CTables::Do<0>},      {"Replace", &CTables::Do<1>},  {"Remove", &CTables::Do<2>},
    {"Clear", &CTables::Do<3>},    {"GetFirst", &CTables::Do<4>}, {"GetList", &CTables::Do<5>},
    {"GetKeys", &CTables::Do<6>},  {"Dump", &CTables::Do<7>},     {"HashFunc", &CTables::Do<8>},
    {"Construct", &CTables::Do<9>}};

#endif
