#include "bool_array.h"

#include "arrays/array_design.h"

namespace bedplate_private
{
template <>
struct ArrayTraits<CBoolArray> : ValueTraits<bool>
{
    static constexpr char s_szName[]        = "CBoolArray";
    static constexpr std::size_t s_iMaxText = 1;

    struct CPrint
    {
        std::size_t operator()(char* pszTo, bool bValue) const
        {
            *pszTo = bValue ? 'Y' : 'N';
            return 1;
        }
    };

    static void Sort(bool* pBegin, bool* pEnd)
    {
        bool* pFirstTrue = pEnd - std::count(pBegin, pEnd, true);
        std::fill(pBegin, pFirstTrue, false);
        std::fill(pFirstTrue, pEnd, true);
    }
};
} // namespace bedplate_private

using Design = bedplate_private::ArrayDesign<CBoolArray>;

CBoolArray::CBoolArray(int iCount, bool bValue) { Design::Reset(*this, iCount, bValue); }
CBoolArray::CBoolArray(CBoolArray& arrSource) { Design::Copy(*this, arrSource); }
CBoolArray::~CBoolArray() { Design::DeleteBuffer(m_pData, m_iBufferSize); }

CBoolArray& CBoolArray::operator=(const CBoolArray& arrSource) { return Design::Assign(*this, arrSource); }
void CBoolArray::MakeRoom() { Design::MakeRoom(*this); }
int CBoolArray::Find(bool bValue) const { return Design::Find(*this, bValue); }
bool CBoolArray::IsIn(bool bValue) const { return Design::Find(*this, bValue) >= 0; }
CString CBoolArray::Repr(const char* pszSep, bool bHeader) const
{
    return Design::Repr(*this, pszSep, bHeader);
}
int CBoolArray::InsertAt(int iIndex, bool bValue) { return Design::InsertAt(*this, iIndex, bValue); }
int CBoolArray::RemoveAt(int iIndex) { return Design::RemoveAt(*this, iIndex); }
void CBoolArray::RemoveLast() { Design::RemoveLast(*this); }
void CBoolArray::GrowBuffer(int iCount) { Design::GrowBuffer(*this, iCount); }
void CBoolArray::Reset(int iCount, bool bValue) { Design::Reset(*this, iCount, bValue); }
void CBoolArray::Clear() { Design::Clear(*this); }
void CBoolArray::RemoveAll() { Design::RemoveAll(*this); }
void CBoolArray::Sort() { Design::Sort(*this); }

int CBoolArray_SortCmp(const void* pLeft, const void* pRight) { return Design::Compare(pLeft, pRight); }
