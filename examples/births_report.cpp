// births_report: reports on a file of births per day, in the light of a list of holidays.
//
// It reads and checks everything, computes everything, and only then prints. The first thing that is wrong in a file
// ends the program with one line on stderr, "FILE:LINE: what is wrong", and nothing on stdout. LINE is the last line
// that was read, 0 if there is none.
#include <bedplate/bedplate.h>
#include <bedplate/typed.h>

#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <memory>
#include <new>
#include <system_error>

namespace
{
constexpr char s_szUsage[] =
    "usage: births_report CSV [HOLIDAYS]\n"
    "  CSV       births per day, a row for every day from the first to the last:\n"
    "            year,month,date_of_month,day_of_week,births (day_of_week: 1 Monday to 7 Sunday)\n"
    "  HOLIDAYS  days without business, ascending: date,name (date: YYYYMMDD); none unless given\n"
    "Each file begins with the row of its column names. Years are 1 to 9999.\n"
    "A business day is a Monday to Friday that is not in HOLIDAYS; one that is counts as a holiday.\n"
    "The last year is shown with all its holidays and month ends, also where CSV does not reach.\n"
    "Among equals the earlier comes first. What does not exist, such as a mean of no days, is shown as -.\n"
    "Exit status: 0 success, 1 the report cannot be written, 2 bad input or usage, 3 out of memory\n";

constexpr int s_iWeekdays                        = 7;
constexpr const char* s_apszWeekday[s_iWeekdays] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                                    "Friday", "Saturday", "Sunday"};

/// How many of the busiest and of the quietest days are shown.
constexpr int s_iRanked = 5;

enum EExit
{
    eSuccess     = 0,
    eWriteFailed = 1,
    eBadInput    = 2,
    eOutOfMemory = 3
};

// ---- The data ---------------------------------------------------------------------------------------------

/// A row of the births file.
struct CDay : CPtrArrayItem
{
    CDate m_date;
    int m_iWeekday = 0; // 1 Monday to 7 Sunday
    int m_iBirths  = 0;
};

using CDays = CPtrArrayOf<CDay>;

/// The list of holidays, ascending; a name has its date's index.
struct CHolidays
{
    CDateArray m_arrDates;
    CStrArray m_arrNames;
};

/// Returns YYYY-MM-DD, or "-" for a date without a year.
CString DateText(const CDate& date) { return date.GetYear() < 1 ? CString("-") : date.ToIsoStr(); }

// ---- Reading and checking ---------------------------------------------------------------------------------

/// What is wrong with an input file, and where.
struct CInputError
{
    const char* m_pszPath;
    long long m_iLine;
    CString m_strWhat;
};

/// Reads a text file line by line. Whatever is wrong with it is thrown as a CInputError.
class CLineReader
{
public:
    explicit CLineReader(const char* pszPath) : m_pszPath(pszPath), m_pFile(fopen(pszPath, "r"))
    {
        if (m_pFile == nullptr)
            FailWithErrno();
    }

    ~CLineReader()
    {
        free(m_pszLine);
        fclose(m_pFile);
    }

    CLineReader(const CLineReader&)            = delete;
    CLineReader& operator=(const CLineReader&) = delete;

    /// Fetches the next line, without its end; returns false when there is none.
    bool Next(CString& strLine)
    {
        const ssize_t iRead = getline(&m_pszLine, &m_iRoom, m_pFile);
        if (ferror(m_pFile) != 0 || (iRead < 0 && feof(m_pFile) == 0))
            FailWithErrno();
        if (iRead < 0)
            return false;
        ++m_iLine;
        if (strlen(m_pszLine) != static_cast<size_t>(iRead))
            Fail("the line holds a NUL byte");
        strLine = m_pszLine;
        strLine.TrimRight('\n');
        return true;
    }

