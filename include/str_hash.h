// CStrHash: a hash table from texts to lists of texts. As CIntHash, in whose header the operations are documented, except
// that lists are CStrArrays, which copy the texts, and that messages say "CStrHash". A failing list throws CStrArray's
// code -11.
#ifndef BEDPLATE_STR_HASH_H
#define BEDPLATE_STR_HASH_H

#include "cstream.h"
#include "hash_entry.h"
#include "str_array.h"

class BEDPLATE_API CStrHash
{
public:
    explicit CStrHash(int iHashSize = 101);
    ~CStrHash();
    CStrHash(const CStrHash&)            = delete;
    CStrHash& operator=(const CStrHash&) = delete;
    CStrHash(CStrHash&& hashSource) noexcept;
    CStrHash& operator=(CStrHash&& hashSource) noexcept;

    static int HashFunc(const char* pszText, int iCount);

    BEDPLATE_INLINE int GetHashSize() const { return m_iHashSize; }
    BEDPLATE_INLINE int GetDataCnt() const { return m_iDataCnt; }
    int GetKeyCnt() const;
    bool IsIn(const char* pszKey) const;
    bool IsIn(const CString& strKey) const { return IsIn(strKey.ToStr()); }

    BEDPLATE_INLINE CString* Find(const char* pszKey) { return const_cast<CString*>(Const().Find(pszKey)); }
    const CString* Find(const char* pszKey) const;
    CString* Find(const CString& strKey) { return Find(strKey.ToStr()); }
    const CString* Find(const CString& strKey) const { return Find(strKey.ToStr()); }

    int Get(const char* pszKey, CString* pValue) const;
    BEDPLATE_INLINE int Get(const char* pszKey, CString* pValue) { return Const().Get(pszKey, pValue); }
    int Get(const CString& strKey, CString* pValue) const { return Get(strKey.ToStr(), pValue); }
    int Get(const char* pszKey, CStrArray* pArray) const;
    BEDPLATE_INLINE int Get(const char* pszKey, CStrArray* pArray) { return Const().Get(pszKey, pArray); }
    int Get(const CString& strKey, CStrArray* pArray) const { return Get(strKey.ToStr(), pArray); }
    int Get(const char* pszKey, decltype(nullptr)) const { return IsIn(pszKey) ? 0 : -1; }
    int Get(const char* pszKey, decltype(nullptr)) { return IsIn(pszKey) ? 0 : -1; }
    int Get(const CString& strKey, decltype(nullptr)) const { return Get(strKey.ToStr(), nullptr); }

    void GetKeys(CStrArray& arrKeys) const;
    BEDPLATE_INLINE void GetKeys(CStrArray& arrKeys) { Const().GetKeys(arrKeys); }
    void Dump(CStream* pStream) const;
    BEDPLATE_INLINE void Dump(CStream* pStream) { Const().Dump(pStream); }

    typedef bedplate_private::CHashIterator<CStrHash, CString> CIterator;
    typedef bedplate_private::CHashIterator<CStrHash, const CString> CConstIterator;
    CIterator begin() { return CIterator(*this); }
    CConstIterator begin() const { return CConstIterator(*this); }
    CIterator end() { return CIterator(); }
    CConstIterator end() const { return CConstIterator(); }

    /// As CIntHash::Set, with a copy of pszValue, which is only read. A null text counts as empty.
    int Set(const char* pszKey, char* pszValue, bool bReplace = false);
    template <class TChar>
    int Set(const char* pszKey, TChar* pszValue, bool bReplace = false,
            bedplate_private::ConstCharOnly<TChar> = 0)
    {
        return Set(pszKey, const_cast<char*>(pszValue), bReplace);
    }
    int Set(const char* pszKey, const CString& strValue, bool bReplace = false)
    {
        return Set(pszKey, strValue.ToStr(), bReplace);
    }
    int Set(const CString& strKey, const char* pszValue, bool bReplace = false)
    {
        return Set(strKey.ToStr(), pszValue, bReplace);
    }
    int Set(const CString& strKey, const CString& strValue, bool bReplace = false)
    {
        return Set(strKey.ToStr(), strValue.ToStr(), bReplace);
    }

    void Remove(const char* pszKey);
    void Remove(const CString& strKey) { Remove(strKey.ToStr()); }
    void Clear();

private:
    friend struct bedplate_private::HashDesign<CStrHash>;
    friend struct bedplate_private::HashListing<CStrHash>;
    friend struct bedplate_private::LayoutCheck;
    friend class bedplate_private::CHashIterator<CStrHash, CString>;
    friend class bedplate_private::CHashIterator<CStrHash, const CString>;

    const CStrHash& Const() const { return *this; }
    void Advance(bedplate_private::CHashPosition& position) const;

    bedplate_private::CHashNode<CStrHash>** m_pHashBag = nullptr;
    int m_iHashSize                                    = 0;
    int m_iDataCnt                                     = 0;
    bedplate_private::CHashIndex* m_pIndex             = nullptr;
};

#endif
