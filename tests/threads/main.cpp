// Several threads make and change objects of their own, and then read the same objects at once. What a thread is given
// must be what any other is given; whether anything raced is for the thread sanitizer to say (preset native-tsan).
// Usage: bedplate_threads [ROUNDS]
#include <bedplate/bedplate.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace
{
constexpr int s_iThreads = 4;

struct CItem : CPtrArrayItem
{
};

/// What the threads share: an object of each class, filled before they start.
struct CShared
{
    CString m_strText = "Ada Lovelace, Grace Hopper, 1906";
    CStream m_stream;
    CStrArray m_arrNames;
    CIntArray m_arrInts   = CIntArray(3, 7);
    CDblArray m_arrDbls   = CDblArray(2, 1.5);
    CBoolArray m_arrFlags = CBoolArray(2, true);
    mutable CDateArray m_arrHolidays; // read through a pointer that could write
    CPtrArray m_arrItems = CPtrArray(true);
    CIntHash m_hashInts;
    CDblHash m_hashDbls;
    CStrHash m_hashTexts;
    CPtrHash m_hashItems = CPtrHash(true);
    CDate m_date         = CDate(20240330);
    CTime m_time;

    CShared()
    {
        m_strText.Split(", ", &m_arrNames);
        m_stream.AppendLine(m_strText);
        m_arrHolidays.Add(CDate(20240401));
        m_arrItems.Add(new CItem);
        m_time.SetAsNow();
        for (const CString& strName : m_arrNames)
        {
            m_hashInts.Set(strName.ToStr(), strName.GetLength());
            m_hashInts.Set(strName.ToStr(), 7);
            m_hashDbls.Set(strName.ToStr(), 0.5);
            m_hashTexts.Set(strName.ToStr(), strName.ToStr());
            m_hashItems.Set(strName.ToStr(), new CItem);
        }
    }
};

std::string Strings(const CShared& shared)
{
    const CString& str = shared.m_strText;
    CStrArray arrParts;
    str.Split(',', &arrParts);
    str.Split("Grace", &arrParts, true);
    const CString strCopy(str);
    return CFormat("%d %d %d %c %s %d %d %d %d %d %d %d %d %s %s %s %d %g %s %s %d%d%d", str.GetLength(),
                   str.GetSize(), str.GetBufferSize(), str[2], str.Repr().ToStr(), str.Compare("Ada"),
                   str.CompareNoCase("ADA"), str.StartsWith("Ada"), str.EndsWith("1906"), str.Find('L', 1),
                   str.Find("Hopper"), str.ReverseFind('a'), str.FindOneOf(",.") + str.IsEmpty(),
                   str.Left(3).ToStr(), str.Right(4).ToStr(), (str + "!").ToStr(), str.Mid(28).ToInt(),
                   str.Mid(28).ToDbl(), arrParts.Join("|").ToStr(), ("x" + strCopy + str).ToStr(),
                   str == strCopy, str < strCopy, str == "Ada")
        .ToStr();
}

std::string TextArrays(const CShared& shared)
{
    const CStrArray& arr = shared.m_arrNames;
    const CStrArray arrCopy(arr);
    int iLength = 0;
    for (const CString& strName : arr)
        iLength += strName.GetLength();
    return CFormat("%d %d %d %s %s %s %d %d %s %s %s", iLength, arr.GetSize(), arr.GetBufferSize(),
                   arr.GetAt(0), arr[1].ToStr(), arr.GetAtLast().ToStr(), arr.Find("1906"), arr.IsIn("x"),
                   arr.Join("|").ToStr(), arr.Repr().ToStr(), arrCopy.Repr().ToStr())
        .ToStr();
}

template <class TArray, class TValue>
std::string Values(const TArray& arr, TValue value)
{
    const TArray arrCopy(arr);
    return CFormat("%d %d %d %d %d %d %s %s %d", arr.GetSize(), arr.GetBufferSize(), arr.GetAt(0) == arr[0],
                   arr.GetAtLast() == value, arr.IsIn(value), static_cast<int>(arr.end() - arr.begin()),
                   arr.Repr().ToStr(), arrCopy.Repr().ToStr(), arr.IsIn(arr[0]))
        .ToStr();
}

std::string ValueArrays(const CShared& shared)
{
    return Values(shared.m_arrInts, 7) + Values(shared.m_arrDbls, 1.5) + Values(shared.m_arrFlags, true) +
           Values(shared.m_arrHolidays, CDate(20240401)) +
           Values(shared.m_arrItems, shared.m_arrItems.GetAtLast());
}

template <class THash, class TValue, class TArray>
std::string Table(const THash& hash, TValue value, TArray arr)
{
    CStream text;
    CStrArray arrKeys;
    hash.Dump(&text);
    hash.GetKeys(arrKeys);
    int iFound = hash.Get("1906", &value) + hash.Get("1906", &arr) + hash.Get("nobody", &arr);
    for (const auto& entry : hash)
        iFound += hash.IsIn(entry.m_pszKey) && hash.Find(entry.m_pszKey) == &entry.m_value;
    return CFormat("%d %d %d %d %s %s %s", hash.GetHashSize(), hash.GetDataCnt(), hash.GetKeyCnt(), iFound,
                   arr.Repr().ToStr(), arrKeys.Join("|").ToStr(), text.ToStr())
        .ToStr();
}

std::string Tables(const CShared& shared)
{
    return Table(shared.m_hashInts, 0, CIntArray()) + Table(shared.m_hashDbls, 0.0, CDblArray()) +
           Table(shared.m_hashTexts, CString(), CStrArray()) +
           Table(shared.m_hashItems, static_cast<CPtrArrayItem*>(nullptr), CPtrArray(false));
}

std::string DatesAndTimes(const CShared& shared)
{
    const CDate& date     = shared.m_date;
    const CTime& time     = shared.m_time;
    const CStream& stream = shared.m_stream;
    return CFormat("%s %d %d %d %s %s %d %d %s %s %s %d %d", date.ToStr(), date.GetYear(), date.GetMonth(),
                   date.GetDay(), date.GetLastDateOfMonth().ToStr(),
                   date.GetBizDateAdjusted(CDate::E_Next, &shared.m_arrHolidays).ToStr(),
                   date == CDate(20240330), CDate::GetDaysDiff(date, shared.m_arrHolidays[0]),
                   time.ToFmtStr("Y-M-D h:m:s.u").ToStr(), time.Repr().ToStr(), stream.ToStr(),
                   stream.GetLength(), stream.GetAllocSize())
        .ToStr();
}

/// Makes, changes and destroys objects of the thread's own, and returns what does not depend on where they lie.
std::string OwnObjects()
{
    CShared own;
    own.m_strText.Replace("Ada", "A.");
    own.m_strText += CInt(1234567).ToFmtStr();
    own.m_strText += CDbl(0.5).ToFmtStr();
    own.m_arrNames.Sort();
    own.m_arrNames.RemoveAt(0);
    own.m_hashInts.Remove("1906");
    own.m_hashInts.Set("new", 1, true);
    own.m_hashItems.Clear();
    own.m_date.SetAsToday();
    own.m_date.AddMonth(1);
    own.m_time.SetAsNow();
    try
    {
        own.m_arrInts.GetAt(own.m_arrInts.GetSize());
    }
    catch (const CException& e)
    {
        own.m_strText += e.GetText();
    }
    return Strings(own) + TextArrays(own) + Table(own.m_hashInts, 0, CIntArray());
}

std::string OwnObjects(const CShared&) { return OwnObjects(); }

using Reader = std::string (*)(const CShared&);

constexpr Reader s_readers[] = {Strings, TextArrays, ValueArrays, Tables, DatesAndTimes, OwnObjects};
constexpr int s_iReaders     = static_cast<int>(std::size(s_readers));

/// Runs call(0), call(1), ... each in a thread of its own and returns what they returned.
template <class TCall>
auto InThreads(TCall call)
{
    std::vector<decltype(call(0))> vecResults(s_iThreads);
    std::vector<std::thread> vecThreads;
    for (int i = 0; i < s_iThreads; ++i)
        vecThreads.emplace_back([&vecResults, call, i]
                                { vecResults[static_cast<std::size_t>(i)] = call(i); });
    for (std::thread& thread : vecThreads)
        thread.join();
    return vecResults;
}

/// Counts the readings that differ from the thread's first of the same kind. Each thread begins with another kind.
int ReadingsThatDiffer(const CShared& shared, int iThread, int iRounds, std::string* pFirst)
{
    int iDifferent = 0;
    for (int i = 0; i < iRounds * s_iReaders; ++i)
    {
        const int iReader         = (i + iThread) % s_iReaders;
        const std::string strRead = s_readers[iReader](shared);
        if (i < s_iReaders)
            pFirst[iReader] = strRead;
        iDifferent += strRead != pFirst[iReader];
    }
    return iDifferent;
}
} // namespace

int main(int argc, char** argv)
{
    const int iRounds = argc > 1 ? atoi(argv[1]) : 100;
    int iDifferent    = 0;

    // Before anything else has used the library.
    for (const std::string& strOwn : InThreads([](int) { return OwnObjects(); }))
        iDifferent += strOwn != OwnObjects();

    CShared shared;
    std::string readings[s_iThreads][s_iReaders];
    for (int iCount : InThreads([&](int iThread)
                                { return ReadingsThatDiffer(shared, iThread, iRounds, readings[iThread]); }))
        iDifferent += iCount;
    for (auto& reading : readings)
        for (int i = 0; i < s_iReaders; ++i)
            iDifferent += reading[i] != s_readers[i](shared);

    printf("%d threads read all objects %d times each, %d readings differed\n", s_iThreads, iRounds,
           iDifferent);
    return iDifferent != 0;
}
