// CStrArray: a growable, ordered array of texts, each a CString that the array owns.
//
//     CStrArray arrNames;
//     arrNames.Add("Grace");
//     arrNames.Add("Ada");
//     arrNames.Sort();
//     printf("%s\n", arrNames.Join(" and ").ToStr()); // Ada and Grace
//
// The array is a buffer of pointers to string objects. Inserting, removing, sorting and growing move pointers only:
// a CString& from operator[] stays good until its element is removed or the array shrinks, is emptied, assigned to
// or destroyed. Slots beyond the size hold empty strings, ready for reuse. Texts go in and out by terminator: up to
// their first NUL; a text that is taken may be a CString.
//
// A new array has no buffer. The first one has exactly the slots asked for; growth adds one eighth of the size, at
// least 4 and at most 1024 slots. Behind a buffer of more than 8,192 slots more memory is held ready, into which most of
// the next steps grow without copying the pointers.
//
// When memory runs out, code -11 is thrown, "at str_array.cpp(<line> lines), (new <expression>) failed(<reason>)",
// or, from the strings themselves, CString's "at cstring.cpp(...)". A buffer or string object that cannot be made
// leaves the array as it was. A string that cannot be emptied or set loses its text and its own buffer, and reads as
// empty until it is set again; what becomes of its element is said with each operation. No operation but operator[]
// and GetAtLast throws code 0.
//
// Several threads may read one array at a time, by its const operations; one that changes it or an element must be alone
// with it.
#ifndef BEDPLATE_STR_ARRAY_H
#define BEDPLATE_STR_ARRAY_H

#include "cstring.h"

#include <initializer_list>
#include <stddef.h>

// Of all that <iterator> brings, thousands of lines, a name is enough here.
#ifdef __GLIBCXX__
namespace std
{
_GLIBCXX_BEGIN_NAMESPACE_VERSION
struct random_access_iterator_tag;
_GLIBCXX_END_NAMESPACE_VERSION
} // namespace std
#else
#include <iterator>
#endif

namespace bedplate_private
{
/// A text in a list of texts and strings.
struct CText
{
    CText(const char* pszText) : m_pszText(pszText) {}
    CText(const CString& strText) : m_pszText(strText.ToStr()) {}
    const char* m_pszText;
};

/// A random-access iterator over slots, pointers to objects, that gives the TItem&.
template <class TItem, class TSlot>
class CSlotIterator
{
public:
    typedef std::random_access_iterator_tag iterator_category;
    typedef TItem value_type;
    typedef ptrdiff_t difference_type;
    typedef TItem* pointer;
    typedef TItem& reference;

    explicit CSlotIterator(TSlot* pSlot = nullptr) : m_pSlot(pSlot) {}

    TItem& operator*() const { return static_cast<TItem&>(**m_pSlot); }
    TItem* operator->() const { return &**this; }
    TItem& operator[](ptrdiff_t iStep) const { return *(*this + iStep); }

    CSlotIterator& operator+=(ptrdiff_t iStep)
    {
        m_pSlot += iStep;
        return *this;
    }
    CSlotIterator& operator-=(ptrdiff_t iStep) { return *this += -iStep; }
    CSlotIterator& operator++() { return *this += 1; }
    CSlotIterator& operator--() { return *this -= 1; }
    CSlotIterator operator++(int) { return CSlotIterator(m_pSlot++); }
    CSlotIterator operator--(int) { return CSlotIterator(m_pSlot--); }
    CSlotIterator operator+(ptrdiff_t iStep) const { return CSlotIterator(m_pSlot + iStep); }
    CSlotIterator operator-(ptrdiff_t iStep) const { return CSlotIterator(m_pSlot - iStep); }
    ptrdiff_t operator-(const CSlotIterator& other) const { return m_pSlot - other.m_pSlot; }
    friend CSlotIterator operator+(ptrdiff_t iStep, const CSlotIterator& it) { return it + iStep; }

