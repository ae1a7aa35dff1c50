// What the model of the numbers does not show: zones, which are the process's, the clock, and documented texts.

#include "support.h"

#include <new>

namespace
{
void SetZone(const char* pszZone)
{
    setenv("TZ", pszZone, 1);
    tzset();
}

CTime At(time_t tSeconds, int iMicroseconds)
{
    const struct timeval tv = {tSeconds, iMicroseconds};
    CTime time;
    time.Set(tv);
    return time;
}

TEST(Time, PrintsTheLettersOfAFormatAndNothingElse)
{
    SetZone("UTC0");
    EXPECT_STREQ("%d 004 07ate 07", At(1772874302, 4321).ToFmtStr("%d l Date D").ToStr());
    EXPECT_STREQ("12345 12345678", At(0, 12345678).ToFmtStr("l u").ToStr());
    EXPECT_STREQ("-07 -07654", At(0, -7654).ToFmtStr("l u").ToStr()); // as "%03d" and "%06d"
}

#ifdef __LP64__ // elsewhere no moment lies so far away
TEST(Time, PrintsTheLastYearThatThereIsInFullAndTheFirstWithZeros)
{
    SetZone("UTC0");
    EXPECT_STREQ("0001-01-01", At(static_cast<time_t>(-62135596800), 0).ToFmtStr("Y-M-D").ToStr());
    EXPECT_STREQ("2147485547-12-31", At(static_cast<time_t>(67768036191676799), 0).ToFmtStr("Y-M-D").ToStr());
    CTime time = At(0, 0);
    time.Set({INT64_MAX, 0}); // of a year that no int holds
    EXPECT_EQ(0, time.GetTm().tm_mday);
}
#endif

TEST(Time, DestructionLeavesItUnset)
{
    std::vector<char> aBytes(sizeof(CTime));
    CTime* const pTime         = new (aBytes.data()) CTime(At(1, 2));
    const volatile char* pbSet = aBytes.data() + sizeof(struct timeval) + sizeof(struct tm);
    EXPECT_EQ(1, *pbSet);
    pTime->~CTime();
    EXPECT_EQ(0, *pbSet);
}

TEST(Time, FollowsTheClock)
{
    CTime timeBefore, timeAfter;
    timeBefore.SetAsNow();
    const CString strNow = CTime::GetTimeStamp("Y-M-D h:m:s.u");
    timeAfter.SetAsNow();
    EXPECT_TRUE(timeBefore.ToFmtStr("Y-M-D h:m:s.u") <= strNow &&
                strNow <= timeAfter.ToFmtStr("Y-M-D h:m:s.u"));
    EXPECT_LE(std::abs(timeAfter.GetTimeVal().tv_sec - time(nullptr)), 60);
}

TEST(Time, FollowsTheZoneThroughItsChanges)
{
    SetZone("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_STREQ("2024-03-31 01:59:59", At(1711846799, 0).ToFmtStr("Y-M-D h:m:s").ToStr());
    EXPECT_STREQ("2024-03-31 03:00:00", At(1711846800, 0).ToFmtStr("Y-M-D h:m:s").ToStr());
}
} // namespace
