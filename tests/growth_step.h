// The documented growth of every array, for tests to count with.
#ifndef GROWTH_STEP_H
#define GROWTH_STEP_H

/// Returns how many slots a full array of iSize elements gains.
inline int GrowthStep(int iSize) { return iSize < 40 ? 4 : iSize < 8200 ? iSize / 8 : 1024; }

#endif
