#include "dbl_hash.h"

#include "int_hash.h"
#include "tables/hash_design.h"

namespace bedplate_private
{
template <>
struct HashTraits<CDblHash> : PlainHashTraits<CDblArray>
{
    using Value = double;
    using Elem  = double;

    static constexpr char s_szName[] = "CDblHash";
};
} // namespace bedplate_private

using bedplate_private::CHashIndex;
using Design  = bedplate_private::HashDesign<CDblHash>;
using Listing = bedplate_private::HashListing<CDblHash>;

CDblHash::CDblHash(int iHashSize) { Design::Construct(*this, iHashSize); }
CDblHash::~CDblHash() { Design::Destruct(*this); }
CDblHash::CDblHash(CDblHash&& hashSource) noexcept { Design::Take(*this, hashSource); }
CDblHash& CDblHash::operator=(CDblHash&& hashSource) noexcept { return Design::Move(*this, hashSource); }

int CDblHash::HashFunc(const char* pszText, int iCount) { return CIntHash::HashFunc(pszText, iCount); }
int CDblHash::GetKeyCnt() const { return CHashIndex::Count(m_pIndex); }
bool CDblHash::IsIn(const char* pszKey) const { return Find(pszKey) != nullptr; }
const double* CDblHash::Find(const char* pszKey) const { return Design::FindFirst(*this, pszKey); }
int CDblHash::Get(const char* pszKey, double* pValue) const
{
    return Design::GetFirst(*this, pszKey, pValue);
}
int CDblHash::Get(const char* pszKey, CDblArray* pArray) const
{
    return Design::GetList(*this, pszKey, pArray);
}
void CDblHash::GetKeys(CStrArray& arrKeys) const { Listing::GetKeys(*this, arrKeys); }
void CDblHash::Dump(CStream* pStream) const { Listing::Dump(*this, pStream); }
void CDblHash::Advance(bedplate_private::CHashPosition& position) const { Listing::Advance(*this, position); }
void CDblHash::Remove(const char* pszKey) { Design::Remove(*this, bedplate_private::ViewOf(pszKey)); }
void CDblHash::Clear() { Design::Clear(*this); }

int CDblHash::Set(const char* pszKey, double dValue, bool bReplace)
{
    return Design::Set(*this, pszKey, dValue, bReplace);
}
