// ledger: which invoices are open on a day, since when, and how much each customer owes.
#include <bedplate/bedplate.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

namespace
{
constexpr char s_szUsage[] =
    "usage: ledger INVOICES PAYMENTS HOLIDAYS DAY\n"
    "  INVOICES  number,customer,date,days,amount: payable so many days later, or on the next business day\n"
    "  PAYMENTS  date,invoice,amount\n"
    "  HOLIDAYS  date,name: days without business, with dates as YYYYMMDD\n"
    "  DAY       the day on which the books are looked at\n"
    "Other dates are YYYY-MM-DD, amounts have two decimals, and each file begins with the row of its "
    "columns' names.\n"
    "Exit status: 0 success, 1 bad input, 2 wrong usage, 3 out of memory\n";

constexpr int s_iBadInput = 1;

/// What a customer owes in cents, by age: not due, 1 to 30 days, 31 to 60 days, over 60 days.
struct CDebt : CPtrArrayItem
{
    void Add(int iAge, long long iCents)
    {
        m_aiOpen[iAge] += iCents;
        m_iTotal += iCents;
    }

    long long m_aiOpen[4] = {};
    long long m_iTotal    = 0;
};

struct CInvoice : CPtrArrayItem
{
    CString m_strNumber, m_strCustomer;
    CDate m_dateDue;
    long long m_iOpen = 0; // cents
};

// ---- Reading: what is wrong is thrown as a CException with its place ----------------------------------------------

using RowReader = std::function<void(const CStrArray& arrFields)>;

/// Takes a line of comma-separated values apart. Quotes may stand around a value, and twice within.
void SplitQuoted(const CString& strLine, CStrArray& arrFields)
{
    arrFields.RemoveAll();
    CString strField;
    bool bQuoted = false;
    for (int i = 0; i < strLine.GetLength(); ++i)
    {
        const char ch = strLine[i];
        if (ch == '"' && bQuoted && i + 1 < strLine.GetLength() && strLine[i + 1] == '"')
            strField.Insert(strField.GetLength(), strLine[++i]);
        else if (ch == '"')
            bQuoted = !bQuoted;
        else if (ch != ',' || bQuoted)
            strField.Insert(strField.GetLength(), ch);
        else
        {
            arrFields.Add(strField.ToStr());
            strField = "";
        }
    }
    arrFields.Add(strField.ToStr());
}

/// Hands out the rows behind the first one.
void ForRows(const char* pszPath, int iColumns, const RowReader& readRow)
{
    std::ifstream file(pszPath);
    CStrArray arrFields;
    std::string strLine;
    for (int iLine = 1; std::getline(file, strLine); ++iLine)
    {
        SplitQuoted(strLine.c_str(), arrFields);
        if (arrFields.GetSize() != iColumns)
            throw CException(s_iBadInput, "%s:%d: %d columns instead of %d", pszPath, iLine,
                             arrFields.GetSize(), iColumns);
        if (iLine > 1)
            readRow(arrFields);
    }
    if (!file.eof())
        throw CException(s_iBadInput, "%s cannot be read", pszPath);
}

[[noreturn]] void Refuse(const char* pszWhat, const CString& strText)
{
    throw CException(s_iBadInput, "%s is not %s", strText.ToStr(), pszWhat);
}

CDate ReadDate(const CString& strText)
{
    CString strDigits(strText);
    strDigits.Remove('-');
    const CDate date(strDigits.ToStr());
    if (date.GetDay() < 1 || date.GetDay() > CDate::GetMonthDays(date.GetYear(), date.GetMonth()) ||
        strDigits.GetLength() != 8)
        Refuse("a date", strText);
    return date;
}

long long ReadCents(const CString& strText)
{
    const long long iCents = std::llround(strText.ToDbl() * 100);
    if (iCents < 0 || strText != CDbl(static_cast<double>(iCents) / 100).ToFmtStr(2, false))
        Refuse("an amount", strText);
    return iCents;
}

void ReadHolidays(const char* pszPath, CDateArray& arrHolidays)
{
    ForRows(pszPath, 2, [&](const CStrArray& arrFields) { arrHolidays.Add(ReadDate(arrFields[0])); });
}

/// Fills arrInvoices, an owner, and hashInvoices, which finds them by their numbers.
void ReadInvoices(const char* pszPath, CDateArray& arrHolidays, CPtrArray& arrInvoices,
                  CPtrHash& hashInvoices)
{
    ForRows(pszPath, 5,
            [&](const CStrArray& arrFields)
            {
                auto pInvoice           = std::make_unique<CInvoice>();
                pInvoice->m_strNumber   = arrFields[0];
                pInvoice->m_strCustomer = arrFields[1];
                pInvoice->m_iOpen       = ReadCents(arrFields[4]);
                CDate dateDue           = ReadDate(arrFields[2]);
                dateDue.AddDay(arrFields[3].ToInt());
                pInvoice->m_dateDue = dateDue.GetBizDateAdjusted(CDate::E_Next, &arrHolidays);
                hashInvoices.Set(arrFields.GetAt(0), pInvoice.get());
                arrInvoices.Add(pInvoice.get());
                (void)pInvoice.release();
            });
}

void ReadPayments(const char* pszPath, const CDate& dateDay, CPtrHash& hashInvoices)
{
    ForRows(pszPath, 3,
            [&](const CStrArray& arrFields)
            {
                auto* pInvoice = static_cast<CInvoice*>(hashInvoices.Get(arrFields.GetAt(1)));
                if (pInvoice == nullptr)
                    Refuse("an invoice", arrFields[1]);
                if (ReadDate(arrFields[0]) <= dateDay)
                    pInvoice->m_iOpen -= ReadCents(arrFields[2]);
            });
}

// ---- Printing -----------------------------------------------------------------------------------------------------

CString Money(long long iCents)
{
    return iCents == 0 ? CString("-") : CDbl(static_cast<double>(iCents) / 100).ToFmtStr(2);
}

/// The number of business days behind the first day up to the last; 0 if there are none.
int CountBizDays(CDate dateFirst, const CDate& dateLast, CDateArray& arrHolidays)
{
    int iDays = 0;
    for (dateFirst.AddDay(1); dateFirst <= dateLast; dateFirst.AddDay(1))
        iDays += dateFirst.GetBizDateAdjusted(CDate::E_Next, &arrHolidays) == dateFirst ? 1 : 0;
    return iDays;
}

void PrintOpen(const CPtrArray& arrOpen, const CDate& dateDay, CDateArray& arrHolidays)
{
    printf("%-22s  %-7s  %-10s  %9s  %10s\n", "Customer", "Invoice", "Due", "Days late", "Open");
    for (const CPtrArrayItem* pItem : arrOpen)
    {
        const auto& invoice = *static_cast<const CInvoice*>(pItem);
        const char* pszDue  = invoice.m_dateDue.ToStr();
        const int iLate     = CountBizDays(invoice.m_dateDue, dateDay, arrHolidays);
        printf("%-22s  %-7s  %.4s-%.2s-%s  %9s  %10s\n", invoice.m_strCustomer.ToStr(),
               invoice.m_strNumber.ToStr(), pszDue, pszDue + 4, pszDue + 6,
               iLate > 0 ? CFormat("%d", iLate).ToStr() : "-", Money(invoice.m_iOpen).ToStr());
    }
}

void PrintDebt(const char* pszCustomer, const CDebt& debt)
{
    printf("%-22s", pszCustomer);
    for (const long long iCents : debt.m_aiOpen)
        printf("  %13s", Money(iCents).ToStr());
    printf("  %13s\n", Money(debt.m_iTotal).ToStr());
}
} // namespace

int main(int argc, char** argv)
{
    CDateArray arrHolidays;
    ReadHolidays(argv[3], arrHolidays);
    const CDate dateDay = ReadDate(argv[4]);
    CPtrArray arrInvoices(true);
    CPtrHash hashInvoices(false);
    ReadInvoices(argv[1], arrHolidays, arrInvoices, hashInvoices);
    ReadPayments(argv[2], dateDay, hashInvoices);
    PrintOpen(arrInvoices, dateDay, arrHolidays);
}
