#include "list_model.h"

#include <memory>

namespace
{
using CNumbers = std::vector<int>;
using CItems   = std::vector<CPtrArrayItem*>;
using CModel   = SListModel<CPtrArrayItem*, true>;

CNumbers& Deleted() { return CCountedItem::s_aDeleted; }

/// Returns the numbers of the items that are no longer there, in their order.
CNumbers Dropped(const CItems& aBefore, const CItems& aAfter)
{
    CNumbers aNumbers;
    for (CPtrArrayItem* pItem : aBefore)
        if (pItem != nullptr && std::find(aAfter.begin(), aAfter.end(), pItem) == aAfter.end())
            aNumbers.push_back(static_cast<CCountedItem*>(pItem)->m_iNumber);
    return aNumbers;
}

void ExpectAlike(const CModel& model, CPtrArray& arr)
{
    CPtrArray arrCopy(arr), arrAssigned(true);
    arrAssigned = arr = *&arr; // copies own nothing, self-assignment changes nothing
    for (const CPtrArray* pArr : {&arr, &arrCopy, &arrAssigned})
        ASSERT_EQ(model.aValues, CItems(pArr->begin(), pArr->end()));
    ASSERT_EQ(model.iCapacity, arr.GetBufferSize());
    ASSERT_EQ(model.GetSize() > 0 ? model.GetSize() : 4, arrCopy.GetBufferSize());
    string strText = Print("CPtrArr:(%d/%d)", model.GetSize(), model.iCapacity);
    for (CPtrArrayItem* pItem : model.aValues)
        strText += Print("; %p", static_cast<void*>(pItem));
    ASSERT_EQ(model.GetSize() > 0 ? strText : "<CPtrArr: unset>", Bytes(arr.Repr("; ")));
}

TEST(PtrArray, RandomEditsAgreeInItemsCapacityReprResultAndDeletions)
{
    for (bool bOwner : {false, true})
    {
        CRandom random;
        std::vector<std::unique_ptr<CPtrArrayItem>> aOurs; // what the array does not delete
        CModel model;
        CPtrArray arr(bOwner);
        for (int iStep = 0; iStep < 20000; ++iStep)
        {
            const int iEdit = random.Between(0, iStep % 400 < 200 ? 2 : 8),
                      i     = random.Between(0, arr.GetSize());
            SCOPED_TRACE(Print("step %d, edit %d at %d", iStep, iEdit, i));
            const bool bHeld =
                iStep % 2 > 0 && i < arr.GetSize() && (iEdit == 2 || iEdit == 6); // given again
            CPtrArrayItem* pItem = bHeld ? arr[i] : iStep % 9 == 0 ? nullptr : new CCountedItem(iStep);
            const CItems aBefore = model.aValues;
            const int iExpected  = s_aListEdits<CModel, CPtrArrayItem*>[iEdit](model, i, pItem);
            CItems aKept         = model.aValues;
            aKept.push_back(pItem); // Reset does not delete what it is given
            const CNumbers aDropped = bOwner ? Dropped(aBefore, aKept) : CNumbers();
            Deleted().clear();
            ASSERT_EQ(iExpected, (s_aListEdits<CPtrArray, CPtrArrayItem*>[iEdit](arr, i, pItem)));
            ExpectAlike(model, arr);
            ASSERT_EQ(aDropped, Deleted());
            ASSERT_FALSE(HasFatalFailure());
            if (bOwner ? !arr.IsIn(pItem) : !bHeld)
                aOurs.emplace_back(pItem);
        }
    }
}

TEST(PtrArray, GrowsByOneEighthInAddAndDoublesInInsertAt)
{
    CPtrArray arr(false);
    CModel model;
    for (int i = 0; i < 40000; ++i)
        ASSERT_TRUE(arr.Add(nullptr) == model.Add(nullptr) && arr.GetBufferSize() == model.iCapacity) << i;
    for (int iSize : {1, 16, 1048575, 1048576, 2097153})
    {
        CPtrArray arrFull(iSize, nullptr, false);
        arrFull.InsertAt(1, nullptr);
        EXPECT_EQ(iSize + std::min(iSize, 1048576), arrFull.GetBufferSize());
    }
    EXPECT_EQ(4, CPtrArray(-7, nullptr, true).GetBufferSize());
}

TEST(PtrArray, AssignmentMakesAHolderAndDeletesWhatTheTargetOwned)
{
    CPtrArray arrSource(true), arrTarget(true), arrEmpty(true);
    arrSource.Add(new CCountedItem(1)), arrSource.Add(new CCountedItem(2)),
        arrTarget.Add(new CCountedItem(99));
    Deleted().clear();
    arrTarget = arrSource;
    EXPECT_TRUE(arrTarget.IsIn(arrSource[1]) && !arrTarget.IsIn(nullptr) &&
                arrTarget.GetAtLast() == arrSource[1]);
    for (CPtrArray* pArr : {&arrSource, &arrTarget, &arrEmpty})
    {
        ExpectIndexTexts("0 CPtrArray::", *pArr, nullptr);
        EXPECT_TRUE(pArr->RemoveAt(-1) == -1 && pArr->RemoveAt(INT_MAX) == -1 &&
                    pArr->InsertAt(-1, nullptr) == -1);
    }
    arrTarget.RemoveAt(0), arrTarget.SetAt(0, nullptr), arrTarget = arrEmpty;
    EXPECT_TRUE(arrTarget.GetBufferSize() == 4 && arrTarget.InsertAt(INT_MAX, nullptr) == 0);
    EXPECT_EQ("CPtrArr:(1/4)(null)(nil), (nil)",
              Bytes(arrTarget.Repr(nullptr) + CPtrArray(2, nullptr, true).Repr().Right(7)));
    arrSource.RemoveAt(0); // the source still owns
    EXPECT_EQ(CNumbers({99, 1}), Deleted());
}
} // namespace
