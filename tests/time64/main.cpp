// A program of two objects that hand each other a CTime, a moment after 2038. Compiled with a time_t of 64 bits it uses the
// same shared object as all others; objects of different widths must not link.
#include <bedplate/cdate.h>

#include <cstdio>
#include <cstdlib>

CString Describe(const CTime& time);

#ifdef DESCRIBE_ONLY
CString Describe(const CTime& time)
{
    return time.ToFmtStr("Y-M-D h:m:s.u, ") + CFormat("%d", time.GetTm().tm_yday) + " " + time.Repr() +
           CFormat(" %lld %ld", static_cast<long long>(time.GetTimeVal().tv_sec),
                   static_cast<long>(time.GetTimeVal().tv_usec));
}
#else
int main()
{
    static_assert(sizeof(time_t) == 8, "compiled with -D_TIME_BITS=64 -D_FILE_OFFSET_BITS=64");
    setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    CTime time, timeNow;
    time.Set({4118083445, 678});
    timeNow.SetAsNow();
    puts(Describe(time).ToStr());
    const CString strStamp = CTime::GetTimeStamp("YMDhms");
    return Describe(time) == "2100-07-01 02:04:05.000678, 181 02:04:05.000678 4118083445 678" &&
                   CTime().Repr() == "<CTime:unset>" && timeNow.ToFmtStr("YMDhms") <= strStamp &&
                   timeNow.GetTimeVal().tv_sec > 1700000000
               ? 0
               : 1;
}
#endif
