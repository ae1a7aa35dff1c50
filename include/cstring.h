// CString: an owned, NUL-terminated text with a length and a capacity, and CFormat, which prints one.
//
//     CString strName("Ada");
//     strName += " Lovelace";
//     CString strLine = CFormat("%s has %d letters", strName.ToStr(), strName.GetLength());
//     // Ada Lovelace has 12 letters
//
// Text is bytes in no particular encoding. Positions count from 0, searches return -1 for "not found". Classifying
// characters, changing their case and reading numbers follow the C library's current locale.
//
// Embedded NULs. A NUL inside the length arises only through ReleaseBuffer with a count, Insert or Replace of
// characters. Operations then go either by length (all GetLength() bytes) or by terminator (up to the first NUL);
// each says which. What copies a string, assigns it or appends it goes by terminator; so does a CString that is passed where
// a text is meant.
//
// Capacity. The buffer holds the text and its NUL, and is never larger than the last operation that replaced it
// needed. Behind a buffer of more than 1,024 bytes there is up to one eighth more memory, which no operation counts,
// so that appending little by little to a long text does not copy it each time:
//
//     construction from a text of length L > 0       L + 1
//     default construction, Empty, Clear, Set("")    8, always a new buffer
//     Set, operator=                                 L + 1, or the present buffer if the text fits
//     GetBuffer(n)                                   n + 1, always a new buffer
//     operator+=, ConcatInPlace                      exact, a new buffer up to 1,024 bytes
//     Insert                                         exact, or the present buffer if the text fits
//     Replace of texts                               exact, always a new buffer if anything is replaced
//     Format of L characters                         513, 1025, 1537, ...: the first that is at least L + 2
//     Left, Right, Mid, +, Join, Repr of arrays      L + 1, or 8 for the empty text
//     CFormat                                        L + 1, at least 8
//
// Pointers from ToStr() and GetBuffer() die with the string and whenever its buffer is replaced; the operations
// that may do so say "Pointers die". A text argument may point into the string's own buffer everywhere: it counts
// as if it had been copied first.
//
// When memory runs out, an operation throws code -11,
// "at cstring.cpp(<line> lines), (new char[<size>]) failed(std::bad_alloc)", unless it says that it does not
// allocate. MakeEmptyString, Empty, Clear, Set, operator=, GetBuffer and Format have then given up their buffer: the
// string reads as empty, GetBufferSize() tells the size that was asked for, and any of them brings it back to life.
// After all other operations the string is as it was. A size beyond INT_MAX counts as such a failure, with nothing
// changed.
//
// Several threads may read one string at a time, by its const operations; one that changes it must be alone with it.
// Distinct strings share nothing that is ever written.
#ifndef BEDPLATE_CSTRING_H
#define BEDPLATE_CSTRING_H

#include "api.h"

class BEDPLATE_API CString
{
public:
    // ---- Life ---------------------------------------------------------------------------------------------

    /// Makes the empty string. Allocates 8 bytes.
    CString();

    /// Makes a copy of pszText; a null text counts as empty.
    ///   Example   CString("abc") -> length 3, capacity 4
    CString(const char* pszText);

    /// Makes a copy of strOther's text up to its first NUL.
    CString(const CString& strOther);

    /// Takes over strOther's buffer as it is, and with it the text, the capacity and all pointers. strOther is left
    /// without a buffer: it reads as empty, and Set, operator=, Empty, Clear and GetBuffer bring it back to life.
    BEDPLATE_INLINE CString(CString&& strOther) noexcept
        : m_pszData(strOther.m_pszData), m_iSize(strOther.m_iSize), m_iBufferSize(strOther.m_iBufferSize)
    {
        strOther.m_pszData     = nullptr;
        strOther.m_iSize       = 0;
        strOther.m_iBufferSize = s_iEmptySize;
    }

    /// Releases the buffer. All pointers into it die.
    BEDPLATE_INLINE ~CString() { delete[] m_pszData; }

    /// Set(pszText), then returns this string.
    CString& operator=(const char* pszText);

    /// Set(strOther), then returns this string.
    CString& operator=(const CString& strOther);

    /// As the assignment of a copy, which it ends like in all respects: where that would take a new buffer, and
    /// strOther's has the capacity that this one would have, it is taken over, and strOther is left without one.
    ///   Example   str = strA + strB; takes the sum's buffer over
    CString& operator=(CString&& strOther);

