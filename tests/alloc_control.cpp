#include "alloc_control.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <iterator>
#include <malloc.h>
#include <new>
#include <sys/auxv.h>

namespace
{
/// A block from operator new lies between its size and bytes that must stay as they are.
#ifdef __SANITIZE_ADDRESS__ // which looks closer
constexpr std::size_t s_iGuard = 0;
#else
constexpr std::size_t s_iGuard = 16;
#endif
constexpr char s_chFresh = '\xA5'; // who needs zeros has to write them

long s_iLive     = 0;
int s_iCountdown = 0; // the allocation that brings it to 0 fails; not counting when it is 0
int s_iFailed    = 0;
bool s_bOnwards  = false;

unsigned char s_aRandom[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};

/// Returns a block, or null if the allocation is to fail. Not inline: malloc with zeros written behind it would become a
/// call of calloc.
[[gnu::noinline]] void* Block(std::size_t iBytes)
{
    const bool bFails = s_iCountdown > 0 && --s_iCountdown == 0;
    s_iFailed += bFails;
    s_iCountdown += bFails && s_bOnwards;
    void* pBlock = bFails || iBytes > s_iTooLarge ? nullptr : malloc(iBytes > 0 ? iBytes : 1);
    return pBlock != nullptr ? memset(pBlock, s_chFresh, iBytes) : nullptr;
}

} // namespace

long LiveBlocks() { return s_iLive; }

void SetRandomBytes(unsigned char uchBytes)
{
    std::fill(std::begin(s_aRandom), std::end(s_aRandom), uchBytes);
}

extern "C" unsigned long getauxval(unsigned long uType) noexcept
{
    static const auto Real =
        reinterpret_cast<unsigned long (*)(unsigned long)>(dlsym(RTLD_NEXT, "getauxval"));
    return uType == AT_RANDOM ? reinterpret_cast<unsigned long>(s_aRandom) : Real(uType);
}

CFailingAllocation::CFailingAllocation(int iNth, bool bOnwards)
{
    s_bOnwards   = bOnwards;
    s_iCountdown = iNth > 0 ? iNth : INT_MAX;
    s_iFailed    = 0;
}

int CFailingAllocation::Disarm()
{
    s_iCountdown = 0;
    return s_iFailed;
}

void* operator new(std::size_t iBytes, const std::nothrow_t&) noexcept // the fuzzer's runtime sorts by it
{
    char* pStart = static_cast<char*>(Block(std::min(iBytes, s_iTooLarge + 1) + 2 * s_iGuard));
    if (pStart == nullptr)
        return nullptr;
    ++s_iLive;
    memcpy(pStart, &iBytes, std::min(s_iGuard, sizeof iBytes));
    return pStart + s_iGuard;
}
void* operator new(std::size_t iBytes)
{
    void* pBlock = operator new(iBytes, std::nothrow);
    return pBlock != nullptr ? pBlock : throw std::bad_alloc();
}
void* operator new[](std::size_t iBytes) { return operator new(iBytes); }

void operator delete(void* pBlock) noexcept
{
    if (pBlock == nullptr)
        return;
    --s_iLive;
    char* pStart       = static_cast<char*>(pBlock) - s_iGuard;
    std::size_t iBytes = 0;
    memcpy(&iBytes, pStart, std::min(s_iGuard, sizeof iBytes));
    const char* pEnd = pStart + s_iGuard + iBytes;
    if (std::count(pEnd, pEnd + s_iGuard, s_chFresh) != std::ptrdiff_t{s_iGuard})
        abort(); // something was written behind the block
    free(pStart);
}
void operator delete[](void* pBlock) noexcept { operator delete(pBlock); }
void operator delete(void* pBlock, std::size_t) noexcept { operator delete(pBlock); }
void operator delete[](void* pBlock, std::size_t) noexcept { operator delete(pBlock); }

// The stream's allocations. Blocks of the C allocator are not counted: the leak checker sees them. realloc always moves.
extern "C" void* calloc(std::size_t iCount, std::size_t iSize)
{
    const bool bWraps = iSize > 0 && iCount > s_iTooLarge / iSize;
    void* pBlock      = Block(bWraps ? s_iTooLarge + 1 : iCount * iSize);
    return pBlock != nullptr ? memset(pBlock, 0, iCount * iSize) : nullptr;
}

extern "C" void* realloc(void* pOld, std::size_t iBytes)
{
    void* pNew = Block(iBytes);
    if (pNew == nullptr || pOld == nullptr)
        return pNew;
    memcpy(pNew, pOld, std::min(iBytes, malloc_usable_size(pOld)));
    free(pOld);
    return pNew;
}
