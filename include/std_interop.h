// Meeting the standard library: printing to its streams, hashing, string views and, where <format> exists,
// std::format. Not part of bedplate.h, so that only programs which want these pay for the headers they take.
//
//     #include <bedplate/bedplate.h>
//     #include <bedplate/std_interop.h>
//
//     std::unordered_map<CString, CDate> mapBirthdays;
//     mapBirthdays["Ada"] = CDate(1815, 12, 10);
//     std::cout << "Ada: " << mapBirthdays["Ada"] << '\n';   // Ada: 18151210
//
// Everything here is inline; nothing of it is in the shared object. From C++11; string views take C++17.
#ifndef BEDPLATE_STD_INTEROP_H
#define BEDPLATE_STD_INTEROP_H

#include "bedplate.h"

#include <climits>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>

#if __cplusplus >= 201703L
#include <string_view>
#endif
#if __cplusplus >= 202002L
#include <version>
#endif
#ifdef __cpp_lib_format
#include <format>
#endif

namespace bedplate_private
{
/// Writes iCount bytes to a stream; only a text that must be padded is copied.
inline std::ostream& Print(std::ostream& stream, const char* pszText, int iCount)
{
    if (stream.width() > iCount)
        return stream << std::string(pszText, static_cast<std::size_t>(iCount));
    stream.width(0);
    return stream.write(pszText, iCount);
}

inline std::ostream& Print(std::ostream& stream, const CString& strText)
{
    return Print(stream, strText.ToStr(), strText.GetLength());
}

/// The hash value of a text (FNV-1a): of iCount bytes, or up to the first NUL for an iCount of -1.
inline std::size_t HashText(const char* pszText, int iCount)
{
    constexpr bool bWide = sizeof(std::size_t) > 4;
    std::size_t iHash    = static_cast<std::size_t>(bWide ? 14695981039346656037u : 2166136261u);
    for (int i = 0; iCount < 0 ? pszText[i] != '\0' : i < iCount; ++i)
    {
        iHash ^= static_cast<unsigned char>(pszText[i]);
        iHash *= static_cast<std::size_t>(bWide ? 1099511628211u : 16777619u);
    }
    return iHash;
}

/// Tells whether a class is one of the library's arrays, or derived from one: it has a capacity, and prints itself with a
/// separator between its elements.
template <class TArray>
struct IsArray
{
    template <class TClass>
    static std::is_same<CString, decltype(std::declval<const TClass&>().Repr(", ", true))>
    Test(decltype(std::declval<const TClass&>().GetBufferSize())*);
    template <class TClass>
    static std::false_type Test(...);

    static constexpr bool value = decltype(Test<TArray>(nullptr))::value;
};
} // namespace bedplate_private

// ---- Printing: width and fill of the stream count ---------------------------------------------------------------

/// Prints all GetLength() bytes, NULs included.
inline std::ostream& operator<<(std::ostream& stream, const CString& strText)
{
    return bedplate_private::Print(stream, strText);
}
/// Prints all GetLength() bytes, NULs included.
inline std::ostream& operator<<(std::ostream& stream, const CStream& text)
{
    return bedplate_private::Print(stream, text.ToStr(), text.GetLength());
}
/// Prints the text, nothing for an unset date.
inline std::ostream& operator<<(std::ostream& stream, const CDate& date) { return stream << date.ToStr(); }
/// Prints Repr().
inline std::ostream& operator<<(std::ostream& stream, const CTime& time) { return stream << time.Repr(); }
/// Prints ToFmtStr(): with commas between groups of three digits.
inline std::ostream& operator<<(std::ostream& stream, const CInt& number)
{
    return stream << number.ToFmtStr();
}
/// Prints ToFmtStr(): with commas between groups of three digits.
inline std::ostream& operator<<(std::ostream& stream, const CInt64& number)
{
    return stream << number.ToFmtStr();
}
/// Prints ToFmtStr(): with commas between groups of three digits and two decimals.
inline std::ostream& operator<<(std::ostream& stream, const CDbl& number)
{
    return stream << number.ToFmtStr();
}
/// Prints the text, without the code.
inline std::ostream& operator<<(std::ostream& stream, const CException& e) { return stream << e.GetText(); }
/// Prints Repr(), of any array.
template <class TArray>
typename std::enable_if<bedplate_private::IsArray<TArray>::value, std::ostream&>::type
operator<<(std::ostream& stream, const TArray& arr)
{
    return stream << arr.Repr();
}

