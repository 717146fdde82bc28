// Every message between a terminal and the plug-in: number, the functions that carry it, meaning and fields. Routing,
// description, the terminal's log and the pages read this table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>

#include "host_link/messages/wire_fields.h"

struct HostReplyBuffer;

// The module exports GetDllInfo, OnMessage and OnPluginMessage. A terminal looks them up by name and calls them, and
// the callbacks that messages carry, one call at a time.

// Appends message 30004 and, if the byte at infoOnly is 0, messages 30005 to 30007.
using GetDllInfoFunction = void (*)(HostReplyBuffer* reply, const std::uint8_t* infoOnly);
// OnMessage takes a message whose header is parsed, OnPluginMessage and the callback of 32022 a raw one.
using MessageFunction = void (*)(CQORPacketReader* message);
// The menu command of message 30005 and the refresh callback of message 32005.
using CommandFunction = void (*)();

// The function that carries a message. The first two take it in the plug-in; GetDllInfo appends it to its reply; the
// terminal's PluginDataSend and the callback of message 32022 take it in the terminal.
enum class MessageWay : std::uint8_t { None, OnMessage, OnPluginMessage, GetDllInfo, PluginDataSend, AnswerCallback };

enum class FieldType : std::uint8_t { U8, U16, U32, U64, Double, Text, Block, None };

struct MessageField {
  std::uint16_t Tag;
  FieldType Type;
  std::uint16_t Size = 0;  // Text: the longest value that is read whole, 0 for any; Block: the only length
};

struct MessageRow {
  std::uint16_t Number;
  MessageWay ToPlugin;
  MessageWay ToTerminal;
  const char* Meaning;                   // as the terminal's log shows it
  std::span<const MessageField> Fields;  // behind 10002, the number
  bool IsListed = false;                 // in the numbers of 30006 or 30007, in the order of this table
};

