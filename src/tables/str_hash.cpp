#include "str_hash.h"

#include "int_hash.h"
#include "tables/hash_design.h"

namespace bedplate_private
{
template <>
struct HashTraits<CStrHash> : PlainHashTraits<CStrArray>
{
    using Value = const char*;
    using Elem  = CString;

    static constexpr char s_szName[] = "CStrHash";
};
} // namespace bedplate_private

using bedplate_private::CHashIndex;
using Design  = bedplate_private::HashDesign<CStrHash>;
using Listing = bedplate_private::HashListing<CStrHash>;

CStrHash::CStrHash(int iHashSize) { Design::Construct(*this, iHashSize); }
CStrHash::~CStrHash() { Design::Destruct(*this); }
CStrHash::CStrHash(CStrHash&& hashSource) noexcept { Design::Take(*this, hashSource); }
CStrHash& CStrHash::operator=(CStrHash&& hashSource) noexcept { return Design::Move(*this, hashSource); }

int CStrHash::HashFunc(const char* pszText, int iCount) { return CIntHash::HashFunc(pszText, iCount); }
int CStrHash::GetKeyCnt() const { return CHashIndex::Count(m_pIndex); }
bool CStrHash::IsIn(const char* pszKey) const { return Find(pszKey) != nullptr; }
const CString* CStrHash::Find(const char* pszKey) const { return Design::FindFirst(*this, pszKey); }
int CStrHash::Get(const char* pszKey, CString* pValue) const
{
    return Design::GetFirst(*this, pszKey, pValue);
}
int CStrHash::Get(const char* pszKey, CStrArray* pArray) const
{
    return Design::GetList(*this, pszKey, pArray);
}
void CStrHash::GetKeys(CStrArray& arrKeys) const { Listing::GetKeys(*this, arrKeys); }
void CStrHash::Dump(CStream* pStream) const { Listing::Dump(*this, pStream); }
void CStrHash::Advance(bedplate_private::CHashPosition& position) const { Listing::Advance(*this, position); }
void CStrHash::Remove(const char* pszKey) { Design::Remove(*this, bedplate_private::ViewOf(pszKey)); }
void CStrHash::Clear() { Design::Clear(*this); }

int CStrHash::Set(const char* pszKey, char* pszValue, bool bReplace)
{
    return Design::Set(*this, pszKey, pszValue, bReplace);
}
