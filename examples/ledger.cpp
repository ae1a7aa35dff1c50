// ledger: which invoices are open on a day, how late they are, and who owes how much since when.
#include <bedplate/bedplate.h>
#include <bedplate/typed.h>

#include <cstdio>
#include <fstream>

namespace
{
constexpr char s_szUsage[] =
    "usage: ledger INVOICES PAYMENTS HOLIDAYS DAY: tells what is open on a day\n"
    "  INVOICES  number,customer,date,days,amount: due so many days later, or on the next business day\n"
    "  PAYMENTS  date,invoice,amount       HOLIDAYS  date,name\n"
    "Each begins with its columns' names. Dates are YYYY-MM-DD or YYYYMMDD, amounts have two decimals.\n"
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
    CIntHash m_hashIndices;        // number: index of the invoice
    CPtrHashOf<CDebt> m_hashDebts; // by customer
};

/// Calls add(books, fields), which tells whether they are sound, for each row behind the first.
void ReadRows(const char* pszPath, int iColumns, bool (*add)(CBooks&, const CStrArray&), CBooks& books)
{
    std::ifstream file(pszPath);
    CStrArray arrFields;
    std::string strLine;
    for (int iLine = 1; std::getline(file, strLine); ++iLine)
    {
        if (!CString(strLine.c_str()).SplitQuoted(',', &arrFields) || arrFields.GetSize() != iColumns ||
            (iLine > 1 && !add(books, arrFields)))
            throw CException(1, "%s:%d: bad row: %s", pszPath, iLine, strLine.c_str());
    }
    if (!file.eof())
        throw CException(1, "%s cannot be read", pszPath);
}

bool ParseCents(CString str, long long* piCents) // of an amount with two decimals
{
    return str.Find('.') == str.GetLength() - 3 && str.Remove('.') == 1 && str.ParseInt64(piCents);
}

bool AddHoliday(CBooks& books, const CStrArray& arrFields)
{
    CDate date;
    return CDate::Parse(arrFields[0], &date) && books.m_arrHolidays.Add(date) >= 0;
}

bool AddInvoice(CBooks& books, const CStrArray& arrFields)
{
    int iDays         = 0;
    CInvoice& invoice = books.m_arrInvoices.AddNew();
    if (!CDate::Parse(arrFields[2], &invoice.m_dateDue) || !arrFields[3].ParseInt(&iDays) ||
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
    if (!CDate::Parse(arrFields[0], &date) || piIndex == nullptr || !ParseCents(arrFields[2], &iCents))
        return false;
    books.m_arrInvoices[*piIndex].m_iOpen -= date <= books.m_date ? iCents : 0;
    return true;
}

CString Money(long long iCents) { return CDbl(static_cast<double>(iCents) / 100).ToFmtStr(2); }

void PrintInvoices(CBooks& books)
{
    const auto order = [](const CInvoice& left, const CInvoice& right)
    { return left.m_strCustomer < right.m_strCustomer; };
    books.m_arrInvoices.Sort(order); // those of a customer stay as they are
    printf("Open on %s\n", books.m_date.ToIsoStr().ToStr());
    puts("\nCustomer                Invoice  Due         Days late        Open");
    for (const CInvoice& invoice : books.m_arrInvoices)
    {
        if (invoice.m_iOpen <= 0)
            continue;
        const int iBizDays = CDate::GetBizDaysDiff(invoice.m_dateDue, books.m_date, &books.m_arrHolidays);
        printf("%-22s  %-7s  %s  %9d  %10s\n", invoice.m_strCustomer.ToStr(), invoice.m_strNumber.ToStr(),
               invoice.m_dateDue.ToIsoStr().ToStr(), iBizDays, Money(invoice.m_iOpen).ToStr());
        const int iDays = CDate::GetDaysDiff(invoice.m_dateDue, books.m_date);
        CDebt& debt     = books.m_hashDebts.FindOrAdd(invoice.m_strCustomer);
        debt.m_aiOpen[iDays <= 0 ? 0 : iDays <= 30 ? 1 : iDays <= 60 ? 2 : 3] += invoice.m_iOpen;
        debt.m_aiOpen[4] += invoice.m_iOpen;
    }
}

void PrintDebts(const CBooks& books)
{
    CStrArray arrCustomers;
    books.m_hashDebts.GetHash().GetKeys(arrCustomers);
    arrCustomers.Sort();
    puts("\nCustomer                     Not due  1 to 30 days 31 to 60 days  Over 60 days         Total");
    for (const CString& strCustomer : arrCustomers)
    {
        printf("%-22s", strCustomer.ToStr());
        for (const long long iCents : books.m_hashDebts.Find(strCustomer)->m_aiOpen)
            printf(" %13s", Money(iCents).ToStr());
        puts("");
    }
}
} // namespace

int main(int argc, char** argv)
try
{
    CBooks books;
    const bool bHelp = argc == 2 && CString(argv[1]) == "--help";
    if (argc != 5 || !CDate::Parse(argv[4], &books.m_date))
        return fputs(s_szUsage, bHelp ? stdout : stderr) >= 0 && bHelp ? 0 : 2;
    ReadRows(argv[3], 2, AddHoliday, books);
    ReadRows(argv[1], 5, AddInvoice, books);
    ReadRows(argv[2], 3, AddPayment, books);
    PrintInvoices(books);
    PrintDebts(books);
}
catch (const CException& e)
{
    return fprintf(stderr, "ledger: %s\n", e.GetText()), e.GetCode() == 1 ? 1 : 3; // 1 is ours: bad input
}
catch (const std::bad_alloc&)
{
    return fputs("ledger: out of memory\n", stderr), 3;
}