// 65535 closes a section, within which a reader takes any order.
namespace message_fields {

inline constexpr MessageField kTrade[] = {
    {55001, FieldType::Text, 20}, {20008, FieldType::U32},      {20009, FieldType::U32},
    {55101, FieldType::Text, 32}, {55100, FieldType::Text, 32}, {65535, FieldType::None},
    {55010, FieldType::Text, 48}, {55104, FieldType::Text, 48}, {55105, FieldType::Text, 16},
    {55103, FieldType::Text, 32}, {55143, FieldType::Text, 32}, {55106, FieldType::Text, 16},
    {40004, FieldType::Double},   {40008, FieldType::Double},   {55107, FieldType::Text, 48},
    {55118, FieldType::Text, 22}, {55116, FieldType::Text, 22}, {55117, FieldType::Text, 22},
    {101, FieldType::U8},         {102, FieldType::U8},         {20011, FieldType::U32},
    {20084, FieldType::U32},      {20014, FieldType::U32},      {20013, FieldType::U32},
    {40002, FieldType::Double},   {55018, FieldType::Text, 20}, {55102, FieldType::Text, 20},
    {55131, FieldType::Text, 20}, {55012, FieldType::Text, 20}, {55109, FieldType::Text, 64},
    {20068, FieldType::U32},      {115, FieldType::U8},         {55124, FieldType::Text, 24},
    {55123, FieldType::Text, 16}, {55328, FieldType::Text, 16}, {11115, FieldType::U16},
    {55329, FieldType::Text, 16}, {20007, FieldType::U32},      {20036, FieldType::U32},
    {20081, FieldType::U32},      {20082, FieldType::U32},      {20083, FieldType::U32},
    {20101, FieldType::U32},      {55151, FieldType::Text, 32},
};
inline constexpr MessageField kAmendment[] = {
    {20008, FieldType::U32},      {20084, FieldType::U32},      {20103, FieldType::U32},
    {20104, FieldType::U32},      {101, FieldType::U8},         {55001, FieldType::Text, 20},
    {55010, FieldType::Text, 48}, {55012, FieldType::Text, 20}, {55018, FieldType::Text, 20},
    {55100, FieldType::Text, 32}, {55102, FieldType::Text, 20}, {55104, FieldType::Text, 48},
    {55109, FieldType::Text, 64}, {55131, FieldType::Text, 20},
};
inline constexpr MessageField kIdentity[] = {
    {20005, FieldType::U32},  {20006, FieldType::U32}, {55020, FieldType::Text}, {55017, FieldType::Text},
    {55112, FieldType::Text}, {5076, FieldType::U8},   {20128, FieldType::U32},  {20129, FieldType::U32},
};
inline constexpr MessageField kMenuEntry[] = {
    {55192, FieldType::Block, 128}, {30001, FieldType::U64}, {20127, FieldType::U32}, {55353, FieldType::Block, 128},
    {5029, FieldType::U8},          {5064, FieldType::U8},   {5065, FieldType::U8},   {5066, FieldType::U8},
    {126, FieldType::U8},           {65535, FieldType::None}};
inline constexpr MessageField kTradeRoutes[] = {
    {30001, FieldType::U64}, {11122, FieldType::U16}, {65535, FieldType::None},
    {11120, FieldType::U16}, {11121, FieldType::U16}, {65535, FieldType::None},
};
inline constexpr MessageField kPluginRoutes[] = {
    {30001, FieldType::U64}, {11122, FieldType::U16}, {65535, FieldType::None}};
inline constexpr MessageField kRestore[] = {{20128, FieldType::U32}, {30002, FieldType::U64}};
inline constexpr MessageField kProperties[] = {
    {30002, FieldType::U64}, {30031, FieldType::U64}, {30001, FieldType::U64}};
// Required: 60003 is a plain u32 without the count of its range; terminals read it so.
inline constexpr std::uint16_t kPeriodTag = 60003;
inline constexpr MessageField kBeat[] = {{30002, FieldType::U64}, {kPeriodTag, FieldType::U32}};
inline constexpr MessageField kWindowAndCallback[] = {{30001, FieldType::U64}, {30002, FieldType::U64}};
inline constexpr MessageField kSelection[] = {{55010, FieldType::Text, 48}, {55104, FieldType::Text, 48}};

}  // namespace message_fields

inline constexpr MessageRow kMessages[] = {
    {9101, MessageWay::OnMessage, MessageWay::None, "live trade", message_fields::kTrade, true},
    {8111, MessageWay::OnMessage, MessageWay::None, "downloaded trade", message_fields::kTrade, true},
    {8112, MessageWay::OnMessage, MessageWay::None, "end of the download", {}, true},
    {9112, MessageWay::OnMessage, MessageWay::None, "amended trade", message_fields::kAmendment, true},
    {30026, MessageWay::OnMessage, MessageWay::None, "bring books back", message_fields::kRestore},
    {30025, MessageWay::OnPluginMessage, MessageWay::None, "register for the beat", {}, true},
    {30022, MessageWay::OnPluginMessage, MessageWay::None, "forget the trades", {}, true},
    {30020, MessageWay::OnPluginMessage, MessageWay::None, "apply filters again", {}, true},
    {30021, MessageWay::OnPluginMessage, MessageWay::None, "save the layout", {}, true},
    {32022, MessageWay::OnPluginMessage, MessageWay::PluginDataSend, "what is selected?",
     message_fields::kWindowAndCallback},
    {32023, MessageWay::OnPluginMessage, MessageWay::AnswerCallback, "this is selected", message_fields::kSelection},
    {30004, MessageWay::None, MessageWay::GetDllInfo, "what the plug-in is", message_fields::kIdentity},
    {30005, MessageWay::None, MessageWay::GetDllInfo, "menu entry", message_fields::kMenuEntry},
    {30006, MessageWay::None, MessageWay::GetDllInfo, "numbers for OnMessage", message_fields::kTradeRoutes},
    {30007, MessageWay::None, MessageWay::GetDllInfo, "numbers for OnPluginMessage", message_fields::kPluginRoutes},
    {32003, MessageWay::None, MessageWay::PluginDataSend, "show properties", message_fields::kProperties},
    {32004, MessageWay::None, MessageWay::PluginDataSend, "properties are filled", {}},
    {32005, MessageWay::None, MessageWay::PluginDataSend, "register the beat", message_fields::kBeat},
    {32021, MessageWay::None, MessageWay::PluginDataSend, "a book is open", message_fields::kWindowAndCallback},
};

