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
class Journal {
 public:
  // Opens the journal, or makes it with both numbers at 1. Cuts a torn record at the end and keeps its bytes beside the
  // file. Throws FeedError: in use by another process, no journal, another session, not writable.
  Journal(const std::filesystem::path& folder, const std::string& session, const std::string& date);
  ~Journal();
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  // False, with the reason in Failure and the file as it was, if the record could not be written whole. The numbers are
  // those of NextSender and NextTarget from then on.
  bool Append(JournalKind kind, std::uint32_t nextSender, std::uint32_t nextTarget, std::string_view text);

  std::uint32_t NextSender() const noexcept;
  std::uint32_t NextTarget() const noexcept;
  const JournalIdentity& Identity() const noexcept;
  const std::filesystem::path& File() const noexcept;
  const std::string& Failure() const noexcept;
  // Bytes that were cut when it was opened.
  std::uint64_t CutBytes() const noexcept;

 private:
  struct State;
  std::unique_ptr<State> Self;
};
