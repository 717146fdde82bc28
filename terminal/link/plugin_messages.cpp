#include "terminal/link/plugin_messages.h"

#include <algorithm>
#include <limits>
#include <vector>

#include "host_link/messages/message_header.h"
#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"

namespace {

// Of any length: the buffer takes the longest value that a message can hold.
std::string ReadCountedText(CQORPacketReader& reader) {
  std::vector<char> text(std::numeric_limits<std::uint16_t>::max() + std::size_t{1});
  const std::uint16_t start = reader.Cursor;
  if (!reader.ReadText(text.data(), 0)) return {};
  return {text.data(), static_cast<std::size_t>(reader.Cursor - start) - sizeof(std::uint16_t)};
}

// 16-bit text in a value of fixed size: what stands behind the terminator is no part of it.
std::u16string ReadWideText(CQORPacketReader& reader) {
  const std::string bytes = ReadCountedText(reader);
  std::u16string text(bytes.size() / sizeof(char16_t), u'\0');
  std::memcpy(text.data(), bytes.data(), text.size() * sizeof(char16_t));
  return text.substr(0, text.find(u'\0'));
}

void ReadIdentity(CQORPacketReader& reader, PluginDescription& description) {
  while (reader.NextTag()) {
    if (reader.Tag == 55020)
      description.Name = ReadCountedText(reader);
    else if (reader.Tag == 55017)
      description.Copyright = ReadCountedText(reader);
    else if (reader.Tag == 55112)
      description.Maker = ReadCountedText(reader);
    else
      reader.SkipValue();
  }
}

void ReadMenuEntry(CQORPacketReader& reader, PluginDescription& description) {
  while (reader.NextTag()) {
    if (reader.Tag == 55192)
      description.MenuTitle = ReadWideText(reader);
    else if (reader.Tag == 55353)
      description.MenuEntry = ReadWideText(reader);
    else if (reader.Tag == 30001)
      reader.ReadU64(description.MenuCommand);
    else if (reader.Tag == 126)
      reader.ReadU8(description.MenuKey);
    else
      reader.SkipValue();
  }
}

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

PropertyRequest ReadPropertyRequest(CQORPacketReader& message) {
  std::uint64_t fill = 0, apply = 0;
  PropertyRequest request;
  while (message.NextTag()) {
    if (message.Tag == 30002)
      message.ReadU64(fill);
    else if (message.Tag == 30031)
      message.ReadU64(apply);
    else if (message.Tag == 30001)
      message.ReadU64(request.Grid);
    else
      message.SkipValue();
  }
  request.Fill = reinterpret_cast<PropertyFillFunction>(fill);
  request.Apply = reinterpret_cast<PropertyApplyFunction>(apply);
  return request;
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