    /// Replaces the text by pszText; a null text counts as empty. A text that fits keeps the present buffer, the
    /// rest of which becomes zero; the empty text always takes a new buffer of 8 bytes.
    ///   Returns   the new length.
    ///   Throws    code -11, "char[m_iBufferSize]"; the string is then without buffer and empty.
    ///   Cost      O(capacity); allocates unless the text fits and is not empty.
    ///   Pointers  die unless the buffer is kept.
    ///   Example   "hello": Set("hi") -> 2, capacity still 6
    int Set(const char* pszText);

    /// Set(strOther.ToStr()): copies up to strOther's first NUL.
    int Set(const CString& strOther);

    /// Does the work of Empty(), which callers use.
    void MakeEmptyString();

    /// Makes the string empty, with a new buffer of 8 zero bytes.
    ///   Throws    code -11, "char[m_iBufferSize]"; the string is then without buffer and empty.
    ///   Cost      O(1); always allocates.
    ///   Pointers  die.
    void Empty();
    void Clear();

    /// Hands out a new buffer of iCount + 1 zero bytes for the caller to write up to iCount characters into. The
    /// old text is gone and the length is 0 until ReleaseBuffer. A negative iCount counts as 0.
    ///   Returns   the buffer.
    ///   Throws    code -11, "char[m_iBufferSize]"; the string is then without buffer and empty.
    ///   Cost      O(iCount); always allocates, above 1,024 bytes up to one eighth more than asked for. Memory for 400
    ///             MB may be missing though 400 MB are free.
    ///   Pointers  die.
    ///   Example   strcpy(s.GetBuffer(10), "abc"); s.ReleaseBuffer(-1); -> "abc", capacity 11
    char* GetBuffer(int iCount);

    /// Sets the length to iCount, and a NUL there, after the caller wrote into the buffer; -1 takes the length of
    /// the NUL-terminated text in it. Does not allocate.
    ///   Throws    code 0, "CString::ReleaseBuffer - out of index", unless -1 <= iCount < GetBufferSize(), for
    ///             -1 when the buffer holds no NUL, and for iCount > 0 on a string without buffer; the string is
    ///             unchanged.
    ///   Example   a buffer holding "abc": ReleaseBuffer(2) -> "ab"
    void ReleaseBuffer(int iCount);

    // ---- Reading ------------------------------------------------------------------------------------------

    /// Returns the length in bytes, 0 for a string without buffer.
    BEDPLATE_INLINE int GetLength() const { return m_iSize; }
    BEDPLATE_INLINE int GetSize() const { return m_iSize; }

    /// Returns the capacity in bytes, the NUL included; after a failed allocation the size that was asked for.
    BEDPLATE_INLINE int GetBufferSize() const { return m_iBufferSize; }

    /// Tells whether the length is 0.
    BEDPLATE_INLINE bool IsEmpty() const { return m_iSize <= 0; }

    /// Returns the NUL-terminated text, never null. It is not to be written through, and dies as said above.
    BEDPLATE_INLINE const char* ToStr() const { return m_pszData != nullptr ? m_pszData : EmptyText(); }

    /// Returns the byte at iIndex, by length and by value.
    ///   Throws    code 0, "CString::operator[] - index overflow", unless 0 <= iIndex < GetLength().
    BEDPLATE_INLINE char operator[](int iIndex) const
    {
        if (iIndex < 0 || iIndex >= m_iSize)
            ThrowIndexOverflow();
        return m_pszData[iIndex];
    }

    /// Returns "<CStr: text>", the text going by terminator, or "<CStr: unset>" when the length is 0.
    CString Repr() const;

    // ---- Comparing: by terminator, byte by byte unless said; none allocates -----------------------------------

    /// Orders this text against pszText as strcmp does.
    ///   Returns   below, equal to or above 0; only the sign has a meaning.
    ///   Throws    code 0, "CString::Compare - invalid string", for a null text. The comparison operators below
    ///             are defined by this operation, and throw the same.
    ///   Example   "abc": Compare("abd") -> below 0
    BEDPLATE_INLINE int Compare(const char* pszText) const
    {
        if (pszText == nullptr)
            ThrowInvalidString("CString::Compare - invalid string");
        return __builtin_strcmp(ToStr(), pszText);
    }
    int Compare(const CString& strText) const { return Compare(strText.ToStr()); }

