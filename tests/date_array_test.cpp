// What CDateArray has of its own: unset dates among the values, what free slots hold, and the texts.

#include "list_model.h"

namespace
{
using CModel = SListModel<string, false>; // of texts; an unset date is "-"

string Seen(const CDate& date) { return date.IsSet() ? date.ToStr() : string("-") + date.ToStr(); }

void ExpectAlike(const CModel& model, CDateArray& arr)
{
    string strText = Print("CDateArr:(%d/%d)", model.GetSize(), model.iCapacity);
    for (int i = 0; i < model.GetSize(); ++i)
    {
        const string& str = model.aValues[Unsigned(i)];
        ASSERT_EQ(str, Seen(arr.GetAt(i))) << i;
        ASSERT_EQ(std::find(model.aValues.begin(), model.aValues.end(), str) - model.aValues.begin(),
                  arr.Find(arr[i]));
        strText += "; " + (str == "-" ? "" : str);
    }
    ASSERT_EQ(model.GetSize() > 0 ? strText : "<CDateArr: unset>", Bytes(arr.Repr("; ")));
    ASSERT_TRUE(arr.GetBufferSize() == model.iCapacity && !arr.IsIn("0000000"));
}

TEST(DateArray, RandomEditsAgreeInDatesCapacityReprAndResult)
{
    CRandom random;
    CDateArray arr;
    CModel model;
    for (int iStep = 0; iStep < 20000; ++iStep)
    {
        const int iEdit = random.Between(0, iStep % 400 < 200 ? 2 : 8),
                  i     = random.Between(0, model.GetSize());
        const string strText =
            random.Between(0, 3) == 0 ? "-" : std::to_string(random.Between(20240101, 20240109));
        SCOPED_TRACE(Print("step %d, edit %d at %d", iStep, iEdit, i));
        const CDate date   = strText == "-" ? CDate() : CDate(strText.c_str());
        const int iOldSize = arr.GetSize(), iOldCapacity = arr.GetBufferSize();
        const int iExpected = s_aListEdits<CModel, string>[iEdit](model, i, strText);
        ASSERT_EQ(iExpected, (s_aListEdits<CDateArray, CDate>[iEdit](arr, i, date)));
        const bool bAll = iEdit == 7 || arr.GetBufferSize() > iOldCapacity; // new and cleared slots are unset
        const string strFree = iEdit == 3 || iEdit == 4 ? "00000000" : "-";
        for (int j = arr.GetSize(); j < std::min(bAll ? INT_MAX : iOldSize, arr.GetBufferSize()); ++j)
            ASSERT_EQ(strFree, Seen(arr.begin()[j])) << j;
        if (iStep % 50 == 0)
            arr.Sort(), std::sort(model.aValues.begin(), model.aValues.end()); // '-' comes before the digits
        CDateArray arrCopy(arr), arrAssigned(3, date);
        arrAssigned = arr = *&arr;
        ExpectAlike(model, arr), ExpectAlike(model, arrCopy), ExpectAlike(model, arrAssigned);
        ASSERT_FALSE(HasFatalFailure());
    }
}

TEST(DateArray, BadIndexesThrowAndChangeNothing)
{
    for (int iSize = 0; iSize <= 2; ++iSize)
    {
        CDateArray arr(iSize, CDate());
        ExpectIndexTexts("0 CDateArray::", arr, CDate(20240101));
        const string strEnd = Print(" : Invalid Index(%d:", iSize - 1) + "-1)";
        EXPECT_EQ("0 CDateArray::RemoveAt" + strEnd, Thrown([&] { arr.RemoveAt(-1); }));
        EXPECT_EQ("0 CDateArray::InsertAt" + strEnd, Thrown([&] { arr.InsertAt(-1, CDate()); }));
        EXPECT_NE("nothing",
                  Thrown([&] { arr.RemoveAt(iSize); }) + Thrown([&] { arr.InsertAt(iSize + 1, 20240101); }));
        EXPECT_TRUE(arr.GetSize() == iSize &&
                    arr.Find("") == (iSize > 0 ? 0 : -1)); // the texts count, not the flags
    }
}
} // namespace
