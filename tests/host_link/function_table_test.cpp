#include "host_link/host_functions/function_table.h"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>

#include "host_link/host_functions/terminal_functions.h"
#include "host_link/messages/packet_writer.h"
#include "tests/support/wire_bytes.h"

namespace {

template <typename Function>
void* AddressOf(Function* function) {
  return reinterpret_cast<void*>(function);
}

// What a terminal sees of the calls.
struct SeenRequest {
  std::uint64_t FirstSlot;
  std::uint64_t MasterRecord;
  std::vector<std::u16string> Texts;
  std::uint32_t Zero;
  std::uint16_t Number;
};

std::string namesAsked;
std::optional<SeenRequest> seenRequest;
const std::uint8_t* masterRecord = nullptr;
std::vector<std::string> seenCalls;

void* RecordName(const char* name) {
  namesAsked += std::string(name) + ' ';
  return nullptr;
}

void AnswerMasterRequest(MasterRequest* request, std::uint32_t zero, std::uint16_t* number) {
  seenRequest = {request->FirstSlot, request->MasterRecord, {}, zero, *number};
  for (const char16_t* text : request->Texts) seenRequest->Texts.push_back(text);
  request->MasterRecord = reinterpret_cast<std::uint64_t>(masterRecord);
}

void* OnlyMasterRequest(const char* name) {
  return std::strcmp(name, "GetMasterRequest") == 0 ? AddressOf(AnswerMasterRequest) : nullptr;
}

void SeeFocus(void* window, std::uint32_t closed) {
  seenCalls.push_back("focus " + std::to_string(window == &seenCalls) + ' ' + std::to_string(closed));
}
std::uint32_t GiveBarId(const char* pluginName, const char* bookName) {
  seenCalls.push_back(std::string(pluginName) + '|' + bookName);
  return 0x87654321;
}
void TakeBarId(std::uint32_t barId, const char* pluginName) {
  seenCalls.push_back(std::to_string(barId) + '|' + pluginName);
}

void* BarFunctions(const char* name) {
  if (std::strcmp(name, "ApplicationFocus") == 0) return AddressOf(SeeFocus);
  if (std::strcmp(name, "GetPluginBarID") == 0) return AddressOf(GiveBarId);
  if (std::strcmp(name, "PluginRemoveBarID") == 0) return AddressOf(TakeBarId);
  return nullptr;
}

class FakeBoxes : public MessageBoxes {
 public:
  int Show(const Request& request) override {
    Shown = request;
    return 1001;
  }
  Request Shown;
};

TEST(FunctionTableTest, LooksTheTerminalsFunctionsUpInOrder) {
  namesAsked.clear();
  const CQORDLLComman terminal(RecordName);
  EXPECT_EQ(namesAsked,
            "GetMasterRequest SendToAccess PluginDataSend SendToDataFeed SendDepthBroadCastRequest "
            "SendWatchBroadCastRequest SendIndexBroadCastRequest GetOrderNo GetDepth ApplicationFocus OnMessage "
            "IsVELDSLogin GetPluginBarID SetPluginBarName PluginRemoveBarID TERBCastRequest PasswordVerification "
            "ModifyOrderQtyCheck M2MDisplay ");
}

// The test program exports none of them, so the lookup among its own exports finds nothing either.
TEST(FunctionTableTest, WhatTheTerminalLacksDoesNothing) {
  for (const CQORDLLComman::Resolver resolve : {CQORDLLComman::Resolver{RecordName}, CQORDLLComman::Resolver{}}) {
    const CQORDLLComman terminal(resolve);
    for (std::size_t i = 0; i < kTerminalFunctionCount; ++i)
      EXPECT_FALSE(terminal.Has(static_cast<TerminalFunction>(i)));
    CQORPacketWriter message(0);
    terminal.PluginDataSend(message);
    EXPECT_EQ(BytesOf(message), Hex("23 0100 0000 23 1127 0000"));
    SecurityMasterData data{{"kept"}, 2.5};
    EXPECT_FALSE(terminal.GetMasterRequest("ASX", "BHP", data));
    EXPECT_STREQ(data.Name.data(), "kept");
    EXPECT_EQ(data.Multiplier, 2.5);
    terminal.ApplicationFocus(nullptr, true);
    EXPECT_EQ(terminal.GetPluginBarID("book"), 0U);
    terminal.PluginRemoveBarID(1);
  }
}

TEST(FunctionTableTest, AsksForAMasterRecordByExchangeAndSecurity) {
  // Name at 266 without a terminator, multiplier at 435: the record ends behind it.
  const Bytes record = Bytes(266, 0xEE) + Hex("'BHP GROUP LIMITED 0123456789 0123456789 01234567' 58") +
                       Bytes(120, 0xEE) + Hex("0000000000000440");
  ASSERT_EQ(record.size(), 443U);
  const auto block = ExactBlock(record);
  masterRecord = block.get();
  seenRequest.reset();
  const CQORDLLComman terminal(OnlyMasterRequest);
  EXPECT_TRUE(terminal.Has(TerminalFunction::GetMasterRequest));
  EXPECT_FALSE(terminal.Has(TerminalFunction::SendToAccess));
  SecurityMasterData data;
  EXPECT_TRUE(terminal.GetMasterRequest("ASX", "BHP.AX", data));
  ASSERT_TRUE(seenRequest);
  EXPECT_EQ(seenRequest->FirstSlot, 0U);
  EXPECT_EQ(seenRequest->MasterRecord, 0U);
  EXPECT_EQ(seenRequest->Texts, (std::vector<std::u16string>{u"ASX", u"", u"", u"", u"", u"", u"", u"BHP.AX", u""}));
  EXPECT_EQ(seenRequest->Zero, 0U);
  EXPECT_EQ(seenRequest->Number, 30);
  EXPECT_EQ(std::string(data.Name.begin(), data.Name.end()), "BHP GROUP LIMITED 0123456789 0123456789 01234567X");
  EXPECT_EQ(data.Multiplier, 2.5);
  EXPECT_EQ(data.NameText(), "BHP GROUP LIMITED 0123456789 0123456789 01234567X");
  data.Name[3] = '\0';
  EXPECT_EQ(data.NameText(), "BHP");

  masterRecord = nullptr;
  EXPECT_FALSE(terminal.GetMasterRequest("ASX", "CBA", data));
  EXPECT_EQ(data.Multiplier, 2.5);
}

TEST(FunctionTableTest, TellsTheTerminalOfBars) {
  seenCalls.clear();
  const CQORDLLComman terminal(BarFunctions);
  terminal.ApplicationFocus(&seenCalls, false);
  terminal.ApplicationFocus(&seenCalls, true);
  EXPECT_EQ(terminal.GetPluginBarID("Trade Book : All"), 0x87654321);
  terminal.PluginRemoveBarID(77);
  EXPECT_EQ(seenCalls,
            (std::vector<std::string>{"focus 1 0", "focus 1 1", "Trade Book|Trade Book : All", "77|Trade Book"}));
}

TEST(FunctionTableTest, ButtonAndIconCodesBecomeStyles) {
  const struct {
    std::uint32_t Button;
    std::uint32_t Icon;
    std::uint32_t Style;
  } kRows[] = {{0, 5, 0x0},  {1, 5, 0x4},   {2, 5, 0x1},  {3, 5, 0x5},  {4, 5, 0x2},  {5, 5, 0x6},
               {6, 5, 0x3},  {7, 5, 0x100}, {8, 5, 0x0},  {0, 0, 0x10}, {0, 1, 0x30}, {0, 2, 0x20},
               {0, 3, 0x40}, {0, 4, 0x80},  {0, 6, 0x70}, {0, 7, 0x0},  {1, 2, 0x24}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::to_string(row.Button) + ' ' + std::to_string(row.Icon));
    EXPECT_EQ(MessageStyle(row.Button, row.Icon, 0, false), row.Style);
    EXPECT_EQ(MessageStyle(row.Button, row.Icon, 0x1000, true), row.Style | 0x81000);
  }
}

