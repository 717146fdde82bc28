// What the journal of one FIX session and day holds, and its bytes. Knows no files.
//
//   journal := header record*
//   header  := magic[8] u16 version u16 sessionSize u32 salt i64 created date[8] session[sessionSize] u32 headerSum
//   record  := mark[4] u32 textSize u8 kind u32 nextSender u32 nextTarget i64 timeUs u32 textSum u32 headSum
//              text[textSize]
//
// All words are little-endian, nothing is aligned. Sums are zlib's crc32: headerSum of the header before it, headSum of
// the record before it, textSum of the text; the sums of records go on from headerSum. headSum proves a text's size
// before the text is looked at. The salt is random, so that nobody who sends texts can write one that holds a record.
//
// A journal may have damage, which is bytes where no whole record begins: readers go on with the next whole record.
// What stands behind the last whole record is its tail: a record that is being written, or that was torn when its
// writer died.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

struct JournalIdentity {
  std::string Session;       // BeginString:SenderCompID->TargetCompID
  std::string Date;          // yyyyMMdd, the day of the session
  std::int64_t Created = 0;  // of the numbers, in seconds UTC since 1970: of the journal, then of the last Reset
};

enum class JournalKind : std::uint8_t {
  Message = 1,  // a message that the engine took, with the numbers behind it
  Refused = 2,  // one that it refused, with the numbers behind it
  Numbers = 3,  // numbers alone
  Reset = 4,    // the numbers begin at 1 again; what stands before stays valid
};

inline constexpr std::size_t kLargestJournalText = 1 << 20;

struct JournalRecord {
  JournalKind Kind = JournalKind::Numbers;
  std::uint32_t NextSender = 1;
  std::uint32_t NextTarget = 1;
  std::int64_t TimeUs = 0;  // of the write, in microseconds UTC since 1970
  std::string_view Text;    // the raw FIX message; valid until the next call of Next
  std::uint64_t Place = 0;  // of the record in the file
};

inline constexpr std::string_view kJournalMagic = "\x89TBJ\r\n\x1a\n";
inline constexpr std::uint16_t kJournalVersion = 1;
inline constexpr std::string_view kRecordMark = "\xfeREC";
inline constexpr std::size_t kHeaderFixedSize = 32;
inline constexpr std::size_t kSumSize = 4;
inline constexpr std::size_t kLongestSession = 1024;
inline constexpr std::size_t kLargestHeader = kHeaderFixedSize + kLongestSession + kSumSize;
inline constexpr std::size_t kRecordHeadSize = 33;
inline constexpr std::size_t kLargestRecord = kRecordHeadSize + kLargestJournalText;

struct JournalHeader {
  JournalIdentity Identity;
  std::uint32_t Sum = 0;  // the sums of records go on from it
  std::size_t Size = 0;
};

// Requires a session of 1 to kLongestSession bytes and a date of 8.
std::string EncodeJournalHeader(const JournalIdentity& identity, std::uint32_t salt);
// Of the whole header of that session's journals.
inline std::size_t JournalHeaderSize(const std::string& session) noexcept {
  return kHeaderFixedSize + session.size() + kSumSize;
}
// Null, or why no journal begins with the bytes, as the end of a sentence that begins with the file's name.
const char* DecodeJournalHeader(std::string_view bytes, JournalHeader& header);
// Replaces the bytes by those of the record. Requires a text of at most kLargestJournalText bytes.
void EncodeJournalRecord(const JournalRecord& record, std::uint32_t headerSum, std::string& bytes);

struct RecordHead {
  std::size_t TextSize = 0;
  std::uint32_t TextSum = 0;
};
// True if the bytes begin with a whole head; then the record has all but its text.
bool DecodeRecordHead(std::string_view bytes, std::uint32_t headerSum, JournalRecord& record, RecordHead& head);
bool IsWholeText(std::string_view text, std::uint32_t headerSum, const RecordHead& head) noexcept;
