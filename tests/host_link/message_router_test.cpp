#include "host_link/module/message_router.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

#include "grid_base/settings/registry_store.h"
#include "host_link/host_functions/function_table.h"
#include "platform/modules.h"
#include "tests/host_link/link_fixtures.h"
#include "tests/support/fake_books.h"
#include "tests/support/fake_terminal.h"

namespace {

constexpr EntryAddresses kAddresses = {0x1112131415161718, 0x2122232425262728, 0x3132333435363738, 0x4142434445464748};

// What the callback of message 32022 gets.
std::vector<Bytes> answers;
void TakeAnswer(CQORPacketReader* answer) {
  EXPECT_EQ(answer->Cursor, 0);
  EXPECT_EQ(answer->MessageNumber, 0);
  answers.push_back(Bytes(answer->Data, answer->Data + answer->End));
}

void IgnoreAnswer(CQORPacketReader*) {}

class MessageRouterTest : public testing::Test {
 protected:
  MessageRouterTest() {
    State.TradeStore.AutoTradeWriteCSV = false;
    Screen.Registry = &Books;
    CQORPRegistrySP::UseFolder(ProgramFolder());
    fakeTerminal = {};
    answers.clear();
  }

  std::size_t ToMessage(std::uint16_t number, const Bytes& fields = {}) {
    return Deliver(true, number, fields, [this](CQORPacketReader& reader) { Router.OnMessage(reader); });
  }
  std::size_t ToPluginMessage(std::uint16_t number, const Bytes& fields = {}) {
    return Deliver(false, number, fields, [this](CQORPacketReader& reader) { Router.OnPluginMessage(reader); });
  }
  std::size_t LiveTrades() const {
    const TradeMap* trades = State.TradeStore.LiveTradesOf("Default");
    return trades == nullptr ? 0 : trades->Size();
  }

  CQORTradeImpl Decoder;
  PluginState State{Decoder};
  // Opens a book by the menu command.
  FakeBookWindow& Open() {
    Router.OnBookCommand();
    Screen.Windows.back()->TakeNotes();
    return *Screen.Windows.back();
  }