    bool operator==(const CSlotIterator& other) const { return m_pSlot == other.m_pSlot; }
    bool operator!=(const CSlotIterator& other) const { return m_pSlot != other.m_pSlot; }
    bool operator<(const CSlotIterator& other) const { return m_pSlot < other.m_pSlot; }
    bool operator>(const CSlotIterator& other) const { return m_pSlot > other.m_pSlot; }
    bool operator<=(const CSlotIterator& other) const { return m_pSlot <= other.m_pSlot; }
    bool operator>=(const CSlotIterator& other) const { return m_pSlot >= other.m_pSlot; }

private:
    TSlot* m_pSlot;
};
} // namespace bedplate_private

class BEDPLATE_API CStrArray
{
public:
    /// What begin() and end() return: a random-access iterator that gives the element's CString&, for the algorithms of the
    /// standard library, std::sort and ranges among them.
    typedef bedplate_private::CSlotIterator<CString, CString*> CIterator;

    /// Makes an empty array without a buffer. Does not allocate.
    BEDPLATE_INLINE CStrArray() {}

    /// Makes an array of iCount empty texts, or an empty one for an iCount of 0 or less.
    ///   Throws    as SetSize.
    explicit CStrArray(int iCount);

    /// Makes a copy with arrSource's texts, and no spare slots.
    ///   Throws    as SetSize, and as CString::Set.
    CStrArray(CStrArray& arrSource);
    CStrArray(const CStrArray& arrSource) : CStrArray(const_cast<CStrArray&>(arrSource)) {}

    /// Makes an array of the texts of a list, each a const char* or a CString, in exactly as many slots.
    ///   Throws    as SetSize, and as CString::Set.
    ///   Example   CStrArray{"a", "b"} -> {"a", "b"}, capacity 2
    CStrArray(std::initializer_list<bedplate_private::CText> listTexts) : CStrArray()
    {
        SetSize(static_cast<int>(listTexts.size()));
        CString** pSlot = m_pData;
        for (const bedplate_private::CText& text : listTexts)
            (*pSlot++)->Set(text.m_pszText);
    }

    /// Takes over arrSource's strings with its buffer, as they are; arrSource is empty then, and without a buffer. Does not
    /// allocate.
    CStrArray(CStrArray&& arrSource) noexcept : CStrArray()
    {
        bedplate_private::ArrayMoves::Swap(*this, arrSource);
    }

    /// Destroys the strings and releases the buffer.
    ~CStrArray();

    /// Takes over arrSource's texts. The capacity becomes that of an empty array with the same buffer after SetSize.
    /// Assigning an empty array releases the buffer; assigning an array to itself changes nothing.
    ///   Returns   this array.
    ///   Throws    as SetSize, and its size is 0; as CString::Set, and the elements not yet set are empty.
    ///   Cost      O(total length).
    CStrArray& operator=(const CStrArray& arrSource);

    /// Ends as assigning a copy of arrSource would, but takes its strings over where they are what copies of them would be.
    /// arrSource is empty then, and without a buffer. Moving an array to itself changes nothing.
    ///   Returns   this array.
    ///   Throws    as the assignment of a copy, when it has to copy; arrSource is unchanged then.
    ///   Cost      O(total length); mostly does not allocate.
    CStrArray& operator=(CStrArray&& arrSource);

    // ---- Reading ------------------------------------------------------------------------------------------

    /// Returns the number of elements.
    BEDPLATE_INLINE int GetSize() const { return m_iSize; }

    /// Returns the capacity in slots.
    BEDPLATE_INLINE int GetBufferSize() const { return m_iBufferSize; }

    /// Returns element iIndex's text, or the empty text for an index out of bounds; never null, never throws. The
    /// pointer dies when the element changes or is removed.
    BEDPLATE_INLINE const char* GetAt(int iIndex) const
    {
        return bedplate_private::IsIndex(iIndex, m_iSize) ? m_pData[iIndex]->ToStr() : EmptyText();
    }

