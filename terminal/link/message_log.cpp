#include "terminal/link/message_log.h"

#include <array>
#include <charconv>
#include <system_error>

#include "foundations/byte_words.h"
#include "foundations/date_time.h"
#include "host_link/messages/message_table.h"
#include "host_link/messages/packet_reader.h"
#include "platform/locale.h"

namespace {

constexpr std::uint16_t kFirstDecimalTag = 40001;

template <typename Value>
std::string NumberText(const std::uint8_t* bytes) {
  std::array<char, 40> text;
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), LoadValue<Value>(bytes)).ptr};
}

void AppendHex(std::string& text, std::uint8_t byte) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  text += kDigits[byte >> 4];
  text += kDigits[byte & 15];
}

std::string QuotedText(std::span<const std::uint8_t> bytes) {
  std::string text = "'";
  for (const std::uint8_t byte : bytes) {
    if (byte >= ' ' && byte < 0x7F) {
      text += static_cast<char>(byte);
    } else {
      text += "\\x";
      AppendHex(text, byte);
    }
  }
  return text + "'";
}

std::string ValueText(std::uint16_t tag, std::uint16_t width, std::span<const std::uint8_t> bytes) {
  if (width == kCountedWidth) return QuotedText(bytes);
  switch (bytes.size()) {
    case 0:
      return {};
    case 1:
      return NumberText<std::uint8_t>(bytes.data());
    case 2:
      return NumberText<std::uint16_t>(bytes.data());
    case 4:
      return NumberText<std::uint32_t>(bytes.data());
    case 8:
      return tag >= kFirstDecimalTag ? NumberText<double>(bytes.data()) : NumberText<std::uint64_t>(bytes.data());
    default:
      break;
  }
  std::string text = "0x";
  for (const std::uint8_t byte : bytes) AppendHex(text, byte);
  return text;
}

std::string TimeText(std::chrono::system_clock::time_point time) {
  const auto sinceEpoch = time.time_since_epoch();
  const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
  const auto thousandths = std::chrono::duration_cast<std::chrono::milliseconds>(sinceEpoch - seconds).count();
  const std::string date = FormatTimeText(seconds.count(), "yyyyMMdd-HH:mm:ss", false);
  const std::string digits = std::to_string(1000 + thousandths);
  return (date.size() > 9 ? date.substr(9) : date) + "." + digits.substr(1);
}

}  // namespace

void MessageLog::Add(LogDirection direction, std::uint16_t number, std::span<const std::uint8_t> fields) {
  if (Messages.size() == kMost) Messages.pop_front();
  Messages.push_back({++Taken, std::chrono::system_clock::now(), direction, number, {fields.begin(), fields.end()}});
}

void MessageLog::Add(bool toPlugin, std::uint16_t number, std::span<const std::uint8_t> fields) {
  Add(toPlugin ? LogDirection::ToPlugin : LogDirection::FromPlugin, number, fields);
}

void MessageLog::AddNote(bool isAlarm, const std::string& text) {
  Add(isAlarm ? LogDirection::Alarm : LogDirection::Connection, 0,
      {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

void MessageLog::Add(bool toPlugin, const CQORPacketWriter& message) {
  if (message.Buffer == nullptr) return;
  CQORPacketReader reader(message.Buffer, message.Cursor);
  reader.Cursor = message.HeaderSize;
  std::uint16_t number = 0;
  if (reader.NextTag() && reader.ReadU16(number))
    Add(toPlugin, number, {reader.Data + reader.Cursor, reader.Data + reader.End});
}

const char* MeaningOf(std::uint16_t number) noexcept {
  const MessageRow* row = FindMessage(number);
  return row == nullptr ? "" : row->Meaning;
}

namespace {

// The period of the beat is the only value of its range without a count.
std::uint16_t WidthInLog(std::uint16_t tag) {
  return tag == message_fields::kPeriodTag ? sizeof(std::uint32_t) : ValueWidth(tag);
}

}  // namespace

// The text ends before the first damaged field.
std::string FieldsText(std::span<const std::uint8_t> fields) {
  FieldCursor cursor{fields.data(), 0, fields.size()};
  std::string text;
  std::uint16_t tag = 0;
  while (cursor.NextTag(tag)) {
    const std::uint16_t width = WidthInLog(tag);
    std::uint16_t size = width;
    if (width == kCountedWidth && !cursor.ReadValue(&size, sizeof size)) break;
    const std::size_t begin = cursor.Cursor;
    if (!cursor.Drop(size)) break;
    if (!text.empty()) text += ' ';
    text += std::to_string(tag) + "=" + ValueText(tag, width, fields.subspan(begin, size));
  }
  return text;
}

namespace {

struct DirectionRow {
  const char* Text;
  const char* Meaning;  // null: that of the message
};
// In the order of LogDirection.
constexpr DirectionRow kDirections[] = {
    {"to plug-in", nullptr}, {"from plug-in", nullptr}, {"feed", "alarm"}, {"feed", "connection"}};

// Controls would break the lines of a file.
std::string NoteText(std::span<const std::uint8_t> text) {
  std::string shown(text.begin(), text.end());
  for (char& c : shown)
    if (static_cast<unsigned char>(c) < ' ') c = ' ';
  return shown;
}

}  // namespace

std::string LogText(const LoggedMessage& message, LogColumn column) {
  const DirectionRow& direction = kDirections[static_cast<std::size_t>(message.Direction)];
  const bool isNote = direction.Meaning != nullptr;
  switch (column) {
    case LogColumn::Count:
      return std::to_string(message.Count);
    case LogColumn::Time:
      return TimeText(message.Time);
    case LogColumn::Direction:
      return direction.Text;
    case LogColumn::Number:
      return isNote ? "" : std::to_string(message.Number);
    case LogColumn::Meaning:
      return isNote ? direction.Meaning : MeaningOf(message.Number);
    case LogColumn::Bytes:
      return isNote ? "" : std::to_string(message.Fields.size());
    case LogColumn::Fields:
      return isNote ? NoteText(message.Fields) : FieldsText(message.Fields);
  }
  return {};
}

namespace {

// In the order of LogColumn.
constexpr ListColumn kColumns[] = {
    {L"No.", 70, SheetKind::Whole},
    {L"Time", 100},
    {L"Direction", 90},
    {L"Message", 70, SheetKind::Whole},
    {L"Meaning", 150},
    {L"Bytes", 60, SheetKind::Whole},
    {L"Fields", 900},
};

}  // namespace

std::span<const ListColumn> MessageLog::Columns() const {
  return kColumns;
}

std::wstring MessageLog::Text(ListRow row, std::size_t column) const {
  return CodePageToWide(LogText(MessageOf(row), static_cast<LogColumn>(column)));
}

SheetValue MessageLog::Value(ListRow row, std::size_t column) const {
  const std::string text = LogText(MessageOf(row), static_cast<LogColumn>(column));
  if (kColumns[column].Kind == SheetKind::Text) return CodePageToWide(text);
  std::int64_t number = 0;
  const bool isNumber = std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc();
  return isNumber ? SheetValue(number) : SheetValue();
}
