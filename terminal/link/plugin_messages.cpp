#include "terminal/link/plugin_messages.h"

#include <algorithm>
#include <limits>

#include "host_link/messages/message_header.h"

namespace {

constexpr std::uint16_t kLongestIdentity = 1023;
constexpr std::uint16_t kMenuTextSize = 128;  // of 16-bit characters; what stands behind a NUL is no part of the text

struct IdentityValues {
  char Name[kLongestIdentity + 1];
  char Copyright[kLongestIdentity + 1];
  char Maker[kLongestIdentity + 1];
};
constexpr WireField kIdentityFields[] = {
    {55017, Field::Text, offsetof(IdentityValues, Copyright), kLongestIdentity},
    {55020, Field::Text, offsetof(IdentityValues, Name), kLongestIdentity},
    {55112, Field::Text, offsetof(IdentityValues, Maker), kLongestIdentity},
};
static_assert(FieldsFit(kIdentityFields, sizeof(IdentityValues)));
constexpr FieldIndex kIdentityIndex(kIdentityFields);

void ReadIdentity(CQORPacketReader& reader, PluginDescription& description) {
  IdentityValues values{};
  ReadFields(reader, kIdentityFields, kIdentityIndex, &values);
  description.Name = values.Name;
  description.Copyright = values.Copyright;
  description.Maker = values.Maker;
}

struct MenuValues {
  std::uint64_t Command;
  char16_t Title[kMenuTextSize / sizeof(char16_t) + 1];
  char16_t Entry[kMenuTextSize / sizeof(char16_t) + 1];
  std::uint8_t Key;
};
constexpr WireField kMenuFields[] = {
    {126, Field::U8, offsetof(MenuValues, Key)},
    {30001, Field::U64, offsetof(MenuValues, Command)},
    {55192, Field::Text, offsetof(MenuValues, Title), kMenuTextSize},
    {55353, Field::Text, offsetof(MenuValues, Entry), kMenuTextSize},
};
static_assert(FieldsFit(kMenuFields, sizeof(MenuValues)));
constexpr FieldIndex kMenuIndex(kMenuFields);

void ReadMenuEntry(CQORPacketReader& reader, PluginDescription& description) {
  MenuValues values{};
  ReadFields(reader, kMenuFields, kMenuIndex, &values);
  description.MenuTitle = values.Title;
  description.MenuEntry = values.Entry;
  description.MenuCommand = values.Command;
  description.MenuKey = values.Key;
}

// The one message that repeats a tag, which a table of places cannot hold.
void ReadRoute(CQORPacketReader& reader, PluginDescription& description, MessageRoute& route) {
  while (reader.NextTag()) {
    std::uint16_t number = 0;
    if (reader.Tag == 30001)
      reader.ReadU64(route.Address);
    else if (reader.Tag == 11122 && reader.ReadU16(number))
      route.Numbers.insert(number);
    else if (reader.Tag == 11120)
      reader.ReadU16(description.DownloadRequest);
    else if (reader.Tag == 11121)
      reader.ReadU16(description.DownloadEnd);
    else if (reader.Tag != 11122)
      reader.SkipValue();
  }
}

void ReadDescriptionMessage(CQORPacketReader& reader, PluginDescription& description) {
  if (reader.MessageNumber == 30004) ReadIdentity(reader, description);
  if (reader.MessageNumber == 30005) ReadMenuEntry(reader, description);
  if (reader.MessageNumber == 30006) ReadRoute(reader, description, description.ToOnMessage);
  if (reader.MessageNumber == 30007) ReadRoute(reader, description, description.ToOnPluginMessage);
}

}  // namespace

PluginDescription ReadPluginDescription(std::span<const std::uint8_t> reply) {
  constexpr std::size_t kLargest = std::numeric_limits<std::uint16_t>::max();
  PluginDescription description;
  while (!reply.empty()) {
    CQORPacketReader reader(reply.data(), static_cast<std::uint16_t>(std::min(reply.size(), kLargest)));
    std::uint16_t needed = 0;
    std::uint16_t consumed = 0;
    if (reader.ParseHeader(needed, consumed)) ReadDescriptionMessage(reader, description);
    if (consumed == 0) break;
    reply = reply.subspan(std::min<std::size_t>(consumed, reply.size()));
  }
  return description;
}

namespace {

struct PropertyValues {
  std::uint64_t Fill;
  std::uint64_t Apply;
  std::uint64_t Grid;
};
constexpr WireField kPropertyFields[] = {
    {30001, Field::U64, offsetof(PropertyValues, Grid)},
    {30002, Field::U64, offsetof(PropertyValues, Fill)},
    {30031, Field::U64, offsetof(PropertyValues, Apply)},
};
static_assert(FieldsFit(kPropertyFields, sizeof(PropertyValues)) && ReadsSection(32003, 0, kPropertyFields));
constexpr FieldIndex kPropertyIndex(kPropertyFields);

struct BeatValues {
  std::uint64_t Callback;
  std::uint32_t PeriodMs;
};
constexpr WireField kBeatFields[] = {
    {30002, Field::U64, offsetof(BeatValues, Callback)},
    {message_fields::kPeriodTag, Field::U32, offsetof(BeatValues, PeriodMs)},
};
static_assert(FieldsFit(kBeatFields, sizeof(BeatValues)) && ReadsSection(32005, 0, kBeatFields));
constexpr FieldIndex kBeatIndex(kBeatFields);

struct QuestionValues {
  std::uint64_t Window;
  std::uint64_t Answer;
};
constexpr WireField kQuestionFields[] = {
    {30001, Field::U64, offsetof(QuestionValues, Window)},
    {30002, Field::U64, offsetof(QuestionValues, Answer)},
};
static_assert(FieldsFit(kQuestionFields, sizeof(QuestionValues)) && ReadsSection(32022, 0, kQuestionFields));
constexpr FieldIndex kQuestionIndex(kQuestionFields);

}  // namespace

PropertyRequest ReadPropertyRequest(CQORPacketReader& message) {
  PropertyValues values{};
  ReadFields(message, kPropertyFields, kPropertyIndex, &values);
  return {reinterpret_cast<PropertyFillFunction>(values.Fill), reinterpret_cast<PropertyApplyFunction>(values.Apply),
          values.Grid};
}

BeatRequest ReadBeatRequest(CQORPacketReader& message) {
  BeatValues values{};
  ReadFields(message, kBeatFields, kBeatIndex, &values);
  return {reinterpret_cast<CommandFunction>(values.Callback), std::chrono::milliseconds(values.PeriodMs)};
}

SelectionQuestion ReadSelectionQuestion(CQORPacketReader& message) {
  QuestionValues values{};
  ReadFields(message, kQuestionFields, kQuestionIndex, &values);
  return {values.Window, reinterpret_cast<MessageFunction>(values.Answer)};
}

namespace {
constexpr std::uint16_t kLongestText = 48;
}

void AnswerSelection(MessageFunction answer, const std::string& exchange, const std::string& securityId,
                     MessageLog& log) {
  CQORPacketWriter writer(kModePlain);
  writer.AddU16(10002, 32023);
  if (!exchange.empty() && !securityId.empty()) {
    writer.AddText(55010, exchange.c_str(), kLongestText, false);
    writer.AddText(55104, securityId.c_str(), kLongestText, false);
  }
  writer.Finish();
  log.Add(true, writer);
  CQORPacketReader reader(writer.GetData(), writer.GetSize());
  answer(&reader);
}
