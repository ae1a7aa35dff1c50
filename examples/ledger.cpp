// ledger: which invoices are open on a day, since when, and how much each customer owes.
#include <bedplate/bedplate.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

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

struct CInvoice : CPtrArrayItem
{
    CString m_strNumber, m_strCustomer;
    CDate m_dateDue;
    long long m_iOpen = 0; // cents
};

/// What is owed in cents, by age: not due, 1 to 30 days, 31 to 60 days, over 60 days.
struct CDebt
{
    void Add(int iDaysLate, long long iCents)
    {
        m_aiOpen[iDaysLate <= 0 ? 0 : iDaysLate <= 30 ? 1 : iDaysLate <= 60 ? 2 : 3] += iCents;
        m_iTotal += iCents;
    }

    long long m_aiOpen[4] = {};
    long long m_iTotal    = 0;
};

// ---- Reading: what is wrong is thrown as a CException with its place ----------------------------------------------

[[noreturn]] void Refuse(const CString& strText, const char* pszWhat)
{
    throw CException(s_iBadInput, "%s is not %s", strText.ToStr(), pszWhat);
}

CDate ReadDate(const CString& strText)
{
    CString strDigits(strText);
    strDigits.Remove('-');
    const CDate date(strDigits.ToStr());
    if (strDigits.GetLength() != 8 || date.GetDay() < 1 ||
        date.GetDay() > CDate::GetMonthDays(date.GetYear(), date.GetMonth()))
        Refuse(strText, "a date");
    return date;
}

/// Returns the cents of an amount with two decimals.
long long ReadCents(const CString& strText)
{
    const double dCents = std::round(strText.ToDbl() * 100);
    if (strText != CDbl(dCents / 100).ToFmtStr(2, false))
        Refuse(strText, "an amount");
    return static_cast<long long>(dCents);
}

/// Takes a line of comma-separated values apart. Quotes may stand around a value, and twice within.
void SplitQuoted(const CString& strLine, CStrArray& arrFields)
{
    CString strField;
    bool bQuoted = false;
    arrFields.Clear();
    for (int i = 0; i < strLine.GetLength(); ++i)
    {
        const char ch = strLine[i];
        if (ch == '"' && (!bQuoted || strLine.Mid(i + 1, 1) != "\""))
            bQuoted = !bQuoted;
        else if (ch != ',' || bQuoted)
            strField.Insert(strField.GetLength(), strLine[ch == '"' ? ++i : i]);
        else
        {
            arrFields.Add(strField.ToStr());
            strField = "";
        }
    }
    arrFields.Add(strField.ToStr());
}

/// Calls read(fields) for each row behind the first one.
template <class TRead>
void ReadRows(const char* pszPath, int iColumns, TRead read)
{
    std::ifstream file(pszPath);
    std::string strLine;
    CStrArray arrFields;
    int iLine = 0;
    try
    {
        for (iLine = 1; std::getline(file, strLine); ++iLine)
        {
            SplitQuoted(strLine.c_str(), arrFields);
            if (arrFields.GetSize() != iColumns)
                Refuse(strLine.c_str(), "a row");
            if (iLine > 1)
                read(arrFields);
        }
    }
    catch (const CException& e)
    {
        if (e.GetCode() == s_iBadInput)
            throw CException(s_iBadInput, "%s:%d: %s", pszPath, iLine, e.GetText());
        throw;
    }
    if (!file.eof())
        throw CException(s_iBadInput, "%s cannot be read", pszPath);
}

class CLedger
{
public:
    explicit CLedger(const CDate& date) : m_date(date) {}

    void ReadHolidays(const char* pszPath)
    {
        ReadRows(pszPath, 2, [&](const CStrArray& arrFields) { m_arrHolidays.Add(ReadDate(arrFields[0])); });
    }

    void ReadInvoices(const char* pszPath)
    {
        const auto read = [&](const CStrArray& arrFields)
        {
            auto pInvoice           = std::make_unique<CInvoice>();
            pInvoice->m_strNumber   = arrFields[0];
            pInvoice->m_strCustomer = arrFields[1];
            pInvoice->m_iOpen       = ReadCents(arrFields[4]);
            CDate dateDue           = ReadDate(arrFields[2]);
            dateDue.AddDay(arrFields[3].ToInt());
            pInvoice->m_dateDue = dateDue.GetBizDateAdjusted(CDate::E_Next, &m_arrHolidays);
            if (m_hashInvoices.Set(arrFields.GetAt(0), pInvoice.get()) != 0)
                throw std::bad_alloc();
            m_invoices.push_back(pInvoice.release());
        };
        ReadRows(pszPath, 5, read);
        std::sort(m_invoices.begin(), m_invoices.end(),
                  [](const CInvoice* pLeft, const CInvoice* pRight)
                  {
                      return pLeft->m_strCustomer != pRight->m_strCustomer
                                 ? pLeft->m_strCustomer < pRight->m_strCustomer
                                 : pLeft->m_dateDue < pRight->m_dateDue;
                  });
    }

