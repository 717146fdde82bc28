// The terminal's side of a plug-in: what it answers, what it reads of its messages, and the log of both directions.
#include "terminal/link/plugin_link.h"

#include <span>

#include "tests/terminal/test_files.h"

namespace {

// The bytes as a block of exactly that size, which lives until the next call.
std::span<const std::uint8_t> ExactSpan(std::string_view bytes) {
  static std::optional<ExactBytes> block;
  block.emplace(bytes);
  return {block->Data(), block->Size()};
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

class TerminalHostTest : public testing::Test {
 protected:
  // As an open writer, which has no length yet.
  void Send(std::uint16_t number, const std::string& fields = {}) {
    CQORPacketWriter message(0);
    message.AddU16(10002, number);
    for (const char byte : fields) message.Buffer[message.Cursor++] = static_cast<std::uint8_t>(byte);
    Host.PluginDataSend(&message);
  }

  TestReport Reports;
  SecurityList Securities{WriteSecurities(), Reports};
  TestClock Clock;
  RefreshBeat Beat{Clock};
  TerminalHost Host{Securities, Beat};
};

// The period has no byte count, and the field behind it is still found. 250 is read where a count would be.
TEST_F(TerminalHostTest, RegistersTheRefresh) {
  Send(32005, WireU32(60003, 250) + WireValue(30002, std::uint64_t{1}));
  EXPECT_EQ(Beat.NextCall(), Clock.Current + std::chrono::milliseconds(250));
  Send(32005, WireU32(60003, 250));
  EXPECT_EQ(Beat.NextCall(), std::nullopt);
}

TEST_F(TerminalHostTest, PassesQuestionsToItsWindows) {
  TestWindows windows;
  Host.UseWindows(&windows);
  Answers.clear();
  const std::string answer = WireValue(30002, reinterpret_cast<std::uint64_t>(&NoteAnswer));
  for (const std::uint64_t window : {7U, 8U}) Send(32022, answer + WireValue(30001, window));
  Send(32022, WireValue(30001, std::uint64_t{9}));
  for (const bool closed : {false, true}) Host.ApplicationFocus(reinterpret_cast<void*>(5), closed);
  const std::string fill = WireValue(30002, std::uint64_t{78}), apply = WireValue(30031, std::uint64_t{79}),
                    grid = WireValue(30001, std::uint64_t{6});
  for (const std::string& fields : {fill + apply, fill + grid, apply + grid, fill + apply + grid}) Send(32003, fields);
  Send(32004);
  EXPECT_EQ(windows.Asked, "7 8 5+ 5- p78796 filled ");
  Host.UseWindows(nullptr);
  Send(32022, answer);
  Send(32003, fill + apply + grid);
  const CQORPacketWriter empty(0);
  Host.PluginDataSend(&empty);
  Host.PluginDataSend(nullptr);
  EXPECT_EQ(Host.Received(), (std::map<std::uint16_t, std::uint64_t>{{32003, 5}, {32004, 1}, {32022, 4}}));
  EXPECT_EQ(Answers, (std::vector{WireMessage(32023, WireText(55010, "ARCA") + WireText(55104, "IBM")),
                                  WireMessage(32023, "")}));
  EXPECT_EQ(FieldsText(windows.Log.At(1).Fields), "55010='ARCA' 55104='IBM'");
}

TEST_F(TerminalHostTest, GivesEachBarAnIdOfItsOwn) {
  const std::uint32_t first = Host.GetPluginBarID("TradeBook 1"), unnamed = 1 + 0x811C9DC5 / 4;
  EXPECT_EQ(Host.GetPluginBarID("TradeBook 1"), first + 1);
  EXPECT_EQ(Host.GetPluginBarID(nullptr), unnamed) << "the same at every start";
  for (const std::uint32_t id : {first, 99U}) Host.PluginRemoveBarID(id);
  EXPECT_EQ(Host.Bars(), (std::map<std::uint32_t, std::string>{{first + 1, "TradeBook 1"}, {unnamed, ""}}));
  EXPECT_EQ(Host.GetPluginBarID("TradeBook 1"), first);
}

TEST_F(TerminalHostTest, AnswersOnlyRequestThirtyForAKnownSecurity) {
  const std::tuple<const char16_t*, const char16_t*, std::uint16_t> cases[] = {
      {u"ARCA", u"IBM", 30},  {u"ARCA", u"IBM", 31}, {u"ARCA", u"ibm", 30},
      {u"ARCA", u"IBM ", 30}, {u"", u"", 30},        {u"IBM", u"ARCA", 30}};
  std::string names;
  for (const auto& [exchange, securityId, number] : cases) {
    MasterRequest request;
    request.Texts[0] = exchange;
    request.Texts[7] = securityId;
    Host.GetMasterRequest(&request, &number);
    names += request.MasterRecord == 0 ? "-" : reinterpret_cast<const char*>(request.MasterRecord) + 266;
  }
  EXPECT_EQ(names, "BIG BLUE-----");
}

TEST(PluginDescription, ReadsTheFourMessages) {
  constexpr std::u16string_view title(u"Trades\0#", 8);  // the text ends before its terminator
  const auto wide = [](int tag, std::u16string_view text) {
    return WireText(tag, {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)});
  };
  const std::string routes = WireU16(10002, 30006) + WireValue(30001, std::uint64_t{17}) + WireU16(11122, 9101) +
                             WireU16(11122, 9112) + WireTerminator() + WireU16(11120, 8110) + WireU16(11121, 8112);
  const std::string reply =
      WireMessage(30004, WireU32(20005, 0x23232323) + WireText(55020, "Trade Book") + WireText(55017, "(c)") +
                             WireText(55112, "VELD Trade DLL.")) +  // marks in a value that is skipped
      WireMessage(30005, wide(55192, title) + WireValue(30001, 0x0123456789ABCDEF) + wide(55353, u"Trade Book") +
                             WireU8(126, 0x77) + WireTerminator()) +
      WireFrame(Deflated(std::string_view(routes)), 1) +  // a compressed one reads the same
      WireMessage(30007, WireValue(30001, std::uint64_t{18}) + WireU16(11122, 30025));
  const PluginDescription told = ReadPluginDescription(ExactSpan(reply));
  EXPECT_EQ(told.Name + "|" + told.Copyright + "|" + told.Maker, "Trade Book|(c)|VELD Trade DLL.");
  EXPECT_EQ(told.MenuTitle + u"|" + told.MenuEntry, u"Trades|Trade Book");
  EXPECT_EQ((std::vector<std::uint64_t>{told.MenuCommand, told.MenuKey, told.ToOnMessage.Address,
                                        told.ToOnPluginMessage.Address, told.DownloadRequest, told.DownloadEnd}),
            (std::vector<std::uint64_t>{0x0123456789ABCDEF, 0x77, 17, 18, 8110, 8112}));
  EXPECT_EQ(told.ToOnMessage.Numbers, (std::set<std::uint16_t>{9101, 9112}));
  EXPECT_EQ(told.ToOnPluginMessage.Numbers, (std::set<std::uint16_t>{30025}));
  for (std::size_t length = 0; length < reply.size(); ++length)  // a reply cut anywhere is read to its end
    EXPECT_TRUE(ReadPluginDescription(ExactSpan(reply.substr(0, length))).ToOnPluginMessage.Numbers.empty());
}

const std::string kSample = WireU8(101, 2) + WireU16(10002, 9101) + WireU32(20014, 4000000000) +
                            WireValue(30001, 18446744073709551615U) + WireDouble(40002, 99.25) + WireHead(50000) +
                            std::string(15, '\0') + '\xA5' + WireText(55010, "CO\"\x80~\x7F\x1F ") +
                            WireU32(60003, 250);  // which has no count, other than its range
const std::string kSampleText =
    "101=2 10002=9101 20014=4000000000 30001=18446744073709551615 40002=99.25 "
    "50000=0x000000000000000000000000000000A5 55010='CO\"\\x80~\\x7F\\x1F ' 60003=250";

TEST(MessageLog, ShowsMessagesAndNotes) {
  for (std::size_t size = 0; size < kSample.size(); ++size)  // each cut reads what is whole
    EXPECT_TRUE(kSampleText.starts_with(FieldsText(ExactSpan(kSample.substr(0, size))))) << size;
  MessageLog log;
  log.Add(true, 9101, ExactSpan(kSample));
  for (const std::uint16_t number : Numbers{32003, 1}) log.Add(false, number, {});
  log.AddNote(true, "gap: 5\nto 7");
  log.AddNote(false, "Live");
  std::wstring texts;
  for (ListRow row = log.FirstRow(); row < log.EndRow(); ++row)
    for (const LogColumn column : {LogColumn::Count, LogColumn::Direction, LogColumn::Number, LogColumn::Meaning,
                                   LogColumn::Bytes, LogColumn::Fields})
      texts += log.Text(row, static_cast<std::size_t>(column)) + L"|";
  EXPECT_EQ(texts, L"1|to plug-in|9101|live trade|" + std::to_wstring(kSample.size()) + L"|" +
                       std::wstring(kSampleText.begin(), kSampleText.end()) +
                       L"|2|from plug-in|32003|show properties|0||3|from plug-in|1||0||"
                       L"4|feed||alarm||gap: 5 to 7|5|feed||connection||Live|");
  EXPECT_EQ(log.Value(1, static_cast<std::size_t>(LogColumn::Number)), SheetValue(std::int64_t{32003}));
  EXPECT_EQ(log.Value(3, static_cast<std::size_t>(LogColumn::Bytes)), SheetValue()) << "a note";
  LoggedMessage message;
  message.Time = std::chrono::system_clock::time_point(std::chrono::milliseconds(65007));
  const std::string time = LogText(message, LogColumn::Time);  // the hour is that of the place
  EXPECT_TRUE(time.size() == 12 && time.ends_with(":05.007")) << time;
}

// A module that lacks an entry point is unloaded again: the log that it opens while it is loaded is made anew.
TEST(PluginLink, UnloadsAModuleThatItCannotUse) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(TestFolder());
  for (int time = 0; time < 2; ++time) {
    EXPECT_THROW(PluginLink(TestModule("lacking_plugin")), TerminalError);
    EXPECT_TRUE(std::filesystem::remove("fake_plugin.log"));
  }
  std::filesystem::current_path(before);
}

}  // namespace
