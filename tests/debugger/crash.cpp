// A program that crashes while it holds an object of every kind, for a debugger to show.
#include <bedplate/bedplate.h>
#include <cstring>
#include <utility>

void Crash(const CString& strArgument, const void* pBroken, CIntHash* pNull)
{
    CString strNul("a\"\xE9\xC3\xA9"), strLong(CFormat("%030d", 7)), strCopy(strArgument);
    strNul.Insert(1, '\0');
    CStream stream(0, 16), streamNew;
    stream.AppendLine("line");
    CIntArray arrInts(2, 7), arrNone;
    CDblArray arrDbls(1, 0.5);
    CBoolArray arrBools(1, true);
    CDateArray arrDates(1, CDate(20240229));
    CStrArray arrTexts(1);
    arrTexts.Add("\xE9t\xC3\xA9");
    CPtrArray arrItems(2, nullptr, true);
    CIntHash hashInts(8), hashBad(1);
    hashInts.Set("a", 1), hashInts.Set("a", 2), hashInts.Set("i", 5);
    hashBad.Set("a", 1), memset(*reinterpret_cast<void***>(&hashBad), 0xFF, sizeof(void*));
    CDblHash hashDbls;
    CStrHash hashTexts;
    CPtrHash hashItems(false);
    hashDbls.Set("half", 0.5), hashTexts.Set("j", "u"), hashTexts.Set("k", "v"), hashTexts.Set("k", "w"),
        hashItems.Set("none", nullptr);
    CStrHash hashMoved(3), hashNow(std::move(hashMoved));
    CDate date(2024, 1, 31), dateNone;
    CTime time, timeNone;
    time.Set({86399, 4321});
    CInt numberInt(1234567);
    CInt64 numberInt64(-1234567890123);
    CDbl numberDbl(0.25);
    CException e(-11, "row %d", 7);
    pNull->Clear();
}

int main()
{
    char szBroken[64];
    memset(szBroken, 0xFF, sizeof szBroken);
    Crash("argument", szBroken, nullptr);
}