    /// Returns element iIndex's string, which may be changed, also in a const array.
    ///   Throws    code 0, "CStrArray::operator[] : Invalid index(<last>:<iIndex>)", unless
    ///             0 <= iIndex < GetSize(); <last> is GetSize() - 1.
    BEDPLATE_INLINE CString& operator[](int iIndex) const
    {
        return *m_pData[bedplate_private::Checked("CStrArray::operator[]", iIndex, m_iSize, "index")];
    }

    /// Returns a copy of the last element.
    ///   Throws    code 0, "CStrArray::GetAtLast : Empty", when there is none; code -11 as CString.
    CString GetAtLast() const;

    /// Returns the first element's place, for range-for; equal to end() when there is none.
    BEDPLATE_INLINE CIterator begin() const { return CIterator(m_pData); }

    /// Returns the place behind the last element.
    BEDPLATE_INLINE CIterator end() const { return CIterator(m_pData + m_iSize); }

    /// Returns the index of the first element equal to pszText, or -1; -1 too for a null text. O(size).
    int Find(const char* pszText) const;
    int Find(const CString& strText) const { return Find(strText.ToStr()); }

    /// Tells whether an element equals pszText. O(size).
    bool IsIn(const char* pszText) const;
    bool IsIn(const CString& strText) const { return IsIn(strText.ToStr()); }

    /// Returns the texts with pszSep between them; a null separator counts as empty.
    ///   Throws    code -11 as CString.
    ///   Cost      O(result).
    ///   Example   {"a", "b"}: Join(" or ") -> "a or b"
    CString Join(const char* pszSep = ",");
    CString Join(const char* pszSep = ",") const;

    /// Makes a line of the elements, each as CString::Quoted, with chSep between them. CString::SplitQuoted reads it.
    ///   Example   {"1", "a, b"}: JoinQuoted() -> "1,\"a, b\""
    CString JoinQuoted(char chSep = ',') const;

    /// Renders the array as Join(pszSep), behind "CStrArr:(<size>/<capacity>)" and pszSep when bHeader is true; an
    /// empty array is "<CStrArr: unset>" either way. A null separator shows as "(null)" in the header.
    ///   Throws    code -11 as CString.
    ///   Example   {"a", "b"} in 5 slots: Repr() -> "CStrArr:(2/5), a, b"; Repr(", ", false) -> "a, b"
    CString Repr(const char* pszSep = ", ", bool bHeader = true) const;

    // ---- Changing -----------------------------------------------------------------------------------------

    /// Sets element iIndex's text, which is only read; a null text makes it empty. An index out of bounds changes
    /// nothing.
    ///   Throws    code -11 as CString::Set.
    void SetAt(int iIndex, char* pszText);
    template <class TChar>
    void SetAt(int iIndex, TChar* pszText, bedplate_private::ConstCharOnly<TChar> = 0)
    {
        SetAt(iIndex, const_cast<char*>(pszText));
    }
    void SetAt(int iIndex, const CString& strText) { SetAt(iIndex, strText.ToStr()); }

    /// Appends pszText, which may be an element's own; a null text counts as empty.
    ///   Returns   the new element's index.
    ///   Throws    as SetSize, and the array is unchanged; as CString::Set, and the element is in place, empty. A text of
    ///             1 to 7 bytes fits every string, so a failure leaves it unadded.
    ///   Cost      O(text) on average.
    ///   Example   a new array: Add("x") -> 0, capacity 1; Add("y") -> 1, capacity 5
    int Add(const char* pszText);
    int Add(const CString& strText) { return Add(strText.ToStr()); }

    /// Inserts pszText before element iIndex, or appends it when iIndex is beyond the end.
    ///   Returns   the position used; -1, and nothing changes, for a negative iIndex.
    ///   Throws    as Add.
    ///   Cost      O(size + text).
    ///   Example   {"a"}: InsertAt(0, "b") -> 0, {"b", "a"}; InsertAt(99, "c") -> 2
    int InsertAt(int iIndex, const char* pszText);
    int InsertAt(int iIndex, const CString& strText) { return InsertAt(iIndex, strText.ToStr()); }

