#include "ptr_hash.h"

#include "tables/hash_design.h"

namespace bedplate_private
{
template <>
struct HashTraits<CPtrHash>
{
    using Array = CPtrArray;
    using Value = CPtrArrayItem*;

    static constexpr char s_szName[]        = "CPtrHash";
    static constexpr char s_szOutOfMemory[] = "CPtrHash() Out of memory";
    static constexpr int s_iOwnBuffer       = 0;

    static CHashNode<CPtrArray>* NewNode(const CPtrHash& hash, std::string_view svKey)
    {
        return new CHashNode<CPtrArray>(svKey, hash.m_bOwner);
    }

    static CPtrArray NewList(const CPtrHash& hash) { return CPtrArray(hash.m_bOwner); }
};
} // namespace bedplate_private

using Design = bedplate_private::HashDesign<CPtrHash>;

CPtrHash::CPtrHash(bool bOwner, int iHashSize) : m_bOwner(bOwner) { Design::Construct(*this, iHashSize); }
CPtrHash::~CPtrHash() { Design::Destruct(*this); }
int CPtrHash::HashFunc(const char* pszText, int iCount) { return Design::HashFunc(pszText, iCount); }
int CPtrHash::Get(const char* pszKey, CPtrArrayItem** pItem)
{
    return Design::GetFirst(*this, pszKey, pItem);
}

CPtrArrayItem* CPtrHash::Get(const char* pszKey)
{
    CPtrArrayItem* pItem = nullptr;
    Design::GetFirst(*this, pszKey, &pItem);
    return pItem;
}

int CPtrHash::Get(const char* pszKey, CPtrArray* pArray) { return Design::GetList(*this, pszKey, pArray); }
void CPtrHash::GetKeys(CStrArray& arrKeys) { Design::GetKeys(*this, arrKeys); }
void CPtrHash::Remove(const char* pszKey) { Design::Remove(*this, pszKey); }
void CPtrHash::Clear() { Design::Clear(*this); }
void CPtrHash::Dump(CStream* pStream) { Design::Dump(*this, pStream); }

int CPtrHash::Set(const char* pszKey, CPtrArrayItem* pItem, bool bReplace)
{
    return Design::Set(*this, pszKey, pItem, bReplace);
}
