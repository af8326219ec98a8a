// One libFuzzer target: QUILLON_FUZZ_INPUT names the FuzzInputs function it feeds.

#include "fuzz_inputs.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    FuzzInputs::initialize(argc, argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // A copy, as a file read into memory would be (raw data is not terminated by a zero).
    FuzzInputs::QUILLON_FUZZ_INPUT(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}
