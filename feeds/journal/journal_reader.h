// The journal of one FIX session and day: the file format, and JournalReader.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

struct JournalIdentity {
  std::string Session;       // BeginString:SenderCompID->TargetCompID
  std::string Date;          // yyyyMMdd, the day of the session
  std::int64_t Created = 0;  // of the numbers, in seconds UTC since 1970
};

enum class JournalKind : std::uint8_t {
  Message = 1,  // a message that the engine took, with the numbers behind it
  Refused = 2,  // one that it refused, with the numbers behind it
  Numbers = 3,  // numbers alone
  Reset = 4,    // the numbers begin at 1 again; what stands before stays valid
};

struct JournalRecord {
  JournalKind Kind = JournalKind::Numbers;
  std::uint32_t NextSender = 1;
  std::uint32_t NextTarget = 1;
  std::int64_t TimeUs = 0;  // of the write, in microseconds UTC since 1970
  std::string_view Text;    // the raw FIX message; valid until the next call
  std::uint64_t Place = 0;  // of the record in the file
};

// Reads while another process appends: Next returns false at the last whole record, and goes on from there when there
// is more. A record whose checksum is wrong is skipped if a whole one follows; the skipped bytes are counted.
class JournalReader {
 public:
  // Throws FeedError if the file cannot be read or is no journal.
  explicit JournalReader(const std::filesystem::path& file);
  ~JournalReader();
  JournalReader(const JournalReader&) = delete;
  JournalReader& operator=(const JournalReader&) = delete;

  const JournalIdentity& Identity() const noexcept;
  // Throws FeedError if the file cannot be read any more.
  bool Next(JournalRecord& record);
  // The text of the record at that place; empty if there is none.
  std::string TextAt(std::uint64_t place);
  // Bytes of damaged records that were skipped so far.
  std::uint64_t DamagedBytes() const noexcept;
  // Bytes of the file that Next has not read.
  std::uint64_t BytesBehind() const;

 private:
  struct State;
  std::unique_ptr<State> Self;
};

// True for a file that begins as a journal does.
bool IsJournalFile(const std::filesystem::path& file);
// FOLDER/SESSION-DATE.journal, with the characters of the session that files cannot have replaced.
std::filesystem::path JournalPath(const std::filesystem::path& folder, const std::string& session,
                                  const std::string& date);
