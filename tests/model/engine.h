// The engine of the model tests. Bytes choose operations of a class family; each is done to an object of the library and
// to an independent model of it, and then everything that a caller can observe is compared. It serves three uses: seeded
// random runs in the suite, fuzzing, and failing every single allocation that an operation makes.
//
// A family is a class that holds objects and their models:
//     static constexpr char s_szName[]                          "strings"
//     static const SOperation<CFamily> s_aOperations[]          what may be done; or pairs of a name and a lambda
//     static constexpr int s_iStates                            how many states Prepare knows: fresh, filled, full, ...
//     void Prepare(int iState, CChoices& choices)               brings new objects and models into a state
//     void Check()                                              compares all objects with their models
// An operation draws its arguments from the choices, calls the library through CFault::Run, and changes the model to the
// result if the call succeeded, to the documented state if it threw.
#ifndef ENGINE_H
#define ENGINE_H

#include "../alloc_control.h"
#include <bedplate/bedplate.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iterator>
#include <optional>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <utility>
#include <vector>

using std::string;

inline int Length(const string& strText) { return static_cast<int>(strText.size()); }

// Values as the library prints them in lists.
template <class TNumber>
string TextOf(const TNumber& value)
{
    return std::to_string(value); // doubles as "%f"
}
inline string TextOf(bool bValue) { return bValue ? "Y" : "N"; }
inline string TextOf(const char* psz) { return psz; }
inline string TextOf(const CDate& date) { return date.ToStr(); }
inline string TextOf(CPtrArrayItem* pItem)
{
    char szText[32];
    snprintf(szText, sizeof szText, "%p", static_cast<void*>(pItem));
    return szText;
}

