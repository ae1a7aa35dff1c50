#include "support.h"

#include <sys/resource.h>

namespace
{
string See(const CStream& stream)
{
    const string strBytes(stream.ToStr(), Unsigned(stream.GetLength()));
    return Look(strBytes, stream.GetAllocSize()) + (stream.ToStr()[strBytes.size()] == '\0' ? "" : "!");
}

TEST(Stream, RandomAppendsAgreeInBytesAndGrowInWholeSteps)
{
    CRandom random;
    for (int iRound = 0; iRound < 16; ++iRound)
    {
        const int iInitSize = iRound / 4 * 8 - 8, iGrowSize = iRound % 4 == 0 ? -5 : iRound % 4 * 9 - 8;
        CStream stream(iInitSize, iGrowSize);
        string strModel;
        for (int iStep = 0, iCapacity = std::max(iInitSize, 0); iStep < 2000; ++iStep)
        {
            const int iEdit = random.Between(0, 5), iFrom = random.Between(0, Signed(strModel.size()));
            string strNew = random.Text(9) + string(Unsigned(random.Between(0, 1)), '\0') + random.Text(9);
            SCOPED_TRACE(See(stream) + ": edit " + std::to_string(iEdit) + ", " + strNew);
            CString strText;
            SetBytes(strText, strNew, Signed(strNew.size()));
            if (iEdit == 0 && strModel.size() > 1000)
                stream.Clear(), strModel.clear();
            if (iEdit == 2)
                strNew = strModel.substr(Unsigned(iFrom), strNew.size());
            const char* pszNew = iEdit == 0   ? nullptr
                                 : iEdit == 2 ? stream.ToStr() + iFrom
                                              : strNew.data(); // its own
            ASSERT_EQ(0, iEdit == 3   ? stream.AppendLine(strText)
                         : iEdit == 4 ? stream.AppendData(strText)
                                      : stream.AppendData(pszNew, iEdit == 1 ? -1 : Signed(strNew.size())));
            strNew = iEdit < 2 ? "" : iEdit == 3 ? strNew + "\n" : strNew;
            strModel += strNew;
            while (!strNew.empty() && iCapacity <= Signed(strModel.size()))
                iCapacity += iGrowSize > 0 ? iGrowSize : 512;
            ASSERT_EQ(Look(strModel, iCapacity), See(stream));
        }
    }
}

TEST(Stream, BufferIsHandedOutZeroAndItsLengthIsCutOrMeasured)
{
    const int aiRows[][5] = {{16, 8, 20, 15, 16},      {16, 32, 32, 31, 32},    {16, -1, 15, 15, 16},
                             {16, 16, 5, 5, 16},       {16, 0, 0, 0, 16},       {16, 17, -1, 3, 17},
                             {16, 9, INT_MAX, 15, 16}, {16, 9, INT_MIN, 3, 16}, {0, 3, -1, 2, 3},
                             {0, 0, 5, 0, 0},          {0, INT_MIN, -1, 0, 0}};
    for (const auto& [iSize, iAsked, iReleased, iLength, iNewSize] : aiRows)
    {
        CStream stream(iSize);
        stream.AppendData("0123456789", iSize / 2);
        const char* pszOld  = stream.ToStr();
        char* const pszText = stream.GetBuffer(iAsked);
        EXPECT_TRUE(pszText == nullptr ? iNewSize == 0
                                       : std::count(pszText, pszText + iNewSize, '\0') == iNewSize);
        EXPECT_TRUE(iAsked > iSize || iSize == 0 || pszText == pszOld);
        if (pszText != nullptr)
            memcpy(pszText, "abc", 3);
        stream.ReleaseBuffer(iReleased);
        EXPECT_EQ(Look(("abc" + string(40, '\0')).substr(0, Unsigned(iLength)), iNewSize), See(stream))
            << iAsked;
    }
}

TEST(Stream, FailuresAreReportedAndLeaveTheDocumentedState)
{
    const int iHuge = 512 * 1024 * 1024;
    CStream stream(8, iHuge);
    stream.AppendData("abcdef", 6);
    const CString strText("xyz"), strNone;
    string strNew, strAfter, strLine;
    struct rlimit limitOld;
    getrlimit(RLIMIT_AS, &limitOld);
    const struct rlimit limitNone = {1, limitOld.rlim_max};
    setrlimit(RLIMIT_AS, &limitNone); // from here on, large blocks cannot be had
    const int iText = stream.AppendData("xyz", 3);
    strAfter        = See(stream);
    const int iLine = stream.AppendLine(strText); // the text has no room, the line feed has
    const int iFeed = stream.AppendLine(strNone); // a line feed without room is not reported
    strLine         = See(stream);
    strNew          = Thrown([] { CStream streamNew(iHuge); });
    EXPECT_EQ(nullptr, stream.GetBuffer(iHuge));
    setrlimit(RLIMIT_AS, &limitOld);
    EXPECT_TRUE(iText == -1 && iLine == -1 && iFeed == 0);
    EXPECT_EQ(Look("abcdef", 8) + Look("abcdef\n", 8), strAfter + strLine);
    EXPECT_EQ("0 (CStream) Out of memory" + Look("", 0), strNew + See(stream));
    EXPECT_EQ(0, stream.AppendData(strText)); // and goes on
    EXPECT_TRUE(stream.AppendData("x", INT_MAX) == -1 && stream.AppendData("x", INT_MAX - 3) == -1);
    EXPECT_EQ(Look("xyz", iHuge), See(stream));
}
} // namespace
