#include <bedplate.h>

int main()
{
    CString s("abc");
    s += "de";
    CIntArray a;
    a.Add(3);
    return s == "abcde" && a.GetSize() == 1 ? 0 : 1;
}
