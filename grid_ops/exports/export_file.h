// ExportFile: a text file of many lines, written in large blocks. VisitTrades: a walk over all trades with progress.
#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string_view>

#include "trade_data/cache/trade_cache.h"
#include "trade_data/daily_file/line_buffer.h"

// Failures are silent: a file that cannot be opened or written loses its text.
class ExportFile {
 public:
  // Creates or truncates the file. Binary: the caller writes the line ends.
  explicit ExportFile(const std::filesystem::path& path) : Stream(path, std::ios::binary | std::ios::trunc) {
    Block.Start(Size);
  }
  ~ExportFile() { WriteBlock(); }
  ExportFile(const ExportFile&) = delete;
  ExportFile& operator=(const ExportFile&) = delete;

  // The block to append to, with room for that many characters. Writes the block to the file first if it is full.
  LineBuffer& Room(std::size_t characters) {
    if (Block.Text().size() + characters > Size) MakeRoom(characters);
    return Block;
  }

 private:
  void MakeRoom(std::size_t characters) {
    WriteBlock();
    Size = std::max(Size, characters);
    Block.Start(Size);
  }
  void WriteBlock() { Stream.write(Block.Text().data(), static_cast<std::streamsize>(Block.Text().size())); }

  std::ofstream Stream;
  LineBuffer Block;
  std::size_t Size = 256 * 1024;
};

// Called after every so many rows. Must not let trades arrive: the rows are references into the cache.
using ExportProgress = std::function<void(std::size_t rowsDone, std::size_t rowsInAll)>;

class ProgressTeller {
 public:
  static constexpr std::size_t kInterval = 20'000;

  ProgressTeller(const ExportProgress& tell, std::size_t rowsInAll) : Tell(tell), InAll(rowsInAll) {}
  void RowDone() {
    if (++Done % kInterval == 0 && Tell) Tell(Done, InAll);
  }

 private:
  const ExportProgress& Tell;
  std::size_t InAll;
  std::size_t Done = 0;
};

// Calls visit(server, trade) for every trade of the cache, by server and id.
template <typename Visit>
void VisitTrades(const ServerTrades& servers, const ExportProgress& progress, Visit visit) {
  std::size_t rowsInAll = 0;
  for (const auto& [server, trades] : servers) rowsInAll += trades.Size();
  ProgressTeller teller(progress, rowsInAll);
  for (const auto& [server, trades] : servers)
    for (const TradeMap::Entry trade : trades) {
      visit(std::string_view(server), trade);
      teller.RowDone();
    }
}
