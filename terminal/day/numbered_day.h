// NumberedDay: the messages of a day in the order and with the numbers in which they are sent: the download as 8111,
// its end as 8112, the live trades as 9101.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"
#include "terminal/day/message_file.h"

// What the next step in a day is.
enum class DayStep : std::uint8_t {
  Message,
  NothingYet,  // of a feed: ask again later
  End,
};

// Gives the messages of a day one at a time.
class MessageSource {
 public:
  virtual ~MessageSource() = default;
  // The message is valid until the next call; it may be changed.
  virtual DayStep Next(RawMessage& frame) = 0;
  // Of a feed: the messages of Next have happened since it was connected.
  virtual bool IsCaughtUp() const { return false; }
  // Reports the last message to the user.
  virtual void Report(const std::string& reason) = 0;
};

// LiveFrom: where the download ends and the live part begins.
struct LiveFrom {
  enum class Kind : std::uint8_t {
    AsNumbered,  // each message keeps its number: 8111 is download, 9101 is live
    Count,       // so many trades are download
    TimeOfDay,   // trades before that second of the first trade's date are download
    Instant,     // trades before that second are download
    CaughtUp,    // trades are download until the source is caught up; nothing but trades is taken
  };
  Kind By = Kind::AsNumbered;
  std::int64_t Value = 0;
};

// "5000", "12:00:00" or "20131007-12:00:00"; nothing for any other text.
std::optional<LiveFrom> ParseLiveFrom(std::string_view text);

// An 8112 comes before every live trade and before the end of the day, of a feed as soon as it is caught up. Messages
// that cannot be read are reported and skipped. With LiveFrom::AsNumbered the trades and the 8112 of a wire file stay;
// otherwise trades are numbered anew and its 8112 is dropped. A day stays live. All other messages pass unchanged;
// after a 30022, which begins a new download, another 8112 comes.
class NumberedDay {
 public:
  NumberedDay(std::unique_ptr<MessageSource> source, LiveFrom liveFrom);

  // Goes to the next message. Both views are valid until the next call.
  DayStep Next();
  // The message with its header parsed.
  CQORPacketReader& Message() noexcept { return *Reader; }
  // The same message as raw bytes.
  const RawMessage& Raw() const noexcept { return Shown; }
  bool IsTrade() const noexcept { return Reader->MessageNumber == 8111 || Reader->MessageNumber == 9101; }
  // The seconds of the exchange time, if the trade has a valid one. Walks the message.
  std::optional<std::int64_t> TradeSeconds();
  // Reports the message to the user.
  void Report(const std::string& reason) { Source->Report(reason); }

 private:
  bool Parse(const RawMessage& frame);
  DayStep TakeNext();
  bool IsLeftOut();
  void ShowDownloadEnd();
  void Renumber();
  void SetNumber(std::uint16_t number);
  bool IsLive();

  std::unique_ptr<MessageSource> Source;
  LiveFrom From;
  CQORPacketWriter DownloadEnd;
  RawMessage Shown;
  RawMessage Held;  // a live trade that waits behind the 8112 before it
  std::optional<CQORPacketReader> Reader;
  std::int64_t TradeCount = 0;
  std::optional<std::int64_t> FirstDate;
  bool Live = false;
  bool DownloadEnded = false;
};
