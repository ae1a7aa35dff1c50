#include "dbl_array.h"

#include "arrays/array_access.h"
#include "arrays/array_design.h"
#include "arrays/sorting.h"
#include "base/fixed_text.h"
#include "base/short_bytes.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace bedplate_private
{
template <>
struct ArrayTraits<CDblArray> : ValueTraits<double>
{
    static constexpr char s_szName[]        = "CDblArray";
    static constexpr std::size_t s_iMaxText = FixedTextSize(6);

    struct CPrint
    {
        CFixedPrinter m_printer;

        std::size_t operator()(char* pszTo, double dValue) const { return m_printer.Print(pszTo, dValue, 6); }
    };

    /// A NaN equals everything, which only qsort puts up with. Zeros of both signs are equal to each other, but not alike.
    static bool IsPlain(const double& dValue)
    {
        const std::uint64_t uBits = BitsOf(dValue);
        return (uBits & ~s_uSign) <= s_uInfinity && uBits != s_uSign;
    }

    /// The bits of a number in an order that is that of the numbers.
    static std::uint64_t KeyOf(double dValue)
    {
        const std::uint64_t uBits = BitsOf(dValue);
        return uBits ^ (uBits >> 63 != 0 ? ~std::uint64_t{0} : s_uSign);
    }

    static double ValueOf(std::uint64_t uKey)
    {
        const std::uint64_t uBits = uKey ^ (uKey >> 63 != 0 ? s_uSign : ~std::uint64_t{0});
        double dValue;
        memcpy(&dValue, &uBits, sizeof dValue);
        return dValue;
    }

    static void Sort(double* pBegin, double* pEnd)
    {
        if (std::all_of(pBegin, pEnd, IsPlain))
            SortByKey<std::uint64_t>(pBegin, pEnd, KeyOf, ValueOf);
        else
            qsort(pBegin, static_cast<std::size_t>(pEnd - pBegin), sizeof(double), CDblArray_SortCmp);
    }

private:
    static constexpr std::uint64_t s_uSign     = std::uint64_t{1} << 63;
    static constexpr std::uint64_t s_uInfinity = std::uint64_t{0x7FF} << 52;
};
} // namespace bedplate_private

using Design = bedplate_private::ArrayDesign<CDblArray>;

CDblArray::CDblArray(int iCount, double dValue) { Design::Reset(*this, iCount, dValue); }
CDblArray::CDblArray(CDblArray& arrSource) { Design::Copy(*this, arrSource); }
CDblArray::~CDblArray() { Design::DeleteBuffer(m_pData, m_iBufferSize); }

CDblArray& CDblArray::operator=(const CDblArray& arrSource) { return Design::Assign(*this, arrSource); }
void CDblArray::MakeRoom() { Design::MakeRoom(*this); }
int CDblArray::Find(double dValue) const { return Design::Find(*this, dValue); }
bool CDblArray::IsIn(double dValue) const { return Design::Find(*this, dValue) >= 0; }
CString CDblArray::Repr(const char* pszSep, bool bHeader) const
{
    return Design::Repr(*this, pszSep, bHeader);
}
void bedplate_private::AppendElements(CTextBuilder& text, const CDblArray& arr, std::string_view svBetween)
{
    Design::AppendElements(text, arr, svBetween);
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
