// ExportFile: a file of a million lines, written in large blocks. Every failure is silent: what cannot be opened or
// written is left away. One thread at a time.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>

#include "trade_data/daily_file/line_buffer.h"

class ExportFile {
 public:
  // Empties the file or makes it. Written in binary: line ends are what the caller makes them.
  explicit ExportFile(const std::filesystem::path& path);
  ~ExportFile();
  ExportFile(const ExportFile&) = delete;
  ExportFile& operator=(const ExportFile&) = delete;

  // The block's text to go on behind, with room for that many characters; before that it may go to the file.
  LineBuffer& Room(std::size_t characters) {
    if (Block.Text().size() + characters > Size) MakeRoom(characters);
    return Block;
  }

 private:
  void MakeRoom(std::size_t characters);
  void WriteBlock();

  std::ofstream Stream;
  LineBuffer Block;
  std::size_t Size;
};

// Told now and then how many rows are written of how many. It may show that, and must let no trade come in meanwhile:
// the rows are references into the cache.
using ExportProgress = std::function<void(std::size_t rowsDone, std::size_t rowsInAll)>;

class ProgressTeller {
 public:
  ProgressTeller(const ExportProgress& tell, std::size_t rowsInAll) : Tell(tell), InAll(rowsInAll) {}
  void RowDone() {
    if (++Done % kInterval == 0 && Tell) Tell(Done, InAll);
  }

 private:
  static constexpr std::size_t kInterval = 20'000;
  const ExportProgress& Tell;
  std::size_t InAll;
  std::size_t Done = 0;
};