    /// Throws what is wrong with the line that was fetched last.
    [[noreturn]] void Fail(const CString& strWhat) const { throw CInputError{m_pszPath, m_iLine, strWhat}; }

private:
    [[noreturn]] void FailWithErrno() const
    {
        if (errno == ENOMEM)
            throw std::bad_alloc();
        Fail(strerror(errno));
    }

    const char* m_pszPath;
    FILE* m_pFile;
    char* m_pszLine   = nullptr; // getline's
    size_t m_iRoom    = 0;
    long long m_iLine = 0;
};

/// Reads the first line, which must be the header.
void ReadHeader(CLineReader& lines, const char* pszHeader)
{
    CString strLine;
    if (!lines.Next(strLine))
        lines.Fail("the file is empty");
    if (strLine != pszHeader)
        lines.Fail(CFormat("the header is not %s", pszHeader));
}

/// Returns the number that a field holds: one from iLowest up to iHighest, and nothing else.
int GetNumber(const CLineReader& lines, const char* pszColumn, const CString& strField, int iLowest,
              int iHighest)
{
    // CString::ParseInt would take "+12", and for a number that is too large it does not tell that it is one.
    const char* pszEnd = strField.ToStr() + strField.GetLength();
    int iNumber        = 0;
    const auto result  = std::from_chars(strField.ToStr(), pszEnd, iNumber);
    if (result.ec == std::errc::invalid_argument || result.ptr != pszEnd)
        lines.Fail(CFormat("%s is not a whole number", pszColumn));
    if (result.ec != std::errc() || iNumber < iLowest || iNumber > iHighest)
        lines.Fail(CFormat("%s is not in %d to %d", pszColumn, iLowest, iHighest));
    return iNumber;
}

std::unique_ptr<CDay> ParseDay(const CLineReader& lines, const CStrArray& arrFields)
{
    if (arrFields.GetSize() != 5)
        lines.Fail(CFormat("%d columns instead of 5", arrFields.GetSize()));
    const int iYear  = GetNumber(lines, "year", arrFields[0], 1, 9999);
    const int iMonth = GetNumber(lines, "month", arrFields[1], 1, 12);
    const int iDay   = GetNumber(lines, "date_of_month", arrFields[2], 1, CDate::GetMonthDays(iYear, iMonth));
    auto pDay        = std::make_unique<CDay>();
    pDay->m_date     = CDate(iYear, iMonth, iDay);
    pDay->m_iWeekday = GetNumber(lines, "day_of_week", arrFields[3], 1, s_iWeekdays);
    pDay->m_iBirths  = GetNumber(lines, "births", arrFields[4], 0, INT_MAX);
    return pDay;
}

/// Checks that the recorded weekday is the calendar's.
void CheckWeekday(const CLineReader& lines, const CDay& day)
{
    const int iSunday0 = day.m_date.GetDayOfWeek();
    const int iWeekday = iSunday0 == 0 ? s_iWeekdays : iSunday0;
    if (day.m_iWeekday != iWeekday)
        lines.Fail(CFormat("day_of_week is %d, but %s is a %s (%d)", day.m_iWeekday,
                           DateText(day.m_date).ToStr(), s_apszWeekday[iWeekday - 1], iWeekday));
}

/// Checks that one day is the next after another.
void CheckFollows(const CLineReader& lines, const CDate& dateBefore, const CDate& date)
{
    CDate dateNext(dateBefore);
    dateNext.AddDay(1);
    if (date != dateNext)
        lines.Fail(
            CFormat("%s is not the day after %s", DateText(date).ToStr(), DateText(dateBefore).ToStr()));
}

CDays ReadDays(const char* pszPath)
{
    CLineReader lines(pszPath);
    ReadHeader(lines, "year,month,date_of_month,day_of_week,births");
    CDays arrDays;
    CString strLine;
    CStrArray arrFields;
    while (lines.Next(strLine))
    {
        strLine.Split(",", &arrFields);
        std::unique_ptr<CDay> pDay = ParseDay(lines, arrFields);
        if (!arrDays.IsEmpty())
            CheckFollows(lines, arrDays.GetAtLast().m_date, pDay->m_date);
        CheckWeekday(lines, *pDay);
        arrDays.Add(std::move(pDay));
    }
    if (arrDays.IsEmpty())
        lines.Fail("no row follows the header");
    return arrDays;
}