    /// As Compare, with upper and lower case alike in the current locale (strcasecmp).
    ///   Throws    code 0, "CString::CompareNoCase - invalid string", for a null text.
    BEDPLATE_INLINE int CompareNoCase(const char* pszText) const
    {
        if (pszText == nullptr)
            ThrowInvalidString("CString::CompareNoCase - invalid string");
        return __builtin_strcasecmp(ToStr(), pszText);
    }
    int CompareNoCase(const CString& strText) const { return CompareNoCase(strText.ToStr()); }

    /// Tells whether the text, by length, begins with pszText: always with the empty text, never with a null one.
    bool StartsWith(const char* pszText) const;
    bool StartsWith(const CString& strText) const { return StartsWith(strText.ToStr()); }

    /// Tells whether the text, by length, ends with pszText: always with the empty text, never with a null one.
    bool EndsWith(const char* pszText) const;
    bool EndsWith(const CString& strText) const { return EndsWith(strText.ToStr()); }

    // ---- Searching: by terminator, from a start given by length; none allocates -------------------------------

    /// Finds the first chWanted at or after iStart (a negative start counts as 0).
    ///   Returns   its position, or -1; -1 too when iStart >= GetLength(). NUL is found at the terminator.
    ///   Example   "abcabc": Find('c', 3) -> 5
    BEDPLATE_INLINE int Find(char chWanted, int iStart = 0) const
    {
        if (iStart < 0)
            iStart = 0;
        return iStart < m_iSize ? PositionOf(__builtin_strchr(m_pszData + iStart, chWanted)) : -1;
    }

    /// Finds the first occurrence of pszWanted at or after iStart (a negative start counts as 0).
    ///   Returns   its position, or -1; -1 too for a null or empty text, and when iStart > GetLength().
    ///   Example   "abcabc": Find("ca") -> 2
    int Find(const char* pszWanted, int iStart = 0) const;
    int Find(const CString& strWanted, int iStart = 0) const { return Find(strWanted.ToStr(), iStart); }

    /// Finds the last chWanted. NUL is found at the terminator.
    ///   Returns   its position, or -1.
    BEDPLATE_INLINE int ReverseFind(char chWanted) const
    {
        if (m_pszData == nullptr)
            return chWanted == '\0' ? 0 : -1;
        return PositionOf(__builtin_strrchr(m_pszData, chWanted));
    }

    /// Finds the first character that occurs in pszSet, which is only read.
    ///   Returns   its position, or -1; -1 too for a null or empty set.
    ///   Example   "abcabc": FindOneOf("xc") -> 2
    BEDPLATE_INLINE int FindOneOf(char* pszSet) const
    {
        if (pszSet == nullptr || m_pszData == nullptr)
            return -1;
        return PositionOf(__builtin_strpbrk(m_pszData, pszSet));
    }
    template <class TChar>
    int FindOneOf(TChar* pszSet, bedplate_private::ConstCharOnly<TChar> = 0) const
    {
        return FindOneOf(const_cast<char*>(pszSet));
    }
    int FindOneOf(const CString& strSet) const { return FindOneOf(strSet.ToStr()); }

    // ---- Extracting and converting ------------------------------------------------------------------------

    /// Returns the first iCount characters, or all when there are fewer; a negative count counts as 0. The range
    /// goes by length; a NUL inside it ends the result.
    ///   Example   "abcdef": Left(2) -> "ab"
    CString Left(int iCount) const;

    /// As Left, for the last iCount characters.
    ///   Example   "abcdef": Right(2) -> "ef"
    CString Right(int iCount) const;

    /// Returns iCount characters from iStart on, or as many as there are; -1 reaches to the end, any other negative
    /// count gives the empty string. A negative iStart counts as 0; one beyond the end gives the empty string. A NUL
    /// inside the range ends the result.
    ///   Example   "abcdef": Mid(2, 2) -> "cd"
    CString Mid(int iStart, int iCount = -1) const;

    /// Reads the text as a decimal number as strtol does: white space, a sign, digits up to the first other
    /// character.
    ///   Returns   the number, 0 without digits, INT_MIN or INT_MAX when it lies beyond them.
    ///   Example   " 42x" -> 42
    int ToInt() const;

    /// As ToInt, for numbers of 64 bits.
    ///   Example   "3000000000 or so" -> 3000000000
    long long ToInt64() const;

