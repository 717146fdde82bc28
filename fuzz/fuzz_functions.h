// One function for each fuzz target: any bytes go in, and a broken property ends the process with a message.
// Run by libFuzzer (fuzzer_entry.cpp) and, over the kept inputs, by the ordinary tests (fuzz_corpus_test.cpp).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// The bytes as they come from the terminal, before any header is known.
int FuzzPacketReader(const std::uint8_t* data, std::size_t size);
// The fields of a trade message.
int FuzzTradeDecoder(const std::uint8_t* data, std::size_t size);
// A byte that says which books are open, then messages.
int FuzzMessageSequence(const std::uint8_t* data, std::size_t size);
// A settings file or column profile.
int FuzzSettingsText(const std::uint8_t* data, std::size_t size);
// EXCHANGETRADEFORMAT.TXT or TRADEBOOKEXPORT.TXT.
int FuzzDescriptionFiles(const std::uint8_t* data, std::size_t size);
// A byte for the column, the text of its filter field, a line end, and the cell as in the record.
int FuzzFilterText(const std::uint8_t* data, std::size_t size);
// R and a journal, or the pieces that one is made of.
int FuzzJournal(const std::uint8_t* data, std::size_t size);
// FIX messages, one on a line, with | for SOH; without head and trailer if a line does not begin with 8=.
int FuzzFixMapping(const std::uint8_t* data, std::size_t size);

inline void RequireProperty(bool holds, const char* property) {
  if (holds) return;
  std::fprintf(stderr, "broken: %s\n", property);
  std::abort();
}
