// Runs the model tests of one family, or of all: random operations, and every allocation failing.
// Usage: bedplate_model [FAMILY|all [STEPS [SEED]]]
#include "arrays.h"
#include "strings.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{
/// Returns whether the family was wanted and differs from its model.
template <class TFamily>
bool Run(const char* pszWanted, int iSteps, unsigned uSeed)
{
    if (strcmp(pszWanted, "all") != 0 && strcmp(pszWanted, TFamily::s_szName) != 0)
        return false;
    try
    {
        const int iDone   = RunSeeds<TFamily>(uSeed, iSteps);
        const int iPoints = RunFaults<TFamily>(4);
        printf("%s: %d operations, %d allocations failed\n", TFamily::s_szName, iDone, iPoints);
        return false;
    }
    catch (const CMismatch& e)
    {
        printf("%s: MISMATCH, %s\n", TFamily::s_szName, e.what());
        return true;
    }
}
} // namespace

int main(int iArgs, char** ppszArgs)
{
    const char* pszWanted = iArgs > 1 ? ppszArgs[1] : "all";
    const int iSteps      = iArgs > 2 ? atoi(ppszArgs[2]) : 50000;
    const unsigned uSeed  = iArgs > 3 ? static_cast<unsigned>(atoi(ppszArgs[3])) : 1;
    const bool bDiffers   = Run<CStrings>(pszWanted, iSteps, uSeed) | Run<CArrays>(pszWanted, iSteps, uSeed);
    return bDiffers ? 1 : 0;
}
