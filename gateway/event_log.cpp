#include "gateway/event_log.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>

#include "feeds/common/feed_report.h"
#include "platform/locale.h"

namespace {

// The first byte of a UTF-8 character decides its size and the range of its second byte; the others are 80 to BF.
struct Utf8Row {
  unsigned char First, Last;
  unsigned char SecondFirst, SecondLast;
  std::size_t Size;
};

constexpr Utf8Row kUtf8Rows[] = {
    {0x00, 0x7F, 0x00, 0x00, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

unsigned char ByteAt(std::string_view text, std::size_t index) {
  return static_cast<unsigned char>(text[index]);
}

bool Holds(const Utf8Row& row, std::string_view text) {
  if (text.size() < row.Size) return false;
  for (std::size_t i = 1; i < row.Size; ++i) {
    const unsigned char byte = ByteAt(text, i);
    if (i == 1 ? byte < row.SecondFirst || byte > row.SecondLast : byte < 0x80 || byte > 0xBF) return false;
  }
  return true;
}

// Bytes of the UTF-8 character that the text begins with; 0 for anything else.
std::size_t CharacterSize(std::string_view text) {
  const unsigned char first = ByteAt(text, 0);
  for (const Utf8Row& row : kUtf8Rows)
    if (first >= row.First && first <= row.Last) return Holds(row, text) ? row.Size : 0;
  return 0;
}

bool IsControl(std::string_view character) {
  const unsigned char first = ByteAt(character, 0);
  return first < 0x20 || first == 0x7F || (first == 0xC2 && ByteAt(character, 1) < 0xA0);
}

// Gives every character, or byte that is none (whole is false then), to the function.
template <typename Take>
void WalkText(std::string_view text, Take take) {
  while (!text.empty()) {
    const std::size_t size = CharacterSize(text);
    take(text.substr(0, size == 0 ? 1 : size), size != 0);
    text.remove_prefix(size == 0 ? 1 : size);
  }
}

std::string JsonText(std::string_view text) {
  std::string json = "\"";
  WalkText(text, [&](std::string_view character, bool whole) {
    if (whole && !IsControl(character)) {
      if (character == "\"" || character == "\\") json += '\\';
      json += character;
      return;
    }
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\u%04x", ByteAt(character, character.size() - 1));
    json += escape;
  });
  return json + '"';
}

std::string JsonValue(const EventField& field) {
  if (const auto* text = std::get_if<std::string>(&field.Value)) return JsonText(*text);
  if (const auto* number = std::get_if<std::uint64_t>(&field.Value)) return std::to_string(*number);
  return std::get<bool>(field.Value) ? "true" : "false";
}

std::string TimeText(std::int64_t timeMs) {
  std::tm fields{};
  if (!UtcFields(timeMs / 1000, fields)) return "";
  char text[32] = {};
  const std::size_t size = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &fields);
  std::snprintf(text + size, sizeof text - size, ".%03dZ", static_cast<int>(timeMs % 1000));
  return text;
}

}  // namespace

std::string JsonLine(std::int64_t timeMs, std::string_view event, const EventFields& fields) {
  std::string line = "{\"time\":" + JsonText(TimeText(timeMs)) + ",\"event\":" + JsonText(event);
  for (const EventField& field : fields) line += "," + JsonText(field.Name) + ":" + JsonValue(field);
  return line + "}\n";
}

std::string PlainLine(std::string_view text) {
  std::string line;
  WalkText(text, [&](std::string_view character, bool whole) {
    if (whole && !IsControl(character))
      line += character;
    else
      line += character == "\x01" ? '|' : '?';
  });
  return line;
}

EventLog::EventLog(const std::filesystem::path& file)
    : Handle(file.empty() ? -1 : ::open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0640)) {
  if (Handle < 0 && !file.empty())
    throw FeedError(file.string() + ": cannot be opened: " + SystemErrorText(static_cast<unsigned long>(errno)));
}

EventLog::~EventLog() {
  if (Handle >= 0) ::close(Handle);
}

bool EventLog::Write(std::string_view event, const EventFields& fields, int& errorNumber) const {
  if (Handle < 0) return true;
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const std::string line = JsonLine(std::chrono::duration_cast<std::chrono::milliseconds>(now).count(), event, fields);
  const ssize_t written = ::write(Handle, line.data(), line.size());
  errorNumber = written < 0 ? errno : ENOSPC;
  return written == static_cast<ssize_t>(line.size());
}
