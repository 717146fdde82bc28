#include "terminal/link/terminal_host.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <vector>

#include "host_link/messages/packet_reader.h"
#include "terminal/link/plugin_messages.h"
#include "tests/terminal/test_files.h"

namespace {

int RefreshCount = 0;
void CountRefresh() {
  ++RefreshCount;
}

class TerminalHostTest : public testing::Test {
 protected:
  std::ostringstream Reports;
  BadLineReport BadLines{Reports};
  SecurityList Securities{WriteSecurities(), BadLines};
  TestClock Clock;
  RefreshBeat Beat{Clock};
  TerminalHost Host{Securities, Beat};
};

// The period has no byte count, and the field behind it is still found. 250 is read where a count would be.
TEST_F(TerminalHostTest, RegistersTheRefreshOfAnOpenWriter) {
  CQORPacketWriter message(0);
  message.AddU16(10002, 32005);
  constexpr std::uint8_t kPeriod[] = {0x23, 0x63, 0xEA, 0xFA, 0x00, 0x00, 0x00};
  message.AddBytes(1, kPeriod, sizeof kPeriod);  // the head of this field is then written over
  std::memmove(message.Buffer + 15, kPeriod, sizeof kPeriod);
  message.Cursor = 22;
  message.AddU64(30002, reinterpret_cast<std::uint64_t>(&CountRefresh));
  Host.PluginDataSend(&message);
  RefreshCount = 0;
  Clock.Current += std::chrono::milliseconds(249);
  Beat.CallIfDue();
  EXPECT_EQ(RefreshCount, 0);
  Clock.Current += std::chrono::milliseconds(1);
  Beat.CallIfDue();
  EXPECT_EQ(RefreshCount, 1);
}

// Keeps the order of what it is asked.
struct TestWindows : TerminalWindows {
  void TellSelection(std::uint64_t window, MessageFunction answer) override {
    Asked += std::to_string(window) + " ";
    AnswerSelection(answer, "ARCA", window == 7 ? "IBM" : "", Log);
  }
  void ShowProperties(const PropertyRequest& request) override {
    Asked += "p" + std::to_string(reinterpret_cast<std::uint64_t>(request.Fill)) +
             std::to_string(reinterpret_cast<std::uint64_t>(request.Apply)) + std::to_string(request.Grid) + " ";
  }
  void PropertiesFilled() override { Asked += "filled "; }
  void FocusMoved(const void* window, bool closed) override {
    Asked += std::to_string(reinterpret_cast<std::uintptr_t>(window)) + (closed ? "- " : "+ ");
  }
  std::string Asked;
  MessageLog Log;
};

std::vector<std::string> Answers;
void NoteAnswer(CQORPacketReader* message) {
  ASSERT_EQ(message->Cursor, 0);  // raw, as to the plug-in's own function
  Answers.emplace_back(reinterpret_cast<const char*>(message->Data), message->End);
}

TEST_F(TerminalHostTest, PassesQuestionsToItsWindows) {
  TestWindows windows;
  Host.UseWindows(&windows);
  const auto ask = [this](std::uint64_t window, MessageFunction answer) {
    CQORPacketWriter question(0);
    question.AddU16(10002, 32022);
    question.AddU64(30002, reinterpret_cast<std::uint64_t>(answer));
    question.AddU64(30001, window);
    Host.PluginDataSend(&question);
  };
  Answers.clear();
  ask(7, &NoteAnswer);
  ask(8, &NoteAnswer);
  ask(9, nullptr);
  Host.ApplicationFocus(reinterpret_cast<void*>(5), false);
  Host.ApplicationFocus(reinterpret_cast<void*>(5), true);
  CQORPacketWriter properties(0);
  properties.AddU16(10002, 32003);
  properties.AddU64(30002, 78);
  properties.AddU64(30031, 79);
  Host.PluginDataSend(&properties);  // without a grid
  properties.AddU64(30001, 6);
  Host.PluginDataSend(&properties);
  CQORPacketWriter filled(0);
  filled.AddU16(10002, 32004);
  Host.PluginDataSend(&filled);
  EXPECT_EQ(windows.Asked, "7 8 5+ 5- p78796 filled ");
  Host.UseWindows(nullptr);
  ask(7, &NoteAnswer);
  Host.PluginDataSend(&properties);
  CQORPacketWriter empty(0);
  Host.PluginDataSend(&empty);
  Host.PluginDataSend(nullptr);
  EXPECT_EQ(Host.Received(), (std::map<std::uint16_t, std::uint64_t>{{32003, 3}, {32004, 1}, {32022, 4}}));
  const std::string head("#\1\0\0\0#\x11\x27", 8);
  const std::string number("#\x12\x27\x17\x7D", 5);
  ASSERT_EQ(Answers.size(), 2U);
  EXPECT_EQ(Answers[0],
            head + std::string("\x16\0", 2) + number + std::string("#\xE2\xD6\4\0ARCA#\x40\xD7\3\0IBM", 17));
  EXPECT_EQ(Answers[1], head + std::string("\5\0", 2) + number);
}

TEST_F(TerminalHostTest, GivesEachBarAnIdOfItsOwn) {
  const std::uint32_t first = Host.GetPluginBarID("TradeBook 1");
  const std::uint32_t second = Host.GetPluginBarID("TradeBook 2");
  EXPECT_EQ(Host.GetPluginBarID("TradeBook 1"), first + 1);
  EXPECT_EQ(Host.GetPluginBarID(nullptr), 1 + 0x811C9DC5 / 4) << "the same at every start";
  Host.PluginRemoveBarID(first);
  Host.PluginRemoveBarID(99);
  EXPECT_EQ(Host.Bars(), (std::map<std::uint32_t, std::string>{
                             {first + 1, "TradeBook 1"}, {second, "TradeBook 2"}, {1 + 0x811C9DC5 / 4, ""}}));
  EXPECT_EQ(Host.GetPluginBarID("TradeBook 1"), first);
}

TEST_F(TerminalHostTest, AnswersOnlyRequestThirtyForAKnownSecurity) {
  const struct {
    const char16_t* Exchange;
    const char16_t* SecurityID;
    std::uint16_t Number;
    bool Found;
  } cases[] = {{u"ARCA", u"IBM", 30, true},   {u"ARCA", u"IBM", 31, false}, {u"ARCA", u"ibm", 30, false},
               {u"ARCA", u"IBM ", 30, false}, {u"", u"", 30, false},        {u"IBM", u"ARCA", 30, false}};
  for (const auto& row : cases) {
    SCOPED_TRACE(row.Number);
    MasterRequest request;
    request.Texts[0] = row.Exchange;
    request.Texts[7] = row.SecurityID;
    Host.GetMasterRequest(&request, &row.Number);
    ASSERT_EQ(request.MasterRecord != 0, row.Found);
    if (!row.Found) continue;
    EXPECT_STREQ(reinterpret_cast<const char*>(request.MasterRecord) + 266, "BIG BLUE");
  }
}

TEST(PluginDescription, ReadsTheFourMessages) {
  std::vector<std::uint8_t> reply;
  const auto append = [&reply](std::uint16_t mode, std::uint16_t number, auto addFields) {
    CQORPacketWriter message(mode);
    message.AddU16(10002, number);
    addFields(message);
    message.Finish();
    reply.insert(reply.end(), message.GetData(), message.GetData() + message.GetSize());
  };
  append(0, 30004, [](CQORPacketWriter& identity) {
    identity.AddU32(20005, 0x23232323);  // marks in a value that is skipped
    identity.AddText(55020, "Trade Book", 64, false);
    identity.AddText(55017, "(c)", 64, false);
    identity.AddText(55112, "VELD Trade DLL.", 64, false);
  });
  append(0, 30005, [](CQORPacketWriter& menu) {
    char16_t title[64] = u"Trades";
    title[7] = u'#';  // after the terminator: no part of the text
    menu.AddBytes(55192, title, sizeof title);
    menu.AddU64(30001, 0x0123456789ABCDEF);
    menu.AddBytes(55353, u"Trade Book", 2 * sizeof "Trade Book");
    menu.AddU8(126, 0x77);
    menu.AddTerminator();
  });
  append(1, 30006, [](CQORPacketWriter& route) {  // a compressed one reads the same
    route.AddU64(30001, 17);
    route.AddU16(11122, 9101);
    route.AddU16(11122, 9112);
    route.AddTerminator();
    route.AddU16(11120, 8110);
    route.AddU16(11121, 8112);
  });
  append(0, 30007, [](CQORPacketWriter& route) {
    route.AddU64(30001, 18);
    route.AddU16(11122, 30025);
  });
  const PluginDescription told = ReadPluginDescription(reply);
  EXPECT_EQ(told.Name + "|" + told.Copyright + "|" + told.Maker, "Trade Book|(c)|VELD Trade DLL.");
  EXPECT_EQ(told.MenuTitle, u"Trades");
  EXPECT_EQ(told.MenuEntry, u"Trade Book");
  EXPECT_EQ(told.MenuCommand, 0x0123456789ABCDEFU);
  EXPECT_EQ(told.MenuKey, 0x77);
  EXPECT_EQ(told.ToOnMessage.Address, 17U);
  EXPECT_EQ(told.ToOnMessage.Numbers, (std::set<std::uint16_t>{9101, 9112}));
  EXPECT_EQ(told.DownloadRequest, 8110);
  EXPECT_EQ(told.DownloadEnd, 8112);
  EXPECT_EQ(told.ToOnPluginMessage.Address, 18U);
  EXPECT_EQ(told.ToOnPluginMessage.Numbers, (std::set<std::uint16_t>{30025}));
  for (std::size_t length = 0; length < reply.size(); ++length) {  // a reply cut anywhere is read to its end
    const std::vector<std::uint8_t> cut(reply.begin(), reply.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_TRUE(ReadPluginDescription(cut).ToOnPluginMessage.Numbers.empty());
  }
}

}  // namespace
