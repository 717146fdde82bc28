#include "feeds/journal/journal_format.h"

#include <zlib.h>

#include <algorithm>

#include "foundations/byte_words.h"

namespace {

constexpr std::size_t kSessionSizeAt = 10, kSaltAt = 12, kCreatedAt = 16, kDateAt = 24;
constexpr std::size_t kDateSize = 8;
constexpr std::size_t kTextSizeAt = 4, kKindAt = 8, kSenderAt = 9, kTargetAt = 13, kTimeAt = 17;
constexpr std::size_t kTextSumAt = 25, kHeadSumAt = 29;
static_assert(kDateAt + kDateSize == kHeaderFixedSize && kHeadSumAt + kSumSize == kRecordHeadSize);

std::uint32_t SumOf(std::string_view bytes, std::uint32_t before) noexcept {
  if (bytes.empty()) return before;
  return static_cast<std::uint32_t>(
      crc32(before, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size())));
}

bool IsKind(std::uint8_t kind) noexcept {
  return kind >= static_cast<std::uint8_t>(JournalKind::Message) &&
         kind <= static_cast<std::uint8_t>(JournalKind::Reset);
}

}  // namespace

std::string EncodeJournalHeader(const JournalIdentity& identity, std::uint32_t salt) {
  std::string bytes(kJournalMagic);
  bytes += BytesOfValue(kJournalVersion);
  bytes += BytesOfValue(static_cast<std::uint16_t>(identity.Session.size()));
  bytes += BytesOfValue(salt);
  bytes += BytesOfValue(identity.Created);
  bytes += identity.Date;
  bytes += identity.Session;
  return bytes + BytesOfValue(SumOf(bytes, 0));
}

const char* DecodeJournalHeader(std::string_view bytes, JournalHeader& header) {
  if (!bytes.starts_with(kJournalMagic)) return "is no journal";
  if (bytes.size() < kHeaderFixedSize + kSumSize) return "ends within the header of a journal";
  if (LoadValue<std::uint16_t>(&bytes[kJournalMagic.size()]) != kJournalVersion)
    return "is a journal of another version";
  const std::size_t sessionSize = LoadValue<std::uint16_t>(&bytes[kSessionSizeAt]);
  const std::size_t sumAt = kHeaderFixedSize + sessionSize;
  if (sessionSize > kLongestSession || bytes.size() < sumAt + kSumSize) return "has a damaged header";
  header.Sum = SumOf(bytes.substr(0, sumAt), 0);
  if (LoadValue<std::uint32_t>(&bytes[sumAt]) != header.Sum) return "has a damaged header";
  header.Size = sumAt + kSumSize;
  header.Identity.Session = bytes.substr(kHeaderFixedSize, sessionSize);
  header.Identity.Date = bytes.substr(kDateAt, kDateSize);
  header.Identity.Created = LoadValue<std::int64_t>(&bytes[kCreatedAt]);
  return nullptr;
}

void EncodeJournalRecord(const JournalRecord& record, std::uint32_t headerSum, std::string& bytes) {
  bytes.resize(kRecordHeadSize);
  char* head = bytes.data();
  std::copy(kRecordMark.begin(), kRecordMark.end(), head);
  StoreValue(head + kTextSizeAt, static_cast<std::uint32_t>(record.Text.size()));
  StoreValue(head + kKindAt, record.Kind);
  StoreValue(head + kSenderAt, record.NextSender);
  StoreValue(head + kTargetAt, record.NextTarget);
  StoreValue(head + kTimeAt, record.TimeUs);
  StoreValue(head + kTextSumAt, SumOf(record.Text, headerSum));
  StoreValue(head + kHeadSumAt, SumOf({head, kHeadSumAt}, headerSum));
  bytes += record.Text;
}

bool DecodeRecordHead(std::string_view bytes, std::uint32_t headerSum, JournalRecord& record, RecordHead& head) {
  if (bytes.size() < kRecordHeadSize || !bytes.starts_with(kRecordMark)) return false;
  if (LoadValue<std::uint32_t>(&bytes[kHeadSumAt]) != SumOf(bytes.substr(0, kHeadSumAt), headerSum)) return false;
  head.TextSize = LoadValue<std::uint32_t>(&bytes[kTextSizeAt]);
  head.TextSum = LoadValue<std::uint32_t>(&bytes[kTextSumAt]);
  const auto kind = LoadValue<std::uint8_t>(&bytes[kKindAt]);
  if (head.TextSize > kLargestJournalText || !IsKind(kind)) return false;
  record.Kind = static_cast<JournalKind>(kind);
  record.NextSender = LoadValue<std::uint32_t>(&bytes[kSenderAt]);
  record.NextTarget = LoadValue<std::uint32_t>(&bytes[kTargetAt]);
  record.TimeUs = LoadValue<std::int64_t>(&bytes[kTimeAt]);
  return true;
}

bool IsWholeText(std::string_view text, std::uint32_t headerSum, const RecordHead& head) noexcept {
  return text.size() == head.TextSize && SumOf(text, headerSum) == head.TextSum;
}
