// The built module as a terminal meets it. This program is the terminal: it exports a terminal's functions.
#include <gtest/gtest.h>

#include "platform/modules.h"
#include "tests/host_link/reply_for_test.h"
#include "tests/module/export_table.h"
#include "tests/support/fake_terminal.h"
#include "tests/support/files.h"

namespace {
int terminalMessages = 0;
}

// A terminal may have a function of this name too: the module neither calls it nor sends its address as its own.
TRADEBOOK_EXPORT void OnMessage(CQORPacketReader*) {
  ++terminalMessages;
}

namespace {

std::filesystem::path ModuleFile() {
  return ProgramFolder() / ".." / "bin" / (std::string("tradebook") + ModuleSuffix());
}

template <typename Function>
std::uint64_t AddressOf(Function* function) {
  return reinterpret_cast<std::uint64_t>(function);
}

class LoadedModule {
 public:
  LoadedModule() {
    std::string error;
    Handle = LoadModule(ModuleFile(), error);
    if (Handle == nullptr) throw std::runtime_error(error);
    GetDllInfo = Symbol<GetDllInfoFunction>("GetDllInfo");
    OnMessage = Symbol<MessageFunction>("OnMessage");
    OnPluginMessage = Symbol<MessageFunction>("OnPluginMessage");
  }
  ~LoadedModule() { UnloadModule(Handle); }
  LoadedModule(const LoadedModule&) = delete;
  LoadedModule& operator=(const LoadedModule&) = delete;

  void ToMessage(std::uint16_t number, const Bytes& fields = {}) const {
    Deliver(true, number, fields, [this](CQORPacketReader& reader) { OnMessage(&reader); });
  }
  void ToPluginMessage(std::uint16_t number, const Bytes& fields = {}) const {
    Deliver(false, number, fields, [this](CQORPacketReader& reader) { OnPluginMessage(&reader); });
  }

  GetDllInfoFunction GetDllInfo;
  MessageFunction OnMessage;
  MessageFunction OnPluginMessage;

 private:
  template <typename Function>
  Function Symbol(const char* name) const {
    void* symbol = ModuleSymbol(Handle, name);
    if (symbol == nullptr) throw std::runtime_error(name);
    return reinterpret_cast<Function>(symbol);
  }
  ModuleHandle Handle;
};

// A working folder of its own, with the columns of the daily file.
class ModuleTest : public testing::Test {
 protected:
  ModuleTest() : FormerFolder(std::filesystem::current_path()) {
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    Folder = ProgramFolder() / ("module_test_" + name);
    std::filesystem::remove_all(Folder);
    std::filesystem::create_directories(Folder);
    std::filesystem::current_path(Folder);
    WriteFile(Folder / "TradeHeaderFile.txt", "VELDTradeID\nQuantity\nNoColumn\nPrice\n");
    fakeTerminal = {};
    terminalMessages = 0;
  }
  ~ModuleTest() override {
    std::filesystem::current_path(FormerFolder);
    std::error_code failure;
    std::filesystem::remove_all(Folder, failure);
    EXPECT_FALSE(failure) << failure.message();
  }

  // The one daily file, Trade<8 digits>.CSV, or a note of what stands there instead.
  std::string DailyFile() const {
    std::string content = "none";
    for (const auto& entry : std::filesystem::directory_iterator(Folder)) {
      const std::string name = entry.path().filename().string();
      if (name == "TradeHeaderFile.txt") continue;
      if (content != "none" || name.size() != 17 || !name.starts_with("Trade") || !name.ends_with(".CSV") ||
          name.substr(5, 8).find_first_not_of("0123456789") != std::string::npos)
        return "unexpected " + name;
      content = ReadFile(entry.path());
    }
    return content;
  }

