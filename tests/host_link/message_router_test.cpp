#include "host_link/module/message_router.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "host_link/host_functions/function_table.h"
#include "tests/support/fake_terminal.h"

namespace {

constexpr EntryAddresses kAddresses = {1, 2, 3, 0x4142434445464748};

// What the callback of message 32022 gets.
std::vector<Bytes> answers;
void TakeAnswer(CQORPacketReader* answer) {
  EXPECT_EQ(answer->Cursor, 0);
  EXPECT_EQ(answer->MessageNumber, 0);
  answers.push_back(Bytes(answer->Data, answer->Data + answer->End));
}

// Notes each call, with a plus where the plug-in's resources are selected during it.
class FakeWindows : public BookWindows {
 public:
  void OpenBookByCommand() override { Note("open"); }
  void ForgetTrades() override { Note("forget " + std::to_string(Trades()) + " trades"); }
  void ReapplyFilters() override { Note("filters"); }
  void SaveLayout() override { Note("save"); }
  void RestoreLayout() override { Note("restore"); }
  void RepaintAllBooks() override { Note("repaint"); }
  bool SelectedSecurity(std::uint64_t bookAddress, std::string& exchange, std::string& securityId) override {
    Note("selected " + std::to_string(bookAddress));
    exchange = Exchange;
    securityId = SecurityID;
    return HasSelection;
  }

  std::function<std::size_t()> Trades;
  std::vector<std::string> Calls;
  bool HasSelection = true;
  std::string Exchange = "ASX";
  std::string SecurityID = "BHP.AX";

