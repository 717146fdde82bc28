// The built module as a terminal meets it. This program is the terminal: it exports a terminal's functions.
#include <gtest/gtest.h>

#include "platform/modules.h"
#include "tests/host_link/link_fixtures.h"
#include "tests/support/fake_terminal.h"
#include "tests/support/own_folder.h"

static int terminalMessages = 0;

// A terminal may have a function of this name too: the module neither calls it nor sends its address as its own.
TRADEBOOK_EXPORT void OnMessage(CQORPacketReader*) {
  ++terminalMessages;
}

namespace {

struct LoadedModule {
  LoadedModule() = default;
  ~LoadedModule() { UnloadModule(Handle); }
  LoadedModule(const LoadedModule&) = delete;
  LoadedModule& operator=(const LoadedModule&) = delete;

  void Send(std::uint16_t number, const Bytes& fields = {}) const {
    const bool isTrade = number < 30000;
    Deliver(isTrade, number, fields,
            [&](CQORPacketReader& reader) { (isTrade ? OnMessage : OnPluginMessage)(&reader); });
  }

  template <typename Function>
  Function Symbol(const char* name) const {
    void* symbol = Handle == nullptr ? nullptr : ModuleSymbol(Handle, name);
    if (symbol == nullptr) throw std::runtime_error(name + Error);
    return reinterpret_cast<Function>(symbol);
  }
  std::string Error;
  const ModuleHandle Handle =
      LoadModule(ProgramFolder() / ".." / "bin" / (std::string("tradebook") + ModuleSuffix()), Error);
  const GetDllInfoFunction GetDllInfo = Symbol<GetDllInfoFunction>("GetDllInfo");
  const MessageFunction OnMessage = Symbol<MessageFunction>("OnMessage");
  const MessageFunction OnPluginMessage = Symbol<MessageFunction>("OnPluginMessage");
};

using Files = std::vector<std::string>;

// A working folder of its own, with the columns of the daily file.
class ModuleTest : public OwnFolder {
 protected:
  ModuleTest() {
    std::filesystem::current_path(Folder);
    WriteFile(Folder / "TradeHeaderFile.txt", "VELDTradeID\nQuantity\nNoColumn\nPrice\n");
    fakeTerminal = {};
  }
  ~ModuleTest() override { std::filesystem::current_path(FormerFolder); }

  // The contents of the files that the module has written.
  Files DailyFiles() const {
    Files contents;
    for (const auto& entry : std::filesystem::directory_iterator(Folder))
      if (entry.path().filename() != "TradeHeaderFile.txt") contents.push_back(ReadFile(entry.path()));
    return contents;
  }

  const std::filesystem::path FormerFolder = std::filesystem::current_path();
};

template <typename Function>
Bytes AddressOf(Function* function) {
  return Word(reinterpret_cast<std::uint64_t>(function), 8);
}

TEST_F(ModuleTest, SendsTheAddressesOfItsOwnFunctions) {
  const LoadedModule module;
  ReplyForTest reply(0, true), identity(0, true);
  const std::uint8_t infoOnly = 1;
  module.GetDllInfo(&reply.Buffer, nullptr);
  module.GetDllInfo(&identity.Buffer, &infoOnly);
  const Bytes content = reply.Content();
  ASSERT_EQ(content.size(), 131U + 322U + 62U + 49U);
  EXPECT_EQ(identity.Content(), Part(content, 0, 131));
  // After header, number and the head of field 30001.
  EXPECT_EQ(Part(content, 131 + 322, 131 + 322 + 26),
            Hex("23 0100 0000 23 1127 3400 23 1227 3675 23 3175") + AddressOf(module.OnMessage));
  EXPECT_EQ(Part(content, 131 + 322 + 62, 131 + 322 + 62 + 26),
            Hex("23 0100 0000 23 1127 2700 23 1227 3775 23 3175") + AddressOf(module.OnPluginMessage));
  // Each entry point is a no-op without an argument.
  module.GetDllInfo(nullptr, &infoOnly);
  module.OnMessage(nullptr);
  module.OnPluginMessage(nullptr);
  EXPECT_TRUE(fakeTerminal.Sent.empty());
  EXPECT_EQ(terminalMessages, 0);
}

TEST_F(ModuleTest, WritesTheDailyFileToTheFolderAtLoadAndClosesItAtUnload) {
  const std::string header = "VELDTradeID,Quantity,NoColumn,Price,", first = header + "\r\n7,100,45.25,";
  {
    const LoadedModule module;
    std::filesystem::current_path(FormerFolder);
    module.Send(8111, TradeFields(7, 100));
    EXPECT_EQ(DailyFiles(), Files());
    module.Send(8112);
    EXPECT_EQ(DailyFiles(), Files{first});
    module.Send(30022);
    // After 30022 the download starts again; its lines are not flushed one by one.
    module.Send(8111, TradeFields(9, 3));
    EXPECT_EQ(DailyFiles(), Files{first});
  }
  EXPECT_EQ(DailyFiles(), Files{first + "\r\n9,3,45.25,"});
  std::filesystem::current_path(Folder);
  // A loaded module knows no execution and starts a new file.
  const LoadedModule module;
  module.Send(8111, TradeFields(7, 50));
  module.Send(8112);
  EXPECT_EQ(DailyFiles(), Files{header + "\r\n7,50,45.25,"});
}

}  // namespace