    void ReadPayments(const char* pszPath)
    {
        const auto read = [&](const CStrArray& arrFields)
        {
            auto* pInvoice = static_cast<CInvoice*>(m_hashInvoices.Get(arrFields.GetAt(1)));
            if (pInvoice == nullptr)
                Refuse(arrFields[1], "an invoice");
            if (ReadDate(arrFields[0]) <= m_date)
                pInvoice->m_iOpen -= ReadCents(arrFields[2]);
        };
        ReadRows(pszPath, 3, read);
    }

    /// Prints the open invoices, and what the customers owe.
    void Print();

private:
    /// The number of business days from behind the day on which an invoice was due.
    int DaysLate(CDate dateDue)
    {
        int iDays = 0;
        for (dateDue.AddDay(1); dateDue <= m_date; dateDue.AddDay(1))
            iDays += dateDue.GetBizDateAdjusted(CDate::E_Next, &m_arrHolidays) == dateDue ? 1 : 0;
        return iDays;
    }

    CDate m_date;
    CDateArray m_arrHolidays;
    CPtrHash m_hashInvoices{true};     // by their numbers
    std::vector<CInvoice*> m_invoices; // by customer and date
};

CString Money(long long iCents)
{
    return iCents == 0 ? CString("-") : CDbl(static_cast<double>(iCents) / 100).ToFmtStr(2);
}

CString IsoText(const CDate& date)
{
    return CFormat("%.4s-%.2s-%s", date.ToStr(), date.ToStr() + 4, date.ToStr() + 6);
}

void AddDebt(CStream& report, const CString& strCustomer, const CDebt& debt)
{
    CString strLine = CFormat("%-22s", strCustomer.ToStr());
    for (const long long iCents : debt.m_aiOpen)
        strLine += CFormat("  %13s", Money(iCents).ToStr());
    report.AppendLine(strLine + CFormat("  %13s", Money(debt.m_iTotal).ToStr()));
}

void CLedger::Print()
{
    CStream open, debts;
    CDebt debtAll, debtOne;
    for (size_t i = 0; i < m_invoices.size(); ++i)
    {
        const CInvoice& invoice = *m_invoices[i];
        if (invoice.m_iOpen > 0)
        {
            const int iLate = DaysLate(invoice.m_dateDue);
            open.AppendLine(CFormat("%-22s  %-7s  %s  %9s  %10s", invoice.m_strCustomer.ToStr(),
                                    invoice.m_strNumber.ToStr(), IsoText(invoice.m_dateDue).ToStr(),
                                    iLate > 0 ? CInt(iLate).ToFmtStr().ToStr() : "-",
                                    Money(invoice.m_iOpen).ToStr()));
            debtOne.Add(CDate::GetDaysDiff(invoice.m_dateDue, m_date), invoice.m_iOpen);
            debtAll.Add(CDate::GetDaysDiff(invoice.m_dateDue, m_date), invoice.m_iOpen);
        }
        if (i + 1 == m_invoices.size() || m_invoices[i + 1]->m_strCustomer != invoice.m_strCustomer)
        {
            if (debtOne.m_iTotal > 0)
                AddDebt(debts, invoice.m_strCustomer, debtOne);
            debtOne = CDebt();
        }
    }
    AddDebt(debts, "All", debtAll);
    printf("Open on %s\n\n", IsoText(m_date).ToStr());
    printf("%-22s  %-7s  %-10s  %9s  %10s\n%s\n", "Customer", "Invoice", "Due", "Days late", "Open",
           open.ToStr());
    printf("%-22s  %13s  %13s  %13s  %13s  %13s\n%s", "Customer", "Not due", "1 to 30 days", "31 to 60 days",
           "Over 60 days", "Total", debts.ToStr());
}
} // namespace

int main(int argc, char** argv)
try
{
    const bool bHelp = argc == 2 && strcmp(argv[1], "--help") == 0;
    if (argc != 5)
        return fputs(s_szUsage, bHelp ? stdout : stderr) >= 0 && bHelp ? 0 : 2;
    CLedger ledger(ReadDate(argv[4]));
    ledger.ReadHolidays(argv[3]);
    ledger.ReadInvoices(argv[1]);
    ledger.ReadPayments(argv[2]);
    ledger.Print();
    return 0;
}
catch (const CException& e)
{
    fprintf(stderr, "ledger: %s\n", e.GetText());
    return e.GetCode() == s_iBadInput ? s_iBadInput : 3;
}
catch (const std::bad_alloc&)
{
    fputs("ledger: out of memory\n", stderr);
    return 3;
}
