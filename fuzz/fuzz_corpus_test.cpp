// Replays every kept input of each fuzz target. A broken property ends the program with its message.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "fuzz/fuzz_functions.h"

namespace {

void Replay(const char* target, int (*function)(const std::uint8_t*, std::size_t)) {
  std::set<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(FUZZ_CORPUS_FOLDER) / target))
    files.insert(entry.path());
  EXPECT_GE(files.size(), 10u);
  for (const auto& path : files) {
    SCOPED_TRACE(path.filename().string());
    std::ifstream file(path, std::ios::binary);
    const std::string input(std::istreambuf_iterator<char>(file), {});
    ASSERT_TRUE(file.is_open());
    EXPECT_EQ(function(reinterpret_cast<const std::uint8_t*>(input.data()), input.size()), 0);
  }
}

TEST(FuzzCorpusTest, PacketReader) {
  Replay("packet_reader_fuzz", FuzzPacketReader);
}
TEST(FuzzCorpusTest, TradeDecoder) {
  Replay("trade_decoder_fuzz", FuzzTradeDecoder);
}
TEST(FuzzCorpusTest, MessageSequence) {
  Replay("message_sequence_fuzz", FuzzMessageSequence);
}
TEST(FuzzCorpusTest, SettingsText) {
  Replay("settings_text_fuzz", FuzzSettingsText);
}
TEST(FuzzCorpusTest, DescriptionFiles) {
  Replay("description_files_fuzz", FuzzDescriptionFiles);
}
TEST(FuzzCorpusTest, FilterText) {
  Replay("filter_text_fuzz", FuzzFilterText);
}

}  // namespace
