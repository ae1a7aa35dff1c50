#include "ptr_hash.h"

#include "int_hash.h"
#include "tables/hash_design.h"

namespace bedplate_private
{
template <>
struct HashTraits<CPtrHash>
{
    using Value = CPtrArrayItem*;
    using Elem  = CPtrArrayItem*;

    static constexpr char s_szName[] = "CPtrHash";

    using Array = CPtrArray;

    static bool IsOwner(const CPtrHash& hash) { return hash.m_bOwner; }
    static CPtrArray List(bool bOwner) { return CPtrArray(bOwner); }
};
} // namespace bedplate_private

using bedplate_private::CHashIndex;
using Design  = bedplate_private::HashDesign<CPtrHash>;
using Listing = bedplate_private::HashListing<CPtrHash>;

CPtrHash::CPtrHash(bool bOwner, int iHashSize) : m_bOwner(bOwner) { Design::Construct(*this, iHashSize); }
CPtrHash::~CPtrHash() { Design::Destruct(*this); }
CPtrHash::CPtrHash(CPtrHash&& hashSource) noexcept : m_bOwner(hashSource.m_bOwner)
{
    Design::Take(*this, hashSource);
}
CPtrHash& CPtrHash::operator=(CPtrHash&& hashSource) noexcept
{
    Design::Move(*this, hashSource);
    m_bOwner = hashSource.m_bOwner;
    return *this;
}

int CPtrHash::HashFunc(const char* pszText, int iCount) { return CIntHash::HashFunc(pszText, iCount); }
int CPtrHash::GetKeyCnt() const { return CHashIndex::Count(m_pIndex); }
bool CPtrHash::IsIn(const char* pszKey) const { return Find(pszKey) != nullptr; }
CPtrArrayItem* const* CPtrHash::Find(const char* pszKey) const { return Design::FindFirst(*this, pszKey); }
int CPtrHash::Get(const char* pszKey, CPtrArrayItem** pItem) const
{
    return Design::GetFirst(*this, pszKey, pItem);
}
int CPtrHash::Get(const char* pszKey, CPtrArray* pArray) const
{
    return Design::GetList(*this, pszKey, pArray);
}
CPtrArrayItem* CPtrHash::Get(const char* pszKey) const
{
    CPtrArrayItem* const* pItem = Find(pszKey);
    return pItem != nullptr ? *pItem : nullptr;
}
void CPtrHash::GetKeys(CStrArray& arrKeys) const { Listing::GetKeys(*this, arrKeys); }
void CPtrHash::Dump(CStream* pStream) const { Listing::Dump(*this, pStream); }
void CPtrHash::Advance(bedplate_private::CHashPosition& position) const { Listing::Advance(*this, position); }
void CPtrHash::Remove(const char* pszKey) { Design::Remove(*this, bedplate_private::ViewOf(pszKey)); }
void CPtrHash::Clear() { Design::Clear(*this); }

int CPtrHash::Set(const char* pszKey, CPtrArrayItem* pItem, bool bReplace)
{
    return Design::Set(*this, pszKey, pItem, bReplace);
}
