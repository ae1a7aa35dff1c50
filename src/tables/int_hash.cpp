#include "int_hash.h"

#include "tables/hash_design.h"

namespace bedplate_private
{
template <>
struct HashTraits<CIntHash> : PlainHashTraits<CIntArray>
{
    using Value = int;
    using Elem  = int;

    static constexpr char s_szName[] = "CIntHash";
};
} // namespace bedplate_private

using bedplate_private::CHashIndex;
using Design  = bedplate_private::HashDesign<CIntHash>;
using Listing = bedplate_private::HashListing<CIntHash>;

CIntHash::CIntHash(int iHashSize) { Design::Construct(*this, iHashSize); }
CIntHash::~CIntHash() { Design::Destruct(*this); }
CIntHash::CIntHash(CIntHash&& hashSource) noexcept { Design::Take(*this, hashSource); }
CIntHash& CIntHash::operator=(CIntHash&& hashSource) noexcept { return Design::Move(*this, hashSource); }

int CIntHash::GetKeyCnt() const { return CHashIndex::Count(m_pIndex); }
bool CIntHash::IsIn(const char* pszKey) const { return Find(pszKey) != nullptr; }
const int* CIntHash::Find(const char* pszKey) const { return Design::FindFirst(*this, pszKey); }
int CIntHash::Get(const char* pszKey, int* pValue) const { return Design::GetFirst(*this, pszKey, pValue); }
int CIntHash::Get(const char* pszKey, CIntArray* pArray) const
{
    return Design::GetList(*this, pszKey, pArray);
}
void CIntHash::GetKeys(CStrArray& arrKeys) const { Listing::GetKeys(*this, arrKeys); }
void CIntHash::Dump(CStream* pStream) const { Listing::Dump(*this, pStream); }
void CIntHash::Advance(bedplate_private::CHashPosition& position) const { Listing::Advance(*this, position); }
void CIntHash::Remove(const char* pszKey) { Design::Remove(*this, bedplate_private::ViewOf(pszKey)); }
void CIntHash::Clear() { Design::Clear(*this); }

int CIntHash::Set(const char* pszKey, int iValue, bool bReplace)
{
    return Design::Set(*this, pszKey, iValue, bReplace);
}

/// The top four bits are folded back each time. They are signed, and so are the bytes: keys with high-bit characters depend
/// on it.
int CIntHash::HashFunc(const char* pszText, int iCount)
{
    std::uint32_t uHash = 0;
    if (pszText == nullptr)
        iCount = 0;
    for (int i = 0; i < iCount; ++i)
    {
        uHash = uHash * 16 + static_cast<std::uint32_t>(static_cast<signed char>(pszText[i]));
        const std::int32_t iTop = static_cast<std::int32_t>(uHash) >> 28;
        uHash                   = (uHash & 0x0FFFFFFFu) ^ static_cast<std::uint32_t>(iTop) << 4;
    }
    return static_cast<int>(uHash & 0x3FFFFFFFu);
}
