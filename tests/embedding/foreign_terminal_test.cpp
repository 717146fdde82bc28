// The real module in a terminal without wxWidgets, which this program is.
#include <gtest/gtest.h>

#include <set>

#include "tests/embedding/foreign_loop.h"
#include "tests/host_link/link_fixtures.h"
#include "tests/support/fake_terminal.h"
#include "tests/support/own_folder.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kBookTitle = "Trade Book : All";

// What books answer to message 32022 ends with the security.
std::set<std::string> chosen;
void TakeSelection(CQORPacketReader* answer) {
  const std::string text(answer->Data, answer->Data + answer->End);
  if (text.find("COMEX") != std::string::npos) chosen.insert(text.substr(text.size() - 3));
}

class LoadedModule {
 public:
  LoadedModule() {
    static const ProcessFolder folder(u8"tradebook foreign terminal ");
    static int modules = 0;
    const fs::path own = folder.Path / std::to_string(++modules);
    fs::create_directory(own);
    fs::current_path(own);
    WriteFile("TradeHeaderFile.txt", "VELDTradeID\nSecurityID\n");
    std::string error;
    Handle = LoadModule(File, error);
    EXPECT_NE(Handle, nullptr) << error;
    fakeTerminal = {};
    ReplyForTest reply(0, true);
    const std::uint8_t everything = 0;
    Symbol<GetDllInfoFunction>("GetDllInfo")(&reply.Buffer, &everything);
    // Message 30005 follows the identity; the address follows header, number and menu text.
    OpenBook = reinterpret_cast<CommandFunction>(LoadValue<std::uint64_t>(&reply.Content().at(131 + 10 + 5 + 133 + 3)));
    Call("OnPluginMessage", 30025);
    // The address in message 32005 follows header, number and the head of its field.
    EXPECT_EQ(fakeTerminal.SentNumbers(), std::vector<std::uint16_t>{32005});
    Beat = reinterpret_cast<CommandFunction>(LoadValue<std::uint64_t>(&fakeTerminal.Sent.at(0).at(18)));
  }

  void EndDownload() const { Call("OnMessage", 8112); }
  void Trade(std::uint32_t id, const char* securityId) const {
    Call("OnMessage", 9101,
         Hex("23 284E") + Word(id, 4) + Hex("23 3CD7 0200 'O'") + Word(id, 1) +
             Hex("23 FFFF 23 E2D6 0500 'COMEX' 23 40D7 0300") + Bytes(securityId, securityId + 3));
  }
  // Every window that had the focus is asked for the security of its current row.
  std::set<std::string> Selected() const {
    chosen.clear();
    for (const auto& [window, closed] : fakeTerminal.Focus)
      Call("OnPluginMessage", 32022,
           Hex("23 3175") + Word(reinterpret_cast<std::uint64_t>(window), 8) + Hex("23 3275") +
               Word(reinterpret_cast<std::uint64_t>(&TakeSelection), 8));
    return chosen;
  }

  const fs::path File = ProgramFolder() / ".." / "bin" / (std::string("tradebook") + ModuleSuffix());
  ModuleHandle Handle;
  CommandFunction OpenBook, Beat;

 private:
  template <typename Function>
  Function Symbol(const char* name) const {
    return reinterpret_cast<Function>(ModuleSymbol(Handle, name));
  }
  void Call(const char* entry, std::uint16_t number, const Bytes& fields = {}) const {
    Deliver(entry == std::string("OnMessage"), number, fields,
            [&](CQORPacketReader& message) { Symbol<MessageFunction>(entry)(&message); });
  }
};

// Opens a book, which makes a live trade its current row.
void PlayWithBook(const LoadedModule& module) {
  module.EndDownload();
  module.OpenBook();
  ASSERT_TRUE(TickUntil([] { return ShowsWindow(kBookTitle); }));
  module.Trade(1, "GC1");
  module.Beat();
  EXPECT_EQ(module.Selected(), std::set<std::string>{"GC1"});
}

// In this order: the program has no display at first, then opens its window.
TEST(ForeignTerminal, TradesGoOnWithoutADisplay) {
  if (!HideDisplay()) GTEST_SKIP() << "the platform always has a display";
  testing::internal::CaptureStderr();
  const LoadedModule module;
  module.Trade(1, "GC1");
  module.OpenBook();
  module.EndDownload();
  module.Beat();
  module.Trade(2, "GC2");
  EXPECT_EQ(ReadFile(DailyFileIn(fs::current_path())), "VELDTradeID,SecurityID,\r\n1,GC1,\r\n2,GC2,");
  EXPECT_TRUE(fakeTerminal.Focus.empty());
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  UnloadModule(module.Handle);
  ShowDisplay();
}

TEST(ForeignTerminal, ABookHasAFrameOfItsOwnUntilTheModuleIsUnloaded) {
  if (!OpenForeignWindow()) GTEST_SKIP() << "there is no display to make windows on";
  for (int time = 0; time < 2; ++time) {
    const LoadedModule module;
    PlayWithBook(module);
    EXPECT_TRUE(ShowsWindow(kBookTitle) && HasLoaded(module.File));
    UnloadModule(module.Handle);
    EXPECT_FALSE(ShowsWindow(kBookTitle) || HasLoaded(module.File));
    Tick();
  }
}

TEST(ForeignTerminal, TheProcessMayEndWithABookOpen) {
  if (!OpenForeignWindow()) GTEST_SKIP() << "there is no display to make windows on";
  PlayWithBook(LoadedModule());
}

}  // namespace
