// What every public header needs first: the export and inline markers, and the names of the classes.
#ifndef BEDPLATE_API_H
#define BEDPLATE_API_H

/// Marks what the shared object exports; everything else is hidden.
#define BEDPLATE_API __attribute__((visibility("default")))

/// Marks private members of an exported class that stay inside the shared object.
#define BEDPLATE_LOCAL __attribute__((visibility("hidden")))

/// Marks operations that callers may inline. The library's own build emits each of them as well, so that a
/// program compiled without inlining, or one that takes an operation's address, finds it in the shared object.
#ifdef BEDPLATE_BUILD
#define BEDPLATE_INLINE __attribute__((used, visibility("default")))
#else
#define BEDPLATE_INLINE
#endif

/// Lets the compiler check printf-style arguments: the positions, from 1, of the format and of its first
/// argument. `this` counts as position 1 in member functions.
#define BEDPLATE_PRINTF(iFormat, iFirst) __attribute__((format(printf, iFormat, iFirst)))

/// Has clang++ -g describe a class to debuggers in every program that uses it, as g++ does. By itself it leaves that to
/// whoever compiles the constructors: the shared object, which has no debug information.
#ifdef __has_attribute
#if __has_attribute(standalone_debug)
#define BEDPLATE_DEBUG __attribute__((standalone_debug))
#endif
#endif
#ifndef BEDPLATE_DEBUG
#define BEDPLATE_DEBUG
#endif

class BEDPLATE_DEBUG CBoolArray;
class BEDPLATE_DEBUG CDate;
class BEDPLATE_DEBUG CDateArray;
class BEDPLATE_DEBUG CDbl;
class BEDPLATE_DEBUG CDblArray;
class BEDPLATE_DEBUG CDblHash;
class BEDPLATE_DEBUG CException;
class BEDPLATE_DEBUG CInt;
class BEDPLATE_DEBUG CInt64;
class BEDPLATE_DEBUG CIntArray;
class BEDPLATE_DEBUG CIntHash;
class BEDPLATE_DEBUG CPtrArray;
class BEDPLATE_DEBUG CPtrArrayItem;
class BEDPLATE_DEBUG CPtrHash;
class BEDPLATE_DEBUG CStrArray;
class BEDPLATE_DEBUG CStrHash;
class BEDPLATE_DEBUG CStream;
class BEDPLATE_DEBUG CString;

/// Not for callers: what the library's units share.
namespace bedplate_private
{
template <class TArray>
struct ArrayDesign;
template <class THash>
struct HashDesign;
template <class THash>
struct HashListing;
template <class THash>
struct HashTraits;
template <class THash>
struct CHashNode;
struct ArrayAccess;
struct DateDesign;
struct LayoutCheck;
struct StringDesign;
class CHashIndex;
class CStrArrayFiller;
class CStreamLine;

/// How arrays are moved.
struct ArrayMoves
{
    /// Exchanges what two arrays of a kind hold, but not whether they own it; it cannot fail.
    template <class TArray>
    static void Swap(TArray& arrLeft, TArray& arrRight)
    {
        Exchange(arrLeft.m_pData, arrRight.m_pData);
        Exchange(arrLeft.m_iSize, arrRight.m_iSize);
        Exchange(arrLeft.m_iBufferSize, arrRight.m_iBufferSize);
    }