    /// Reads the text as strtod does.
    ///   Returns   the number, 0.0 when there is none.
    ///   Example   "1.5e3" -> 1500.0
    double ToDbl() const;

    /// Reads a text that is a decimal number and nothing else: digits, perhaps with a sign before them.
    ///   Returns   whether it is one, and an int holds it. Only then is it stored in *piValue, which may be null.
    ///   Example   "42" -> true; "42x", " 42", "" and "2147483648" -> false
    bool ParseInt(int* piValue) const;

    /// As ParseInt, for numbers of 64 bits.
    bool ParseInt64(long long* piValue) const;
    template <class TLong>
    bool ParseInt64(TLong* piValue, bedplate_private::LongOf64Bits<TLong> = 0) const
    {
        long long iValue;
        if (!ParseInt64(&iValue))
            return false;
        if (piValue != nullptr)
            *piValue = iValue;
        return true;
    }

    /// Reads a text that is a decimal number and nothing else: digits, perhaps with a sign before them, the locale's
    /// decimal point among them, and a power of ten behind an "e".
    ///   Returns   whether it is one, and not too large for a double. Only then is it stored in *pdValue, which may be
    ///             null. One that is too small for a double counts as the nearest there is, perhaps 0.0.
    ///   Example   "1.5e3" -> true; "1.5 ", "inf", "0x10" and "1e999" -> false
    bool ParseDbl(double* pdValue) const;

    // ---- Editing in place ---------------------------------------------------------------------------------

    /// Inserts chNew before position iIndex, which is limited to 0..GetLength(). By length.
    ///   Returns   the new length.
    ///   Throws    code -11, "char[m_iBufferSize]"; the string is unchanged.
    ///   Cost      O(length); allocates only when the buffer is full.
    ///   Pointers  die when the buffer grows.
    ///   Example   "abc": Insert(1, 'X') -> 4, "aXbc"
    int Insert(int iIndex, char chNew);

    /// As above, for a text; a null or empty one changes nothing.
    ///   Example   "abc": Insert(99, "XY") -> 5, "abcXY"
    int Insert(int iIndex, const char* pszNew);
    int Insert(int iIndex, const CString& strNew) { return Insert(iIndex, strNew.ToStr()); }

    /// Removes iCount characters from iIndex on, or as many as there are. By length. A negative iIndex counts as 0;
    /// a count of 0 or less, or an iIndex at or beyond the end, changes nothing. Does not allocate.
    ///   Returns   the new length.
    ///   Example   "abcdef": Delete(1, 2) -> 4, "adef"
    int Delete(int iIndex, int iCount);

    /// Removes every chOld. By length; does not allocate.
    ///   Returns   how many there were.
    ///   Example   "hello": Remove('l') -> 2, "heo"
    int Remove(char chOld);

    /// Replaces every chOld by chNew. By length; does not allocate.
    ///   Returns   how many there were, 0 when the two are equal.
    ///   Example   "banana": Replace('a', 'b') -> 3, "bbnbnb"
    int Replace(char chOld, char chNew);

    /// Replaces every occurrence of pszOld, left to right and without overlap, by pszNew; a null pszNew deletes
    /// them. What is put in is not searched again. By terminator: when something is replaced, the text ends at its
    /// first NUL. A null or empty pszOld changes nothing.
    ///   Returns   how many there were.
    ///   Throws    code -11, "char[m_iBufferSize]"; the string is unchanged.
    ///   Cost      O(length + result); allocates when something is replaced.
    ///   Pointers  die when something is replaced.
    ///   Example   "aaa": Replace("aa", "b") -> 1, "ba"
    int Replace(const char* pszOld, const char* pszNew);
    int Replace(const CString& strOld, const CString& strNew)
    {
        return Replace(strOld.ToStr(), strNew.ToStr());
    }
    int Replace(const CString& strOld, const char* pszNew) { return Replace(strOld.ToStr(), pszNew); }
    int Replace(const char* pszOld, const CString& strNew) { return Replace(pszOld, strNew.ToStr()); }

    /// Turns every byte into upper case (toupper). By length; does not allocate.
    void MakeUpper();

    /// Turns every byte into lower case (tolower). By length; does not allocate.
    void MakeLower();

    // The trims: they remove, at the start, at the end, or at both, white space (isspace), one character, or any
    // character of a set. They go by terminator, which is never removed itself, and do not allocate. A null or empty
    // set removes nothing; so does NUL.
    //
    //     "  a b  ": Trim() -> "a b"; "abxyx": TrimRight("xy") -> "ab"

