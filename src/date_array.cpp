#include "date_array.h"

#include "array_design.h"

namespace bedplate_private
{
template <>
struct ArrayTraits<CDateArray>
{
    using Elem = CDate;

    static constexpr char s_szName[]        = "CDateArray";
    static constexpr char s_szTag[]         = "CDateArr";
    static constexpr char s_szUnset[]       = "<CDateArr: unset>";
    static constexpr char s_szOutOfMemory[] = "CDateArray - Out of memory";
    static constexpr std::size_t s_iMaxText = 8;

    static CDate Vacated() { return CDate("00000000"); }

    static std::size_t Print(char* pszTo, const CDate& date)
    {
        const std::size_t iLength = strlen(date.ToStr());
        memcpy(pszTo, date.ToStr(), iLength);
        return iLength;
    }

    static void Sort(CDate* pBegin, CDate* pEnd) { std::sort(pBegin, pEnd); }
};
} // namespace bedplate_private

using Design = bedplate_private::ArrayDesign<CDateArray>;

CDateArray::CDateArray() { Design::CheckLayout(); }
CDateArray::CDateArray(int iCount, CDate date) { Design::Reset(*this, iCount, date); }
CDateArray::CDateArray(CDateArray& arrSource) { Design::Assign(*this, arrSource); }
CDateArray::~CDateArray() { Design::RemoveAll(*this); }

CDateArray& CDateArray::operator=(const CDateArray& arrSource)
{
    Design::Assign(*this, arrSource);
    return *this;
}

void CDateArray::ThrowIndex(const char* pszOperation, int iIndex) const
{
    Design::ThrowIndex(*this, pszOperation, iIndex);
}

void CDateArray::MakeRoom() { Design::MakeRoom(*this); }
CDate CDateArray::GetAtLast() const { return Design::GetAtLast(*this); }
int CDateArray::Find(CDate date) const { return Design::Find(*this, date); }
bool CDateArray::IsIn(CDate date) const { return Design::Find(*this, date) >= 0; }
CString CDateArray::Repr(const char* pszSep, bool bHeader) const
{
    return Design::Repr(*this, pszSep, bHeader);
}
int CDateArray::InsertAt(int iIndex, CDate date) { return Design::InsertAt(*this, iIndex, date); }
int CDateArray::RemoveAt(int iIndex) { return Design::RemoveAt(*this, iIndex); }
void CDateArray::RemoveLast() { Design::RemoveLast(*this); }
void CDateArray::GrowBuffer(int iCount) { Design::GrowBuffer(*this, iCount); }
void CDateArray::Reset(int iCount, CDate date) { Design::Reset(*this, iCount, date); }
void CDateArray::Clear() { Design::Clear(*this); }
void CDateArray::RemoveAll() { Design::RemoveAll(*this); }
void CDateArray::Sort() { Design::Sort(*this); }

int CDateArray_SortCmp(const void* pLeft, const void* pRight) { return Design::Compare(pLeft, pRight); }
