// CPtrArray: a growable, ordered array of pointers to objects of the caller's, which it may own; and CPtrArrayItem,
// the base class of such objects.
//
//     class CShip : public CPtrArrayItem { ... };
//
//     CPtrArray arrShips(true); // an owner
//     arrShips.Add(new CShip("Argo"));
//     arrShips.RemoveAt(0);     // deletes the ship
//
// An owner deletes every item that it drops, through the item's virtual destructor; a holder never deletes anything.
// An item of an owner belongs to it alone: it must not be deleted by anybody else, nor given to an owner twice. A copy,
// made by assignment or construction, is a holder of the same items; the source keeps what it owns. A move, as of what a
// function returns, takes the ownership along. Null pointers may be stored. An array drops an item after, or in the middle of, its own change: an item's destructor must not use the
// array that holds it.
//
// A new array has no buffer. The first Add or InsertAt makes one of 16 slots; a full buffer grows by one eighth of the
// size, at least 4 and at most 1024 slots, in Add, and to twice its capacity, by at most 1,048,576 slots, in InsertAt.
// Behind a buffer of more than 8,192 slots more memory is held ready, into which most of the next steps grow without
// copying anything.
//
// Failures are CExceptions of code 0. An index out of bounds throws
// "CPtrArray::<operation> : Invalid Index(<last>:<index>)", <last> being GetSize() - 1. begin() and end() die whenever
// the buffer is replaced.
//
// Several threads may read one array at a time, by its const operations; one that changes it must be alone with it.
#ifndef BEDPLATE_PTR_ARRAY_H
#define BEDPLATE_PTR_ARRAY_H

#include "cstring.h"

#include <initializer_list>

/// What an object must be derived from to be held by CPtrArray and CPtrHash. They only store, compare and print its
/// address, and delete it if they own it.
class BEDPLATE_API CPtrArrayItem
{
public:
    virtual ~CPtrArrayItem() {}
};

class BEDPLATE_API CPtrArray
{
public:
    /// Makes an empty array without a buffer, an owner if bOwner is true.
    explicit CPtrArray(bool bOwner);

    /// Makes an array of iCount times pItem, as Reset does: usually null, to be filled by SetAt.
    ///   Throws    as GrowBuffer.
    CPtrArray(int iCount, CPtrArrayItem* pItem, bool bOwner);

    /// Makes a holder of arrSource's items, as assignment does.
    ///   Throws    as GrowBuffer.
    CPtrArray(CPtrArray& arrSource);
    /// The same for a const array or a temporary. The items of an owner that dies are gone, whoever holds them.
    CPtrArray(const CPtrArray& arrSource) : CPtrArray(false) { *this = arrSource; }

    /// Makes an array of the items of a list, an owner of them if bOwner is true.
    ///   Throws    as GrowBuffer; the items are then not taken over.
    ///   Example   CPtrArray({new CShip("Argo"), new CShip("Ark")}, true)
    CPtrArray(std::initializer_list<CPtrArrayItem*> listItems, bool bOwner) : CPtrArray(false)
    {
        bedplate_private::AddAll(*this, listItems);
        m_bOwner = bOwner;
    }

    /// Takes over arrSource's items with its buffer, and the ownership if arrSource is an owner. arrSource is empty then,
    /// without a buffer, and remains what it was. Does not allocate.
    CPtrArray(CPtrArray&& arrSource) noexcept : m_bOwner(arrSource.m_bOwner)
    {
        bedplate_private::ArrayMoves::Swap(*this, arrSource);
    }

    /// Does RemoveAll(): an owner deletes its items.
    ~CPtrArray();

    /// Does RemoveAll() and makes this array a holder of arrSource's items, whatever it was, with as many slots as
    /// there are items, or 4 for none. Assigning an array to itself changes nothing.
    ///   Returns   this array.
    ///   Throws    as GrowBuffer; the array is then empty and without a buffer.
    CPtrArray& operator=(const CPtrArray& arrSource);

    /// Does RemoveAll() and takes over arrSource's items, and the ownership if arrSource is an owner. The capacity is that
    /// of a copy. arrSource is empty then, without a buffer, and remains what it was. Moving an array to itself changes
    /// nothing.
    ///   Returns   this array.
    ///   Throws    as GrowBuffer, but only when arrSource is empty; this array is then empty and without a buffer.
    ///   Cost      does not allocate unless arrSource is empty.
    CPtrArray& operator=(CPtrArray&& arrSource);

    // ---- Reading ------------------------------------------------------------------------------------------

    /// Returns the number of items.
    BEDPLATE_INLINE int GetSize() const { return m_iSize; }

    /// Returns the capacity in slots.
    BEDPLATE_INLINE int GetBufferSize() const { return m_iBufferSize; }

    /// Returns item iIndex.
    ///   Throws    code 0, "CPtrArray::GetAt : Invalid Index(<last>:<iIndex>)", unless 0 <= iIndex < GetSize().
    BEDPLATE_INLINE CPtrArrayItem* GetAt(int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CPtrArray::GetAt", iIndex, m_iSize)];
    }

    /// Returns item iIndex.
    ///   Throws    code 0, "CPtrArray::operator[] : Invalid Index(<last>:<iIndex>)", unless
    ///             0 <= iIndex < GetSize().
    BEDPLATE_INLINE CPtrArrayItem* operator[](int iIndex) const
    {
        return m_pData[bedplate_private::Checked("CPtrArray::operator[]", iIndex, m_iSize)];
    }

    /// Returns the last item.
    ///   Throws    code 0, "CPtrArray::GetAtLast : Empty", when there is none.
    BEDPLATE_INLINE CPtrArrayItem* GetAtLast() const
    {
        return m_pData[bedplate_private::CheckedLast("CPtrArray::GetAtLast", m_iSize)];
    }