// ---- Hashing: equal objects have equal hash values ----------------------------------------------------------------

namespace std
{
/// Hashes a string as operator== compares it: up to its first NUL. The hash value of a text is the same in every process,
/// so it is not for keys that others choose: they can have all of them in one bucket.
template <>
struct hash<CString>
{
    /// Returns the hash value.
    size_t operator()(const CString& strText) const
    {
        return bedplate_private::HashText(strText.ToStr(), -1);
    }
};

/// Hashes a date as operator== compares it: the 8 bytes of its text.
template <>
struct hash<CDate>
{
    /// Returns the hash value.
    size_t operator()(const CDate& date) const { return bedplate_private::HashText(date.ToStr(), 8); }
};
} // namespace std

// ---- String views: never implied, always written --------------------------------------------------------------------

#if __cplusplus >= 201703L
/// Returns a view of all GetLength() bytes, NULs included. It dies as a pointer from ToStr() does.
inline std::string_view ToStringView(const CString& strText)
{
    return std::string_view(strText.ToStr(), static_cast<std::size_t>(strText.GetLength()));
}
/// Returns a view of all GetLength() bytes, NULs included. It dies as a pointer from ToStr() does.
inline std::string_view ToStringView(const CStream& text)
{
    return std::string_view(text.ToStr(), static_cast<std::size_t>(text.GetLength()));
}
/// Returns a view of the text, empty for an unset date. It dies with the date.
inline std::string_view ToStringView(const CDate& date) { return std::string_view(date.ToStr()); }

/// Returns a string of all bytes of a view, NULs included, in a buffer with room for them and one more, or as
/// CString() for an empty view.
///   Throws    code -11 as CString::GetBuffer, also for a view beyond INT_MAX.
inline CString FromStringView(std::string_view view)
{
    CString strText;
    if (view.empty())
        return strText;
    const int iCount = static_cast<int>(view.size() < INT_MAX ? view.size() : INT_MAX);
    view.copy(strText.GetBuffer(iCount), static_cast<std::size_t>(iCount));
    strText.ReleaseBuffer(iCount);
    return strText;
}
#endif

// ---- std::format: with the format specifications of texts -------------------------------------------------------------

#ifdef __cpp_lib_format
namespace bedplate_private
{
template <class TText, class... TTexts>
concept OneOf = (std::is_same_v<TText, TTexts> || ...);

/// What std::format takes.
template <class TText>
concept Formatted = OneOf<TText, CString, CDate, CTime, CInt, CInt64, CDbl> || IsArray<TText>::value;

inline const CString& Text(const CString& strText) { return strText; }
inline const CDate& Text(const CDate& date) { return date; }

template <class TText>
auto Text(const TText& number) -> decltype(number.ToFmtStr())
{
    return number.ToFmtStr();
}
template <class TText>
auto Text(const TText& arr) -> decltype(arr.Repr())
{
    return arr.Repr();
}
} // namespace bedplate_private

/// Formats as operator<< prints.
template <bedplate_private::Formatted TText>
struct std::formatter<TText> : std::formatter<std::string_view>
{
    /// Writes the text to where the context says.
    template <class TContext>
    auto format(const TText& text, TContext& context) const
    {
        return std::formatter<std::string_view>::format(ToStringView(bedplate_private::Text(text)), context);
    }
};
#endif

#endif
