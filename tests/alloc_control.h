// The test program's own operator new and delete, which count blocks, calloc and realloc; all can be told to fail. The
// shared object's allocations go through them too, GoogleTest's as well; so a failure is armed around one operation only.
// The system's random bytes are the test program's, too.
#ifndef ALLOC_CONTROL_H
#define ALLOC_CONTROL_H

#include <cstddef>

/// Requests above this fail at any time, so that a size near INT_MAX is out of reach on both widths.
constexpr std::size_t s_iTooLarge = 128U * 1024U * 1024U;

/// Returns how many blocks from operator new are alive.
long LiveBlocks();

/// While it lives, the iNth allocation from now fails, and all later ones too if bOnwards is set.
class CFailingAllocation
{
public:
    CFailingAllocation(int iNth, bool bOnwards);
    ~CFailingAllocation() { Disarm(); }

    /// Lets allocations succeed again; returns how many have failed.
    int Disarm();
};

/// Sets the bytes that programs get from the system as random ones, by which tables find their keys. They are the same in
/// every run; bytes of zero make the tables' own hash value the same for all keys.
void SetRandomBytes(unsigned char uchBytes);

#endif
