// CDblHash: a hash table from texts to lists of doubles. As CIntHash, in whose header the operations are documented, except
// that lists are CDblArrays, which the dump renders ("%f"), and that messages say "CDblHash".
#ifndef BEDPLATE_DBL_HASH_H
#define BEDPLATE_DBL_HASH_H

#include "cstream.h"
#include "dbl_array.h"
#include "hash_entry.h"
#include "str_array.h"

class BEDPLATE_API CDblHash
{
public:
    explicit CDblHash(int iHashSize = 101);
    ~CDblHash();
    CDblHash(const CDblHash&)            = delete;
    CDblHash& operator=(const CDblHash&) = delete;
    CDblHash(CDblHash&& hashSource) noexcept;
    CDblHash& operator=(CDblHash&& hashSource) noexcept;

    static int HashFunc(const char* pszText, int iCount);

    BEDPLATE_INLINE int GetHashSize() const { return m_iHashSize; }
    BEDPLATE_INLINE int GetDataCnt() const { return m_iDataCnt; }
    int GetKeyCnt() const;
    bool IsIn(const char* pszKey) const;
    bool IsIn(const CString& strKey) const { return IsIn(strKey.ToStr()); }

    BEDPLATE_INLINE double* Find(const char* pszKey) { return const_cast<double*>(Const().Find(pszKey)); }
    const double* Find(const char* pszKey) const;
    double* Find(const CString& strKey) { return Find(strKey.ToStr()); }
    const double* Find(const CString& strKey) const { return Find(strKey.ToStr()); }

    int Get(const char* pszKey, double* pValue) const;
    BEDPLATE_INLINE int Get(const char* pszKey, double* pValue) { return Const().Get(pszKey, pValue); }
    int Get(const CString& strKey, double* pValue) const { return Get(strKey.ToStr(), pValue); }
    int Get(const char* pszKey, CDblArray* pArray) const;
    BEDPLATE_INLINE int Get(const char* pszKey, CDblArray* pArray) { return Const().Get(pszKey, pArray); }
    int Get(const CString& strKey, CDblArray* pArray) const { return Get(strKey.ToStr(), pArray); }
    int Get(const char* pszKey, decltype(nullptr)) const { return IsIn(pszKey) ? 0 : -1; }
    int Get(const char* pszKey, decltype(nullptr)) { return IsIn(pszKey) ? 0 : -1; }
    int Get(const CString& strKey, decltype(nullptr)) const { return Get(strKey.ToStr(), nullptr); }

    void GetKeys(CStrArray& arrKeys) const;
    BEDPLATE_INLINE void GetKeys(CStrArray& arrKeys) { Const().GetKeys(arrKeys); }
    void Dump(CStream* pStream) const;
    BEDPLATE_INLINE void Dump(CStream* pStream) { Const().Dump(pStream); }

    typedef bedplate_private::CHashIterator<CDblHash, double> CIterator;
    typedef bedplate_private::CHashIterator<CDblHash, const double> CConstIterator;
    CIterator begin() { return CIterator(*this); }
    CConstIterator begin() const { return CConstIterator(*this); }
    CIterator end() { return CIterator(); }
    CConstIterator end() const { return CConstIterator(); }

    int Set(const char* pszKey, double dValue, bool bReplace = false);
    int Set(const CString& strKey, double dValue, bool bReplace = false)
    {
        return Set(strKey.ToStr(), dValue, bReplace);
    }
    void Remove(const char* pszKey);
    void Remove(const CString& strKey) { Remove(strKey.ToStr()); }
    void Clear();

private:
    friend struct bedplate_private::HashDesign<CDblHash>;
    friend struct bedplate_private::HashListing<CDblHash>;
    friend struct bedplate_private::LayoutCheck;
    friend class bedplate_private::CHashIterator<CDblHash, double>;
    friend class bedplate_private::CHashIterator<CDblHash, const double>;

    const CDblHash& Const() const { return *this; }
    void Advance(bedplate_private::CHashPosition& position) const;

    bedplate_private::CHashNode<CDblHash>** m_pHashBag = nullptr;
    int m_iHashSize                                    = 0;
    int m_iDataCnt                                     = 0;
    bedplate_private::CHashIndex* m_pIndex             = nullptr;
};

#endif