  CQORDLLComman Terminal{FakeTerminalFunction};
  FakeBookScreen Screen;
  BookRegistry Books{State, Terminal, Screen, reinterpret_cast<std::uint64_t>(&IgnoreAnswer)};
  MessageRouter Router{State, Books, Terminal, kAddresses};
};

Bytes TextField(const char* tag, const std::string& value) {
  return Hex(tag) + Word(value.size()) + Bytes(value.begin(), value.end());
}

Bytes SelectionRequest(std::uint64_t book, std::uint64_t callback) {
  return Hex("23 3275") + Word(callback, 8) + Hex("23 6500 02") + Hex("23 3175") + Word(book, 8);
}
const std::uint64_t kCallback = reinterpret_cast<std::uint64_t>(&TakeAnswer);

const Bytes kIdentity =
    Hex("23 0100 0000 23 1127 7900"
        "23 1227 3475  23 254E 01000000  23 264E E9030000  23 ECD6 0A00 'Trade Book'"
        "23 E9D6 2C00 'Copyright (c) 2026 The Trade Book developers'"
        "23 48D7 0F00 'VELD Trade DLL.'  23 D413 00  23 A04E 00000000  23 A14E 07000000");

const Bytes kMenuEntry = Hex("23 0100 0000 23 1127 3801"
                             "23 1227 3575  23 98D7 8000 'T' 00 'r' 00 'a' 00 'd' 00 'e' 00 's' 00") +
                         Bytes(116) +
                         Hex("23 3175 3837363534333231  23 9F4E 00000000"
                             "23 39D8 8000 'T' 00 'r' 00 'a' 00 'd' 00 'e' 00 ' ' 00 'B' 00 'o' 00 'o' 00 'k' 00") +
                         Bytes(108) + Hex("23 A513 00  23 C813 00  23 C913 00  23 CA13 00  23 7E00 77  23 FFFF");

const Bytes kTradeRoutes =
    Hex("23 0100 0000 23 1127 3400"
        "23 1227 3675  23 3175 1817161514131211"
        "23 722B 8D23  23 722B AF1F  23 722B B01F  23 722B 9823  23 FFFF"
        "23 702B AE1F  23 712B B01F  23 FFFF");

const Bytes kPluginRoutes =
    Hex("23 0100 0000 23 1127 2700"
        "23 1227 3775  23 3175 2827262524232221"
        "23 722B 4975  23 722B 4675  23 722B 4475  23 722B 4575  23 FFFF");

TEST(PluginInfoTest, DescribesTheModuleInMessagesThatFit) {
  const std::tuple<std::uint32_t, bool, bool, Bytes> kRows[] = {
      {0, true, false, kIdentity + kMenuEntry + kTradeRoutes + kPluginRoutes},
      {0, true, true, kIdentity},
      {300, false, false, kIdentity + kTradeRoutes + kPluginRoutes}};
  for (const auto& [capacity, growable, identityOnly, content] : kRows) {
    ReplyForTest reply(capacity, growable);
    AppendPluginInfo(reply.Buffer, identityOnly, kAddresses);
    EXPECT_EQ(reply.Content(), content);
  }
  for (const Bytes& message : {kIdentity, kMenuEntry, kTradeRoutes, kPluginRoutes}) ExpectFieldsOfTable(message);
}

TEST_F(MessageRouterTest, KeepsDownloadedTradesUntilTheDownloadEnds) {
  TradeCache& store = State.TradeStore;
  ToMessage(8111, TradeFields(7, 100));
  ToMessage(9101, TradeFields(8, 50));
  EXPECT_EQ(store.PendingTrades["Default"].Size(), 2U);
  EXPECT_EQ(LiveTrades(), 0U);
  ToMessage(8112);
  EXPECT_TRUE(store.DownloadComplete);
  ASSERT_EQ(LiveTrades(), 2U);
  // 9112: trade 20008 gets the quantity 20103.
  ToMessage(9112, Hex("23 284E 08000000 23 874E 33000000"));
  EXPECT_EQ(std::uint32_t{store.LiveTradesOf("Default")->Find(8)->Quantity}, 51U);

  const FakeBookWindow& book = Open();
  EXPECT_EQ(book.Shown.Rows.Rows.Size(), 2U);
  ToPluginMessage(30022);
  EXPECT_EQ(book.Shown.Rows.Rows.Size(), 0U);
  EXPECT_EQ(LiveTrades(), 0U);
  EXPECT_FALSE(store.DownloadComplete);
}

// Behind header and number the message has 15 bytes, and 10002 is the tag last read: two bytes are skipped.
TEST_F(MessageRouterTest, SkipsOneValueOfNumbersThatAnEntryPointDoesNotTake) {
  const std::set<std::uint16_t> toMessage = {8111, 8112, 9101, 9112, 30026};
  const std::set<std::uint16_t> toPluginMessage = {30020, 30021, 30022, 30025, 32022, 32023};
  const Bytes fields = SelectionRequest(9, kCallback);
  for (unsigned i = 0; i <= 65535; ++i) {
    const auto number = static_cast<std::uint16_t>(i);
    ASSERT_TRUE(toMessage.contains(number) || ToMessage(number, fields) == 17) << number;
    ASSERT_TRUE(toPluginMessage.contains(number) || ToPluginMessage(number, fields) == 17) << number;
  }
  EXPECT_EQ(ToMessage(8110, Hex("23")), 15U);
  EXPECT_EQ(ToPluginMessage(8110), 15U);
  EXPECT_TRUE(Screen.Windows.empty());
  EXPECT_EQ(fakeTerminal.Sent.size() + answers.size() + fakeTerminal.MasterRequests.size(), 0U);
  EXPECT_TRUE(State.TradeStore.PendingTrades.empty());
  EXPECT_FALSE(State.TradeStore.DownloadComplete);
}

TEST_F(MessageRouterTest, TellsBooksOfFiltersLayoutAndTheMenuCommand) {
  FakeBookWindow& book = Open();
  EXPECT_TRUE(Screen.MadeUnderResources);
  EXPECT_EQ(SelectedResources(), nullptr);
  ToPluginMessage(30020);
  EXPECT_EQ(book.TakeNotes(), "show; rows replaced; totals");
  ToPluginMessage(30021);
  EXPECT_EQ(book.TakeNotes(), "save Trade Book : AllTradeBook 11; save columns");
  Screen.MadeUnderResources = false;
  ToMessage(30026, Hex("23 A04E 04030201 23 6500 02 23 3275 0807060504030201"));
  EXPECT_EQ(Screen.Windows.size(), 2U);
  EXPECT_TRUE(Screen.MadeUnderResources);
  EXPECT_EQ(SelectedResources(), nullptr);
  ToMessage(30026);
  EXPECT_EQ(State.RestoreNumber, 0x01020304U) << "a missing field changes nothing";
  EXPECT_EQ(State.RestoreAddress, 0x0102030405060708U);
}

TEST_F(MessageRouterTest, RoutesByTheHeldNumberIfTheHeaderDoesNotParse) {
  FakeBookWindow& book = Open();
  CQORPacketReader reader(nullptr, 0);
  reader.MessageNumber = 30020;
  Router.OnPluginMessage(reader);
  EXPECT_EQ(book.TakeNotes(), "show; rows replaced; totals");
}

// Unfinished: the length word is 0. Tag 60003 has a plain u32 and no count.
TEST_F(MessageRouterTest, RegistersTheRefreshCallbackAtEachRequest) {
  ToPluginMessage(30025);
  ToPluginMessage(30025);
  const Bytes registration = Hex("23 0100 0000 23 1127 0000 23 1227 057D 23 3275 4847464544434241 23 63EA FA000000");
  EXPECT_EQ(fakeTerminal.Sent, (std::vector<Bytes>{registration, registration}));
}

TEST_F(MessageRouterTest, RefreshPaintsOnceForABurst) {
  FakeBookWindow& book = Open();
  ToMessage(8112);
  for (std::uint8_t id = 1; id < 5; ++id) {
    ToMessage(9101, TradeFields(id, 100));
    ToMessage(9101, TradeFields(++id, 100));
    EXPECT_FALSE(State.TradeStore.GridsRefreshed);
    Router.OnRefresh();
    EXPECT_EQ(book.TakeNotes(), "rows; totals");
    Router.OnRefresh();
    EXPECT_EQ(book.TakeNotes(), "");
  }
}

TEST_F(MessageRouterTest, TellsTheSelectedSecurityIfBookAndCallbackAreGiven) {
  const Bytes empty = Hex("23 0100 0000 23 1127 0500 23 1227 177D");
  const std::string longest(48, 'z');
  const std::tuple<int, std::string, std::string, Bytes> kRows[] = {
      {0, "ASX", "BHP.AX", Hex("23 0100 0000 23 1127 1800 23 1227 177D 23 E2D6 0300 'ASX' 23 40D7 0600 'BHP.AX'")},
      {0, longest, longest,
       Hex("23 0100 0000 23 1127 6F00 23 1227 177D 23 E2D6 3000") + Bytes(48, 'z') + Hex("23 40D7 3000") +
           Bytes(48, 'z')},
      {-1, "ASX", "BHP", empty},  // no current row
      {0, "", "BHP", empty},
      {0, "ASX", "", empty},
  };
  ToMessage(8112);
  FakeBookWindow& book = Open();
  std::uint8_t id = 0;
  for (const auto& [row, exchange, securityId, answer] : kRows) {
    SCOPED_TRACE(exchange + '|' + securityId);
    ToMessage(9101, TradeFields(++id, 1) + TextField("23 E2D6", exchange) + TextField("23 40D7", securityId));
    book.Row = row;
    ToPluginMessage(32022, SelectionRequest(reinterpret_cast<std::uint64_t>(book.BarAddress()), kCallback));
    EXPECT_EQ(answers.back(), answer);
  }
  ToPluginMessage(32022, SelectionRequest(9, kCallback));
  EXPECT_EQ(answers.back(), empty) << "no book stands there";
  for (const Bytes& fields : {Hex("23 3175 0900000000000000"), Hex("23 3275") + Word(kCallback, 8),
                              SelectionRequest(0, kCallback), SelectionRequest(9, 0)})
    ToPluginMessage(32022, fields);
  EXPECT_EQ(answers.size(), std::size(kRows) + 1);
}

TEST_F(MessageRouterTest, TakesTheSelectionOfAnotherWindow) {
  fakeTerminal.Masters["ASX|BHP.AX"] = MasterRecord("BHP GROUP", 2.5);
  ToPluginMessage(32023, Hex("23 40D7 0600 'BHP.AX' 23 6500 02 23 E2D6 0300 'ASX'"));
  EXPECT_STREQ(State.SelectedKey.Exchange, "ASX");
  EXPECT_STREQ(State.SelectedKey.SecurityID, "BHP.AX");
  EXPECT_EQ(State.SelectedScriptName, "BHP GROUP");

  // Texts are cut at 48 characters; a missing field or record changes nothing.
  const std::string longest(48, 'z');
  ToPluginMessage(32023, TextField("23 40D7", longest + "zz") + Hex("23 6500 02"));
  EXPECT_EQ(State.SelectedKey.SecurityID, longest);
  EXPECT_STREQ(State.SelectedKey.Exchange, "ASX");
  EXPECT_EQ(State.SelectedScriptName, "BHP GROUP");
  EXPECT_EQ(fakeTerminal.MasterRequests, (std::vector<std::string>{"ASX|BHP.AX", "ASX|" + longest}));
}

}  // namespace
