#include "date_array.h"

#include "arrays/array_design.h"
#include "arrays/sorting.h"
#include "base/short_bytes.h"

#include <cstdint>

namespace bedplate_private
{
template <>
struct ArrayTraits<CDateArray> : ValueTraits<CDate>
{
    static constexpr char s_szName[]        = "CDateArray";
    static constexpr std::size_t s_iMaxText = 8;

    static CDate Vacated() { return CDate("00000000"); }

    struct CPrint
    {
        std::size_t operator()(char* pszTo, const CDate& date) const
        {
            memcpy(pszTo, date.ToStr(), s_iMaxText);
            return date.ToStr()[s_iMaxText - 1] != '\0' ? s_iMaxText : strlen(date.ToStr());
        }
    };

    /// The text, its first character the highest byte.
    static std::uint64_t KeyOf(const CDate& date)
    {
        return __builtin_bswap64(LoadWord<std::uint64_t>(date.ToStr()));
    }

    static CDate DateOf(std::uint64_t uKey)
    {
        const std::uint64_t uBytes     = __builtin_bswap64(uKey);
        char szDate[sizeof uBytes + 1] = {};
        memcpy(szDate, &uBytes, sizeof uBytes);
        return CDate(szDate);
    }

    static void Sort(CDate* pBegin, CDate* pEnd)
    {
        // Unset dates go first: by their texts they would be equal to those that were set to the empty text.
        CDate* pSet = std::partition(pBegin, pEnd, [](const CDate& date) { return !date.IsSet(); });
        SortByKey<std::uint64_t>(pSet, pEnd, KeyOf, DateOf);
    }
};
} // namespace bedplate_private

using Design = bedplate_private::ArrayDesign<CDateArray>;

CDateArray::CDateArray(int iCount, CDate date) { Design::Reset(*this, iCount, date); }
CDateArray::CDateArray(CDateArray& arrSource) { Design::Copy(*this, arrSource); }
CDateArray::~CDateArray() { Design::DeleteBuffer(m_pData, m_iBufferSize); }

CDateArray& CDateArray::operator=(const CDateArray& arrSource) { return Design::Assign(*this, arrSource); }
void CDateArray::MakeRoom() { Design::MakeRoom(*this); }
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
