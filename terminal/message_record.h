// CMessageRecord: writes the messages of a day one after the other into a file, plain or compressed. One thread.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>

#include "host_link/packet_reader.h"

class CMessageRecord {
 public:
  // mode is that of the messages written. Throws TerminalError when the file cannot be made.
  CMessageRecord(std::filesystem::path path, std::uint16_t mode);

  // Writes a message whose header has been parsed, with the number that its bytes have. False for one that does not fit
  // the writer's limit; a failed write is a TerminalError.
  bool Write(const CQORPacketReader& message);
  // To be called behind the last message: what the system still holds back is written, or the failure thrown.
  void Close();

 private:
  std::filesystem::path FilePath;
  std::uint16_t Mode;
  std::ofstream Stream;
};
