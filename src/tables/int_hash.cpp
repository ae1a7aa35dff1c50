#include "int_hash.h"

#include "tables/hash_design.h"

namespace bedplate_private
{
template <>
struct HashTraits<CIntHash>
{
    using Array = CIntArray;
    using Value = int;

    static constexpr char s_szName[]        = "CIntHash";
    static constexpr char s_szOutOfMemory[] = "CIntHash() Out of memory";
    static constexpr int s_iOwnBuffer       = 4;

    static CHashNode<CIntArray>* NewNode(const CIntHash&, std::string_view svKey)
    {
        return new CHashNode<CIntArray>(svKey);
    }

    static CIntArray NewList(const CIntHash&) { return CIntArray(); }
};
} // namespace bedplate_private

using Design = bedplate_private::HashDesign<CIntHash>;

CIntHash::CIntHash(int iHashSize) { Design::Construct(*this, iHashSize); }
CIntHash::~CIntHash() { Design::Destruct(*this); }
int CIntHash::HashFunc(const char* pszText, int iCount) { return Design::HashFunc(pszText, iCount); }
int CIntHash::Get(const char* pszKey, int* pValue) { return Design::GetFirst(*this, pszKey, pValue); }
int CIntHash::Get(const char* pszKey, CIntArray* pArray) { return Design::GetList(*this, pszKey, pArray); }
void CIntHash::GetKeys(CStrArray& arrKeys) { Design::GetKeys(*this, arrKeys); }
void CIntHash::Remove(const char* pszKey) { Design::Remove(*this, pszKey); }
void CIntHash::Clear() { Design::Clear(*this); }
void CIntHash::Dump(CStream* pStream) { Design::Dump(*this, pStream); }

int CIntHash::Set(const char* pszKey, int iValue, bool bReplace)
{
    return Design::Set(*this, pszKey, iValue, bReplace);
}
