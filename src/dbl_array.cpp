#include "dbl_array.h"

#include "array_design.h"
#include "fixed_text.h"

#include <cmath>
#include <cstdlib>

namespace bedplate_private
{
template <>
struct ArrayTraits<CDblArray>
{
    using Elem = double;

    static constexpr char s_szName[]        = "CDblArray";
    static constexpr char s_szTag[]         = "CDblArr";
    static constexpr char s_szUnset[]       = "<CDblArr: unset>";
    static constexpr char s_szOutOfMemory[] = "CDblArray - Out of memory";
    static constexpr std::size_t s_iMaxText = FixedTextSize(6);

    static double Vacated() { return 0.0; }

    static std::size_t Print(char* pszTo, double dValue) { return PrintFixed(pszTo, dValue, 6); }

    /// A NaN equals everything, which only qsort puts up with.
    static void Sort(double* pBegin, double* pEnd)
    {
        if (std::any_of(pBegin, pEnd, [](double dValue) { return std::isnan(dValue); }))
            qsort(pBegin, static_cast<std::size_t>(pEnd - pBegin), sizeof(double), CDblArray_SortCmp);
        else
            std::sort(pBegin, pEnd);
    }
};
} // namespace bedplate_private

using Design = bedplate_private::ArrayDesign<CDblArray>;

CDblArray::CDblArray() { Design::CheckLayout(); }
CDblArray::CDblArray(int iCount, double dValue) { Design::Reset(*this, iCount, dValue); }
CDblArray::CDblArray(CDblArray& arrSource) { Design::Assign(*this, arrSource); }
CDblArray::~CDblArray() { Design::RemoveAll(*this); }

CDblArray& CDblArray::operator=(const CDblArray& arrSource)
{
    Design::Assign(*this, arrSource);
    return *this;
}

void CDblArray::ThrowIndex(const char* pszOperation, int iIndex) const
{
    Design::ThrowIndex(*this, pszOperation, iIndex);
}

void CDblArray::MakeRoom() { Design::MakeRoom(*this); }
double CDblArray::GetAtLast() const { return Design::GetAtLast(*this); }
int CDblArray::Find(double dValue) const { return Design::Find(*this, dValue); }
bool CDblArray::IsIn(double dValue) const { return Design::Find(*this, dValue) >= 0; }
CString CDblArray::Repr(const char* pszSep, bool bHeader) const
{
    return Design::Repr(*this, pszSep, bHeader);
}
int CDblArray::InsertAt(int iIndex, double dValue) { return Design::InsertAt(*this, iIndex, dValue); }
int CDblArray::RemoveAt(int iIndex) { return Design::RemoveAt(*this, iIndex); }
void CDblArray::RemoveLast() { Design::RemoveLast(*this); }
void CDblArray::GrowBuffer(int iCount) { Design::GrowBuffer(*this, iCount); }
void CDblArray::Reset(int iCount, double dValue) { Design::Reset(*this, iCount, dValue); }
void CDblArray::Clear() { Design::Clear(*this); }
void CDblArray::RemoveAll() { Design::RemoveAll(*this); }
void CDblArray::Sort() { Design::Sort(*this); }

int CDblArray_SortCmp(const void* pLeft, const void* pRight) { return Design::Compare(pLeft, pRight); }
