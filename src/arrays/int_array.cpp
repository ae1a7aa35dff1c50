#include "int_array.h"

#include "arrays/array_access.h"
#include "arrays/array_design.h"
#include "arrays/sorting.h"

#include <charconv>
#include <limits>

namespace bedplate_private
{
template <>
struct ArrayTraits<CIntArray> : ValueTraits<int>
{
    static constexpr char s_szName[] = "CIntArray";
    static constexpr std::size_t s_iMaxText =
        std::numeric_limits<Elem>::digits10 + 2; // and a digit, and a sign

    struct CPrint
    {
        std::size_t operator()(char* pszTo, Elem iValue) const
        {
            return static_cast<std::size_t>(std::to_chars(pszTo, pszTo + s_iMaxText, iValue).ptr - pszTo);
        }
    };

    static void Sort(Elem* pBegin, Elem* pEnd)
    {
        using Key           = std::make_unsigned_t<Elem>;
        constexpr Key uSign = Key{1} << (8 * sizeof(Key) - 1);
        SortByKey<Key>(
            pBegin, pEnd, [](Elem iValue) { return static_cast<Key>(iValue) ^ uSign; },
            [](Key uKey) { return static_cast<Elem>(uKey ^ uSign); });
    }
};
} // namespace bedplate_private

using Design = bedplate_private::ArrayDesign<CIntArray>;

CIntArray::CIntArray(int iCount, int iValue) { Design::Reset(*this, iCount, iValue); }
CIntArray::CIntArray(CIntArray& arrSource) { Design::Copy(*this, arrSource); }
CIntArray::~CIntArray() { Design::DeleteBuffer(m_pData, m_iBufferSize); }

CIntArray& CIntArray::operator=(const CIntArray& arrSource) { return Design::Assign(*this, arrSource); }
void CIntArray::MakeRoom() { Design::MakeRoom(*this); }
int CIntArray::Find(int iValue) const { return Design::Find(*this, iValue); }
bool CIntArray::IsIn(int iValue) const { return Design::Find(*this, iValue) >= 0; }
CString CIntArray::Repr(const char* pszSep, bool bHeader) const
{
    return Design::Repr(*this, pszSep, bHeader);
}
void bedplate_private::AppendElements(CTextBuilder& text, const CIntArray& arr, std::string_view svBetween)
{
    Design::AppendElements(text, arr, svBetween);
}
int CIntArray::InsertAt(int iIndex, int iValue) { return Design::InsertAt(*this, iIndex, iValue); }
int CIntArray::RemoveAt(int iIndex) { return Design::RemoveAt(*this, iIndex); }
void CIntArray::RemoveLast() { Design::RemoveLast(*this); }
void CIntArray::GrowBuffer(int iCount) { Design::GrowBuffer(*this, iCount); }
void CIntArray::Reset(int iCount, int iValue) { Design::Reset(*this, iCount, iValue); }
void CIntArray::Clear() { Design::Clear(*this); }
void CIntArray::RemoveAll() { Design::RemoveAll(*this); }
void CIntArray::Sort() { Design::Sort(*this); }

int CIntArray_SortCmp(const void* pLeft, const void* pRight) { return Design::Compare(pLeft, pRight); }
