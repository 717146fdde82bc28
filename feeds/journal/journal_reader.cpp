#include "feeds/journal/journal_reader.h"

#include <algorithm>

#include "feeds/common/feed_report.h"
#include "feeds/journal/file_failure.h"
#include "platform/growing_file.h"

namespace {

constexpr std::size_t kBlockSize = 256 * 1024;

[[noreturn]] void ThrowUnreadable(const std::filesystem::path& file) {
  throw FeedError(FileFailure("cannot read", file));
}

}  // namespace

struct JournalReader::State {
  explicit State(const std::filesystem::path& file);

  std::uint64_t Size() const;
  void Fill(std::uint64_t place, std::size_t size);
  std::string_view Fetch(std::uint64_t place, std::size_t size);
  bool ReadRecord(std::uint64_t place, JournalRecord& record);
  std::uint64_t FindRecord(std::uint64_t from, JournalRecord& record);
  bool SkipDamage(JournalRecord& record);

  std::filesystem::path Path;
  GrowingFile File;
  JournalHeader Header;
  std::uint64_t Place = 0;     // behind the last record that was given
  std::uint64_t Damaged = 0;   // bytes
  std::uint64_t Searched = 0;  // size of the file when no whole record was found in its tail; 0 for no such search
  // What stands at BlockPlace of the file, as it was when it was read.
  std::unique_ptr<char[]> Block;
  std::size_t BlockRoom = 0;
  std::size_t BlockSize = 0;
  std::uint64_t BlockPlace = 0;
};

JournalReader::State::State(const std::filesystem::path& file) : Path(file) {
  if (!File.OpenToRead(file)) ThrowUnreadable(file);
  if (const char* refusal = DecodeJournalHeader(Fetch(0, kLargestHeader), Header); refusal != nullptr)
    throw FeedError(PathInSentence(file) + ' ' + refusal);
  Place = Header.Size;
}

std::uint64_t JournalReader::State::Size() const {
  std::uint64_t size = 0;
  if (!File.Size(size)) ThrowUnreadable(Path);
  return size;
}

void JournalReader::State::Fill(std::uint64_t place, std::size_t size) {
  if (BlockRoom < size) {
    BlockRoom = std::max(size, kBlockSize);
    Block = std::make_unique_for_overwrite<char[]>(BlockRoom);
  }
  BlockSize = 0;
  BlockPlace = place;
  if (!File.Read(place, Block.get(), BlockRoom, BlockSize)) ThrowUnreadable(Path);
}

// The bytes at that place, fewer at the end of the file. What is not in the block whole is read anew: a record that was
// half written may have been replaced by another one.
std::string_view JournalReader::State::Fetch(std::uint64_t place, std::size_t size) {
  if (place < BlockPlace || place + size > BlockPlace + BlockSize) Fill(place, size);
  const auto at = static_cast<std::size_t>(place - BlockPlace);
  return std::string_view(Block.get(), BlockSize).substr(at, size);
}

bool JournalReader::State::ReadRecord(std::uint64_t place, JournalRecord& record) {
  RecordHead head;
  if (!DecodeRecordHead(Fetch(place, kRecordHeadSize), Header.Sum, record, head)) return false;
  std::string_view bytes = Fetch(place, kRecordHeadSize + head.TextSize);
  bytes.remove_prefix(std::min(bytes.size(), kRecordHeadSize));
  record.Text = bytes;
  record.Place = place;
  return IsWholeText(record.Text, Header.Sum, head);
}

// The place of the first whole record from there on; 0 if there is none.
std::uint64_t JournalReader::State::FindRecord(std::uint64_t from, JournalRecord& record) {
  for (std::uint64_t place = from;;) {
    if (Fetch(place, kRecordMark.size()).size() < kRecordMark.size()) return 0;
    const std::string_view rest = std::string_view(Block.get(), BlockSize).substr(place - BlockPlace);
    const std::size_t at = rest.find(kRecordMark);
    place += std::min(at, rest.size() - kRecordMark.size() + 1);
    if (at == rest.npos) continue;
    if (ReadRecord(place, record)) return place;
    ++place;
  }
}

// Gives the next whole record, if any, where none begins at Place.
bool JournalReader::State::SkipDamage(JournalRecord& record) {
  const std::uint64_t size = Size();
  if (size <= Place || size == Searched) return false;
  // A record that was not whole then may be whole now.
  const std::uint64_t from = std::max(Place + 1, Searched - std::min<std::uint64_t>(Searched, kLargestRecord));
  const std::uint64_t found = FindRecord(from, record);
  Searched = found == 0 ? size : 0;
  if (found == 0) return false;
  // The one at Place was written before the one that was found: if it was read while it was written, it is whole now.
  BlockSize = 0;
  if (ReadRecord(Place, record)) return true;
  if (!ReadRecord(found, record)) return false;
  Damaged += found - Place;
  return true;
}

JournalReader::JournalReader(const std::filesystem::path& file) : Self(std::make_unique<State>(file)) {}
JournalReader::~JournalReader() = default;

const JournalIdentity& JournalReader::Identity() const noexcept {
  return Self->Header.Identity;
}

bool JournalReader::Next(JournalRecord& record) {
  constexpr std::int64_t kMicroseconds = 1'000'000;
  JournalRecord next;
  if (!Self->ReadRecord(Self->Place, next) && !Self->SkipDamage(next)) {
    Self->BlockSize = 0;  // the tail is read anew
    return false;
  }
  record = next;
  Self->Place = record.Place + kRecordHeadSize + record.Text.size();
  Self->Searched = 0;
  if (record.Kind == JournalKind::Reset) Self->Header.Identity.Created = record.TimeUs / kMicroseconds;
  return true;
}

std::string JournalReader::TextAt(std::uint64_t place) {
  char headBytes[kRecordHeadSize];
  std::size_t got = 0;
  if (!Self->File.Read(place, headBytes, sizeof headBytes, got)) ThrowUnreadable(Self->Path);
  JournalRecord record;
  RecordHead head;
  if (!DecodeRecordHead({headBytes, got}, Self->Header.Sum, record, head)) return {};
  std::string text(head.TextSize, '\0');
  if (!Self->File.Read(place + kRecordHeadSize, text.data(), text.size(), got)) ThrowUnreadable(Self->Path);
  text.resize(got);
  return IsWholeText(text, Self->Header.Sum, head) ? text : std::string();
}

std::uint64_t JournalReader::DamagedBytes() const noexcept {
  return Self->Damaged;
}

std::uint64_t JournalReader::BytesBehind() const {
  return std::max(Self->Size(), Self->Place) - Self->Place;
}

bool IsJournalFile(const std::filesystem::path& file) {
  GrowingFile opened;
  char begin[kJournalMagic.size()];
  std::size_t got = 0;
  return opened.OpenToRead(file) && opened.Read(0, begin, sizeof begin, got) &&
         std::string_view(begin, got) == kJournalMagic;
}

std::filesystem::path JournalPath(const std::filesystem::path& folder, const std::string& session,
                                  const std::string& date) {
  constexpr std::string_view kKept = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789.-";
  std::string name = session;
  for (char& letter : name)
    if (kKept.find(letter) == kKept.npos) letter = '_';
  return folder / (name + '-' + date + ".journal");
}
