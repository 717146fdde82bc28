// Replays every kept input of each fuzz target. A broken property ends the program with its message.
#include <gtest/gtest.h>

#include "fuzz/fuzz_functions.h"
#include "tests/support/files.h"

namespace {

TEST(FuzzCorpusTest, KeepsItsProperties) {
  const std::pair<const char*, int (*)(const std::uint8_t*, std::size_t)> targets[] = {
      {"packet_reader_fuzz", FuzzPacketReader},
      {"trade_decoder_fuzz", FuzzTradeDecoder},
      {"message_sequence_fuzz", FuzzMessageSequence},
      {"settings_text_fuzz", FuzzSettingsText},
      {"description_files_fuzz", FuzzDescriptionFiles},
      {"filter_text_fuzz", FuzzFilterText},
      {"journal_fuzz", FuzzJournal},
      {"fix_mapping_fuzz", FuzzFixMapping},
  };
  for (const auto& [target, function] : targets) {
    int inputs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(FUZZ_CORPUS_FOLDER) / target)) {
      SCOPED_TRACE(entry.path().string());
      const std::string input = ReadFile(entry.path());
      EXPECT_EQ(input.size(), entry.file_size());
      EXPECT_EQ(function(reinterpret_cast<const std::uint8_t*>(input.data()), input.size()), 0);
      ++inputs;
    }
    EXPECT_GE(inputs, 10) << target;
  }
}

}  // namespace
