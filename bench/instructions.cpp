// A fixed set of operations whose instructions scripts/check-instructions counts. Each is done so often that its own cost
// hides the loop's; nothing depends on the time, the machine or an address.
//
// The program prints the names of the operations in the order in which it calls Counted.
#include "bedplate.h"

#include <cstdio>
#include <string>
#include <sys/auxv.h>

namespace
{
/// Makes the compiler believe that somebody looks at the value.
template <class TValue>
void Use(const TValue& value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

/// Numbers in an order without pattern, the same everywhere.
unsigned Scattered(int i) { return static_cast<unsigned>(i) * 2654435761U >> 4; }

/// The keys of the tables.
const char* Key(int i)
{
    static CStrArray s_arrKeys;
    while (s_arrKeys.GetSize() <= i)
        s_arrKeys.Add(std::to_string(Scattered(s_arrKeys.GetSize())).c_str());
    return s_arrKeys.GetAt(i);
}

const CString s_strShort("a text of thirty characters ok");
const CString s_strLong(std::string(1000, 'a').append("xyz").c_str());
const CString s_strLine("2014,12,31,3,11990,some,more,words,here,end");
CString s_strGrowing;
CStrArray s_arrPieces;
CIntArray s_arrInts;
CDblArray s_arrDbls;
CStrArray s_arrStrs;
CDateArray s_arrHolidays;
CIntHash s_hash(1000);
CDate s_date(20000131);
CTime s_time;
int s_iValue = 0;

int SumOfInts()
{
    int iSum = 0;
    for (int i = 0; i < s_arrInts.GetSize(); ++i)
        iSum += s_arrInts.GetAt(i);
    return iSum;
}

int ReplaceInCopy()
{
    CString str(s_strLong);
    return str.Replace("aaaa", "bbb");
}

CString Trimmed()
{
    CString str("  some text in the middle \n");
    str.Trim();
    return str;
}

void Dump()
{
    CStream stream;
    s_hash.Dump(&stream);
}

struct Operation
{
    const char* pszName;
    int iTimes;
    void (*pStep)(int);
};

const Operation s_operations[] = {
    {"StringConstruct", 1000, [](int) { Use(CString("a text of thirty characters ok")); }},
    {"StringCopy", 1000, [](int) { Use(CString(s_strShort)); }},
    {"StringAssign", 1000, [](int) { s_strGrowing = "another text"; }},
    {"StringMid", 1000, [](int) { Use(s_strShort.Mid(5, 20)); }},
    {"StringConcatenate", 1000, [](int) { Use(s_strShort + s_strShort); }},
    {"StringAppend", 1000, [](int) { s_strGrowing += "0123456789"; }},
    {"StringFind", 1000, [](int) { Use(s_strLong.Find("xyz")); }},
    {"StringCompare", 1000, [](int) { Use(s_strShort == "a text of thirty characters OK"); }},
    {"StringReplace", 100, [](int) { Use(ReplaceInCopy()); }},
    {"StringTrim", 1000, [](int) { Use(Trimmed()); }},
    {"StringToDbl", 1000, [](int) { Use(CString("12345.678").ToDbl()); }},
    {"FormatShort", 1000, [](int i) { Use(CFormat("%d-%s", i, "abc")); }},
    {"FormatLong", 100, [](int i) { Use(CFormat("%s%d%s", s_strLong.ToStr(), i, s_strLong.ToStr())); }},
    {"Split", 100, [](int) { s_strLine.Split(',', &s_arrPieces); }},
    {"IntsAdd", 10000, [](int i) { s_arrInts.Add(static_cast<int>(Scattered(i))); }},
    {"IntsRead", 10, [](int) { Use(SumOfInts()); }},
    {"IntsSort", 1, [](int) { s_arrInts.Sort(); }},
    {"IntsRepr", 1, [](int) { Use(s_arrInts.Repr()); }},
    {"DblsAdd", 1000, [](int i) { s_arrDbls.Add(Scattered(i) / 64.0); }},
    {"DblsRepr", 1, [](int) { Use(s_arrDbls.Repr()); }},
    {"StringsAdd", 1000, [](int i) { s_arrStrs.Add(Key(i)); }},
    {"StringsSort", 1, [](int) { s_arrStrs.Sort(); }},
    {"StringsJoin", 10, [](int) { Use(s_arrStrs.Join(",")); }},
    {"StringsCopy", 1, [](int) { Use(CStrArray(s_arrStrs)); }},
    {"TableAdd", 1000, [](int i) { s_hash.Set(Key(i), i); }},
    {"TableHit", 1000, [](int i) { s_hash.Get(Key(i), &s_iValue); }},
    {"TableMiss", 1000, [](int) { s_hash.Get("not there", &s_iValue); }},
    {"TableReplace", 1000, [](int i) { s_hash.Set(Key(i), i, true); }},
    {"TableDump", 1, [](int) { Dump(); }},
    {"TableRemove", 1000, [](int i) { s_hash.Remove(Key(i)); }},
    {"DateAddDay", 1000, [](int) { s_date.AddDay(17); }},
    {"DateAddMonth", 1000, [](int) { s_date.AddMonth(5); }},
    {"DateDifference", 1000, [](int) { Use(CDate::GetDaysDiff(s_date, s_arrHolidays.GetAt(0))); }},
    {"DateBusinessDay", 100,
     [](int) { Use(CDate(20100619).GetBizDateAdjusted(CDate::E_Next, &s_arrHolidays)); }},
    {"TimeText", 1000, [](int) { Use(s_time.ToFmtStr("Y-M-D h:m:s.l")); }},
    {"IntGrouped", 1000, [](int i) { Use(CInt(i * 1000003).ToFmtStr()); }},
    {"DblGrouped", 1000, [](int i) { Use(CDbl(i * 1000.375).ToFmtStr()); }},
};
} // namespace

/// The system's random bytes, by which tables find their keys: the same in every run. Nothing else asks for any here.
extern "C" unsigned long getauxval(unsigned long) noexcept
{
    return reinterpret_cast<unsigned long>("not random at al");
}

/// The instructions from its begin to its end are those of one operation.
extern "C" __attribute__((noinline, noclone)) void Counted(const Operation& operation)
{
    for (int i = 0; i < operation.iTimes; ++i)
        operation.pStep(i);
}

int main()
{
    Key(999);
    for (int i = 0; i < 200; ++i)
        s_arrHolidays.Add(CDate(2000 + i / 12, i % 12 + 1, static_cast<int>(Scattered(i) % 28) + 1));
    s_time.Set({1700000000, 123456});
    for (const Operation& operation : s_operations)
    {
        std::puts(operation.pszName);
        Counted(operation);
    }
    return 0;
}
