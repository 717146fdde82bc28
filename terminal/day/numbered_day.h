// NumberedDay: a day's messages in the order and with the numbers in which they are sent: the download as 8111, its end
// as 8112, the live trades as 9101.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"
#include "terminal/common/run_files.h"
#include "terminal/day/message_source.h"

// LiveFrom: where in a day the download ends and the live part begins, as the user says it.
struct LiveFrom {
  enum class Kind : std::uint8_t {
    AsNumbered,  // each message keeps its number: 8111 is download, 9101 is live
    Count,       // so many trades are download
    TimeOfDay,   // trades before that second of the first trade's date are download
    Instant,     // trades before that second are download
  };
  Kind By = Kind::AsNumbered;
  std::int64_t Value = 0;
};

// "5000", "12:00:00" or "20131007-12:00:00"; nothing for any other text.
std::optional<LiveFrom> ParseLiveFrom(std::string_view text);

// Promises: no live trade and no end of a day comes before an 8112; a message that cannot be read is reported and
// passed. With LiveFrom::AsNumbered the trades of a wire file keep their numbers and its own 8112 stands; else trades
// are numbered anew and an 8112 of the file is dropped. Once live, a day stays live. All other messages pass as they
// are; a 30022 begins a new download, which again needs its 8112.
class NumberedDay {
 public:
  NumberedDay(std::unique_ptr<MessageSource> source, LiveFrom liveFrom);

  // Goes to the next message; false at the end of the day. Both views of it live until the next call.
  bool Next();
  // The message with its header parsed.
  CQORPacketReader& Message() noexcept { return *Reader; }
  // The same message as raw bytes.
  const WireFrame& Raw() const noexcept { return Shown; }
  bool IsTrade() const noexcept { return Reader->MessageNumber == 8111 || Reader->MessageNumber == 9101; }
  // The seconds of the trade's exchange time; nothing when it has none that can be read. Walks the message.
  std::optional<std::int64_t> TradeSeconds();
  // Reports the message to the user.
  void Report(const std::string& reason) { Source->Report(reason); }

 private:
  bool Parse(const WireFrame& frame);
  bool TakeNext();
  void ShowDownloadEnd();
  void Renumber();
  void SetNumber(std::uint16_t number);
  bool IsLive();

  std::unique_ptr<MessageSource> Source;
  LiveFrom From;
  CQORPacketWriter DownloadEnd;
  WireFrame Shown;
  WireFrame Held;  // a live trade that waits behind the 8112 before it
  std::optional<CQORPacketReader> Reader;
  std::int64_t TradeCount = 0;
  std::optional<std::int64_t> FirstDate;
  bool Live = false;
  bool DownloadEnded = false;
};

// DayInput: what a run reads its day from: the day's file with its securities and, but for a file of messages, its
// desk.
class DayInput {
 public:
  // Reads securities and desk. Throws TerminalError.
  DayInput(const RunFiles& files, std::optional<LiveFrom> live, BadLineReport& badLines);

  // The day from its begin. Any script opened before ends. Throws TerminalError.
  NumberedDay& Open();
  // The same with so many trades as its download.
  NumberedDay& OpenWithDownload(std::uint64_t trades);

  SecurityList Securities;

 private:
  NumberedDay& OpenFrom(LiveFrom live);

  std::filesystem::path Day;
  std::optional<LiveFrom> Live;
  BadLineReport& BadLines;
  std::optional<OrderDesk> Desk;  // a file of messages needs none
  std::optional<NumberedDay> Script;
};
