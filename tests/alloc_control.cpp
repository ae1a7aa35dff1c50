#include "alloc_control.h"

#include <cstdlib>
#include <cstring>
#include <new>

// What the C allocator's functions are called where this program's own have taken their names.
#if defined(__SANITIZE_ADDRESS__)
#define BEDPLATE_REAL(name) __interceptor_##name
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define BEDPLATE_REAL(name) __interceptor_##name
#endif
#endif
#ifndef BEDPLATE_REAL
#define BEDPLATE_REAL(name) __libc_##name
#endif
extern "C" void* BEDPLATE_REAL(calloc)(std::size_t, std::size_t);
extern "C" void* BEDPLATE_REAL(realloc)(void*, std::size_t);

namespace
{
long s_iLive     = 0;
int s_iCountdown = 0; // the allocation that brings it to 0 fails; not counting when it is 0
bool s_bOnwards  = false;
int s_iFailed    = 0;

bool s_bWatching           = false;
std::size_t s_iLastRequest = 0;

/// Tells whether the allocation that is being asked for is to fail.
bool Fails(std::size_t iBytes)
{
    const bool bFails = s_iCountdown > 0 && --s_iCountdown == 0;
    s_iFailed += bFails;
    s_iCountdown += bFails && s_bOnwards;
    return bFails || iBytes > s_iTooLarge;
}

void* Allocate(std::size_t iBytes)
{
    if (s_bWatching)
        s_iLastRequest = iBytes;
    void* pBlock = Fails(iBytes) ? nullptr : malloc(iBytes > 0 ? iBytes : 1);
    if (pBlock == nullptr)
        throw std::bad_alloc();
    ++s_iLive;
    return memset(pBlock, 0xA5, iBytes); // whoever needs zero bytes has to write them
}

void Release(void* pBlock) noexcept
{
    if (pBlock != nullptr)
        --s_iLive;
    free(pBlock);
}
} // namespace

long LiveBlocks() { return s_iLive; }
std::size_t LastRequest() { return s_iLastRequest; }

CFailingAllocation::CFailingAllocation(int iNth, bool bOnwards)
{
    s_iFailed      = 0;
    s_bOnwards     = bOnwards;
    s_iCountdown   = iNth;
    s_bWatching    = true;
    s_iLastRequest = 0;
}

int CFailingAllocation::Disarm()
{
    s_iCountdown = 0;
    s_bWatching  = false;
    return s_iFailed;
}

void* operator new(std::size_t iBytes) { return Allocate(iBytes); }
void* operator new[](std::size_t iBytes) { return Allocate(iBytes); }
void* operator new(std::size_t iBytes, const std::nothrow_t&) noexcept // the fuzzer's runtime sorts by it
try
{
    return Allocate(iBytes);
}
catch (const std::bad_alloc&)
{
    return nullptr;
}
void operator delete(void* pBlock) noexcept { Release(pBlock); }
void operator delete[](void* pBlock) noexcept { Release(pBlock); }
void operator delete(void* pBlock, std::size_t) noexcept { Release(pBlock); }
void operator delete[](void* pBlock, std::size_t) noexcept { Release(pBlock); }

// The stream's allocations. Blocks of the C allocator are not counted: the leak checker sees them.
extern "C" void* calloc(std::size_t iCount, std::size_t iSize)
{
    const bool bWraps = iSize > 0 && iCount > s_iTooLarge / iSize;
    return Fails(bWraps ? s_iTooLarge + 1 : iCount * iSize) ? nullptr : BEDPLATE_REAL(calloc)(iCount, iSize);
}

extern "C" void* realloc(void* pBlock, std::size_t iBytes)
{
    return Fails(iBytes) ? nullptr : BEDPLATE_REAL(realloc)(pBlock, iBytes);
}
