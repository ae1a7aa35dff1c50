// Several threads make and change objects of their own, and read the same objects at once. What a thread is given must be
// what any other is given; whether anything raced is for the thread sanitizer to say (preset native-tsan).
// Usage: bedplate_threads [ROUNDS]
#include <algorithm>
#include <bedplate/std_interop.h>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace
{
/// An object of each class.
struct CObjects
{
    CString m_strText = "Ada Lovelace, Grace Hopper, 1906";
    CStream m_stream;
    CStrArray m_arrNames;
    CIntArray m_arrInts{7, 8};
    CDblArray m_arrDbls{1.5};
    CBoolArray m_arrFlags{true};
    CDateArray m_arrHolidays{20240401};
    CPtrArray m_arrItems = CPtrArray(true);
    CIntHash m_hashInts;
    CDblHash m_hashDbls;
    CStrHash m_hashTexts;
    CPtrHash m_hashItems = CPtrHash(true);
    CDate m_date         = 20240330;
    CTime m_time;

    CObjects()
    {
        m_strText.Split(", ", &m_arrNames);
        m_stream.AppendLine(m_strText);
        m_arrItems.Add(new CPtrArrayItem);
        m_time.Set(timeval{1711800000, 4321});
        for (const CString& strName : m_arrNames)
        {
            m_hashInts.Set(strName, strName.GetLength());
            m_hashInts.Set(strName, 7);
            m_hashDbls.Set(strName, 0.5);
            m_hashTexts.Set(strName, strName);
            m_hashItems.Set(strName, new CPtrArrayItem);
        }
    }
};

template <class... TValues>
std::string Printed(const TValues&... values)
{
    std::ostringstream stream;
    ((stream << values << '|'), ...);
    return stream.str();
}

/// What a table gives for a key, all keys and, unless they are addresses, all values.
template <class THash, class TValue>
std::string ReadTable(const THash& hash, TValue value)
{
    CStream stream;
    CStrArray arrKeys;
    hash.Dump(&stream);
    hash.GetKeys(arrKeys);
    return Printed(hash.GetDataCnt(), hash.Get("1906", &value), hash.IsIn("nobody"), arrKeys,
                   std::is_pointer<TValue>::value ? "" : stream.ToStr());
}

/// Returns what objects of the same values give, wherever they lie.
std::string Read(const CObjects& objects)
{
    const CString& str = objects.m_strText;
    CStrArray arrParts;
    str.Split("Grace", &arrParts, true);
    return Printed(str.Repr(), str.CompareNoCase("ADA"), str.Find("Hopper"), str.Mid(28).ToDbl(), arrParts,
                   "x" + str + "!", objects.m_date.GetBizDateAdjusted(CDate::E_Next, &objects.m_arrHolidays),
                   objects.m_time.ToFmtStr("Y-M-D h:m:s.u"), objects.m_time, objects.m_stream.ToStr(),
                   objects.m_arrNames, objects.m_arrNames.IsIn("1906"), objects.m_arrInts, objects.m_arrDbls,
                   objects.m_arrFlags, objects.m_arrHolidays, objects.m_arrItems.GetSize()) +
           ReadTable(objects.m_hashInts, CIntArray()) + ReadTable(objects.m_hashDbls, 0.5) +
           ReadTable(objects.m_hashTexts, CString()) +
           ReadTable(objects.m_hashItems, static_cast<CPtrArrayItem*>(nullptr));
}

/// Makes, changes, reads and destroys objects of the thread's own.
std::string ReadOwn()
{
    CObjects own;
    own.m_date.SetAsToday();
    own.m_date = CDate(20240330);
    own.m_strText += CInt(1234567).ToFmtStr() + CDbl(0.5).ToFmtStr();
    own.m_arrNames.Sort();
    own.m_hashInts.Remove("1906");
    return Read(own);
}

/// Makes a call in several threads at once, and then here; tells whether all of them return the same.
template <class TCall>
bool IsSameInThreads(TCall Call)
{
    std::string astrTexts[4];
    std::vector<std::thread> aThreads;
    for (std::string& strText : astrTexts)
        aThreads.emplace_back([&strText, Call] { strText = Call(); });
    for (std::thread& thread : aThreads)
        thread.join();
    return std::count(std::begin(astrTexts), std::end(astrTexts), Call()) == 4;
}
} // namespace

int main(int argc, char** argv)
{
    const int iRounds = argc > 1 ? atoi(argv[1]) : 100;
    bool bSame        = IsSameInThreads(ReadOwn); // before anything else has used the library
    const CObjects shared;
    for (int i = 0; i < iRounds && bSame; ++i)
        bSame = IsSameInThreads([&] { return Read(shared) + ReadOwn(); });
    if (bSame)
        printf("4 threads read all objects %d times\n", iRounds);
    else
        puts("threads read different texts");
    return bSame ? 0 : 1;
}
