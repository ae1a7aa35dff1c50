// A string and a model of it, std::string plus a capacity, go through the same random edits. NULs get into both, so
// the model knows which edits go by length and which by terminator.

#include "support.h"

namespace
{
/// Has the operations of CString that are edited with. Its arguments are copies: where they come from cannot matter.
struct SModel
{
    string strBytes;
    int iCapacity = 8;

    const char* ToStr() const { return strBytes.c_str(); }
    int GetLength() const { return Signed(strBytes.size()); }
    void Clear() { *this = SModel(); }
    void ReleaseBuffer(int iCount) { strBytes.resize(iCount < 0 ? strlen(ToStr()) : Unsigned(iCount)); }
    int Remove(char chOld) { return NaiveReplace(strBytes, {chOld}, ""); }
    int Replace(char ch, char chNew) { return ch == chNew ? 0 : NaiveReplace(strBytes, {ch}, {chNew}); }
    int Insert(int iIndex, char chNew) { return Insert(iIndex, string(1, chNew)); }

    /// Takes over a text that goes into the present buffer if it fits.
    int Fit(const string& strNew)
    {
        *this = {strNew, std::max(iCapacity, Signed(strNew.size()) + 1)};
        return GetLength();
    }

    int Set(string strNew)
    {
        if (strNew.empty())
            Clear();
        return Fit(strNew);
    }

    char* GetBuffer(int iCount)
    {
        *this = {string(Unsigned(iCount), '\0'), iCount + 1};
        return &strBytes[0];
    }

    void operator+=(string strNew)
    {
        if (!strNew.empty())
            *this = {strBytes + strNew, GetLength() + Signed(strNew.size()) + 1};
    }

    int Insert(int iIndex, string strNew)
    {
        return Fit(string(strBytes).insert(Unsigned(std::clamp(iIndex, 0, GetLength())), strNew));
    }

    int Delete(int iIndex, int iCount)
    {
        strBytes.erase(Unsigned(std::clamp(iIndex, 0, GetLength())), Unsigned(std::max(iCount, 0)));
        return GetLength();
    }

    int Replace(string strOld, string strNew)
    {
        string strText   = ToStr();
        const int iCount = NaiveReplace(strText, strOld, strNew);
        if (iCount > 0)
            *this = {strText, Signed(strText.size()) + 1};
        return iCount;
    }

    void Trim(string strSet)
    {
        const string strHead = NaiveTrim(ToStr(), strSet, 1), strBoth = NaiveTrim(strHead, strSet);
        strBytes = strBoth != strHead ? strBoth : strHead + strBytes.substr(strlen(ToStr()));
    }
};

string Look(const SModel& model) { return ::Look(model.strBytes, model.iCapacity); }

/// The edits of a string or a model, each with an index, a count and a text; each returns what its operation does.
template <class T>
constexpr int (*s_aEdits[])(T& s, int i, int n, const char* psz) = {
    [](T& s, int, int, const char* psz) { return s.Set(psz); },
    [](T& s, int i, int, const char*) { return s.Set(s.ToStr() + std::min(i, s.GetLength())); },
    [](T& s, int, int, const char*) { return s.Clear(), 0; },
    [](T& s, int, int n, const char* psz)
    { return strcpy(s.GetBuffer(n + 20), psz), s.ReleaseBuffer(n - 1), 0; },
    [](T& s, int i, int, const char*) { return s.ReleaseBuffer(std::min(i - 1, s.GetLength())), 0; },
    [](T& s, int, int, const char* psz) { return s += psz, 0; },
    [](T& s, int, int, const char* psz) { return s += s.GetLength() < 600 ? s.ToStr() : psz, 0; },
    [](T& s, int i, int, const char* psz) { return s.Insert(i - 2, psz); },
    [](T& s, int i, int, const char* psz) { return s.Insert(i - 2, *psz); }, // the NUL of an empty text too
    [](T& s, int i, int n, const char*) { return s.Delete(i - 2, n - 1); },
    [](T& s, int, int, const char* psz) { return s.Remove(*psz); },
    [](T& s, int, int, const char* psz) { return s.Replace(*psz, 'b'); },
    [](T& s, int, int, const char* psz) { return s.Replace("ab", psz); },
    [](T& s, int, int n, const char* psz) { return s.Replace(n < 5 ? " " : "a", psz); },
    [](T& s, int, int, const char* psz) { return s.Trim(psz), 0; },
};

TEST(StringModel, RandomEditsAgreeInBytesCapacityAndResult)
{
    CRandom random;
    CString str;
    SModel model;
    for (int iStep = 0; iStep < 20000; ++iStep)
    {
        const int iEdit = random.Between(0, 14), i = random.Between(0, model.GetLength() + 4);
        const int iCount     = random.Between(0, 9);
        const string strText = random.Text(10);
        SCOPED_TRACE(Look(model) + ": edit " + std::to_string(iEdit) + " with " + std::to_string(i) + ", " +
                     std::to_string(iCount) + ", " + strText);
        ASSERT_EQ(s_aEdits<SModel>[iEdit](model, i, iCount, strText.c_str()),
                  s_aEdits<CString>[iEdit](str, i, iCount, strText.c_str()));
        ASSERT_EQ(Look(model), Look(str));
    }
}

TEST(StringModel, InsertTakesItsOwnTextAtEveryPlace)
{
    for (int iRoom : {6, 8, 11, 12, 40}) // full, and with room for some or all of the texts
        for (int iFrom = 0; iFrom <= 6; ++iFrom)
            for (int iIndex = -1; iIndex <= 7; ++iIndex)
            {
                SModel model{"abcdef", iRoom + 1};
                CString str;
                const char* pszOwn = SetBytes(str, "abcdef", iRoom).ToStr() + iFrom;
                EXPECT_EQ(model.Insert(iIndex, model.ToStr() + iFrom), str.Insert(iIndex, pszOwn));
                EXPECT_EQ(Look(model), Look(str)) << iRoom << ", " << iFrom << ", " << iIndex;
            }
}
} // namespace