TEST(FunctionTableTest, MessageBoxesAreAskedForWithEverything) {
  CQORDLLComman terminal(RecordName);
  EXPECT_EQ(terminal.ShowMessage(nullptr, L"a", L"b", 0, 0, 0), 0);
  EXPECT_EQ(terminal.ShowMessageWithCheck(nullptr, L"a", L"b", 0, 0, 0, true), 0);
  FakeBoxes boxes;
  terminal.Boxes = &boxes;
  terminal.ButtonCaptions = {L"Keep", L"Drop"};
  EXPECT_EQ(terminal.ShowMessage(&boxes, L"Trade Book", L"Which?", 7, 2, 0x2000), 1001);
  EXPECT_EQ(boxes.Shown.Parent, &boxes);
  EXPECT_EQ(boxes.Shown.Caption, L"Trade Book");
  EXPECT_EQ(boxes.Shown.Text, L"Which?");
  EXPECT_EQ(boxes.Shown.Style, 0x2120U);
  EXPECT_EQ(boxes.Shown.ButtonCaptions[0], L"Keep");
  EXPECT_EQ(boxes.Shown.ButtonCaptions[1], L"Drop");
  EXPECT_FALSE(boxes.Shown.WithCheck);
  EXPECT_EQ(boxes.Shown.CheckCaption, L"");

  terminal.RightToLeft = true;
  for (const bool checked : {true, false}) {
    EXPECT_EQ(terminal.ShowMessageWithCheck(nullptr, L"Trade Book", L"Sure?", 1, 3, 0, checked), 1001);
    EXPECT_EQ(boxes.Shown.Parent, nullptr);
    EXPECT_EQ(boxes.Shown.Text, L"Sure?");
    EXPECT_EQ(boxes.Shown.Style, 0x80044U);
    EXPECT_EQ(boxes.Shown.ButtonCaptions[1], L"Drop");
    EXPECT_TRUE(boxes.Shown.WithCheck);
    EXPECT_EQ(boxes.Shown.Checked, checked);
    EXPECT_EQ(boxes.Shown.CheckCaption, L" Don't Ask Again");
  }
}

}  // namespace