/// Returns the date that a field of the form YYYYMMDD holds.
CDate GetDate(const CLineReader& lines, const CString& strField)
{
    const CDate date(GetNumber(lines, "date", strField, 10101, 99991231));
    if (strField.GetLength() != 8 || !date.IsValid())
        lines.Fail(CFormat("%s is no date YYYYMMDD", strField.ToStr()));
    return date;
}

CHolidays ReadHolidays(const char* pszPath)
{
    CLineReader lines(pszPath);
    ReadHeader(lines, "date,name");
    CHolidays holidays;
    CString strLine;
    while (lines.Next(strLine))
    {
        const int iComma = strLine.Find(',');
        if (iComma < 0)
            lines.Fail("1 columns instead of 2");
        const CDate date = GetDate(lines, strLine.Left(iComma));
        CString strName  = strLine.Mid(iComma + 1); // which may hold commas
        strName.Trim();
        if (strName.IsEmpty())
            lines.Fail("name is empty");
        const CDateArray& arrDates = holidays.m_arrDates;
        if (arrDates.GetSize() > 0 && date <= arrDates.GetAtLast())
            lines.Fail(CFormat("%s is not after %s", DateText(date).ToStr(),
                               DateText(arrDates.GetAtLast()).ToStr()));
        holidays.m_arrDates.Add(date);
        holidays.m_arrNames.Add(strName);
    }
    return holidays;
}

// ---- Computing --------------------------------------------------------------------------------------------

/// Births over a number of days.
struct CTotals : CPtrArrayItem
{
    void Add(int iBirths)
    {
        ++m_iDays;
        m_iBirths += iBirths;
    }

    int m_iDays         = 0;
    long long m_iBirths = 0; // exact as a double, too: 9999 years of INT_MAX a day stay below 2^53
};

enum EKind
{
    eBusinessDay,
    eWeekend,
    eHoliday,
    eKinds
};

struct CYear : CPtrArrayItem
{
    CTotals m_all;
    CTotals m_aKind[eKinds];
};

struct CSummary
{
    CTotals m_all;
    CPtrHashOf<CYear> m_hashYears;    // YYYY
    CPtrHashOf<CTotals> m_hashMonths; // YYYYMM
    CTotals m_aWeekday[s_iWeekdays];
    CIntArray m_aarrSorted[s_iWeekdays];   // the births on each weekday, ascending
    CIntArray m_arrBusiest, m_arrQuietest; // indices of days
};

/// Tells the kind of a day. iHoliday leads from day to day through the holidays: to the first one not before the day.
EKind KindOf(const CDay& day, const CDateArray& arrHolidays, int& iHoliday)
{
    while (iHoliday < arrHolidays.GetSize() && arrHolidays[iHoliday] < day.m_date)
        ++iHoliday;
    if (day.m_iWeekday > 5)
        return eWeekend;
    return iHoliday < arrHolidays.GetSize() && arrHolidays[iHoliday] == day.m_date ? eHoliday : eBusinessDay;
}

/// Puts day iDay among the ranked ones if it belongs there. It stays behind its equals, which came earlier.
template <class TComesBefore>
void Rank(const CDays& arrDays, int iDay, CIntArray& arrRanked)
{
    const TComesBefore comesBefore;
    int iPlace = arrRanked.GetSize();
    while (iPlace > 0 && comesBefore(arrDays[iDay].m_iBirths, arrDays[arrRanked[iPlace - 1]].m_iBirths))
        --iPlace;
    if (iPlace >= s_iRanked)
        return;
    arrRanked.InsertAt(iPlace, iDay);
    if (arrRanked.GetSize() > s_iRanked)
        arrRanked.RemoveLast();
}

