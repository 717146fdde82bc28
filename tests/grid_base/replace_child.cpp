// A process that replaces a file and reads it, again and again: FILE ID COUNT. Ends with 2 when a file could not be
// replaced and with 3 when it held anything but one whole text of such a process.
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "platform/files.h"

namespace {

// Texts of different writers have different lengths.
std::string TextOf(const std::string& id, int round) {
  const std::string line = id + ' ' + std::to_string(round) + '\n';
  std::string text;
  for (int i = 0; i < 2000 + 500 * std::atoi(id.c_str()); ++i) text += line;
  return text;
}

std::string Read(const char* file) {
  std::ifstream stream(file, std::ios::binary);
  for (int attempt = 0; attempt < 1000 && !stream.is_open(); ++attempt) stream.open(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

bool IsWhole(const std::string& text) {
  const std::size_t blank = text.find(' ');
  return blank != std::string::npos && text == TextOf(text.substr(0, blank), std::atoi(text.c_str() + blank));
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 4) return 1;
  for (int round = 0; round < std::atoi(arguments[3]); ++round) {
    unsigned long error = 0;
    if (!ReplaceFileContent(arguments[1], TextOf(arguments[2], round), error)) return 2;
    for (int reads = 0; reads < 3; ++reads)
      if (!IsWhole(Read(arguments[1]))) return 3;
  }
}
