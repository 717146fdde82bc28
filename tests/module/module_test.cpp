// The built module as a terminal meets it. This program is the terminal: it exports a terminal's functions.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "host_link/host_functions/terminal_functions.h"
#include "host_link/messages/packet_reader.h"
#include "host_link/module/message_router.h"
#include "platform/modules.h"
#include "tests/host_link/reply_for_test.h"
#include "tests/module/export_table.h"

namespace {

std::vector<Bytes> sentMessages;
std::vector<std::u16string> askedSecurities;
int terminalMessages = 0;

}  // namespace

TRADEBOOK_EXPORT void PluginDataSend(CQORPacketWriter* message) {
  sentMessages.push_back(BytesOf(*message));
}
TRADEBOOK_EXPORT void GetMasterRequest(MasterRequest* request, std::uint32_t, std::uint16_t*) {
  askedSecurities.push_back(std::u16string(request->Texts[0]) + u"|" + request->Texts[7]);
}
// A terminal has a function of this name as well: the module must neither call nor advertise it for its own.
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

  // As the terminal delivers: parsed to OnMessage, raw to OnPluginMessage.
  void ToMessage(std::uint16_t number, const Bytes& fields = {}) const {
    const Bytes message = Framed(Hex("23 1227") + Word(number) + fields);
    CQORPacketReader reader(message.data(), static_cast<std::uint16_t>(message.size()));
    std::uint16_t needed = 0;
    std::uint16_t consumed = 0;
    EXPECT_TRUE(reader.ParseHeader(needed, consumed));
    OnMessage(&reader);
  }
  void ToPluginMessage(std::uint16_t number, const Bytes& fields = {}) const {
    const Bytes message = Framed(Hex("23 1227") + Word(number) + fields);
    CQORPacketReader reader(message.data(), static_cast<std::uint16_t>(message.size()));
    OnPluginMessage(&reader);
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
    std::ofstream(Folder / "TradeHeaderFile.txt") << "VELDTradeID\nQuantity\nNoColumn\nPrice\n";
    sentMessages.clear();
    askedSecurities.clear();
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
      std::ifstream file(entry.path(), std::ios::binary);
      content.assign(std::istreambuf_iterator<char>(file), {});
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

TEST_F(ModuleTest, ExportsItsThreeEntryPointsAndNothingElse) {
  EXPECT_EQ(ExportedNames(ModuleFile()), (std::multiset<std::string>{"GetDllInfo", "OnMessage", "OnPluginMessage"}));
}

TEST_F(ModuleTest, DescribesItselfWithTheAddressesOfItsOwnFunctions) {
  const LoadedModule module;
  ReplyForTest reply(0, true);
  const std::uint8_t everything = 0;
  module.GetDllInfo(&reply.Buffer, &everything);
  const Bytes content = reply.Content();
  ASSERT_EQ(content.size(), 131U + 322U + 62U + 49U);
  // Each time behind header, number and the head of field 30001.
  EXPECT_EQ(Part(content, 131 + 322, 131 + 322 + 26),
            Hex("23 0100 0000 23 1127 3400 23 1227 3675 23 3175") + Word(AddressOf(module.OnMessage), 8));
  EXPECT_EQ(Part(content, 131 + 322 + 62, 131 + 322 + 62 + 26),
            Hex("23 0100 0000 23 1127 2700 23 1227 3775 23 3175") + Word(AddressOf(module.OnPluginMessage), 8));
  // The menu command, without windows, does nothing.
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
  EXPECT_EQ(askedSecurities, std::vector<std::u16string>{u"ASX|BHP.AX"});
  EXPECT_TRUE(sentMessages.empty());
  module.ToPluginMessage(30025);
  ASSERT_EQ(sentMessages.size(), 1U);
  ASSERT_EQ(sentMessages[0].size(), 33U);
  EXPECT_EQ(Part(sentMessages[0], 0, 18), Hex("23 0100 0000 23 1127 0000 23 1227 057D 23 3275"));
  EXPECT_EQ(Part(sentMessages[0], 26, 33), Hex("23 63EA FA000000"));
  // The refresh callback, without windows, does nothing.
  const auto refresh = LoadValue<std::uint64_t>(sentMessages[0].data() + 18);
  reinterpret_cast<CommandFunction>(refresh)();
}

TEST_F(ModuleTest, ADayMakesItsFileInTheFolderOfTheLoad) {
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

TEST_F(ModuleTest, UnloadingClosesTheFileAndLoadingStartsAnew) {
  const std::string header = "VELDTradeID,Quantity,NoColumn,Price,";
  {
    const LoadedModule module;
    module.ToMessage(8112);
    module.ToPluginMessage(30022);
    // Behind 30022 the download runs again, and its lines are not flushed one by one.
    module.ToMessage(8111, TradeFields(7, 100));
    EXPECT_EQ(DailyFile(), header);
  }
  EXPECT_EQ(DailyFile(), header + "\r\n7,100,45.25,");
  {
    // The same execution is new again, and the file begins anew.
    const LoadedModule module;
    module.ToMessage(8111, TradeFields(7, 50));
    EXPECT_EQ(DailyFile(), header + "\r\n7,100,45.25,");
    module.ToMessage(8112);
  }
  EXPECT_EQ(DailyFile(), header + "\r\n7,50,45.25,");
}

TEST_F(ModuleTest, NullArgumentsDoNoHarm) {
  const LoadedModule module;
  const std::uint8_t infoOnly = 1;
  module.GetDllInfo(nullptr, &infoOnly);
  module.OnMessage(nullptr);
  module.OnPluginMessage(nullptr);
  ReplyForTest reply(0, true);
  module.GetDllInfo(&reply.Buffer, nullptr);
  EXPECT_EQ(reply.Content().size(), 564U);
  EXPECT_TRUE(sentMessages.empty());
}

}  // namespace
