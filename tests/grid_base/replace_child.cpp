// A process that replaces a file and reads it, again and again: FILE ID COUNT. Ends with 2 when a file could not be
// replaced and with 3 when it held anything but one whole text of such a process.
#include <cstdlib>

#include "platform/files.h"
#include "tests/support/files.h"

namespace {

// Texts of different writers have different lengths.
std::string TextOf(char id, char round) {
  return id + std::string(10'000u * static_cast<unsigned char>(id - '0'), round);
}

// On some systems a file cannot be opened while it is replaced.
bool IsWhole(const char* file) {
  std::string text;
  for (int attempt = 0; attempt < 1000 && text.empty(); ++attempt) text = ReadFile(file);
  return text.size() > 1 && text == TextOf(text[0], text[1]);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 4) return 1;
  unsigned long error = 0;
  for (int round = 0; round < std::atoi(arguments[3]); ++round) {
    const std::string text = TextOf(*arguments[2], static_cast<char>(' ' + round));
    if (!ReplaceFileContent(arguments[1], text, error)) return 2;
    for (int reads = 0; reads < 3; ++reads)
      if (!IsWhole(arguments[1])) return 3;
  }
}
