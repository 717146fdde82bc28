// libFuzzer's entry for the function that the build names.
#include "fuzz/fuzz_functions.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return FUZZ_FUNCTION(data, size);
}
