#include "tests/support/fake_terminal.h"

#include <gtest/gtest.h>

#include <cstring>

#include "foundations/text_tools.h"
#include "host_link/host_functions/terminal_functions.h"

FakeTerminal fakeTerminal;

namespace {

std::size_t SizeOf(const MessageField& field, const std::uint8_t* value) {
  constexpr std::size_t kSizes[] = {1, 2, 4, 8, 8};
  if (field.Type == FieldType::None) return 0;
  if (field.Type == FieldType::Text || field.Type == FieldType::Block) return 2U + LoadValue<std::uint16_t>(value);
  return kSizes[static_cast<std::size_t>(field.Type)];
}

void Answer(MessageFunction function) {
  std::string fields;
  if (const auto& selected = fakeTerminal.Selected; selected)
    fields = WireText(55010, selected->first) + WireText(55104, selected->second);
  Deliver(false, 32023, {fields.begin(), fields.end()}, [&](CQORPacketReader& answer) { function(&answer); });
}

// Field 30002 follows header and number, or another field of eight bytes.
MessageFunction CallbackOf(const Bytes& question) {
  const std::size_t at = LoadValue<std::uint16_t>(&question.at(16)) == 30002 ? 18 : 29;
  return reinterpret_cast<MessageFunction>(LoadValue<std::uint64_t>(&question.at(at)));
}

}  // namespace

TRADEBOOK_EXPORT void PluginDataSend(CQORPacketWriter* message) {
  const Bytes bytes = BytesOf(*message);
  EXPECT_EQ(message->OutputBuffer, nullptr) << "finished";
  EXPECT_EQ(Part(bytes, 0, 10), Hex("23 0100 0000 23 1127 0000"));
  ExpectFieldsOfTable(bytes);
  const auto number = LoadValue<std::uint16_t>(&bytes.at(13));
  const MessageRow* row = FindMessage(number);
  EXPECT_TRUE(row != nullptr && row->ToTerminal == MessageWay::PluginDataSend) << number;
  fakeTerminal.Sent.push_back(bytes);
  if (number == 32022) Answer(CallbackOf(bytes));
}

TRADEBOOK_EXPORT void GetMasterRequest(MasterRequest* request, std::uint32_t zero, std::uint16_t* number) {
  EXPECT_EQ(request->FirstSlot | request->MasterRecord | zero, 0U);
  EXPECT_EQ(*number, 30);
  for (const int unused : {1, 2, 3, 4, 5, 6, 8}) EXPECT_EQ(Utf16ToWide(request->Texts[unused]), L"");
  const std::string asked = WideToNarrow(Utf16ToWide(request->Texts[0]) + L'|' + Utf16ToWide(request->Texts[7]));
  fakeTerminal.MasterRequests.push_back(asked);
  if (const auto found = fakeTerminal.Masters.find(asked); found != fakeTerminal.Masters.end())
    request->MasterRecord = reinterpret_cast<std::uint64_t>(found->second.data());
}

TRADEBOOK_EXPORT std::uint32_t GetPluginBarID(const char* pluginName, const char* bookName) {
  EXPECT_STREQ(pluginName, "Trade Book");
  const auto next = static_cast<std::uint32_t>(fakeTerminal.BarIds.size() + 1);
  const std::uint32_t id = fakeTerminal.BarIds.emplace(bookName, next).first->second;
  fakeTerminal.BarCalls.push_back(std::to_string(id) + " = " + bookName);
  return id;
}

TRADEBOOK_EXPORT void PluginRemoveBarID(std::uint32_t barId, const char* pluginName) {
  EXPECT_STREQ(pluginName, "Trade Book");
  fakeTerminal.BarCalls.push_back('-' + std::to_string(barId));
}

TRADEBOOK_EXPORT void ApplicationFocus(void* window, std::uint32_t closed) {
  EXPECT_LE(closed, 1U);
  fakeTerminal.Focus.emplace_back(window, closed != 0);
}

std::vector<std::uint16_t> FakeTerminal::SentNumbers() const {
  std::vector<std::uint16_t> numbers;
  for (const Bytes& message : Sent) numbers.push_back(LoadValue<std::uint16_t>(&message.at(13)));
  return numbers;
}

Bytes MasterRecord(std::string_view name, double multiplier) {
  Bytes record(443);
  name.copy(reinterpret_cast<char*>(&record[266]), 49);
  std::memcpy(&record[435], &multiplier, sizeof multiplier);
  return record;
}

void ExpectFieldsOfTable(const Bytes& message) {
  const auto number = LoadValue<std::uint16_t>(&message.at(13));
  SCOPED_TRACE(number);
  const MessageRow* row = FindMessage(number);
  ASSERT_NE(row, nullptr);
  std::map<std::uint16_t, int> counts;
  for (std::size_t at = 15; at < message.size();) {
    ASSERT_EQ(message.at(at), 0x23);
    const auto tag = LoadValue<std::uint16_t>(&message.at(at + 1));
    ++counts[tag];
    const auto field = std::ranges::find(row->Fields, tag, &MessageField::Tag);
    ASSERT_NE(field, row->Fields.end()) << tag;
    const std::size_t size = SizeOf(*field, message.data() + at + 3);
    EXPECT_TRUE(field->Type != FieldType::Block || size == 2U + field->Size) << tag;
    EXPECT_TRUE(field->Type != FieldType::Text || field->Size == 0 || size <= 2U + field->Size) << tag;
    at += 3 + size;
    ASSERT_LE(at, message.size()) << tag;
  }
  if (number == 32023 && counts.empty()) return;
  for (const MessageField& field : row->Fields) EXPECT_GT(counts[field.Tag], 0) << field.Tag;
}

std::uint16_t Deliver(bool isHeaderRead, std::uint16_t number, const Bytes& fields,
                      const std::function<void(CQORPacketReader&)>& entry) {
  const Bytes message = Framed(Hex("23 1227") + Word(number) + fields);
  const auto block = ExactBlock(message);
  CQORPacketReader reader(block.get(), static_cast<std::uint16_t>(message.size()));
  std::uint16_t needed = 0, consumed = 0;
  EXPECT_TRUE(!isHeaderRead || reader.ParseHeader(needed, consumed));
  entry(reader);
  return reader.Cursor;
}
