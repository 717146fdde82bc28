#include <zlib.h>

#include <algorithm>
#include <vector>

#include "feeds/journal/journal_reader.h"
#include "foundations/byte_words.h"
#include "fuzz/fuzz_functions.h"
#include "tests/support/own_folder.h"

namespace {

using PlacedText = std::pair<std::uint64_t, std::string>;

// A journal of the pieces in the input, each an operation, a size and bytes: a record, other bytes, a cut, a flip.
std::string JournalOf(std::string_view input) {
  JournalHeader header;
  std::string bytes = EncodeJournalHeader({"FIX.4.4:A->B", "20260302", 1772438400}, 7), record;
  DecodeJournalHeader(bytes, header);
  while (input.size() >= 2) {
    const auto operation = static_cast<std::uint8_t>(input[0]);
    const std::size_t size = static_cast<std::uint8_t>(input[1]);
    const std::string_view piece = input.substr(2, size);
    input.remove_prefix(2 + piece.size());
    if (operation < 0x40) {
      EncodeJournalRecord({static_cast<JournalKind>(operation % 6), 1, 2, 3, piece, 0}, header.Sum, record);
      bytes += record;
    } else if (operation < 0x80) {
      bytes += piece;
    } else if (operation < 0xC0) {
      bytes.resize(std::max(header.Size, bytes.size() - std::min(size, bytes.size())));
    } else if (size < bytes.size() - header.Size) {
      bytes[bytes.size() - 1 - size] ^= '\x10';
    }
  }
  return bytes;
}

// Looks at every place of the file, byte by byte.
std::vector<PlacedText> SlowRecords(std::string_view file) {
  const std::size_t begin = 36 + LoadValue<std::uint16_t>(&file[10]);
  const auto seed = LoadValue<std::uint32_t>(&file[begin - 4]);
  const auto isSum = [&](std::size_t at, std::size_t size, std::size_t sumAt) {
    const auto sum = size == 0 ? seed : crc32(seed, reinterpret_cast<const Bytef*>(&file[at]), static_cast<uInt>(size));
    return LoadValue<std::uint32_t>(&file[sumAt]) == sum;
  };
  std::vector<PlacedText> records;
  for (std::size_t at = begin; at + 33 <= file.size(); ++at) {
    const std::size_t size = LoadValue<std::uint32_t>(&file[at + 4]);
    const int kind = file[at + 8];
    if (file.substr(at, 4) != "\xfeREC" || kind < 1 || kind > 4 || size > file.size() - at - 33) continue;
    if (!isSum(at, 29, at + 29) || !isSum(at + 33, size, at + 25)) continue;
    records.emplace_back(at, file.substr(at + 33, size));
    at += 32 + size;
  }
  return records;
}

void TakeAll(JournalReader& reader, std::vector<PlacedText>& records) {
  for (JournalRecord record; reader.Next(record);) {
    RequireProperty(reader.TextAt(record.Place) == record.Text, "the text at a place is the one that was given");
    records.emplace_back(record.Place, record.Text);
  }
}

}  // namespace

int FuzzJournal(const std::uint8_t* data, std::size_t size) {
  static const ProcessFolder folder(u8"journal_fuzz_");
  const std::filesystem::path file = folder.Path / "x.journal";
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::string bytes = input.starts_with('R') ? std::string(input.substr(1)) : JournalOf(input);
  JournalHeader header;
  if (DecodeJournalHeader(bytes, header) != nullptr) return 0;
  // The file grows from some size on.
  WriteFile(file, bytes.substr(0, header.Size + (size * 31 % (bytes.size() - header.Size + 1))));
  std::vector<PlacedText> records;
  JournalReader reader(file);
  TakeAll(reader, records);
  WriteFile(file, bytes);
  TakeAll(reader, records);
  RequireProperty(records == SlowRecords(bytes), "the slow way finds the same records");
  return 0;
}