    /// Returns the first item's slot, for range-for; equal to end() when there is none.
    BEDPLATE_INLINE CPtrArrayItem* const* begin() const { return m_pData; }

    /// Returns the slot behind the last item's.
    BEDPLATE_INLINE CPtrArrayItem* const* end() const { return m_pData + m_iSize; }

    /// Tells whether the array holds this very pointer. O(size).
    bool IsIn(CPtrArrayItem* pItem) const;

    /// Renders the pointers ("%p") with pszSep between them, behind "CPtrArr:(<size>/<capacity>)" and pszSep when
    /// bHeader is true; an empty array is "<CPtrArr: unset>" either way. A null separator counts as empty, but shows
    /// as "(null)" in the header.
    ///   Throws    code -11 as CString does.
    CString Repr(const char* pszSep = ", ", bool bHeader = true) const;

    // ---- Changing -----------------------------------------------------------------------------------------

    /// Replaces item iIndex; an owner deletes the old one. Setting the item that is there changes nothing.
    ///   Throws    code 0, "CPtrArray::SetAt : Invalid Index(<last>:<iIndex>)", unless 0 <= iIndex < GetSize();
    ///             nothing is dropped.
    void SetAt(int iIndex, CPtrArrayItem* pItem);

    /// Appends pItem.
    ///   Returns   its index.
    ///   Throws    code 0, "CPtrArray::Add : Out of memory" (first buffer), "CPtrArray::GrowBuffer : Out of memory";
    ///             the array is unchanged, and the item not taken over.
    ///   Cost      O(1) on average.
    BEDPLATE_INLINE int Add(CPtrArrayItem* pItem)
    {
        if (m_iSize >= m_iBufferSize)
            MakeRoom();
        m_pData[m_iSize] = pItem;
        return m_iSize++;
    }

    /// Inserts pItem before item iIndex, or appends it when iIndex is beyond the end.
    ///   Returns   the position used; -1, and nothing changes, for a negative iIndex.
    ///   Throws    code 0, "CPtrArray::Add : Out of memory" (first buffer), "CPtrArray::InsertAt : Out of memory";
    ///             the array is unchanged, and the item not taken over.
    ///   Cost      O(size).
    ///   Example   16 items in 16 slots: InsertAt(0, p) -> 0, capacity 32
    int InsertAt(int iIndex, CPtrArrayItem* pItem);

    /// Removes item iIndex; an owner deletes it.
    ///   Returns   iIndex; -1, and nothing changes, when it is out of bounds.
    ///   Cost      O(size).
    int RemoveAt(int iIndex);

    /// Removes item iIndex without deleting it: from an owner, it becomes the caller's.
    ///   Returns   the item.
    ///   Throws    code 0, "CPtrArray::Detach : Invalid Index(<last>:<iIndex>)", unless 0 <= iIndex < GetSize().
    ///   Cost      O(size).
    CPtrArrayItem* Detach(int iIndex);

    /// Removes the last item; an owner deletes it. Nothing when there is none.
    void RemoveLast();

    /// Removes all items; an owner deletes them, first to last. The buffer stays.
    void Clear();

    /// Removes all items, as Clear does, and releases the buffer.
    void RemoveAll();

    /// Enlarges the buffer by one growth step when iCount is 0 or less, by iCount slots when iCount is above the
    /// capacity, and not at all otherwise.
    ///   Throws    code 0, "CPtrArray::GrowBuffer : Out of memory"; the array is unchanged.
    ///   Example   capacity 16: GrowBuffer(5) -> 16, GrowBuffer(20) -> 36
    void GrowBuffer(int iCount);

    /// Enlarges the buffer as GrowBuffer(iCount) does for an array without items, removes all items, an owner deleting
    /// them except pItem, and makes the array hold iCount times pItem; none for an iCount of 0 or less, pItem then being
    /// the caller's.
    ///   Throws    as GrowBuffer; the array is unchanged, and all its items are alive.
    void Reset(int iCount, CPtrArrayItem* pItem);

    /// Sorts the items by an order of the caller's: Order(pLeft, pRight) tells whether pLeft comes first by returning true,
    /// or a negative number. Those of which neither comes first stay in their order.
    ///   Throws    code 0, "CPtrArray::Sort : Out of memory", and what Order throws; the array is unchanged.
    ///   Cost      O(size log size); allocates.
    ///   Example   Sort([](CPtrArrayItem* pLeft, CPtrArrayItem* pRight) { return Age(pLeft) < Age(pRight); })
    template <class TOrder>
    void Sort(TOrder Order)
    {
        SortBy(&CallOrder<TOrder>, &Order);
    }

private:
    friend struct bedplate_private::ArrayAccess;
    friend struct bedplate_private::ArrayDesign<CPtrArray>;
    friend struct bedplate_private::ArrayMoves;
    friend struct bedplate_private::LayoutCheck;

    void MakeRoom();
    template <class TOrder>
    static bool CallOrder(void* pOrder, CPtrArrayItem* pLeft, CPtrArrayItem* pRight)
    {
        return bedplate_private::IsBefore((*static_cast<TOrder*>(pOrder))(pLeft, pRight));
    }

    void SortBy(bool (*pIsBefore)(void*, CPtrArrayItem*, CPtrArrayItem*), void* pOrder);
    BEDPLATE_LOCAL void Drop(int iIndex);
    BEDPLATE_LOCAL void DropAll();
    BEDPLATE_LOCAL void Grow(int iCount, int iSize);
    BEDPLATE_LOCAL void Enlarge(long long iCapacity, const char* pszOutOfMemory);

    CPtrArrayItem** m_pData = nullptr;
    int m_iSize             = 0;
    int m_iBufferSize       = 0;
    bool m_bOwner           = false;
};

#endif
