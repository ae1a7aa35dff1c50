#include "str_hash.h"

#include "tables/hash_design.h"

namespace bedplate_private
{
template <>
struct HashTraits<CStrHash>
{
    using Array = CStrArray;
    using Value = const char*;

    static constexpr char s_szName[]        = "CStrHash";
    static constexpr char s_szOutOfMemory[] = "CStrHash() Out of memory";
    static constexpr int s_iOwnBuffer       = 0;

    static CHashNode<CStrArray>* NewNode(const CStrHash&, std::string_view svKey)
    {
        return new CHashNode<CStrArray>(svKey);
    }

    static CStrArray NewList(const CStrHash&) { return CStrArray(); }
};
} // namespace bedplate_private

using Design = bedplate_private::HashDesign<CStrHash>;

CStrHash::CStrHash(int iHashSize) { Design::Construct(*this, iHashSize); }
CStrHash::~CStrHash() { Design::Destruct(*this); }
int CStrHash::HashFunc(const char* pszText, int iCount) { return Design::HashFunc(pszText, iCount); }
int CStrHash::Get(const char* pszKey, CString* pValue) { return Design::GetFirst(*this, pszKey, pValue); }
int CStrHash::Get(const char* pszKey, CStrArray* pArray) { return Design::GetList(*this, pszKey, pArray); }
void CStrHash::GetKeys(CStrArray& arrKeys) { Design::GetKeys(*this, arrKeys); }
void CStrHash::Remove(const char* pszKey) { Design::Remove(*this, pszKey); }
void CStrHash::Clear() { Design::Clear(*this); }
void CStrHash::Dump(CStream* pStream) { Design::Dump(*this, pStream); }

int CStrHash::Set(const char* pszKey, char* pszValue, bool bReplace)
{
    return Design::Set(*this, pszKey, pszValue, bReplace);
}
