// ledger: which invoices are open on a day, how late they are, and who owes how much since when.
#include <bedplate/bedplate.h>
#include <bedplate/typed.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <tuple>

namespace
{
constexpr char s_szUsage[] =
    "usage: ledger INVOICES PAYMENTS HOLIDAYS DAY: tells what is open on a day\n"
    "  INVOICES  number,customer,date,days,amount: due so many days later, or on the next business day\n"
    "  PAYMENTS  date,invoice,amount\n"
    "  HOLIDAYS  date,name: days without business besides Saturdays and Sundays\n"
    "Dates are YYYY-MM-DD or YYYYMMDD, amounts have two decimals, and each file begins with its columns' "
    "names.\n"
    "Exit status: 0 success, 1 bad input, 2 wrong usage, 3 out of memory\n";

struct CInvoice : CPtrArrayItem
{
    CString m_strNumber, m_strCustomer;
    CDate m_dateDue;
    long long m_iOpen = 0; // cents
};

/// Cents owed: not due, 1 to 30 days late, 31 to 60, over 60, and all together.
struct CDebt : CPtrArrayItem
{
    long long m_aiOpen[5] = {};
};

struct CBooks
{
    CDate m_date;
    CDateArray m_arrHolidays;
    CPtrArrayOf<CInvoice> m_arrInvoices;
    CIntHash m_hashIndices; // number: index of the invoice
};

/// Calls add(books, fields), which tells whether they are sound, for each row behind the first.
void ReadRows(const char* pszPath, int iColumns, bool (*add)(CBooks&, const CStrArray&), CBooks& books)
{
    std::ifstream file(pszPath);
    std::string strLine;
    CStrArray arrFields;
    for (int iLine = 1; std::getline(file, strLine); ++iLine)
    {
        if (!CString(strLine.c_str()).SplitQuoted(',', &arrFields) || arrFields.GetSize() != iColumns ||
            (iLine > 1 && !add(books, arrFields)))
            throw CException(1, "%s:%d: bad row: %s", pszPath, iLine, strLine.c_str());
    }
    if (!file.eof())
        throw CException(1, "%s cannot be read", pszPath);
}

/// Reads a real day, YYYYMMDD or YYYY-MM-DD.
bool ParseDate(CString strText, CDate* pDate)
{
    strText.Remove('-');
    pDate->Set(strText.ToStr());
    return strText.GetLength() == 8 && pDate->GetDay() > 0 &&
           pDate->GetDay() <= CDate::GetMonthDays(pDate->GetYear(), pDate->GetMonth());
}

/// Reads an amount with two decimals as cents.
bool ParseCents(CString strText, long long* piCents)
{
    return strText.Find('.') == strText.GetLength() - 3 && strText.Remove('.') == 1 &&
           (*piCents = std::llround(strText.ToDbl())) >= 0;
}

bool AddHoliday(CBooks& books, const CStrArray& arrFields)
{
    CDate date;
    return ParseDate(arrFields[0], &date) && books.m_arrHolidays.Add(date) >= 0;
}

bool AddInvoice(CBooks& books, const CStrArray& arrFields)
{
    int iDays         = 0;
    CInvoice& invoice = books.m_arrInvoices.AddNew();
    if (!ParseDate(arrFields[2], &invoice.m_dateDue) || (iDays = arrFields[3].ToInt()) < 0 ||
        !ParseCents(arrFields[4], &invoice.m_iOpen) || books.m_hashIndices.IsIn(arrFields[0]))
        return false;
    invoice.m_dateDue.AddDay(iDays);
    invoice.m_dateDue     = invoice.m_dateDue.GetBizDateAdjusted(CDate::E_Next, &books.m_arrHolidays);
    invoice.m_strNumber   = arrFields[0];
    invoice.m_strCustomer = arrFields[1];
    return books.m_hashIndices.Set(arrFields[0], books.m_arrInvoices.GetSize() - 1) == 0;
}

bool AddPayment(CBooks& books, const CStrArray& arrFields)
{
    CDate date;
    long long iCents   = 0;
    const int* piIndex = books.m_hashIndices.Find(arrFields[1]);
    if (!ParseDate(arrFields[0], &date) || piIndex == nullptr || !ParseCents(arrFields[2], &iCents))
        return false;
    books.m_arrInvoices[*piIndex].m_iOpen -= date <= books.m_date ? iCents : 0;
    return true;
}

CString IsoText(const CDate& date)
{
    return CFormat("%.4s-%.2s-%s", date.ToStr(), date.ToStr() + 4, date.ToStr() + 6);
}

/// The number of business days from behind the day on which an invoice was due.
int DaysLate(CBooks& books, CDate date)
{
    int iDays = 0;
    for (date.AddDay(1); date <= books.m_date; date.AddDay(1))
        iDays += date.GetBizDateAdjusted(CDate::E_Next, &books.m_arrHolidays) == date ? 1 : 0;
    return iDays;
}

CString Money(long long iCents)
{
    return iCents == 0 ? CString("-") : CDbl(static_cast<double>(iCents) / 100).ToFmtStr(2);
}

/// Prints the open invoices, and returns what the customers owe.
CPtrHashOf<CDebt> PrintInvoices(CBooks& books)
{
    CPtrHashOf<CDebt> hashDebts;
    printf("Open on %s\n\nCustomer                Invoice  Due         Days late        Open\n",
           IsoText(books.m_date).ToStr());
    books.m_arrInvoices.Sort(
        [](const CInvoice& left, const CInvoice& right) {
            return std::tie(left.m_strCustomer, left.m_dateDue) <
                   std::tie(right.m_strCustomer, right.m_dateDue);
        });
    for (const CInvoice& invoice : books.m_arrInvoices)
    {
        if (invoice.m_iOpen <= 0)
            continue;
        const int iLate = DaysLate(books, invoice.m_dateDue);
        printf("%-22s  %-7s  %s  %9s  %10s\n", invoice.m_strCustomer.ToStr(), invoice.m_strNumber.ToStr(),
               IsoText(invoice.m_dateDue).ToStr(), iLate > 0 ? CFormat("%d", iLate).ToStr() : "-",
               Money(invoice.m_iOpen).ToStr());
        const int iDays = CDate::GetDaysDiff(invoice.m_dateDue, books.m_date);
        CDebt& debt     = hashDebts.FindOrAdd(invoice.m_strCustomer);
        debt.m_aiOpen[iDays <= 0 ? 0 : iDays <= 30 ? 1 : iDays <= 60 ? 2 : 3] += invoice.m_iOpen;
        debt.m_aiOpen[4] += invoice.m_iOpen;
    }
    return hashDebts;
}

void PrintDebts(const CPtrHashOf<CDebt>& hashDebts)
{
    CStrArray arrCustomers;
    hashDebts.GetHash().GetKeys(arrCustomers);
    arrCustomers.Sort();
    puts("\nCustomer                      Not due   1 to 30 days  31 to 60 days   Over 60 days          "
         "Total");
    for (const CString& strCustomer : arrCustomers)
    {
        printf("%-22s", strCustomer.ToStr());
        for (const long long iCents : hashDebts.Find(strCustomer)->m_aiOpen)
            printf("  %13s", Money(iCents).ToStr());
        puts("");
    }
}
} // namespace

int main(int argc, char** argv)
try
{
    CBooks books;
    const bool bHelp = argc == 2 && CString(argv[1]) == "--help";
    if (argc != 5 || !ParseDate(argv[4], &books.m_date))
        return fputs(s_szUsage, bHelp ? stdout : stderr) >= 0 && bHelp ? 0 : 2;
    ReadRows(argv[3], 2, AddHoliday, books);
    ReadRows(argv[1], 5, AddInvoice, books);
    ReadRows(argv[2], 3, AddPayment, books);
    PrintDebts(PrintInvoices(books));
    return 0;
}
catch (const CException& e)
{
    fprintf(stderr, "ledger: %s\n", e.GetText());
    return e.GetCode() == 1 ? 1 : 3; // 1 is ours: bad input
}
