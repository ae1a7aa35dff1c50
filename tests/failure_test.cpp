// Operations with their 1st, 2nd, ... allocation failing, once and from then on, until they succeed.

#include "alloc_control.h"
#include "hash_tables.h"

namespace
{
/// Runs an operation with an allocation failing; returns the text of its failure, "-11" or "-99" alone, or "".
template <class TRun>
string RunOnce(TRun Run, int iNth, bool bOnwards)
{
    CException error("", 1);
    int iResult = 0;
    CFailingAllocation failing(iNth, bOnwards);
    try
    {
        iResult = Run();
    }
    catch (const CException& e)
    {
        error = e;
    }
    EXPECT_EQ(failing.Disarm() > 0, error.GetCode() != 1 || iResult == -99);
    const int iCode = error.GetCode() != 1 ? error.GetCode() : iResult;
    return iCode == -11 || iCode == -99 ? std::to_string(iCode) : error.GetText();
}

/// Lets each allocation of an operation on the subject fail, which See must then see as it was. Each failure must be one
/// of the errors, and each error must be met; no memory must be lost.
template <class TMake, class TSee, class TRun>
void FailEach(const char* pszErrors, TMake Make, TSee See, TRun Run)
{
    string strMet;
    for (int iRound = 0, iNth = 1; iRound < 2; ++iNth)
    {
        ASSERT_LT(iNth, 99) << "never succeeds";
        SCOPED_TRACE(Print("%s: allocation %d, round %d", pszErrors, iNth, iRound));
        const long iLive = LiveBlocks();
        char szError[64] = "";
        {
            auto subject           = Make();
            const string strBefore = See(subject);
            const string strError  = RunOnce([&] { return Run(subject); }, iNth, iRound > 0);
            EXPECT_TRUE(strError.empty() || strBefore == See(subject));
            strError.copy(szError, sizeof szError - 1);
        }
        EXPECT_GE(iLive, LiveBlocks()) << "leak";
        strMet += strMet.find(szError) == string::npos ? string("|") + szError : "";
        if (*szError == '\0')
            ++iRound, iNth = 0;
    }
    EXPECT_EQ(pszErrors, strMet);
}

template <class THash, class TValue>
struct SFullTable : THash
{
    SFullTable() : THash(2)
    {
        TValue value;
        for (int i = 0; i < 20; ++i)
            Assign(value, 18), this->Set(i < 16 ? "full" : "also full, and long", value);
        CCountedItem::s_aDeleted.clear();
    }
};

template <class TTable>
class HashFailure : public testing::Test
{
};

TYPED_TEST_SUITE(HashFailure, CTables, );

TYPED_TEST(HashFailure, LeavesTheTableAndTheItemAsTheyWere)
{
    using H = SFullTable<typename TypeParam::Hash, typename TypeParam::Value>;
    typename TypeParam::Value aValues[6];
    int iTaken = 0; // after a failure, an item is still ours
    string strName;
    for (auto& value : aValues)
        strName = Assign(value, 18);
    const string strMemory = " Out of memory", strArray = "|C" + strName + "Array";
    const string strAdd =
        strName == "Str" ? "|-11" : strArray + (strName == "Ptr" ? "::Add :" : " -") + strMemory;
    const string strGrow =
        strName == "Str" ? "|-11" : strArray + (strName == "Ptr" ? "::GrowBuffer :" : " -") + strMemory;
    const auto Fail = [](const string& strErrors, auto Run)
    {
        const auto See = [](H& h) { return Dumped(h) + std::to_string(CCountedItem::s_aDeleted.size()); };
        FailEach(
            strErrors.c_str(), [] { return H(); }, See, Run);
    };
    const auto SetOf = [&](const char* pszKey, bool bReplace)
    {
        return [&, pszKey, bReplace](H& h)
        {
            const int iResult = h.Set(pszKey, aValues[iTaken], bReplace);
            return iTaken += iResult == 0, iResult;
        };
    };
    Fail(strGrow, SetOf("full", false));
    Fail(strAdd, SetOf("full", true));
    Fail("|-99|-11" + (strName == "Str" ? "" : strAdd), SetOf("new, and long", false));
    EXPECT_EQ(6, iTaken);
    Fail(strGrow,
         [](H& h)
         {
             typename TypeParam::List list;
             return h.Get("full", &list);
         });
    Fail("|-11",
         [](H& h)
         {
             CStrArray arr;
             CStream stream;
             return h.GetKeys(arr), h.Dump(&stream), 0;
         });
    Fail("|C" + strName + "Hash()" + strMemory, [](H&) { return typename TypeParam::Hash(7).GetDataCnt(); });
}

TEST(Failure, DatesNeedNoMemory)
{
    CDateArray arrDates(9, 20240229);
    CTime time;
    CFailingAllocation failing(1, true);
    CDate date(2024, 1, 31);
    date.AddDay(99), date.AddMonth(-5, true), date.SetAsToday();
    (void)date.GetBizDateAdjusted(CDate::E_Next, &arrDates);
    time.SetAsNow();
    EXPECT_EQ(0, failing.Disarm());
}
} // namespace