 private:
  void Note(const std::string& call) { Calls.push_back(call + (SelectedResources() != nullptr ? "+" : "")); }
};

using Calls = std::vector<std::string>;

class MessageRouterTest : public testing::Test {
 protected:
  MessageRouterTest() {
    State.TradeStore.AutoTradeWriteCSV = false;
    State.Windows = &Windows;
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
  FakeWindows Windows;
  CQORDLLComman Terminal{FakeTerminalFunction};
  MessageRouter Router{State, Terminal, kAddresses};
};

// A trade of that id and execution: 20008, 55101, 55100, terminator, then its quantity 20014.
Bytes TradeFields(std::uint8_t id, std::uint8_t quantity) {
  return Hex("23 284E") + Word(id, 4) + Hex("23 3DD7 0200 'T'") + Word(id, 1) + Hex("23 3CD7 0200 'O1' 23 FFFF") +
         Hex("23 2E4E") + Word(quantity, 4);
}

Bytes SelectionRequest(std::uint64_t book, std::uint64_t callback) {
  return Hex("23 3275") + Word(callback, 8) + Hex("23 6500 02") + Hex("23 3175") + Word(book, 8);
}
const std::uint64_t kCallback = reinterpret_cast<std::uint64_t>(&TakeAnswer);

TEST_F(MessageRouterTest, KeepsDownloadedTradesUntilTheDownloadEnds) {
  TradeCache& store = State.TradeStore;
  ToMessage(8111, TradeFields(7, 100));
  ToMessage(9101, TradeFields(8, 50));
  ToMessage(9101, TradeFields(8, 50));
  EXPECT_EQ(store.PendingTrades["Default"].Size(), 2U);
  EXPECT_EQ(LiveTrades(), 0U);
  store.GridsRefreshed = true;
  ToMessage(8112);
  EXPECT_TRUE(store.DownloadComplete);
  EXPECT_FALSE(store.GridsRefreshed);
  EXPECT_EQ(LiveTrades(), 2U);
  ToMessage(8111, TradeFields(9, 25));
  ToMessage(9101, TradeFields(10, 5));
  EXPECT_EQ(LiveTrades(), 4U);
  // 9112: trade 20008 gets the quantity 20103.
  ToMessage(9112, Hex("23 284E 08000000 23 874E 33000000"));
  const TradeRecord* amended = store.LiveTradesOf("Default")->Find(8);
  ASSERT_NE(amended, nullptr);
  EXPECT_EQ(std::uint32_t{amended->Quantity}, 51U);
  EXPECT_EQ(std::uint32_t{store.LiveTradesOf("Default")->Find(7)->Quantity}, 100U);

  Windows.Trades = [this] { return LiveTrades(); };
  ToPluginMessage(30022);
  EXPECT_EQ(LiveTrades(), 0U);
  EXPECT_FALSE(store.DownloadComplete);
  EXPECT_EQ(Windows.Calls, Calls{"forget 4 trades"}) << "while the records are there";
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
  EXPECT_EQ(Windows.Calls, Calls{});
  EXPECT_EQ(fakeTerminal.Sent.size() + answers.size() + fakeTerminal.MasterRequests.size(), 0U);
  EXPECT_TRUE(State.TradeStore.PendingTrades.empty());
  EXPECT_FALSE(State.TradeStore.DownloadComplete);
}

// A plus: under the plug-in's resources.
TEST_F(MessageRouterTest, TellsBooksOfFiltersLayoutAndTheMenuCommand) {
  const auto tellAll = [this] {
    ToPluginMessage(30020);
    ToPluginMessage(30021);
    ToMessage(30026, Hex("23 A04E 04030201 23 6500 02 23 3275 0807060504030201"));
    Router.OnBookCommand();
  };
  tellAll();
  EXPECT_EQ(Windows.Calls, (Calls{"filters", "save", "restore+", "open+"}));
  EXPECT_EQ(SelectedResources(), nullptr);
  EXPECT_EQ(State.RestoreNumber, 0x01020304U);
  EXPECT_EQ(State.RestoreAddress, 0x0102030405060708U);
  State.Windows = nullptr;
  tellAll();
  ToMessage(30026);
  EXPECT_EQ(State.RestoreNumber, 0x01020304U) << "a missing field changes nothing";
  EXPECT_EQ(State.RestoreAddress, 0x0102030405060708U);
}

TEST_F(MessageRouterTest, RoutesByTheHeldNumberIfTheHeaderDoesNotParse) {
  const Bytes garbage = Hex("AABB 23 0100");
  CQORPacketReader reader(garbage.data(), static_cast<std::uint16_t>(garbage.size()));
  reader.MessageNumber = 30021;
  Router.OnPluginMessage(reader);
  EXPECT_EQ(Windows.Calls, Calls{"save"});
}

TEST_F(MessageRouterTest, RegistersTheRefreshCallbackAtEachRequest) {
  ToPluginMessage(30025);
  ToPluginMessage(30025);
  // Unfinished: the length word is 0. Tag 60003 has a plain u32 and no count.
  const Bytes registration =
      Hex("23 0100 0000 23 1127 0000"
          "23 1227 057D"
          "23 3275 4847464544434241"
          "23 63EA FA000000");
  EXPECT_EQ(fakeTerminal.Sent, (std::vector<Bytes>{registration, registration}));
}

TEST_F(MessageRouterTest, RefreshPaintsOnceForABurst) {
  Router.OnRefresh();
  EXPECT_EQ(Windows.Calls, Calls{"repaint"});
  EXPECT_TRUE(State.TradeStore.GridsRefreshed);
  Router.OnRefresh();
  EXPECT_EQ(Windows.Calls.size(), 1U);
  ToMessage(8112);
  ToMessage(9101, TradeFields(7, 100));
  Router.OnRefresh();
  Router.OnRefresh();
  EXPECT_EQ(Windows.Calls.size(), 2U);
  State.Windows = nullptr;
  State.TradeStore.GridsRefreshed = false;
  Router.OnRefresh();
  EXPECT_TRUE(State.TradeStore.GridsRefreshed);
}

const Bytes kEmptyAnswer = Hex("23 0100 0000 23 1127 0500 23 1227 177D");

TEST_F(MessageRouterTest, TellsTheSelectedSecurity) {
  ToPluginMessage(32022, SelectionRequest(0x0102030405060708, kCallback));
  EXPECT_EQ(answers, std::vector<Bytes>{Hex("23 0100 0000 23 1127 1800"
                                            "23 1227 177D"
                                            "23 E2D6 0300 'ASX'"
                                            "23 40D7 0600 'BHP.AX'")});
  EXPECT_EQ(Windows.Calls, Calls{"selected 72623859790382856"});
  // Each text is cut at 48 characters.
  Windows.Exchange = std::string(48, 'x') + "y";
  Windows.SecurityID = std::string(48, 'z');
  ToPluginMessage(32022, SelectionRequest(9, kCallback));
  EXPECT_EQ(answers.back(), Hex("23 0100 0000 23 1127 6F00 23 1227 177D 23 E2D6 3000") + Bytes(48, 'x') +
                                Hex("23 40D7 3000") + Bytes(48, 'z'));
}

TEST_F(MessageRouterTest, AnswersWithoutFieldsIfNothingIsSelected) {
  const struct {
    bool HasWindows;
    bool HasSelection;
    const char* Exchange;
    const char* SecurityID;
  } kRows[] = {
      {false, true, "ASX", "BHP"}, {true, false, "ASX", "BHP"}, {true, true, "", "BHP"}, {true, true, "ASX", ""}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::string(row.Exchange) + '|' + row.SecurityID);
    answers.clear();
    State.Windows = row.HasWindows ? &Windows : nullptr;
    Windows.HasSelection = row.HasSelection;
    Windows.Exchange = row.Exchange;
    Windows.SecurityID = row.SecurityID;
    ToPluginMessage(32022, SelectionRequest(9, kCallback));
    EXPECT_EQ(answers, std::vector<Bytes>{kEmptyAnswer});
  }
}

TEST_F(MessageRouterTest, IgnoresSelectionRequestsWithoutBookOrCallback) {
  ToPluginMessage(32022, Hex("23 3175 0900000000000000"));
  ToPluginMessage(32022, Hex("23 3275") + Word(kCallback, 8));
  ToPluginMessage(32022, SelectionRequest(0, kCallback));
  ToPluginMessage(32022, SelectionRequest(9, 0));
  EXPECT_TRUE(answers.empty());
  EXPECT_EQ(Windows.Calls, Calls{});
}

TEST_F(MessageRouterTest, TakesTheSelectionOfAnotherWindow) {
  fakeTerminal.Masters["ASX|BHP.AX"] = MasterRecord("BHP GROUP", 2.5);
  ToPluginMessage(32023, Hex("23 40D7 0600 'BHP.AX' 23 6500 02 23 E2D6 0300 'ASX'"));
  EXPECT_STREQ(State.SelectedKey.Exchange, "ASX");
  EXPECT_STREQ(State.SelectedKey.SecurityID, "BHP.AX");
  EXPECT_STREQ(State.SelectedMaster.Name.data(), "BHP GROUP");
  EXPECT_EQ(State.SelectedMaster.Multiplier, 2.5);

  // Texts are cut at 48 characters; a missing field or record changes nothing.
  const std::string longest(48, 'z');
  ToPluginMessage(32023, Hex("23 40D7 3200") + Bytes(50, 'z') + Hex("23 6500 02"));
  EXPECT_EQ(State.SelectedKey.SecurityID, longest);
  EXPECT_STREQ(State.SelectedKey.Exchange, "ASX");
  EXPECT_STREQ(State.SelectedMaster.Name.data(), "BHP GROUP");
  EXPECT_EQ(fakeTerminal.MasterRequests, (std::vector<std::string>{"ASX|BHP.AX", "ASX|" + longest}));
}

}  // namespace