    /// Removes white space at the start.
    void TrimLeft();
    /// Removes every chOld at the start.
    void TrimLeft(char chOld);
    /// Removes characters of pszSet at the start.
    void TrimLeft(const char* pszSet);
    void TrimLeft(const CString& strSet) { TrimLeft(strSet.ToStr()); }
    /// Removes white space at the end.
    void TrimRight();
    /// Removes every chOld at the end.
    void TrimRight(char chOld);
    /// Removes characters of pszSet at the end.
    void TrimRight(const char* pszSet);
    void TrimRight(const CString& strSet) { TrimRight(strSet.ToStr()); }
    /// Removes white space at both ends.
    void Trim();
    /// Removes every chOld at both ends.
    void Trim(char chOld);
    /// Removes characters of pszSet at both ends.
    void Trim(const char* pszSet);
    void Trim(const CString& strSet) { Trim(strSet.ToStr()); }

    // ---- Formatting and appending -------------------------------------------------------------------------

    /// Replaces the text by what vsnprintf makes of the format and the arguments, which may point into this string.
    /// The text ends at the first NUL that was printed. Objects do not compile; their texts do, such as a string's ToStr().
    ///   Returns   vsnprintf's result: the length, printed NULs included; -1 for a format that it rejects (a result
    ///             beyond INT_MAX among them) and 0 for a null one, the string then being empty.
    ///   Throws    code -11, "char[m_iBufferSize]"; the string is then without buffer and empty, or unchanged if no int
    ///             holds the buffer's size.
    ///   Cost      O(result); always allocates.
    ///   Pointers  die.
    ///   Example   Format("%d-%s", 7, "x") -> 3, "7-x", capacity 513
    int Format(const char* pszFormat, ...) BEDPLATE_PRINTF(2, 3);
    template <class... TArguments, class = bedplate_private::AnyObject<TArguments...>>
    int Format(const char* pszFormat, const TArguments&... arguments) = delete;

    /// Appends, after the whole length, what Format would make of the format and the arguments, which may point into this
    /// string.
    ///   Returns   as Format; the string is unchanged for a rejected or null format.
    ///   Throws    code -11, "char[m_iBufferSize]" or "char[iLen]"; the string is unchanged.
    ///   Cost      as ConcatInPlace; results of 1,024 characters and more are printed elsewhere first.
    ///   Pointers  die.
    ///   Example   "a": AppendFormat("%d-%s", 7, "x") -> 3, "a7-x", capacity 5
    int AppendFormat(const char* pszFormat, ...) BEDPLATE_PRINTF(2, 3);
    template <class... TArguments, class = bedplate_private::AnyObject<TArguments...>>
    int AppendFormat(const char* pszFormat, const TArguments&... arguments) = delete;

    /// Appends pszText, after the whole length; a null or empty text changes nothing.
    ///   Throws    code -11, "char[m_iBufferSize]"; the string is unchanged.
    ///   Cost      O(length + text), and a new buffer; O(text) where the memory behind a buffer of more than 1,024 bytes
    ///             has room.
    ///   Pointers  die.
    ///   Example   "abc": ConcatInPlace("de") -> "abcde", capacity 6
    BEDPLATE_INLINE void ConcatInPlace(const char* pszText)
    {
        if (pszText != nullptr)
            Append(pszText, __builtin_strlen(pszText)); // which the compiler knows of a literal
    }

    /// ConcatInPlace(pszText), then returns this string.
    BEDPLATE_INLINE CString& operator+=(const char* pszText)
    {
        ConcatInPlace(pszText);
        return *this;
    }

    /// Appends strOther up to its first NUL, then returns this string. s += s doubles s.
    BEDPLATE_INLINE CString& operator+=(const CString& strOther)
    {
        ConcatInPlace(strOther.ToStr());
        return *this;
    }

    /// Appends a character, then returns this string; a NUL appends nothing. For a char alone: numbers are no characters.
    ///   Example   "ab" += 'c' -> "abc"
    template <class TChar>
    bedplate_private::CharOnly<TChar, CString&> operator+=(TChar chNew)
    {
        const char szNew[2] = {chNew, '\0'};
        ConcatInPlace(szNew);
        return *this;
    }