// The row of a number; null for a number that neither side sends.
constexpr const MessageRow* FindMessage(std::uint16_t number) noexcept {
  for (const MessageRow& row : kMessages)
    if (row.Number == number) return &row;
  return nullptr;
}

// The fields of a message up to its first 65535 (section 0), or from there to the next one (section 1).
constexpr std::span<const MessageField> SectionOf(std::uint16_t number, std::size_t section) {
  std::span<const MessageField> rest = FindMessage(number)->Fields;
  for (;; --section) {
    std::size_t end = 0;
    while (end < rest.size() && rest[end].Tag != kSectionTerminator) ++end;
    if (section == 0) return rest.first(end);
    rest = rest.subspan(end + 1);
  }
}

constexpr FieldType TypeOf(Field kind) {
  constexpr FieldType kTypes[] = {FieldType::U8,     FieldType::U16,  FieldType::U32, FieldType::U64,
                                  FieldType::Double, FieldType::Text, FieldType::U16, FieldType::U32};
  return kTypes[static_cast<std::size_t>(kind)];
}

// True if a decoder's table reads exactly the fields of that section, each by its type and size. The message number is
// of no section.
constexpr bool ReadsSection(std::uint16_t number, std::size_t section, std::span<const WireField> table) {
  const std::span<const MessageField> fields = SectionOf(number, section);
  std::size_t matches = 0;
  for (const WireField& read : table)
    for (const MessageField& field : fields)
      if (field.Tag == read.Tag && field.Type == TypeOf(read.Kind) && field.Size == read.Limit) ++matches;
  std::size_t expected = table.size();
  for (const WireField& read : table)
    if (read.Tag == 10002) --expected;
  return matches == expected && matches == fields.size();
}

namespace message_table_checks {

// Bytes of a value of that type, where every value has the same.
constexpr std::uint16_t WidthOf(FieldType type) {
  constexpr std::uint16_t kWidths[] = {1, 2, 4, 8, 8, kCountedWidth, kCountedWidth, 0};
  return kWidths[static_cast<std::size_t>(type)];
}

constexpr bool IsRow(const MessageRow& row) {
  const bool isReceived = row.ToPlugin == MessageWay::OnMessage || row.ToPlugin == MessageWay::OnPluginMessage;
  const bool isSent = row.ToTerminal == MessageWay::GetDllInfo || row.ToTerminal == MessageWay::PluginDataSend ||
                      row.ToTerminal == MessageWay::AnswerCallback;
  if (!isReceived && (row.ToPlugin != MessageWay::None || row.IsListed)) return false;
  if (!isSent && row.ToTerminal != MessageWay::None) return false;
  return (isReceived || isSent) && FindMessage(row.Number) == &row;
}

constexpr bool FieldsKeepTheWidthsOfTheirTags(const MessageRow& row) {
  for (const MessageField& field : row.Fields)
    if (WidthOf(field.Type) != ValueWidth(field.Tag) && field.Tag != message_fields::kPeriodTag) return false;
  return true;
}

constexpr bool FieldsAppearOnce(const MessageRow& row) {
  for (const MessageField& field : row.Fields)
    for (const MessageField& other : row.Fields)
      if (field.Tag == other.Tag && &field != &other && field.Tag != kSectionTerminator) return false;
  return true;
}

constexpr bool All(bool (*check)(const MessageRow&)) {
  for (const MessageRow& row : kMessages)
    if (!check(row)) return false;
  return true;
}
static_assert(All(IsRow) && All(FieldsKeepTheWidthsOfTheirTags) && All(FieldsAppearOnce));

}  // namespace message_table_checks
