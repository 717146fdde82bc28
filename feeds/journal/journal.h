// Journal: the append side of the journal, which is the record of what came and the store of the session's numbers.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "feeds/journal/journal_reader.h"

// One append is one write: numbers and text stand or fall together, so a process may be killed at any time. Not flushed
// to the disk for each record, as the counterparty sends again what a machine that failed had not kept. One process at
// a time; call it from one thread.
//
// An append costs one system call. Opening reads the whole file once. On Linux only the owner may read the files, and
// the process ignores SIGXFSZ from then on (platform/growing_file.h).
class Journal {
 public:
  // Opens the journal, or makes it, and its folder, with both numbers at 1. Cuts the tail and appends its bytes to the
  // file of the same name with ".torn"; whole records and damage before them stay. Throws FeedError: in use by another
  // process, no journal, another session or day, a damaged header, not writable.
  Journal(const std::filesystem::path& folder, const std::string& session, const std::string& date);
  ~Journal();
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  // False, with the reason in Failure and the file as it was, if the record could not be written whole or the text is
  // larger than kLargestJournalText; later appends may work. The numbers are those of NextSender and NextTarget from
  // then on. A Reset sets both to 1, whatever is passed, and the creation time to now.
  bool Append(JournalKind kind, std::uint32_t nextSender, std::uint32_t nextTarget, std::string_view text);

  std::uint32_t NextSender() const noexcept;
  std::uint32_t NextTarget() const noexcept;
  const JournalIdentity& Identity() const noexcept;
  const std::filesystem::path& File() const noexcept;
  const std::string& Failure() const noexcept;
  // Bytes that were cut when it was opened.
  std::uint64_t CutBytes() const noexcept;
  // Bytes of damage that was skipped when it was opened.
  std::uint64_t DamagedBytes() const noexcept;

 private:
  struct State;
  std::unique_ptr<State> Self;
};
