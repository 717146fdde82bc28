#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_functions.h"
#include "host_link/messages/packet_reader.h"
#include "tests/host_link/link_fixtures.h"

namespace {

constexpr std::size_t kLargestInput = 65535;

// The result of one message: its fields as tag and place, and the bytes after the number.
struct Reading {
  bool Accepted = false;
  std::uint16_t Number = 0, Needed = 0, Consumed = 0;
  std::vector<unsigned> Fields;
  std::string Rest;

  bool SameMessage(const Reading& other) const {
    return Accepted == other.Accepted && Number == other.Number && Fields == other.Fields && Rest == other.Rest;
  }
};

void RequireInside(const CQORPacketReader& reader, const ExactBytes& bytes) {
  RequireProperty(reader.Cursor <= reader.End, "the cursor stays before the end");
  const std::uint8_t* start = reader.Data;
  const bool inInput = start >= bytes.Data() && start + reader.End <= bytes.Data() + bytes.Size();
  const bool inDecoded = start == reader.DecodedBuffer && reader.End <= reader.DecodedLength;
  RequireProperty(inInput || inDecoded, "the readable bytes lie in the input or in the decoded form");
}

Reading Read(std::string_view input) {
  const ExactBytes bytes(input);
  CQORPacketReader reader(bytes.Data(), bytes.Size());
  Reading reading;
  reading.Accepted = reader.ParseHeader(reading.Needed, reading.Consumed);
  RequireProperty(reading.Consumed <= input.size(), "no more is consumed than was given");
  RequireProperty(reading.Needed >= 10, "a message takes its header at least");
  if (!reading.Accepted) {
    const std::size_t left = input.size() - reading.Consumed;
    RequireProperty(reading.Needed == 10 || reading.Needed > left, "an incomplete message needs more than there is");
    return reading;
  }
  RequireInside(reader, bytes);
  reading.Number = reader.MessageNumber;
  const unsigned start = reader.Cursor;
  reading.Rest.assign(reinterpret_cast<const char*>(reader.Data) + start, reader.End - start);
  for (unsigned before = start; reader.NextTag(); before = reader.Cursor) {
    RequireProperty(reader.Cursor >= before + 3u, "a field takes its mark and tag");
    reading.Fields.insert(reading.Fields.end(), {reader.Tag, reader.Cursor - start, reader.SkipValue()});
    RequireInside(reader, bytes);
  }
  RequireInside(reader, bytes);
  return reading;
}

std::string Enciphered(std::string text) {
  ApplyCipher(CipherKeyForTest::kKey, reinterpret_cast<std::uint8_t*>(text.data()),
              static_cast<std::uint32_t>(text.size()));
  return text;
}

void RequireSame(const Reading& reading, const std::string& message, const char* property) {
  if (message.size() <= kLargestInput) RequireProperty(reading.SameMessage(Read(message)), property);
}

// The same number and bytes in every form that a message may have.
void CheckForms(const Reading& reading) {
  const std::string body = WireU16(10002, reading.Number) + reading.Rest;
  RequireSame(reading, WireFrame(body), "the plain form reads the same");
  if (const std::string small = Deflated(body); small.size() < kLargestInput - 10)
    RequireSame(reading, WireFrame(small, 1), "the compressed form reads the same");
  if (CipherKeyHolder != nullptr) {
    RequireSame(reading, WireFrame(Enciphered(body), 2), "the enciphered form reads the same");
    RequireSame(reading, WireFrame(Enciphered(body), 100), "so it does as mode 100");
  }
}

void CheckInput(std::string_view input) {
  // Any bytes may follow the number of a message.
  const std::string fields(input.substr(0, kLargestInput - 20));
  const Reading asFields = Read(WireMessage(8111, fields));
  RequireProperty(asFields.Accepted && asFields.Number == 8111 && asFields.Rest == fields, "any fields are taken");
  CheckForms(asFields);
  const Reading reading = Read(input);
  if (!reading.Accepted) return;
  const std::string message(input.substr(0, reading.Consumed));
  RequireSame(reading, message, "bytes behind a message do not matter");
  RequireSame(reading, message + "#\x01", "bytes put behind a message do not matter");
  RequireSame(reading, "\x01\x02" + message, "bytes put before a message do not matter");
  CheckForms(reading);
}

}  // namespace

int FuzzPacketReader(const std::uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), std::min(size, kLargestInput));
  CheckInput(input);
  const CipherKeyForTest key;
  CheckInput(input);
  return 0;
}
