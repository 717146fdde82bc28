// FIX messages as text: VenueText builds one, VenueFrames cuts them out of a stream, VenueField finds a field in one.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

inline constexpr char kFieldEnd = '\x01';

// Microseconds UTC since 1970.
using VenueTime = std::int64_t;
VenueTime VenueNow();

// "20260301-09:00:00.000"
std::string SendingTimeText(VenueTime time);

// The body of a message, from 35= on, in the order in which fields are added.
class VenueText {
 public:
  VenueText& Add(int tag, std::string_view value);
  VenueText& Add(int tag, std::uint64_t value);
  // The shortest decimal that is that number, without an exponent.
  VenueText& AddNumber(int tag, double value);
  VenueText& AddIfFilled(int tag, std::string_view value) { return value.empty() ? *this : Add(tag, value); }
  VenueText& Append(const VenueText& fields);

  // With begin, length and checksum around it.
  std::string Message(std::string_view beginString) const;

 private:
  std::string Body;
};

// The value of the first field with that tag; empty for none.
std::string_view VenueField(std::string_view message, int tag);
// The value as a number; 0 for none, and for what is no number.
std::uint64_t VenueNumber(std::string_view message, int tag);

class VenueFrames {
 public:
  void Append(std::string_view bytes) { Bytes += bytes; }
  // Takes the next whole message; drops what is garbled. False if more bytes are needed.
  bool Take(std::string& message);
  void Clear() { Bytes.clear(); }
  // Waits for the end of a message that is longer than any initiator's.
  bool IsTooLong() const { return Bytes.size() > kLongest; }

 private:
  static constexpr std::size_t kLongest = 1 << 20;
  std::string Bytes;
};
