// Runs the model tests of one family, or of all: random operations, every allocation failing, and what fuzzing has kept.
// Usage: bedplate_model [FAMILY|all [STEPS [SEED [CORPUS_DIRECTORY]]]]
// What fuzzing has kept are the files in CORPUS_DIRECTORY/FAMILY. One line a family says what was done.
#include "arrays.h"
#include "dates.h"
#include "numbers.h"
#include "streams.h"
#include "strings.h"
#include "tables.h"

#include <filesystem>
#include <fstream>
#include <malloc.h>

namespace
{
namespace fs = std::filesystem;

/// Runs a family if it is wanted; returns whether it differs from its model.
template <class TFamily>
bool Differs(const string& strWanted, int iSteps, unsigned uSeed, const fs::path& corpus)
try
{
    if (strWanted != "all" && strWanted != TFamily::s_szName)
        return false;
    const long iLive         = LiveBlocks();
    const std::size_t iBytes = mallinfo2().uordblks; // the C allocator's, and a few of the C library
    const int iDone = RunSeeds<TFamily>(uSeed, iSteps), iFailed = RunFaults<TFamily>(8);
    int iFiles   = 0;
    using CFiles = fs::directory_iterator; // none without a corpus
    for (const auto& entry : corpus.empty() ? CFiles() : CFiles(corpus / TFamily::s_szName))
    {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<std::uint8_t> aBytes{std::istreambuf_iterator<char>(file), {}};
        Located(entry.path().string(), [&] { return RunBytes<TFamily>(aBytes.data(), aBytes.size()); });
        ++iFiles;
    }
    Same("blocks alive at the end", iLive, LiveBlocks());
    Same("at most a megabyte is lost", true, mallinfo2().uordblks < iBytes + (1 << 20));
    printf("%s: %d operations, %d allocations failed, %d corpus files\n", TFamily::s_szName, iDone, iFailed,
           iFiles);
    return false;
}
catch (const std::exception& e)
{
    printf("%s: MISMATCH, %s\n", TFamily::s_szName, e.what());
    return true;
}
} // namespace

int main(int iArgs, char** ppszArgs)
{
    const auto Argument = [=](int i, const char* pszDefault) { return iArgs > i ? ppszArgs[i] : pszDefault; };
    const auto uSeed    = static_cast<unsigned>(atoi(Argument(3, "1")));
    int iDiffering      = 0;
    for (const auto Run : {Differs<CStrings>, Differs<CArrays>, Differs<CStreams>, Differs<CTables>,
                           Differs<CDates>, Differs<CNumbers>})
        iDiffering += Run(Argument(1, "all"), atoi(Argument(2, "50000")), uSeed, Argument(4, ""));
    return iDiffering > 0 ? 1 : 0;
}
