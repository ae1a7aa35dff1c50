// What the tests share: seeing a string whole, saying what a call threw, random numbers.
#ifndef SUPPORT_H
#define SUPPORT_H

#include <bedplate/bedplate.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

using std::string;

inline std::size_t Unsigned(int iValue) { return static_cast<std::size_t>(iValue); }
inline int Signed(std::size_t iValue) { return static_cast<int>(iValue); }

/// Returns all bytes of a string, those behind a NUL included.
inline string Bytes(const CString& str) { return string(str.ToStr(), Unsigned(str.GetLength())); }

/// Describes a string for comparing and printing: its bytes and its capacity, and whether it is unsound.
inline string Look(const string& str, int iCapacity)
{
    return "'" + str + "' in " + std::to_string(iCapacity);
}
inline string Look(const CString& str)
{
    const bool bSound = str.ToStr()[str.GetLength()] == '\0' && str.IsEmpty() == (str.GetSize() == 0);
    return Look(Bytes(str), str.GetBufferSize()) + (bSound ? "" : ", unsound");
}

/// Describes a new string of that text, whose capacity is exact.
inline string FreshLook(const string& str) { return Look(str, str.empty() ? 8 : Signed(str.size()) + 1); }

/// Returns a string of any bytes, NULs included, in a buffer with room for iRoom characters.
inline CString& SetBytes(CString& str, const string& strBytes, int iRoom)
{
    strBytes.copy(str.GetBuffer(iRoom), strBytes.size());
    str.ReleaseBuffer(Signed(strBytes.size()));
    return str;
}

/// Returns "<code> <text>" of what Call() throws, or "nothing".
template <class TCall>
string Thrown(TCall Call)
try
{
    Call();
    return "nothing";
}
catch (const CException& e)
{
    return std::to_string(e.GetCode()) + " " + e.GetText();
}

/// The random numbers of the models, the same everywhere.
struct CRandom
{
    std::minstd_rand m_engine;
    int Between(int iFrom, int iTo) { return iFrom + Signed(m_engine() / 16 % Unsigned(iTo - iFrom + 1)); }
};

#endif