/// Returns a copy of a text of at most 32,767 bytes: to read behind its NUL ends the program. The next call overwrites it.
inline const char* AtTheEnd(std::string_view svText)
{
    static char* const s_pszEnd = []
    {
        constexpr std::size_t iSize = 1 << 15;
        void* pPages = mmap(nullptr, 2 * iSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        char* pszEnd = static_cast<char*>(pPages) + iSize;
        mprotect(pszEnd, iSize, PROT_NONE);
        return pszEnd - 1;
    }();
    char* pszCopy = s_pszEnd - svText.size();
    svText.copy(pszCopy, svText.size());
    return pszCopy;
}

/// A difference between the library and a model. It ends a run; what it says leads to the cause.
using CMismatch = std::runtime_error;

/// Throws a CMismatch unless the two are equal.
template <class TModel, class TLibrary>
void Same(const char* pszWhat, const TModel& expected, const TLibrary& found)
{
    if (expected == found)
        return;
    std::ostringstream text;
    text << pszWhat << ": expected [" << expected << "], found [" << found << "]";
    throw CMismatch(text.str());
}

/// Returns what Call returns; a difference that it finds is reported with the place.
template <class TCall>
auto Located(const string& strPlace, TCall Call)
try
{
    return Call();
}
catch (const std::exception& e)
{
    throw CMismatch(strPlace + ": " + e.what());
}

/// Takes the line number out of the text of an allocation failure, "at <unit>.cpp(<line> lines), (new ...".
inline string WithoutLine(string strThrown)
{
    const std::size_t iEnd = strThrown.find(" lines), (new "), iBegin = strThrown.find('(') + 1;
    return iEnd == string::npos ? strThrown : strThrown.erase(iBegin, iEnd - iBegin);
}

/// Numbers and texts drawn from bytes; the least ones when there are no bytes left.
class CChoices
{
public:
    CChoices(const std::uint8_t* pBytes, std::size_t iCount) : m_pNext(pBytes), m_pEnd(pBytes + iCount) {}

    bool IsAtEnd() const { return m_pNext == m_pEnd; }
    int Byte() { return IsAtEnd() ? 0 : *m_pNext++; }

    /// Returns a number from iFrom to iTo, which are less than 65536 apart.
    int Between(int iFrom, int iTo)
    {
        const int iCount = iTo - iFrom + 1;
        return iFrom + (iCount > 256 ? Byte() * 256 + Byte() : Byte()) % iCount;
    }

    /// Returns any int; those where things tend to go wrong more often than others.
    int AnyInt()
    {
        static constexpr int s_aEdges[] = {0, -1, 1, 8, INT_MIN, INT_MIN + 1, INT_MAX, INT_MAX - 1, 1 << 30};
        const int iKind = Byte(), iBits = (Byte() << 23) + (Byte() << 15) + (Byte() << 7) + Byte() / 2;
        return iKind < 64 ? s_aEdges[iKind % 9] : (iKind % 2 == 0 ? iBits : ~iBits) >> iKind / 2 % 32;
    }

    /// Returns a length beside one at which the library goes another way: by words, by the C library, to memory of its own.
    int LengthAtAnEdge()
    {
        static constexpr int s_aiEdges[] = {8, 16, 64, 512, 1024, 4096};
        return s_aiEdges[Byte() % 6] + Between(-2, 2);
    }

    /// Returns a text of at most iMax bytes without NULs, of few different ones so that they recur.
    string Text(int iMax)
    {
        string strText(static_cast<std::size_t>(Between(0, iMax)), 'a');
        for (char& ch : strText)
            ch = "abcA, %\t\n\r0\x80\xe4\xff"[Byte() % 14];
        return strText;
    }

private:
    const std::uint8_t* m_pNext;
    const std::uint8_t* m_pEnd;
};

/// Which allocation of one operation fails: none, one, or one and all later ones.
class CFault
{
public:
    explicit CFault(int iNth = 0, bool bOnwards = false) : m_iNth(iNth), m_bOnwards(bOnwards) {}
    int GetNth() const { return m_iNth; }

    /// Runs Call with the allocation failing; returns "<code> <text>" of the CException that it threw, or "".
    template <class TCall>
    string Run(TCall Call)
    {
        CException error("", 1);
        CFailingAllocation failing(m_iNth, m_bOnwards);
        try
        {
            Call();
        }
        catch (const CException& e)
        {
            error = e; // a record that needs no memory
        }
        m_bHit = failing.Disarm() > 0;
        return error.GetCode() == 1 ? "" : std::to_string(error.GetCode()) + " " + error.GetText();
    }

    /// Tell whether an allocation of the last Run failed on purpose, and whether the iNth one of a Run fails.
    bool WasHit() const { return m_bHit; }
    bool Fails(int iNth) const { return m_iNth > 0 && (iNth == m_iNth || (m_bOnwards && iNth > m_iNth)); }

private:
    int m_iNth;
    bool m_bOnwards, m_bHit = false;
};

/// Returns whether an operation failed, which it must exactly if an allocation of it did, and in one of some ways with
/// bars between them: "<code> <text>", or "-11 <unit>.cpp <expression>" for a text with any line number.
inline bool Failed(const CFault& fault, const string& strThrown, const string& strWays)
{
    char szUnit[32], szWhat[32];
    const char* pszFormat = "-11 at %31[^(](%*d lines), (new %31[^)]) failed(std::bad_alloc)";
    const bool bSited     = sscanf(strThrown.c_str(), pszFormat, szUnit, szWhat) == 2;
    const string strWay   = bSited ? string("-11 ") + szUnit + " " + szWhat : strThrown;
    if (fault.WasHit() == strThrown.empty() || ("|" + strWays + "|").find("|" + strWay + "|") == string::npos)
        Same("failure", fault.WasHit() ? strWays : "", strThrown);
    return fault.WasHit();
}

/// How strings, and arrays of them or of pointers, fail.
inline const string s_strWays =
    "-11 cstring.cpp char[m_iBufferSize]|-11 cstring.cpp char[iLen]|-11 cstring.cpp char[m_iSize+1]|"
    "-11 str_array.cpp CString|-11 str_array.cpp CString*[m_iBufferSize]|-11 str_array.cpp CString*[iNewMax]|"
    "-11 str_array.cpp CString*[m_iSize]|0 CPtrArray::Add : Out of memory|"
    "0 CPtrArray::GrowBuffer : Out of memory|0 CPtrArray::InsertAt : Out of memory";

/// Compares the text that a call makes, unless it fails.
template <class TCall>
void SameText(CFault& fault, const string& strExpected, TCall Call)
{
    char szText[500]       = "";
    const string strThrown = fault.Run([&] { strncat(szText, Call().ToStr(), sizeof szText - 1); });
    Same("text", Failed(fault, strThrown, s_strWays) ? "" : strExpected, szText);
}

template <class TFamily>
struct SOperation
{
    const char* szName;
    std::function<void(TFamily&, CChoices&, CFault&)> Do; // a lambda, or a member without the first argument
};

/// Makes a call that has no result one that returns 0, and leaves others as they are.
template <class TCall>
auto WithResult(TCall Call)
{
    return [Call](auto& object, auto& arguments)
    {
        if constexpr (!std::is_void_v<decltype(Call(object, arguments))>)
            return Call(object, arguments);
        else
        {
            Call(object, arguments);
            return 0;
        }
    };
}

/// Does one operation to a family and compares everything.
template <class TFamily, class TOperation>
void DoStep(TFamily& family, const TOperation& operation, CChoices& choices, CFault& fault)
{
    Located(operation.szName,
            [&]
            {
                std::invoke(operation.Do, family, choices, fault);
                family.Check();
            });
}

/// Lets the bytes choose operations, arguments and failing allocations until they are used up; returns the number of
/// operations.
template <class TFamily, int iStates = TFamily::s_iStates>
int RunBytes(const std::uint8_t* pBytes, std::size_t iCount)
{
    int iSteps = 0;
    CChoices choices(pBytes, iCount);
    TFamily family;
    family.Prepare(choices.Byte() % iStates, choices);
    for (; !choices.IsAtEnd(); ++iSteps)
    {
        const std::size_t iOperation = std::size_t(choices.Byte()) % std::size(TFamily::s_aOperations);
        const int iFault             = choices.Byte(); // most operations get what memory they ask for
        CFault fault(iFault < 24 ? 1 + iFault / 4 : 0, iFault % 2 == 1);
        DoStep(family, TFamily::s_aOperations[iOperation], choices, fault);
    }
    return iSteps;
}

/// The same for several families.
template <class TFamilies, class = decltype(TFamilies::RunOne)>
int RunBytes(const std::uint8_t* pBytes, std::size_t iCount)
{
    return TFamilies::RunOne(pBytes, iCount);
}

/// Returns bytes that depend on the seed alone.
inline std::vector<std::uint8_t> SeededBytes(unsigned uSeed, std::size_t iCount)
{
    std::vector<std::uint8_t> aBytes(iCount);
    std::minstd_rand random(uSeed + 1);
    std::generate(aBytes.begin(), aBytes.end(), [&] { return static_cast<std::uint8_t>(random() / 64); });
    return aBytes;
}

/// Runs at least iSteps operations, in runs of some hundred; returns how many.
template <class TFamily>
int RunSeeds(unsigned uSeed, int iSteps)
{
    int iDone = 0;
    for (; iDone < iSteps; ++uSeed)
    {
        const auto aBytes = SeededBytes(uSeed, 2000);
        iDone +=
            Located("seed " + std::to_string(uSeed), [&] { return RunBytes<TFamily>(&aBytes[0], 2000); });
    }
    return iDone;
}

/// Does one operation to a prepared family with an allocation failing, and once more with memory to be had. Returns
/// whether the operation made that allocation.
template <class TFamily, class TOperation>
bool RunFault(const TOperation& operation, int iState, unsigned uSeed, CFault fault)
{
    const auto aBytes = SeededBytes(uSeed, 200);
    CChoices choices(aBytes.data(), aBytes.size());
    CFault none;
    TFamily family;
    family.Prepare(iState, choices);
    Located("state " + std::to_string(iState) + ", allocation " + std::to_string(fault.GetNth()),
            [&]
            {
                DoStep(family, operation, choices, fault);
                DoStep(family, operation, choices, none);
            });
    return fault.WasHit();
}

/// Fails the 1st, 2nd, ... allocation of every operation in every state, each alone and with all later ones, until the
/// operation makes no more; uSeeds sets of arguments each. Returns how many allocations failed.
template <class TFamily, int iStates = TFamily::s_iStates>
int RunFaults(unsigned uSeeds)
{
    int iFailed = 0;
    for (const auto& operation : TFamily::s_aOperations)
        for (int iState = 0; iState < iStates; ++iState)
            for (unsigned uCase = 0; uCase < 2 * uSeeds; ++uCase)
                for (int i = 1; RunFault<TFamily>(operation, iState, uCase / 2, CFault(i, uCase % 2 == 1));
                     ++i)
                    ++iFailed;
    return iFailed;
}

/// Several families that share a name; the first byte chooses one of them.
template <class... TFamilies>
struct SFamilies
{
    static int RunOne(const std::uint8_t* pBytes, std::size_t iCount)
    {
        static constexpr int (*s_aRuns[])(const std::uint8_t*, std::size_t) = {RunBytes<TFamilies>...};
        return iCount == 0 ? 0 : s_aRuns[*pBytes % sizeof...(TFamilies)](pBytes + 1, iCount - 1);
    }
    static int RunAllFaults(unsigned uSeeds) { return (RunFaults<TFamilies>(uSeeds) + ...); }
};

template <class TFamilies, class = decltype(TFamilies::RunAllFaults)>
int RunFaults(unsigned uSeeds)
{
    return TFamilies::RunAllFaults(uSeeds);
}

#endif