    /// Returns a copy of this string, made by terminator, with a text appended; a null text counts as empty.
    CString operator+(const char* pszText);
    CString operator+(const char* pszText) const;
    CString operator+(const CString& strOther);
    CString operator+(const CString& strOther) const;

    /// Returns a copy of this string, made by terminator, with a character appended; a NUL appends nothing.
    template <class TChar>
    bedplate_private::CharOnly<TChar, CString> operator+(TChar chNew) const
    {
        const char szNew[2] = {chNew, '\0'};
        return *this + szNew;
    }

    // ---- Splitting ----------------------------------------------------------------------------------------

    /// Cuts the text, up to its first NUL, at every pszSep and stores the pieces in *pArray, whose old elements are
    /// gone. bTrim trims white space off every piece. Every piece before a separator is stored, also an
    /// empty one; the piece after the last separator is stored too, unless bTrim is given and it is empty. A null or
    /// empty separator never matches. Nothing happens when pArray is null. *pArray may hold this very string and
    /// the separator.
    ///   Throws    code -11, "char[m_iSize+1]", and *pArray is empty: no memory to copy the text and the separator; or
    ///             what CStrArray::Add throws, and *pArray holds the pieces stored before, followed by an empty element
    ///             if that was the text that could not be set.
    ///   Cost      O(length); one copy of the text and of the separator, and the pieces.
    ///   Pointers  into *pArray's elements die.
    ///   Example   "a::b:::c": Split("::", &arr) -> {"a", "b", ":c"}; "a,": Split(",", &arr) -> {"a", ""}
    void Split(const char* pszSep, CStrArray* pArray, bool bTrim = false) const;

    /// As above, at every chSep, except that an empty last piece is never stored. NUL never matches.
    ///   Example   "a,,b,": Split(',', &arr) -> {"a", "", "b"}
    void Split(char chSep, CStrArray* pArray, bool bTrim = false) const;

    /// As Split at a text, with a string.
    void Split(const CString& strSep, CStrArray* pArray, bool bTrim = false) const
    {
        Split(strSep.ToStr(), pArray, bTrim);
    }

    /// Reads a line of values with chSep between them, as CSV files (RFC 4180) have it: a value in double quotes may
    /// hold separators, line breaks and, doubled, quotes. The values are stored in *pArray as Split stores pieces, the
    /// empty ones too; blanks belong to them, a line break at the end of the line does not. Nothing happens when pArray is
    /// null.
    ///   Returns   whether the line is whole and sound. If not, a quote is missing at the end, or one stands where none
    ///             may be and is taken as it is; a value of several lines is read again with the next line appended.
    ///   Throws    as Split.
    ///   Pointers  into *pArray's elements die.
    ///   Example   "1,\"a, b\",": SplitQuoted(',', &arr) -> {"1", "a, b", ""}
    bool SplitQuoted(char chSep, CStrArray* pArray) const;

    /// Returns the text, up to its first NUL, as SplitQuoted reads it: in double quotes, those in it doubled, if it holds
    /// a quote, a line break or chSep, else as it is. CStrArray::JoinQuoted makes a line of such values.
    ///   Example   say "hi" becomes "say ""hi"""
    CString Quoted(char chSep = ',') const;

private:
    friend struct bedplate_private::LayoutCheck;
    friend struct bedplate_private::StringDesign;

    enum
    {
        s_iEmptySize = 8 // the capacity of empty strings
    };

    BEDPLATE_LOCAL CString(char* pszAdopted, int iSize, int iBufferSize)
        : m_pszData(pszAdopted), m_iSize(iSize), m_iBufferSize(iBufferSize)
    {
    }

    void Append(const char* pszBytes, decltype(sizeof 0) iCount);
    static const char* EmptyText();
    [[noreturn]] static void ThrowIndexOverflow();
    [[noreturn]] static void ThrowInvalidString(const char* pszMessage);

    int PositionOf(const char* pszFound) const
    {
        return pszFound != nullptr ? static_cast<int>(pszFound - m_pszData) : -1;
    }

    char* m_pszData   = nullptr;
    int m_iSize       = 0;
    int m_iBufferSize = 0;
};