CSummary Summarize(const CDays& arrDays, const CDateArray& arrHolidays)
{
    CSummary summary;
    int iHoliday = 0;
    CString strKey;
    for (int i = 0; i < arrDays.GetSize(); ++i)
    {
        const CDay& day = arrDays[i];
        summary.m_all.Add(day.m_iBirths);
        summary.m_aWeekday[day.m_iWeekday - 1].Add(day.m_iBirths);
        summary.m_aarrSorted[day.m_iWeekday - 1].Add(day.m_iBirths);
        Rank<std::greater<int>>(arrDays, i, summary.m_arrBusiest);
        Rank<std::less<int>>(arrDays, i, summary.m_arrQuietest);

        strKey = day.m_date.ToStr();
        strKey.Delete(6, 2);
        summary.m_hashMonths.FindOrAdd(strKey).Add(day.m_iBirths);
        strKey.Delete(4, 2);
        CYear& year = summary.m_hashYears.FindOrAdd(strKey);
        year.m_all.Add(day.m_iBirths);
        year.m_aKind[KindOf(day, arrHolidays, iHoliday)].Add(day.m_iBirths);
    }
    for (CIntArray& arrBirths : summary.m_aarrSorted)
        arrBirths.Sort();
    return summary;
}

// ---- Printing ---------------------------------------------------------------------------------------------

/// Rows of cells, which it sets in columns two spaces apart.
class CTable
{
public:
    /// pszAlignment has '<' for each column to be aligned left, and '>' for each to be aligned right.
    explicit CTable(const char* pszAlignment)
        : m_pszAlignment(pszAlignment), m_arrWidths(static_cast<int>(strlen(pszAlignment)), 0)
    {
    }

    /// Adds a row, of as many cells as there are columns.
    void AddRow(std::initializer_list<CString> cells)
    {
        int iColumn = 0;
        for (const CString& strCell : cells)
        {
            m_arrCells.Add(strCell);
            int& iWidth = m_arrWidths[iColumn++];
            if (iWidth < Width(strCell))
                iWidth = Width(strCell);
        }
    }

    /// Adds the table to the report, under a title unless that is empty, with a blank line before.
    void AddTo(CStream& report, const CString& strTitle) const
    {
        report.AppendLine("");
        if (!strTitle.IsEmpty())
            report.AppendLine(strTitle);
        CString strLine;
        for (int i = 0; i < m_arrCells.GetSize(); ++i)
        {
            const int iColumn      = i % m_arrWidths.GetSize();
            const CString& strCell = m_arrCells[i];
            const CString strSpace = CFormat("%*s", m_arrWidths[iColumn] - Width(strCell), "");
            strLine += iColumn == 0 ? "" : "  ";
            strLine += m_pszAlignment[iColumn] == '<' ? strCell + strSpace : strSpace + strCell;
            if (iColumn + 1 < m_arrWidths.GetSize())
                continue;
            strLine.TrimRight(' ');
            report.AppendLine(strLine);
            strLine = "";
        }
    }

private:
    /// Returns the number of characters: of UTF-8's bytes, those that begin one.
    static int Width(const CString& strText)
    {
        int iWidth = 0;
        for (const char* psz = strText.ToStr(); *psz != '\0'; ++psz)
            iWidth += (static_cast<unsigned char>(*psz) & 0xC0) != 0x80 ? 1 : 0;
        return iWidth;
    }

    const char* m_pszAlignment;
    CIntArray m_arrWidths;
    CStrArray m_arrCells;
};

CString Grouped(long long iNumber) { return CInt64(iNumber).ToFmtStr(); }

CString Mean(const CTotals& totals)
{
    return totals.m_iDays == 0 ? CString("-")
                               : CDbl(static_cast<double>(totals.m_iBirths) / totals.m_iDays).ToFmtStr(2);
}

