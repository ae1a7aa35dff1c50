#include "alloc_control.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace
{
long s_iLive     = 0;
int s_iCountdown = 0; // the allocation that brings it to 0 fails; not counting when it is 0
bool s_bOnwards  = false;
int s_iFailed    = 0;

void* Allocate(std::size_t iBytes)
{
    const bool bFails = s_iCountdown > 0 && --s_iCountdown == 0;
    s_iFailed += bFails;
    s_iCountdown += bFails && s_bOnwards;
    void* pBlock = bFails || iBytes > 128U * 1024U * 1024U ? nullptr : malloc(iBytes > 0 ? iBytes : 1);
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

CFailingAllocation::CFailingAllocation(int iNth, bool bOnwards)
{
    s_iFailed    = 0;
    s_bOnwards   = bOnwards;
    s_iCountdown = iNth;
}

int CFailingAllocation::Disarm()
{
    s_iCountdown = 0;
    return s_iFailed;
}

void* operator new(std::size_t iBytes) { return Allocate(iBytes); }
void* operator new[](std::size_t iBytes) { return Allocate(iBytes); }
void operator delete(void* pBlock) noexcept { Release(pBlock); }
void operator delete[](void* pBlock) noexcept { Release(pBlock); }
void operator delete(void* pBlock, std::size_t) noexcept { Release(pBlock); }
void operator delete[](void* pBlock, std::size_t) noexcept { Release(pBlock); }
