#include "feeds/journal/journal.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <system_error>

#include "feeds/common/feed_report.h"
#include "feeds/journal/file_failure.h"
#include "platform/growing_file.h"

namespace {

constexpr std::int64_t kMicrosecondsOfSecond = 1'000'000;

std::int64_t NowUs() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

bool IsDate(const std::string& text) {
  return text.size() == 8 && text.find_first_not_of("0123456789") == text.npos;
}

}  // namespace

struct Journal::State {
  State(const std::filesystem::path& folder, const std::string& session, const std::string& date);

  void Hold();
  std::string ReadHeader();
  bool IsTornHeader(const std::string& begin) const;
  void Begin();
  void GoOn(const std::string& begin);
  void CutTail(std::uint64_t size);
  void KeepTorn(std::uint64_t size);
  bool Write(std::string_view bytes);

  std::filesystem::path Path;
  GrowingFile File;
  JournalHeader Header;
  JournalRecord Last;     // numbers and kind of the last record
  std::uint64_t End = 0;  // of the last whole record
  std::uint64_t Cut = 0;
  std::uint64_t Damaged = 0;
  std::string Bytes;  // of the record that is written
  std::string Failure;
};

Journal::State::State(const std::filesystem::path& folder, const std::string& session, const std::string& date)
    : Path(JournalPath(folder, session, date)) {
  if (session.empty() || session.size() > kLongestSession || !IsDate(date))
    throw FeedError("no journal can be kept of the session \"" + session + "\" and the day \"" + date + '"');
  Header.Identity = {session, date, NowUs() / kMicrosecondsOfSecond};
  std::error_code ignored;  // opening the file tells it
  std::filesystem::create_directories(folder, ignored);
  Hold();
  const std::string begin = ReadHeader();
  if (IsTornHeader(begin)) {
    CutTail(begin.size());
    Begin();
  } else {
    GoOn(begin);
  }
}

void Journal::State::Hold() {
  bool isHeld = false;
  if (File.OpenToWrite(Path, isHeld)) return;
  throw FeedError(isHeld ? PathInSentence(Path) + " is in use by another process" : FileFailure("cannot open", Path));
}

std::string Journal::State::ReadHeader() {
  std::string begin(kLargestHeader, '\0');
  std::size_t got = 0;
  if (!File.Read(0, begin.data(), begin.size(), got)) throw FeedError(FileFailure("cannot read", Path));
  begin.resize(got);
  return begin;
}

// Too short for a journal of this session, so that it cannot hold a record, and begun as one, or empty.
bool Journal::State::IsTornHeader(const std::string& begin) const {
  const std::size_t known = std::min(begin.size(), kJournalMagic.size());
  return begin.size() < JournalHeaderSize(Header.Identity.Session) &&
         kJournalMagic.substr(0, known) == std::string_view(begin).substr(0, known);
}

void Journal::State::Begin() {
  const std::string bytes = EncodeJournalHeader(Header.Identity, std::random_device()());
  if (!Write(bytes)) throw FeedError(Failure);
  DecodeJournalHeader(bytes, Header);
}

void Journal::State::GoOn(const std::string& begin) {
  JournalHeader found;
  if (const char* refusal = DecodeJournalHeader(begin, found); refusal != nullptr)
    throw FeedError(PathInSentence(Path) + ' ' + refusal);
  if (found.Identity.Session != Header.Identity.Session || found.Identity.Date != Header.Identity.Date)
    throw FeedError(PathInSentence(Path) + " is the journal of " + found.Identity.Session + " of " +
                    found.Identity.Date + ", not of " + Header.Identity.Session + " of " + Header.Identity.Date);
  JournalReader reader(Path);
  while (reader.Next(Last)) {  // the last one has the numbers
  }
  Last.Text = {};
  Header = found;
  Header.Identity.Created = reader.Identity().Created;
  Damaged = reader.DamagedBytes();
  std::uint64_t size = 0;
  if (!File.Size(size)) throw FeedError(FileFailure("cannot read", Path));
  End = size - std::min(size, reader.BytesBehind());
  CutTail(size);
}

// Cuts what stands between the last whole record and that size.
void Journal::State::CutTail(std::uint64_t size) {
  Cut = size - End;
  if (Cut == 0) return;
  KeepTorn(size);
  if (!File.Cut(End)) throw FeedError(FileFailure("cannot cut", Path));
}

void Journal::State::KeepTorn(std::uint64_t size) {
  const std::filesystem::path tornPath = std::filesystem::path(Path) += ".torn";
  GrowingFile torn;
  bool isHeld = false;
  std::uint64_t tornEnd = 0;
  if (!torn.OpenToWrite(tornPath, isHeld) || !torn.Size(tornEnd)) throw FeedError(FileFailure("cannot open", tornPath));
  std::string bytes(kLargestRecord, '\0');
  std::size_t got = 0;
  for (std::uint64_t place = End; place < size; place += got, tornEnd += got) {
    if (!File.Read(place, bytes.data(), std::min<std::uint64_t>(bytes.size(), size - place), got) || got == 0)
      throw FeedError(FileFailure("cannot read", Path));
    if (!torn.Write(tornEnd, {bytes.data(), got})) throw FeedError(FileFailure("cannot write to", tornPath));
  }
}

// At End. If they cannot all be written, the file keeps none of them; should cutting fail as well, they are a tail,
// which the next write replaces.
bool Journal::State::Write(std::string_view bytes) {
  if (!File.Write(End, bytes)) {
    Failure = FileFailure("cannot write to", Path);
    File.Cut(End);
    return false;
  }
  End += bytes.size();
  return true;
}

Journal::Journal(const std::filesystem::path& folder, const std::string& session, const std::string& date)
    : Self(std::make_unique<State>(folder, session, date)) {}
Journal::~Journal() = default;

bool Journal::Append(JournalKind kind, std::uint32_t nextSender, std::uint32_t nextTarget, std::string_view text) {
  if (text.size() > kLargestJournalText) {
    Self->Failure = "a message of " + std::to_string(text.size()) + " bytes is larger than a journal takes";
    return false;
  }
  const bool isReset = kind == JournalKind::Reset;
  JournalRecord record{kind, isReset ? 1 : nextSender, isReset ? 1 : nextTarget, NowUs(), text, Self->End};
  EncodeJournalRecord(record, Self->Header.Sum, Self->Bytes);
  if (!Self->Write(Self->Bytes)) return false;
  if (isReset) Self->Header.Identity.Created = record.TimeUs / kMicrosecondsOfSecond;
  Self->Last = record;
  Self->Last.Text = {};
  return true;
}

std::uint32_t Journal::NextSender() const noexcept {
  return Self->Last.NextSender;
}

std::uint32_t Journal::NextTarget() const noexcept {
  return Self->Last.NextTarget;
}

const JournalIdentity& Journal::Identity() const noexcept {
  return Self->Header.Identity;
}

const std::filesystem::path& Journal::File() const noexcept {
  return Self->Path;
}

const std::string& Journal::Failure() const noexcept {
  return Self->Failure;
}

std::uint64_t Journal::CutBytes() const noexcept {
  return Self->Cut;
}

std::uint64_t Journal::DamagedBytes() const noexcept {
  return Self->Damaged;
}