/// The middle value, or the mean of the middle two.
CString Median(const CIntArray& arrSorted)
{
    const int iSize = arrSorted.GetSize();
    if (iSize == 0)
        return "-";
    const double dLower = arrSorted[(iSize - 1) / 2];
    return CDbl((dLower + arrSorted[iSize / 2]) / 2).ToFmtStr(2);
}

void AddHead(const CDays& arrDays, const CTotals& totals, CStream& report)
{
    report.AppendLine(CFormat("Births %s to %s: %s days, %s births", DateText(arrDays[0].m_date).ToStr(),
                              DateText(arrDays.GetAtLast().m_date).ToStr(), Grouped(totals.m_iDays).ToStr(),
                              Grouped(totals.m_iBirths).ToStr()));
    report.AppendLine("Generated " + CTime::GetTimeStamp("Y-M-D h:m:s.l"));
}

void AddYears(const CStrArray& arrYears, const CPtrHashOf<CYear>& hashYears, CStream& report)
{
    CTable table("<>>>>>>");
    table.AddRow({"Year", "Days", "Births", "Mean", "Business-day mean", "Weekend mean", "Holiday mean"});
    for (const CString& strYear : arrYears)
    {
        const CYear& year = *hashYears.Find(strYear);
        table.AddRow({strYear, Grouped(year.m_all.m_iDays), Grouped(year.m_all.m_iBirths), Mean(year.m_all),
                      Mean(year.m_aKind[eBusinessDay]), Mean(year.m_aKind[eWeekend]),
                      Mean(year.m_aKind[eHoliday])});
    }
    table.AddTo(report, "");
}

void AddWeekdays(const CSummary& summary, CStream& report)
{
    CTable table("<>>>>>");
    table.AddRow({"Weekday", "Days", "Mean", "Median", "Least", "Most"});
    for (int i = 0; i < s_iWeekdays; ++i)
    {
        const CIntArray& arrSorted = summary.m_aarrSorted[i];
        const int iDays            = arrSorted.GetSize();
        table.AddRow({s_apszWeekday[i], Grouped(iDays), Mean(summary.m_aWeekday[i]), Median(arrSorted),
                      iDays > 0 ? Grouped(arrSorted[0]) : CString("-"),
                      iDays > 0 ? Grouped(arrSorted.GetAtLast()) : CString("-")});
    }
    table.AddTo(report, "");
}

void AddRanked(const char* pszTitle, const CDays& arrDays, const CIntArray& arrRanked, CStream& report)
{
    CTable table("<<>");
    for (const int iDay : arrRanked)
    {
        const CDay& day = arrDays[iDay];
        table.AddRow({DateText(day.m_date), s_apszWeekday[day.m_iWeekday - 1], Grouped(day.m_iBirths)});
    }
    table.AddTo(report, pszTitle);
}

void AddBusiestMonths(const CStrArray& arrYears, const CPtrHashOf<CTotals>& hashMonths, CStream& report)
{
    CTable table("<>");
    for (const CString& strYear : arrYears)
    {
        int iBusiest      = 0;
        long long iBirths = -1;
        for (int iMonth = 1; iMonth <= 12; ++iMonth)
        {
            const CTotals* pTotals = hashMonths.Find(CFormat("%s%02d", strYear.ToStr(), iMonth));
            if (pTotals == nullptr || pTotals->m_iBirths <= iBirths)
                continue;
            iBusiest = iMonth;
            iBirths  = pTotals->m_iBirths;
        }
        table.AddRow({CFormat("%s-%02d", strYear.ToStr(), iBusiest), Grouped(iBirths)});
    }
    table.AddTo(report, "Busiest month of each year");
}

/// Returns the nearest business day after or before a date; an unset date beyond year 9999.
CDate NextBizDate(const CDate& date, CDate::E_Dir eDir, const CDateArray& arrHolidays)
{
    CDate dateNext(date);
    dateNext.AddDay(eDir == CDate::E_Next ? 1 : -1);
    dateNext = dateNext.GetBizDateAdjusted(eDir, &arrHolidays);
    // The text of a date beyond year 9999 is cut, which makes it an early one.
    return eDir == CDate::E_Next && dateNext < date ? CDate() : dateNext;
}

