// A fixed set of operations whose instructions scripts/check-instructions counts. Each function is one operation, done
// so often that its own cost hides the program's; nothing depends on the time, the machine or an address.
#include "bedplate.h"

#include <cstdio>
#include <string>
#include <vector>

namespace
{
/// Makes the compiler believe that somebody looks at the value.
template <class TValue>
void Use(const TValue& value)
{
    asm volatile("" : : "g"(&value) : "memory");
}

template <class TWork>
void Repeat(int iTimes, TWork work)
{
    for (int i = 0; i < iTimes; ++i)
        work(i);
}

const CString s_strShort("a text of thirty characters ok");
const CString s_strLong(std::string(1000, 'a').append("xyz").c_str());
CStrArray s_arrKeys;
CIntArray s_arrInts;
CDblArray s_arrDbls;
CStrArray s_arrStrs;
CIntHash s_hash(1000);
CDateArray s_arrHolidays;

/// Numbers in an order without pattern, the same everywhere.
unsigned Scattered(int i) { return static_cast<unsigned>(i) * 2654435761U >> 4; }

void MakeData()
{
    Repeat(1000, [](int i) { s_arrKeys.Add(std::to_string(Scattered(i)).c_str()); });
    Repeat(200, [](int i)
           { s_arrHolidays.Add(CDate(2000 + i / 12, i % 12 + 1, static_cast<int>(Scattered(i) % 28) + 1)); });
}
} // namespace

// ---- The operations: their names stand in bench/instructions.txt --------------------------------------------------

#define COUNTED extern "C" __attribute__((noinline, noclone)) void

COUNTED StringConstruct()
{
    Repeat(1000, [](int) { Use(CString("a text of thirty characters ok")); });
}
COUNTED StringCopy()
{
    Repeat(1000, [](int) { Use(CString(s_strShort)); });
}
COUNTED StringAssign()
{
    CString str(s_strShort);
    Repeat(1000, [&](int) { Use(str = "another text"); });
}
COUNTED StringMid()
{
    Repeat(1000, [](int) { Use(s_strShort.Mid(5, 20)); });
}
COUNTED StringConcatenate()
{
    Repeat(1000, [](int) { Use(s_strShort + s_strShort); });
}
COUNTED StringAppend()
{
    CString str;
    Repeat(1000, [&](int) { str += "0123456789"; });
}
COUNTED StringFind()
{
    Repeat(1000, [](int) { Use(s_strLong.Find("xyz")); });
}
COUNTED StringCompare()
{
    Repeat(1000, [](int) { Use(s_strShort == "a text of thirty characters OK"); });
}
COUNTED StringReplace()
{
    Repeat(100,
           [](int)
           {
               CString str(s_strLong);
               Use(str.Replace("aaaa", "bbb"));
           });
}
COUNTED StringTrim()
{
    Repeat(1000,
           [](int)
           {
               CString str("  some text in the middle \n");
               str.Trim();
               Use(str);
           });
}
COUNTED StringToDbl()
{
    Repeat(1000, [](int) { Use(CString("12345.678").ToDbl()); });
}
COUNTED FormatShort()
{
    Repeat(1000, [](int i) { Use(CFormat("%d-%s", i, "abc")); });
}
COUNTED FormatLong()
{
    Repeat(100, [](int i) { Use(CFormat("%s%d%s", s_strLong.ToStr(), i, s_strLong.ToStr())); });
}
COUNTED Split()
{
    const CString strLine("2014,12,31,3,11990,some,more,words,here,end");
    CStrArray arrPieces;
    Repeat(100, [&](int) { strLine.Split(',', &arrPieces); });
}
COUNTED IntsAdd()
{
    Repeat(10000, [](int i) { s_arrInts.Add(static_cast<int>(Scattered(i))); });
}
COUNTED IntsRead()
{
    int iSum = 0;
    Repeat(10000, [&](int i) { iSum += s_arrInts.GetAt(i); });
    Use(iSum);
}
COUNTED IntsSort() { s_arrInts.Sort(); }
COUNTED IntsRepr() { Use(s_arrInts.Repr()); }
COUNTED DblsAdd()
{
    Repeat(1000, [](int i) { s_arrDbls.Add(Scattered(i) / 64.0); });
}
COUNTED DblsRepr() { Use(s_arrDbls.Repr()); }
COUNTED StringsAdd()
{
    Repeat(1000, [](int i) { s_arrStrs.Add(s_arrKeys.GetAt(i)); });
}
COUNTED StringsSort() { s_arrStrs.Sort(); }
COUNTED StringsJoin() { Use(s_arrStrs.Join(",")); }
COUNTED StringsCopy() { Use(CStrArray(s_arrStrs)); }
COUNTED TableAdd()
{
    Repeat(1000, [](int i) { s_hash.Set(s_arrKeys.GetAt(i), i); });
}
COUNTED TableHit()
{
    int iValue = 0;
    Repeat(1000, [&](int i) { s_hash.Get(s_arrKeys.GetAt(i), &iValue); });
}
COUNTED TableMiss()
{
    int iValue = 0;
    Repeat(1000, [&](int) { Use(s_hash.Get("not there", &iValue)); });
}
COUNTED TableReplace()
{
    Repeat(1000, [](int i) { s_hash.Set(s_arrKeys.GetAt(i), i, true); });
}
COUNTED TableDump()
{
    CStream stream;
    s_hash.Dump(&stream);
}
COUNTED TableRemove()
{
    Repeat(1000, [](int i) { s_hash.Remove(s_arrKeys.GetAt(i)); });
}
COUNTED DateAddDay()
{
    CDate date(20000101);
    Repeat(1000, [&](int) { date.AddDay(17); });
}
COUNTED DateAddMonth()
{
    CDate date(20000131);
    Repeat(1000, [&](int) { date.AddMonth(5); });
}
COUNTED DateDifference()
{
    const CDate dateFirst(20000131);
    const CDate dateLast(20240229);
    Repeat(1000, [&](int) { Use(CDate::GetDaysDiff(dateFirst, dateLast)); });
}
COUNTED DateBusinessDay()
{
    const CDate date(20100619);
    Repeat(100, [&](int) { Use(date.GetBizDateAdjusted(CDate::E_Next, &s_arrHolidays)); });
}
COUNTED TimeText()
{
    CTime time;
    time.Set({1700000000, 123456});
    Repeat(1000, [&](int) { Use(time.ToFmtStr("Y-M-D h:m:s.l")); });
}
COUNTED IntGrouped()
{
    Repeat(1000, [](int i) { Use(CInt(i * 1000003).ToFmtStr()); });
}
COUNTED DblGrouped()
{
    Repeat(1000, [](int i) { Use(CDbl(i * 1000.375).ToFmtStr()); });
}

int main()
{
    MakeData();
    for (auto pOperation :
         {StringConstruct, StringCopy,    StringAssign,   StringMid,       StringConcatenate, StringAppend,
          StringFind,      StringCompare, StringReplace,  StringTrim,      StringToDbl,       FormatShort,
          FormatLong,      Split,         IntsAdd,        IntsRead,        IntsSort,          IntsRepr,
          DblsAdd,         DblsRepr,      StringsAdd,     StringsSort,     StringsJoin,       StringsCopy,
          TableAdd,        TableHit,      TableMiss,      TableReplace,    TableDump,         TableRemove,
          DateAddDay,      DateAddMonth,  DateDifference, DateBusinessDay, TimeText,          IntGrouped,
          DblGrouped})
        pOperation();
    return 0;
}
