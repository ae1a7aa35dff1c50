// Several threads make and change objects of their own, and read the same objects at once. What a thread is given must be
// what any other is given; whether anything raced is for the thread sanitizer to say (preset native-tsan).
// Usage: bedplate_threads [ROUNDS]
#include <algorithm>
#include <bedplate/std_interop.h>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <sstream>
#include <string>

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
            m_hashItems.Set(strName, nullptr); // not an item: its text is its address
        }
    }

    /// Returns what objects of the same values give, wherever they lie.
    std::string Read() const
    {
        std::ostringstream stream;
        CStrArray arrParts, arrKeys;
        CStream streamTables;
        m_strText.Split("Grace", &arrParts, true);
        stream << m_strText.Repr() << m_strText.CompareNoCase("ADA") << m_strText.Find("Hopper")
               << m_strText.Mid(28).ToDbl() << arrParts << "x" + m_strText + "!" << m_stream.ToStr()
               << m_date.GetBizDateAdjusted(CDate::E_Next, &m_arrHolidays) << m_time.ToFmtStr("Y-M-D h:m:s.u")
               << m_time << m_arrNames << m_arrNames.IsIn("1906") << m_arrInts << m_arrDbls << m_arrFlags
               << m_arrHolidays << m_arrItems.GetSize();
        const auto ReadTable = [&](const auto& hash)
        {
            hash.Dump(&streamTables);
            hash.GetKeys(arrKeys);
            stream << hash.GetDataCnt() << *hash.Find("1906") << hash.IsIn("nobody") << arrKeys;
        };
        ReadTable(m_hashInts);
        ReadTable(m_hashDbls);
        ReadTable(m_hashTexts);
        ReadTable(m_hashItems);
        CIntArray arrValues;
        m_hashInts.Get("1906", &arrValues);
        stream << arrValues;
        return stream.str() + streamTables.ToStr();
    }
};

/// Makes, changes, reads and destroys objects of the thread's own.
std::string ReadOwn()
{
    CObjects own;
    own.m_date.SetAsToday();
    own.m_date = CDate(20240330);
    own.m_strText += CInt(1234567).ToFmtStr() + CDbl(0.5).ToFmtStr();
    own.m_arrNames.Sort();
    own.m_hashInts.Remove("Ada Lovelace");
    return own.Read();
}

/// Makes a call in several threads at once; tells whether all of them return the same.
template <class TCall>
bool IsSameInThreads(TCall Call)
{
    std::future<std::string> aTexts[4];
    for (auto& text : aTexts)
        text = std::async(std::launch::async, Call);
    const std::string strText = Call();
    return std::all_of(aTexts, aTexts + 4, [&](auto& text) { return text.get() == strText; });
}
} // namespace

int main(int argc, char** argv)
{
    const int iRounds = argc > 1 ? atoi(argv[1]) : 100;
    bool bSame        = IsSameInThreads(ReadOwn); // before anything else has used the library
    const CObjects shared;
    for (int i = 0; i < iRounds && bSame; ++i)
        bSame = IsSameInThreads([&] { return shared.Read() + ReadOwn(); });
    if (bSame)
        printf("4 threads read all objects %d times\n", iRounds);
    else
        puts("threads read different texts");
    return bSame ? 0 : 1;
}
