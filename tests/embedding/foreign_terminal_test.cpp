// The real module in a terminal without wxWidgets. This program is the terminal; its argument is the file of the
// module.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <set>

#include "host_link/messages/message_table.h"
#include "host_link/messages/packet_reader.h"
#include "host_link/messages/packet_writer.h"
#include "platform/modules.h"
#include "tests/embedding/foreign_loop.h"
#include "tests/host_link/link_fixtures.h"
#include "trade_data/records/trade_impl.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kBookTitle = "Trade Book : All";
fs::path moduleFile;
std::uint64_t refreshCallback = 0;
std::set<std::uint64_t> focusedWindows;
std::vector<std::string> selectedSecurities;

}  // namespace

// Takes the callback from message 32005; it follows header, number and the head of its field.
TRADEBOOK_EXPORT void PluginDataSend(CQORPacketWriter* message) {
  const Bytes bytes = BytesOf(*message);
  if (Part(bytes, 13, 15) == Word(32005)) std::memcpy(&refreshCallback, &bytes.at(18), sizeof refreshCallback);
}
TRADEBOOK_EXPORT std::uint32_t GetPluginBarID(const char*, const char*) {
  return 1;
}
TRADEBOOK_EXPORT void ApplicationFocus(void* window, std::uint32_t closed) {
  if (closed == 0) focusedWindows.insert(reinterpret_cast<std::uint64_t>(window));
}

namespace {

void TakeSelection(CQORPacketReader* answer) {
  std::uint16_t needed = 0, consumed = 0;
  answer->ParseHeader(needed, consumed);
  char security[49] = "";
  while (answer->NextTag())
    if (answer->Tag != 55104 || !answer->ReadText(security, 48)) answer->SkipValue();
  if (*security != '\0') selectedSecurities.push_back(security);
}

class LoadedModule {
 public:
  LoadedModule() {
    std::string error;
    Handle = LoadModule(moduleFile, error);
    if (Handle == nullptr) throw std::runtime_error(error);
    OnMessage = Symbol<MessageFunction>("OnMessage");
    OnPluginMessage = Symbol<MessageFunction>("OnPluginMessage");
    ReplyForTest reply(0, true);
    const std::uint8_t everything = 0;
    Symbol<GetDllInfoFunction>("GetDllInfo")(&reply.Buffer, &everything);
    // Message 30005 follows the identity; the address follows header, number and menu text.
    std::memcpy(&Command, &reply.Content().at(131 + 10 + 5 + 133 + 3), sizeof Command);
    refreshCallback = 0;
    ToPlugin(Hex("23 1227") + Word(30025));
    focusedWindows.clear();
    selectedSecurities.clear();
  }

  void Send(const Bytes& message) const {
    CQORPacketReader reader(message.data(), static_cast<std::uint16_t>(message.size()));
    std::uint16_t needed = 0, consumed = 0;
    ASSERT_TRUE(reader.ParseHeader(needed, consumed));
    OnMessage(&reader);
  }
  void EndDownload() const { Send(Framed(Hex("23 1227") + Word(8112))); }
  void Trade(std::uint32_t id, const char* securityId) const {
    TradeRecord record{};
    record.VELDTradeID = id;
    std::snprintf(record.ExchangeTradeID, sizeof record.ExchangeTradeID, "%u", id);
    std::strcpy(record.Exchange, "COMEX");
    std::strcpy(record.SecurityID, securityId);
    CQORTradeImpl encoder;
    CQORPacketWriter writer(0);
    encoder.EncodeRecord(writer, record, false, 9101, false);
    writer.Finish();
    Send(BytesOf(writer));
  }
  void ToPlugin(const Bytes& body) const {
    const Bytes message = Framed(body);
    CQORPacketReader reader(message.data(), static_cast<std::uint16_t>(message.size()));
    OnPluginMessage(&reader);
  }
  void OpenBook() const { reinterpret_cast<CommandFunction>(Command)(); }
  static void Beat() { reinterpret_cast<CommandFunction>(refreshCallback)(); }
  // Asks every window that had the focus for the security of its current row.
  void AskSelection() const {
    for (const std::uint64_t window : focusedWindows)
      ToPlugin(Hex("23 1227") + Word(32022) + Hex("23 3175") + Word(window, 8) + Hex("23 3275") +
               Word(reinterpret_cast<std::uint64_t>(&TakeSelection), 8));
  }
  void Unload() const { UnloadModule(Handle); }

 private:
  template <typename Function>
  Function Symbol(const char* name) const {
    return reinterpret_cast<Function>(ModuleSymbol(Handle, name));
  }
  ModuleHandle Handle;
  MessageFunction OnMessage;
  MessageFunction OnPluginMessage;
  std::uint64_t Command = 0;
};

std::string DailyFile() {
  for (const auto& entry : fs::directory_iterator(fs::current_path()))
    if (entry.path().extension() == ".CSV") {
      std::ifstream file(entry.path(), std::ios::binary);
      return {std::istreambuf_iterator<char>(file), {}};
    }
  return "none";
}

// Opens a book, which makes a live trade its current row.
void PlayWithBook(const LoadedModule& module) {
  module.EndDownload();
  module.OpenBook();
  ASSERT_TRUE(TickUntil([] { return ShowsWindow(kBookTitle); }));
  module.Trade(1, "GC1");
  LoadedModule::Beat();
  module.AskSelection();
  EXPECT_EQ(selectedSecurities, std::vector<std::string>{"GC1"});
  Tick();
}

// In this order: the program has no display at first, then opens its window.
TEST(ForeignTerminal, TradesGoOnWithoutADisplay) {
  if (!HideDisplay()) GTEST_SKIP() << "the platform always has a display";
  const LoadedModule module;
  module.Trade(1, "GC1");
  module.OpenBook();
  module.EndDownload();
  LoadedModule::Beat();
  module.OpenBook();
  module.Trade(2, "GC2");
  EXPECT_EQ(DailyFile(), "VELDTradeID,SecurityID,\r\n1,GC1,\r\n2,GC2,");
  EXPECT_TRUE(focusedWindows.empty());
  module.Unload();
  ShowDisplay();
}

TEST(ForeignTerminal, ABookHasAFrameOfItsOwnUntilTheModuleIsUnloaded) {
  if (!OpenForeignWindow()) GTEST_SKIP() << "there is no display to make windows on";
  for (int time = 0; time < 2; ++time) {
    SCOPED_TRACE(time);
    const LoadedModule module;
    PlayWithBook(module);
    EXPECT_TRUE(ShowsWindow(kBookTitle));
    EXPECT_TRUE(HasLoaded(moduleFile));
    module.Unload();
    EXPECT_FALSE(ShowsWindow(kBookTitle));
    EXPECT_FALSE(HasLoaded(moduleFile));
    Tick();
  }
}

TEST(ForeignTerminal, TheProcessMayEndWithABookOpen) {
  if (!OpenForeignWindow()) GTEST_SKIP() << "there is no display to make windows on";
  PlayWithBook(LoadedModule());
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const std::vector<fs::path> arguments = CommandLineArguments(argc, argv);
  if (arguments.empty()) return 2;
  moduleFile = fs::absolute(arguments.back());
  const fs::path folder = fs::temp_directory_path() / "tradebook_foreign_terminal";
  fs::remove_all(folder);
  fs::create_directories(folder);
  fs::current_path(folder);
  std::ofstream("TradeHeaderFile.txt") << "VELDTradeID\nSecurityID\n";
  return RUN_ALL_TESTS();
}
