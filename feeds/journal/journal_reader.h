// JournalReader: the records of a journal, also while another process appends to it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

#include "feeds/journal/journal_format.h"

// Next returns false at the last whole record, and goes on from there when there is more. Bytes without a whole record
// are skipped and counted once a whole record follows them. Until then they are the tail, where a record may just be
// written: it is read anew with every call.
//
// Reads blocks of 256 KiB; the block grows to the largest record that there is, at most to a little over 1 MiB. A call
// at the end costs two system calls. Call it from one thread.
class JournalReader {
 public:
  // Throws FeedError if the file cannot be read or is no journal.
  explicit JournalReader(const std::filesystem::path& file);
  ~JournalReader();
  JournalReader(const JournalReader&) = delete;
  JournalReader& operator=(const JournalReader&) = delete;

  // Created is that of the last Reset that was read, if any.
  const JournalIdentity& Identity() const noexcept;
  // False, with the record unchanged, if there is none now. Throws FeedError if the file cannot be read any more.
  bool Next(JournalRecord& record);
  // The text of the record at that place; empty if there is none. The text of the last record stays valid. Throws
  // FeedError if the file cannot be read any more.
  std::string TextAt(std::uint64_t place);
  // Bytes that were skipped so far.
  std::uint64_t DamagedBytes() const noexcept;
  // Bytes of the file that Next has not read, with the tail.
  std::uint64_t BytesBehind() const;

 private:
  struct State;
  std::unique_ptr<State> Self;
};

// True for a file that begins as a journal does.
bool IsJournalFile(const std::filesystem::path& file);
// FOLDER/SESSION-DATE.journal. Of the session, letters, digits, dots and hyphens are kept, all others become
// underscores.
std::filesystem::path JournalPath(const std::filesystem::path& folder, const std::string& session,
                                  const std::string& date);
