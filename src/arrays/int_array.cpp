#include "int_array.h"

#include "arrays/array_design.h"
#include "arrays/sorting.h"

#include <charconv>

namespace bedplate_private
{
template <>
struct ArrayTraits<CIntArray>
{
    using Elem = int;

    static constexpr char s_szName[]        = "CIntArray";
    static constexpr char s_szTag[]         = "CIntArr";
    static constexpr char s_szUnset[]       = "<CIntArr: unset>";
    static constexpr char s_szOutOfMemory[] = "CIntArray - Out of memory";
    static constexpr std::size_t s_iMaxText = 11;

    static int Vacated() { return 0; }

    struct CPrint
    {
        std::size_t operator()(char* pszTo, int iValue) const
        {
            return static_cast<std::size_t>(std::to_chars(pszTo, pszTo + s_iMaxText, iValue).ptr - pszTo);
        }
    };

    static void Sort(int* pBegin, int* pEnd)
    {
        constexpr std::uint32_t uSign = 0x80000000u;
        SortByKey<std::uint32_t>(
            pBegin, pEnd, [](int iValue) { return static_cast<std::uint32_t>(iValue) ^ uSign; },
            [](std::uint32_t uKey) { return static_cast<int>(uKey ^ uSign); });
    }
};
} // namespace bedplate_private

using Design = bedplate_private::ArrayDesign<CIntArray>;

CIntArray::CIntArray() { Design::CheckLayout(); }
CIntArray::CIntArray(int iCount, int iValue) { Design::Reset(*this, iCount, iValue); }
CIntArray::CIntArray(CIntArray& arrSource) { Design::Assign(*this, arrSource); }
CIntArray::~CIntArray() { Design::DeleteBuffer(m_pData, m_iBufferSize); }

CIntArray& CIntArray::operator=(const CIntArray& arrSource)
{
    Design::Assign(*this, arrSource);
    return *this;
}

void CIntArray::ThrowIndex(const char* pszOperation, int iIndex) const
{
    Design::ThrowIndex(*this, pszOperation, iIndex);
}

void CIntArray::ThrowEmpty() { Design::ThrowEmpty(); }
void CIntArray::MakeRoom() { Design::MakeRoom(*this); }
int CIntArray::Find(int iValue) const { return Design::Find(*this, iValue); }
bool CIntArray::IsIn(int iValue) const { return Design::Find(*this, iValue) >= 0; }
CString CIntArray::Repr(const char* pszSep, bool bHeader) const
{
    return Design::Repr(*this, pszSep, bHeader);
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
