#include "list_model.h"

#include <cstdlib>
#include <ctime>

namespace
{
/// Puts the process into a time zone while it lives.
class CZone
{
public:
    explicit CZone(const char* pszZone) { setenv("TZ", pszZone, 1), tzset(); }
    ~CZone() { m_strOld.empty() ? unsetenv("TZ") : setenv("TZ", m_strOld.c_str(), 1), tzset(); }

private:
    const string m_strOld = getenv("TZ") != nullptr ? getenv("TZ") : "";
};

CTime At(std::time_t tSeconds, int iMicroseconds)
{
    struct timeval tv = {};
    tv.tv_sec = tSeconds, tv.tv_usec = iMicroseconds;
    CTime time;
    return time.Set(tv), time;
}

/// The format with each letter printed by the C library.
string Expected(const string& strFormat, std::time_t tSeconds, int iMicroseconds)
{
    string str;
    for (char ch : strFormat)
    {
        const std::size_t iLetter = string("YMDhms").find(ch);
        char szText[16]           = {ch, '\0'};
        if (iLetter != string::npos)
            (void)strftime(szText, sizeof szText, string({'%', "YmdHMS"[iLetter]}).c_str(),
                           localtime(&tSeconds));
        str += ch == 'l'   ? Print("%03d", iMicroseconds / 1000)
               : ch == 'u' ? Print("%06d", iMicroseconds)
                           : szText;
    }
    return str;
}

TEST(Time, PrintsTheLettersOfAFormatAndNothingElse)
{
    CZone zone("UTC0");
    const CTime time = At(1772874302, 4321), timeUnset;
    for (const auto& row :
         {std::make_pair("Y-M-D h:m:s.l", "2026-03-07 09:05:02.004"),
          std::make_pair("YMDhms", "20260307090502"), std::make_pair("u, Date D", "004321, 07ate 07"),
          std::make_pair("YY yHS %d", "20262026 yHS %d"), std::make_pair("", "")})
        EXPECT_EQ(row.second, Bytes(time.ToFmtStr(row.first)));
    for (int i = 1; i < 256; ++i)
        EXPECT_EQ(Expected({static_cast<char>(i), static_cast<char>(i)}, 1772874302, 4321),
                  Bytes(time.ToFmtStr(string(2, static_cast<char>(i)).c_str())));
    EXPECT_TRUE(!timeUnset.IsSet() && timeUnset.GetTimeVal().tv_sec == 0 && time.ToFmtStr(nullptr).IsEmpty());
    EXPECT_EQ("<CTime:unset>1900-01-00 00:00:00.000.000000",
              Bytes(timeUnset.Repr() + timeUnset.ToFmtStr("Y-M-D h:m:s.l.u")));
}

TEST(Time, FollowsTheZoneThroughItsChanges)
{
    for (const char* pszZone :
         {"UTC0", "CET-1CEST,M3.5.0,M10.5.0/3", "NST3:30NDT,M3.2.0,M11.1.0", "XXX+11:59:59"})
    {
        CZone zone(pszZone);
        for (std::time_t tMiddle :
             {1711846800, 1729990800, 1710048600, 1735689600, 951782400, 0, INT_MAX - 9000})
            for (std::time_t t = tMiddle - 9000; t <= tMiddle + 9000 && t < INT_MAX - 90; t += 90)
            {
                const int iMicroseconds = static_cast<int>(t % 1000000) & 1048575;
                const CTime time        = At(t, iMicroseconds);
                ASSERT_EQ(Expected("u D.M.Y, h m Ms l", t, iMicroseconds),
                          Bytes(time.ToFmtStr("u D.M.Y, h m Ms l")))
                    << pszZone << t;
                ASSERT_EQ(Expected("h:m:s.u", t, iMicroseconds), Bytes(time.Repr()));
                ASSERT_TRUE(time.IsSet() && time.GetTimeVal().tv_sec == t &&
                            time.GetTimeVal().tv_usec == iMicroseconds);
                ASSERT_EQ(localtime(&t)->tm_isdst, time.GetTm().tm_isdst);
            }
    }
    CZone zone("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ("01:59:59.999999 03:00:00.000000",
              Bytes(At(1711846799, 999999).Repr() + " " + At(1711846800, 0).Repr()));
    EXPECT_EQ("02:59:59.000999 02:00:00.000000",
              Bytes(At(1729990799, 999).Repr() + " " + At(1729990800, 0).Repr()));
}

TEST(Time, NowLiesBetweenTwoReadingsOfTheClock)
{
    CZone zone("UTC0");
    for (int i = 0; i < 200; ++i)
    {
        struct timeval tvBefore, tvAfter;
        CTime time;
        gettimeofday(&tvBefore, nullptr);
        time.SetAsNow();
        const string strStamp = Bytes(CTime::GetTimeStamp("Y-M-D h:m:s.u"));
        gettimeofday(&tvAfter, nullptr);
        EXPECT_TRUE(time.IsSet() && !timercmp(&time.GetTimeVal(), &tvBefore, <));
        EXPECT_LE(Bytes(time.ToFmtStr("Y-M-D h:m:s.u")), strStamp);
        EXPECT_LE(strStamp, Expected("Y-M-D h:m:s.u", tvAfter.tv_sec, static_cast<int>(tvAfter.tv_usec)));
    }
}
} // namespace