void AddHolidays(int iYear, const CHolidays& holidays, CStream& report)
{
    CTable table("<<<<");
    table.AddRow({"Date", "Name", "Business day before", "Business day after"});
    for (int i = 0; i < holidays.m_arrDates.GetSize(); ++i)
    {
        const CDate date = holidays.m_arrDates[i];
        if (date.GetYear() == iYear)
            table.AddRow({DateText(date), holidays.m_arrNames[i],
                          DateText(NextBizDate(date, CDate::E_Prev, holidays.m_arrDates)),
                          DateText(NextBizDate(date, CDate::E_Next, holidays.m_arrDates))});
    }
    table.AddTo(report, CFormat("Holidays of %04d", iYear));
}

void AddMonthEnds(int iYear, const CDateArray& arrHolidays, CStream& report)
{
    CTable table("<<");
    table.AddRow({"Last day", "Last business day"});
    for (int iMonth = 1; iMonth <= 12; ++iMonth)
    {
        const CDate dateLast = CDate(iYear, iMonth, 1).GetLastDateOfMonth();
        table.AddRow(
            {DateText(dateLast), DateText(dateLast.GetBizDateAdjusted(CDate::E_Prev, &arrHolidays))});
    }
    table.AddTo(report, CFormat("Month ends of %04d", iYear));
}

EExit Print(const CStream& report)
{
    const size_t iLength = static_cast<size_t>(report.GetLength());
    if (fwrite(report.ToStr(), 1, iLength, stdout) == iLength && fflush(stdout) == 0)
        return eSuccess;
    perror("births_report: stdout");
    return eWriteFailed;
}

EExit Report(const char* pszBirths, const char* pszHolidays)
{
    const CDays arrDays      = ReadDays(pszBirths);
    const CHolidays holidays = pszHolidays != nullptr ? ReadHolidays(pszHolidays) : CHolidays();
    const CSummary summary   = Summarize(arrDays, holidays.m_arrDates);
    CStrArray arrYears;
    summary.m_hashYears.GetHash().GetKeys(arrYears);
    arrYears.Sort();
    const int iLastYear = arrDays.GetAtLast().m_date.GetYear();

    CStream report(0, 65536); // so that it is printed as a whole or not at all
    report.ThrowOnFailure();
    AddHead(arrDays, summary.m_all, report);
    AddYears(arrYears, summary.m_hashYears, report);
    AddWeekdays(summary, report);
    AddRanked("Busiest days", arrDays, summary.m_arrBusiest, report);
    AddRanked("Quietest days", arrDays, summary.m_arrQuietest, report);
    AddBusiestMonths(arrYears, summary.m_hashMonths, report);
    AddHolidays(iLastYear, holidays, report);
    AddMonthEnds(iLastYear, holidays.m_arrDates, report);
    return Print(report);
}
} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && strcmp(argv[1], "--help") == 0)
    {
        fputs(s_szUsage, stdout);
        return eSuccess;
    }
    if (argc < 2 || argc > 3)
    {
        fputs(s_szUsage, stderr);
        return eBadInput;
    }
    try
    {
        return Report(argv[1], argc > 2 ? argv[2] : nullptr);
    }
    catch (const CInputError& e)
    {
        fprintf(stderr, "%s:%lld: %s\n", e.m_pszPath, e.m_iLine, e.m_strWhat.ToStr());
        return eBadInput;
    }
    catch (const CException& e) // no index here is out of bounds: it is memory that the library ran out of
    {
        fprintf(stderr, "births_report: %s\n", e.GetText());
    }
    catch (const std::bad_alloc&)
    {
        fputs("births_report: out of memory\n", stderr);
    }
    return eOutOfMemory;
}