/// Returns a new string holding what vsnprintf makes of the format and the arguments, up to the first NUL that was
/// printed. A null format, or one that vsnprintf rejects, gives the empty string.
///   Throws    code -11, "char[iLen]"; "char[m_iBufferSize]" for a null or rejected format.
///   Example   CFormat("%d-%s", 7, "x") -> "7-x"
BEDPLATE_API CString CFormat(const char* pszFormat, ...) BEDPLATE_PRINTF(1, 2);
template <class... TArguments, class = bedplate_private::AnyObject<TArguments...>>
CString CFormat(const char* pszFormat, const TArguments&... arguments) = delete;

/// Returns pszText, a null text counting as empty, with strText appended up to its first NUL.
BEDPLATE_API CString operator+(const char* pszText, const CString& strText);

// The comparison operators: case-sensitive, in byte order, by terminator, as CString::Compare, which throws code 0,
// "CString::Compare - invalid string", for a null text on either side.

/// Tells whether two texts are equal.
BEDPLATE_API BEDPLATE_INLINE inline bool operator==(const CString& strLeft, const CString& strRight)
{
    // Texts of one length need no search for their ends, unless one has a NUL before. The first and the last byte tell most
    // of those that differ apart; looking for a NUL takes a third of strcmp's time at 32 bits, but it goes on behind a difference.
    const char* const pszLeft  = strLeft.ToStr();
    const char* const pszRight = strRight.ToStr();
    const unsigned uSize       = static_cast<unsigned>(strLeft.GetSize());
    const bool bOneLength      = uSize > 0 && strLeft.GetSize() == strRight.GetSize();
    if (bOneLength && pszLeft[uSize - 1] == pszRight[uSize - 1] &&
        __builtin_memcmp(pszLeft, pszRight, uSize) == 0)
        return true;
    if (*pszLeft != *pszRight ||
        (bOneLength && uSize <= 1024 && __builtin_memchr(pszLeft, '\0', uSize) == nullptr))
        return false;
    return __builtin_strcmp(pszLeft, pszRight) == 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator==(const CString& strLeft, const char* pszRight)
{
    return strLeft.Compare(pszRight) == 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator==(const char* pszLeft, const CString& strRight)
{
    return strRight.Compare(pszLeft) == 0;
}

/// Tells whether two texts differ.
BEDPLATE_API BEDPLATE_INLINE inline bool operator!=(const CString& strLeft, const CString& strRight)
{
    return !(strLeft == strRight);
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator!=(const CString& strLeft, const char* pszRight)
{
    return strLeft.Compare(pszRight) != 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator!=(const char* pszLeft, const CString& strRight)
{
    return strRight.Compare(pszLeft) != 0;
}

/// Tells whether the left text orders before the right one.
BEDPLATE_API BEDPLATE_INLINE inline bool operator<(const CString& strLeft, const CString& strRight)
{
    return strLeft.Compare(strRight.ToStr()) < 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator<(const CString& strLeft, const char* pszRight)
{
    return strLeft.Compare(pszRight) < 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator<(const char* pszLeft, const CString& strRight)
{
    return strRight.Compare(pszLeft) > 0;
}

/// Tells whether the left text orders before the right one or equals it.
BEDPLATE_API BEDPLATE_INLINE inline bool operator<=(const CString& strLeft, const CString& strRight)
{
    return strLeft.Compare(strRight.ToStr()) <= 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator<=(const CString& strLeft, const char* pszRight)
{
    return strLeft.Compare(pszRight) <= 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator<=(const char* pszLeft, const CString& strRight)
{
    return strRight.Compare(pszLeft) >= 0;
}

/// Tells whether the left text orders after the right one.
BEDPLATE_API BEDPLATE_INLINE inline bool operator>(const CString& strLeft, const CString& strRight)
{
    return strLeft.Compare(strRight.ToStr()) > 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator>(const CString& strLeft, const char* pszRight)
{
    return strLeft.Compare(pszRight) > 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator>(const char* pszLeft, const CString& strRight)
{
    return strRight.Compare(pszLeft) < 0;
}

/// Tells whether the left text orders after the right one or equals it.
BEDPLATE_API BEDPLATE_INLINE inline bool operator>=(const CString& strLeft, const CString& strRight)
{
    return strLeft.Compare(strRight.ToStr()) >= 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator>=(const CString& strLeft, const char* pszRight)
{
    return strLeft.Compare(pszRight) >= 0;
}
BEDPLATE_API BEDPLATE_INLINE inline bool operator>=(const char* pszLeft, const CString& strRight)
{
    return strRight.Compare(pszLeft) <= 0;
}

#endif