    /// Changes the number of elements; new ones are empty. The first buffer has exactly iNewSize slots, a larger one
    /// a growth step more than the old one, or iNewSize slots if that is more. 0 releases everything.
    ///   Returns   0; -1, and nothing changes, for a negative size.
    ///   Throws    code -11, "CString*[m_iBufferSize]" (first buffer), "CString*[iNewMax]" (larger buffer), "CString"
    ///             (string object), or as CString::Clear. The array is as it was, without buffer if it had none; but
    ///             elements dropped before Clear failed are empty.
    ///   Cost      O(size + iNewSize).
    int SetSize(int iNewSize);

    /// Removes element iIndex. Its string object becomes a spare one.
    ///   Returns   iIndex; -1, and nothing changes, when it is out of bounds.
    ///   Throws    as CString::Clear; the element is removed all the same.
    ///   Cost      O(size).
    int RemoveAt(int iIndex);

    /// Removes the last element; nothing when there is none.
    ///   Throws    as CString::Clear; the element is removed all the same.
    void RemoveLast();

    /// Empties every element and sets the size to 0. Buffer and string objects stay.
    ///   Throws    as CString::Clear; the size then stays, the elements up to the failing one being empty.
    void Clear();

    /// Destroys the strings and releases the buffer; size and capacity are 0.
    void RemoveAll();

    /// Shrinks the buffer to the size, destroying the spare strings; to nothing when the size is 0.
    ///   Throws    code -11, "CString*[m_iSize]"; the array is unchanged.
    void FreeExtra();

    /// Sorts ascending in byte order; equal texts keep no particular order. O(size log size).
    void Sort();

    /// Sorts by an order of the caller's: Order(left, right), called with two CStrings or with two texts, tells whether left
    /// comes first by returning true, or a negative number. Elements of which neither comes first stay in their order.
    ///   Throws    code -11, "CString*[m_iSize]", and what Order throws; the array is unchanged.
    ///   Cost      O(size log size); allocates.
    ///   Example   {"b", "a", "B"}: Sort(strcasecmp) -> {"a", "b", "B"}
    template <class TOrder>
    void Sort(TOrder Order)
    {
        SortBy(&CallOrder<TOrder>, &Order);
    }

private:
    friend struct bedplate_private::ArrayAccess;
    friend class bedplate_private::CStrArrayFiller;
    friend struct bedplate_private::ArrayMoves;
    friend struct bedplate_private::LayoutCheck;

    template <class TOrder>
    static bool CallOrder(void* pOrder, const CString& strLeft, const CString& strRight)
    {
        return bedplate_private::IsBefore(Call(*static_cast<TOrder*>(pOrder), strLeft, strRight, 0));
    }
    template <class TOrder>
    static auto Call(TOrder& Order, const CString& strLeft, const CString& strRight, int)
        -> decltype(Order(strLeft, strRight))
    {
        return Order(strLeft, strRight);
    }
    template <class TOrder>
    static auto Call(TOrder& Order, const CString& strLeft, const CString& strRight, long)
        -> decltype(Order(strLeft.ToStr(), strRight.ToStr()))
    {
        return Order(strLeft.ToStr(), strRight.ToStr());
    }

    static const char* EmptyText();
    void SortBy(bool (*pIsBefore)(void*, const CString&, const CString&), void* pOrder);
    BEDPLATE_LOCAL int InsertText(int iIndex, const char* pszText, size_t iCount);
    BEDPLATE_LOCAL bool TakeOver(CStrArray& arrSource);
    BEDPLATE_LOCAL static long long CapacityFor(int iBufferSize, int iSize, int iNewSize);
    BEDPLATE_LOCAL void Reserve(int iNewSize, int iUsed = 0);

    CString** m_pData = nullptr;
    int m_iSize       = 0;
    int m_iBufferSize = 0;
};

/// Compares two elements of a buffer of CString*, for qsort: the arguments point to the pointers.
///   Returns   -1, 0 or 1.
extern "C" BEDPLATE_API int CStrArray_SortCmp(const void* pLeft, const void* pRight);

#endif
