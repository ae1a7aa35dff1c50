#include "dbl_hash.h"

#include "tables/hash_design.h"

namespace bedplate_private
{
template <>
struct HashTraits<CDblHash>
{
    using Array = CDblArray;
    using Value = double;

    static constexpr char s_szName[]        = "CDblHash";
    static constexpr char s_szOutOfMemory[] = "CDblHash() Out of memory";
    static constexpr int s_iOwnBuffer       = 4;

    static CHashNode<CDblArray>* NewNode(const CDblHash&, std::string_view svKey)
    {
        return new CHashNode<CDblArray>(svKey);
    }

    static CDblArray NewList(const CDblHash&) { return CDblArray(); }
};
} // namespace bedplate_private

using Design = bedplate_private::HashDesign<CDblHash>;

CDblHash::CDblHash(int iHashSize) { Design::Construct(*this, iHashSize); }
CDblHash::~CDblHash() { Design::Destruct(*this); }
int CDblHash::HashFunc(const char* pszText, int iCount) { return Design::HashFunc(pszText, iCount); }
int CDblHash::Get(const char* pszKey, double* pValue) { return Design::GetFirst(*this, pszKey, pValue); }
int CDblHash::Get(const char* pszKey, CDblArray* pArray) { return Design::GetList(*this, pszKey, pArray); }
void CDblHash::GetKeys(CStrArray& arrKeys) { Design::GetKeys(*this, arrKeys); }
void CDblHash::Remove(const char* pszKey) { Design::Remove(*this, pszKey); }
void CDblHash::Clear() { Design::Clear(*this); }
void CDblHash::Dump(CStream* pStream) { Design::Dump(*this, pStream); }

int CDblHash::Set(const char* pszKey, double dValue, bool bReplace)
{
    return Design::Set(*this, pszKey, dValue, bReplace);
}
