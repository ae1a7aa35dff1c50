// What the model of the numbers does not show: zones, which are the process's, and documented texts.

#include "bedplate.h"

#include <climits>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace
{
using std::string;

/// Puts the process into a time zone while it lives.
class CZone
{
public:
    explicit CZone(const char* pszZone) { setenv("TZ", pszZone, 1), tzset(); }
    ~CZone() { m_strOld.empty() ? unsetenv("TZ") : setenv("TZ", m_strOld.c_str(), 1), tzset(); }

private:
    const string m_strOld = getenv("TZ") != nullptr ? getenv("TZ") : "";
};

CTime At(time_t tSeconds, int iMicroseconds)
{
    struct timeval tv = {};
    tv.tv_sec = tSeconds, tv.tv_usec = iMicroseconds;
    CTime time;
    return time.Set(tv), time;
}

TEST(Time, PrintsTheLettersOfAFormatAndNothingElse)
{
    CZone zone("UTC0");
    for (const auto& [pszFormat, pszText] :
         {std::pair("Y-M-D h:m:s.l", "2026-03-07 09:05:02.004"), std::pair("YMDhms", "20260307090502"),
          std::pair("u, Date D", "004321, 07ate 07"), std::pair("YY yHS %d", "20262026 yHS %d"),
          std::pair("", "")})
        EXPECT_STREQ(pszText, At(1772874302, 4321).ToFmtStr(pszFormat).ToStr());
    EXPECT_STREQ("1900-01-00 00:00:00.000.000000", CTime().ToFmtStr("Y-M-D h:m:s.l.u").ToStr());
}

TEST(Time, FollowsTheZoneThroughItsChanges)
{
    for (const char* pszZone :
         {"UTC0", "CET-1CEST,M3.5.0,M10.5.0/3", "NST3:30NDT,M3.2.0,M11.1.0", "XXX+11:59:59"})
    {
        CZone zone(pszZone);
        for (time_t tMiddle : {1711846800, 1729990800, 1710048600, 1735689600, 951782400, 0, INT_MAX - 9000})
            for (time_t t = tMiddle - 9000; t <= tMiddle + 9000 && t < INT_MAX - 90; t += 90)
            {
                char szText[32];
                (void)strftime(szText, sizeof szText, "%d.%m.%Y, %H:%M:%S", localtime(&t));
                ASSERT_STREQ(szText, At(t, 0).ToFmtStr("D.M.Y, h:m:s").ToStr()) << pszZone << t;
                ASSERT_EQ(localtime(&t)->tm_isdst, At(t, 0).GetTm().tm_isdst) << pszZone << t;
            }
    }
    CZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_STREQ("01:59:59.999999", At(1711846799, 999999).Repr().ToStr());
    EXPECT_STREQ("03:00:00.000000", At(1711846800, 0).Repr().ToStr());
    EXPECT_STREQ("02:59:59.000999", At(1729990799, 999).Repr().ToStr());
    EXPECT_STREQ("02:00:00.000000", At(1729990800, 0).Repr().ToStr());
}
} // namespace