  std::filesystem::path FormerFolder;
  std::filesystem::path Folder;
};

// A trade of that id and execution, its quantity, and the price 45.25.
Bytes TradeFields(std::uint8_t id, std::uint8_t quantity) {
  return Hex("23 284E") + Word(id, 4) + Hex("23 3DD7 0200 'T'") + Word(id, 1) + Hex("23 3CD7 0200 'O1' 23 FFFF") +
         Hex("23 2E4E") + Word(quantity, 4) + Hex("23 429C 0000000000A04640");
}

TEST_F(ModuleTest, ExportsItsThreeEntryPointsOnly) {
  EXPECT_EQ(ExportedNames(ModuleFile()), (std::multiset<std::string>{"GetDllInfo", "OnMessage", "OnPluginMessage"}));
}

TEST_F(ModuleTest, SendsTheAddressesOfItsOwnFunctions) {
  const LoadedModule module;
  ReplyForTest reply(0, true);
  const std::uint8_t everything = 0;
  module.GetDllInfo(&reply.Buffer, &everything);
  const Bytes content = reply.Content();
  ASSERT_EQ(content.size(), 131U + 322U + 62U + 49U);
  // After header, number and the head of field 30001.
  EXPECT_EQ(Part(content, 131 + 322, 131 + 322 + 26),
            Hex("23 0100 0000 23 1127 3400 23 1227 3675 23 3175") + Word(AddressOf(module.OnMessage), 8));
  EXPECT_EQ(Part(content, 131 + 322 + 62, 131 + 322 + 62 + 26),
            Hex("23 0100 0000 23 1127 2700 23 1227 3775 23 3175") + Word(AddressOf(module.OnPluginMessage), 8));
  // The menu command is a no-op without windows.
  const auto command = LoadValue<std::uint64_t>(content.data() + 131 + 10 + 5 + 133 + 3);
  reinterpret_cast<CommandFunction>(command)();

  ReplyForTest identity(0, true);
  const std::uint8_t infoOnly = 1;
  module.GetDllInfo(&identity.Buffer, &infoOnly);
  EXPECT_EQ(identity.Content(), Part(content, 0, 131));
  EXPECT_EQ(terminalMessages, 0);
}

TEST_F(ModuleTest, CallsTheTerminalsFunctions) {
  const LoadedModule module;
  module.ToPluginMessage(32023, Hex("23 E2D6 0300 'ASX' 23 40D7 0600 'BHP.AX'"));
  EXPECT_EQ(fakeTerminal.MasterRequests, std::vector<std::string>{"ASX|BHP.AX"});
  EXPECT_TRUE(fakeTerminal.Sent.empty());
  module.ToPluginMessage(30025);
  ASSERT_EQ(fakeTerminal.SentNumbers(), std::vector<std::uint16_t>{32005});
  // The refresh callback is a no-op without windows.
  const auto refresh = LoadValue<std::uint64_t>(&fakeTerminal.Sent[0].at(18));
  reinterpret_cast<CommandFunction>(refresh)();
}

TEST_F(ModuleTest, WritesTheDailyFileToTheFolderAtLoad) {
  const LoadedModule module;
  std::filesystem::current_path(FormerFolder);
  module.ToMessage(8111, TradeFields(7, 100));
  module.ToMessage(8111, TradeFields(5, 20));
  EXPECT_EQ(DailyFile(), "none");
  module.ToMessage(8112);
  const std::string download = "VELDTradeID,Quantity,NoColumn,Price,\r\n5,20,45.25,\r\n7,100,45.25,";
  EXPECT_EQ(DailyFile(), download);
  module.ToMessage(9101, TradeFields(9, 3));
  module.ToMessage(9101, TradeFields(9, 3));
  EXPECT_EQ(DailyFile(), download + "\r\n9,3,45.25,");
}

TEST_F(ModuleTest, UnloadClosesTheFileAndLoadStartsANewOne) {
  const std::string header = "VELDTradeID,Quantity,NoColumn,Price,";
  {
    const LoadedModule module;
    module.ToMessage(8112);
    module.ToPluginMessage(30022);
    // After 30022 the download starts again; its lines are not flushed one by one.
    module.ToMessage(8111, TradeFields(7, 100));
    EXPECT_EQ(DailyFile(), header);
  }
  EXPECT_EQ(DailyFile(), header + "\r\n7,100,45.25,");
  {
    // A loaded module knows no execution and starts a new file.
    const LoadedModule module;
    module.ToMessage(8111, TradeFields(7, 50));
    EXPECT_EQ(DailyFile(), header + "\r\n7,100,45.25,");
    module.ToMessage(8112);
  }
  EXPECT_EQ(DailyFile(), header + "\r\n7,50,45.25,");
}

TEST_F(ModuleTest, IgnoresNullArguments) {
  const LoadedModule module;
  const std::uint8_t infoOnly = 1;
  module.GetDllInfo(nullptr, &infoOnly);
  module.OnMessage(nullptr);
  module.OnPluginMessage(nullptr);
  ReplyForTest reply(0, true);
  module.GetDllInfo(&reply.Buffer, nullptr);
  EXPECT_EQ(reply.Content().size(), 564U);
  EXPECT_TRUE(fakeTerminal.Sent.empty());
}

}  // namespace
