// A fuzz target: the bytes choose what is done to the family that the build names by header and class.
#include FUZZ_HEADER

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t iCount)
{
    const long iLive = LiveBlocks();
    RunBytes<FUZZ_FAMILY>(pBytes, iCount); // a mismatch is an exception that nobody catches
    Same("blocks alive", iLive, LiveBlocks());
    return 0;
}
