#include "tests/module/export_table.h"

#include <cstdint>
#include <stdexcept>

#include "host_link/messages/message_header.h"
#include "tests/support/files.h"

namespace {

using Image = std::string;
using Names = std::multiset<std::string>;

template <typename Value>
std::size_t At(const Image& image, std::size_t offset) {
  if (offset > image.size() || image.size() - offset < sizeof(Value)) throw std::out_of_range("past the file");
  return static_cast<std::size_t>(LoadValue<Value>(reinterpret_cast<const std::uint8_t*>(image.data()) + offset));
}
std::size_t U16(const Image& image, std::size_t offset) {
  return At<std::uint16_t>(image, offset);
}
std::size_t U32(const Image& image, std::size_t offset) {
  return At<std::uint32_t>(image, offset);
}
std::size_t U64(const Image& image, std::size_t offset) {
  return At<std::uint64_t>(image, offset);
}
std::string Text(const Image& image, std::size_t offset) {
  return image.substr(offset, image.find('\0', offset) - offset);
}

// The dynamic symbols that the file defines.
Names ElfNames(const Image& image) {
  constexpr std::size_t kDynamicSymbols = 11;
  constexpr std::size_t kSymbolSize = 24;
  const std::size_t sections = U64(image, 40);
  const std::size_t sectionSize = U16(image, 58);
  const std::size_t sectionCount = U16(image, 60);
  Names names;
  for (std::size_t i = 0; i < sectionCount; ++i) {
    const std::size_t section = sections + i * sectionSize;
    if (U32(image, section + 4) != kDynamicSymbols) continue;
    const std::size_t texts = U64(image, sections + U32(image, section + 40) * sectionSize + 24);
    const std::size_t first = U64(image, section + 24);
    const std::size_t size = U64(image, section + 32);
    for (std::size_t symbol = first; symbol < first + size; symbol += kSymbolSize)
      if (U16(image, symbol + 6) != 0) names.insert(Text(image, texts + U32(image, symbol)));
  }
  return names;
}

// The file offset of an address of the loaded image.
std::size_t PeOffset(const Image& image, std::size_t address) {
  constexpr std::size_t kSectionSize = 40;
  const std::size_t header = U32(image, 60);
  const std::size_t sections = header + 24 + U16(image, header + 20);
  for (std::size_t i = 0; i < U16(image, header + 6); ++i) {
    const std::size_t section = sections + i * kSectionSize;
    const std::size_t start = U32(image, section + 12);
    if (address >= start && address - start < U32(image, section + 16))
      return address - start + U32(image, section + 20);
  }
  throw std::runtime_error("an address in no section");
}

Names PeNames(const Image& image) {
  constexpr std::size_t kDirectories = 24 + 112;  // after the header of a 64-bit image; exports are first
  const std::size_t exports = PeOffset(image, U32(image, U32(image, 60) + kDirectories));
  const std::size_t nameList = PeOffset(image, U32(image, exports + 32));
  if (U32(image, exports + 20) != U32(image, exports + 24)) throw std::runtime_error("an export has a number only");
  Names names;
  for (std::size_t i = 0; i < U32(image, exports + 24); ++i)
    names.insert(Text(image, PeOffset(image, U32(image, nameList + 4 * i))));
  return names;
}

}  // namespace

std::multiset<std::string> ExportedNames(const std::filesystem::path& file) {
  const Image image = ReadFile(file);
  if (image.starts_with("\x7F"
                        "ELF\x02\x01"))
    return ElfNames(image);
  if (image.starts_with("MZ")) return PeNames(image);
  throw std::runtime_error("no module: " + file.string());
}
