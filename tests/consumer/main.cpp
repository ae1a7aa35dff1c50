#include "cstring.h"
#include <bedplate/bedplate.h>
#include <bedplate/int_array.h>
#include <cstdio>

// Built without reading anything but the README: prints one line, which the checks compare.
int main()
{
    CStrArray arrWords;
    CString("pear,fig,apple").Split(',', &arrWords);
    arrWords.Sort();
    CIntHash hashLengths(7);
    for (const CString& strWord : arrWords)
        hashLengths.Set(strWord.ToStr(), strWord.GetLength());
    int iLength = 0;
    hashLengths.Get("apple", &iLength);
    CDate date(2024, 1, 31);
    date.AddMonth(1);
    try
    {
        arrWords[3].Trim();
    }
    catch (const CException& e)
    {
        printf("%s %d %s %s\n", arrWords.Join("<").ToStr(), iLength, date.ToStr(), e.GetText());
    }
}