    /// Gives an array what another one holds, which is empty and without a buffer then.
    template <class TArray>
    static TArray& Move(TArray& arr, TArray& arrSource)
    {
        if (&arr != &arrSource)
        {
            arr.RemoveAll();
            Swap(arr, arrSource);
        }
        return arr;
    }

private:
    template <class TMember>
    static void Exchange(TMember& left, TMember& right)
    {
        const TMember kept = left;
        left               = right;
        right              = kept;
    }
};

/// Adds the elements of a list to a new array, in exactly as many slots.
template <class TArray, class TList>
void AddAll(TArray& arr, const TList& list)
{
    if (list.size() > 0)
        arr.GrowBuffer(static_cast<int>(list.size()));
    for (const auto& element : list)
        arr.Add(element);
}

/// Tells whether an order puts its left argument first: what it returns is true, or negative.
inline bool IsBefore(bool bBefore) { return bBefore; }
inline bool IsBefore(int iOrder) { return iOrder < 0; }

/// Throws code 0, "<pszOperation> : Invalid <pszIndex>(<iSize - 1>:<iIndex>)".
[[noreturn]] BEDPLATE_API __attribute__((cold)) void ThrowIndex(const char* pszOperation, int iIndex,
                                                                int iSize, const char* pszIndex);

/// Throws code 0, "<pszOperation> : Empty".
[[noreturn]] BEDPLATE_API __attribute__((cold)) void ThrowEmpty(const char* pszOperation);

/// Tells whether an array of iSize elements has an element iIndex.
inline bool IsIndex(int iIndex, int iSize)
{
    return static_cast<unsigned>(iIndex) < static_cast<unsigned>(iSize);
}

/// Returns iIndex if an array of iSize elements has such an element; throws otherwise, saying in which operation.
inline int Checked(const char* pszOperation, int iIndex, int iSize, const char* pszIndex = "Index")
{
    if (!IsIndex(iIndex, iSize))
        ThrowIndex(pszOperation, iIndex, iSize, pszIndex);
    return iIndex;
}

/// Returns the last index of an array of iSize elements; throws if there is none.
inline int CheckedLast(const char* pszOperation, int iSize)
{
    if (iSize < 1)
        ThrowEmpty(pszOperation);
    return iSize - 1;
}

// What an operation is offered for, without the weight of <type_traits>: each of the names below is a type for some
// arguments, and takes the operation out of the choice for all others.

template <bool bOffered, class TType = int>
struct OfferedIf
{
};
template <class TType>
struct OfferedIf<true, TType>
{
    typedef TType Type;
};

template <class TLeft, class TRight>
struct IsSame
{
    static constexpr bool s_bIs = false;
};
template <class TType>
struct IsSame<TType, TType>
{
    static constexpr bool s_bIs = true;
};

constexpr bool AnyOf() { return false; }
template <class... TBools>
constexpr bool AnyOf(bool bFirst, TBools... bRest)
{
    return bFirst || AnyOf(bRest...);
}

/// For `const char` alone. An operation whose exported parameter is `char*` takes a literal or a `const char*` too, while
/// NULL still has one meaning.
template <class TChar>
using ConstCharOnly = typename OfferedIf<IsSame<TChar, const char>::s_bIs>::Type;

/// For `char` alone, TResult: no number, which NULL is, is taken for a character.
template <class TChar, class TResult>
using CharOnly = typename OfferedIf<IsSame<TChar, char>::s_bIs, TResult>::Type;

/// For arguments of which one is an object. What prints by a format is deleted for these: objects cannot be printed, but
/// their texts can, such as a string's ToStr().
template <class... TArguments>
using AnyObject = typename OfferedIf<AnyOf(__is_class(TArguments) || __is_union(TArguments)...)>::Type;

/// For the integers that have more bits than int.
template <class TInt>
using WiderThanInt =
    typename OfferedIf<(sizeof(TInt) > sizeof(int)) &&
                       AnyOf(IsSame<TInt, long>::s_bIs, IsSame<TInt, unsigned long>::s_bIs,
                             IsSame<TInt, long long>::s_bIs, IsSame<TInt, unsigned long long>::s_bIs)>::Type;

/// For `long` where it has 64 bits: there, std::int64_t is no long long.
template <class TInt>
using LongOf64Bits = typename OfferedIf<IsSame<TInt, long>::s_bIs && sizeof(long) == 8>::Type;
} // namespace bedplate_private

#endif
