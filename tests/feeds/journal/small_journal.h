// A journal of three records as literal bytes, and what readers give of a file.
#pragma once

#include <tuple>
#include <vector>

#include "feeds/journal/journal_reader.h"
#include "tests/support/wire_bytes.h"

inline const std::string kSmallSession = "FIX.4.4:DESK->VENUE", kSmallDate = "20260302";

inline std::string Text(const Bytes& bytes) {
  return {bytes.begin(), bytes.end()};
}

// The header, then a message, numbers and a reset. The last element is the end.
inline constexpr std::size_t kSmallPlaces[] = {55, 103, 136, 169};
inline std::string SmallJournal() {
  return Text(
      Hex("89 'TBJ' 0D0A1A0A 0100 1300 44332211 8043A56900000000 '20260302FIX.4.4:DESK->VENUE' 2F2A90EF"
          "FE 'REC' 0F000000 01 02000000 03000000 40C239F9054C0600 6A55E663 10510AF1 '8=FIX.4.4' 01 '35=8' 01"
          "FE 'REC' 00000000 03 03000000 03000000 402247F9054C0600 2F2A90EF A1844B33"
          "FE 'REC' 00000000 04 01000000 01000000 00285FA6074C0600 2F2A90EF A4F6B91E"));
}

using Given = std::tuple<JournalKind, std::uint32_t, std::uint32_t, std::int64_t, std::string, std::uint64_t>;
inline const std::vector<Given> kSmallRecords = {{JournalKind::Message, 2, 3, 1772438400123456,
                                                  "8=FIX.4.4\x01"
                                                  "35=8\x01",
                                                  55},
                                                 {JournalKind::Numbers, 3, 3, 1772438401000000, "", 103},
                                                 {JournalKind::Reset, 1, 1, 1772445600000000, "", 136}};

// All that the reader has now.
inline std::vector<Given> Rest(JournalReader& reader) {
  std::vector<Given> records;
  for (JournalRecord record; reader.Next(record);)
    records.emplace_back(record.Kind, record.NextSender, record.NextTarget, record.TimeUs, record.Text, record.Place);
  return records;
}

inline std::vector<std::string> TextsOf(const std::filesystem::path& file) {
  std::vector<std::string> texts;
  JournalReader reader(file);
  for (JournalRecord record; reader.Next(record);) texts.emplace_back(record.Text);
  return texts;
}
