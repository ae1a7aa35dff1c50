#include <bedplate/bedplate.h>
#include <cstdio>

#if __has_include("exception.h")
#error bare names are for those who ask for them
#endif

int main()
{
    CStrArray arrWords = CStrArray(); // as C++11 too
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
