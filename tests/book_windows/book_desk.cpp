#include "tests/book_windows/book_desk.h"

#include "grid_base/settings/registry_store.h"
#include "tests/support/own_folder.h"

namespace fs = std::filesystem;

namespace {

MessageRouter* newestRouter = nullptr;

void TakeAnswer(CQORPacketReader* answer) {
  if (newestRouter != nullptr) newestRouter->OnPluginMessage(*answer);
}

// Its store takes the first folder of the process and keeps it.
const fs::path& FolderOfBooks() {
  static const ProcessFolder folder(u8"tradebook \u00e9\u20ac books ");
  return folder.Path;
}

}  // namespace

BookDesk::BookDesk() : Folder(FolderOfBooks()) {
  fs::current_path(Folder);
  CQORPRegistrySP::UseFolder(Folder);
  for (const wchar_t* path : {L"PLUGINDLLS", L"TradeBook"})  // the store outlives a test
    CQORPRegistrySP::Create(0, 0)->RemovePath(path, false);
  StartAgain();
}

BookDesk::~BookDesk() {
  newestRouter = nullptr;
  fs::current_path(fs::temp_directory_path());
  std::error_code ignored;
  for (const fs::path& entry : fs::directory_iterator(Folder, ignored)) fs::remove_all(entry, ignored);
}

void BookDesk::StartAgain() {
  fakeTerminal = {};
  Router.reset();
  State = std::make_unique<PluginState>(Decoder);
  State->TradeStore.AutoTradeWriteCSV = false;
  Functions = std::make_unique<CQORDLLComman>(FakeTerminalFunction);
  State->TradeStore.OnDownloadEnd();
}

void BookDesk::Connect(BookRegistry& books) {
  Router = std::make_unique<MessageRouter>(*State, books, *Functions, EntryAddresses{});
  newestRouter = Router.get();
}

std::uint64_t BookDesk::OnPluginMessage() {
  return reinterpret_cast<std::uint64_t>(&TakeAnswer);
}

void BookDesk::Trade(std::uint32_t id, const char* exchange, const char* securityId, std::uint8_t side,
                     std::uint32_t quantity, double price, const char* execution) {
  const std::string fields = WireU32(20008, id) + WireText(55100, std::to_string(id)) + WireText(55101, execution) +
                             WireTerminator() + WireText(55010, exchange) + WireText(55104, securityId) +
                             WireU8(101, side) + WireU32(20014, quantity) + WireDouble(40002, price) +
                             WireDouble(40008, 1);
  Deliver(true, 9101, {fields.begin(), fields.end()},
          [this](CQORPacketReader& trade) { State->TradeStore.OnTrade(trade); });
}

void BookDesk::Tell(std::uint16_t number) {
  Deliver(number == 8112, number, {}, [&](CQORPacketReader& message) {
    number == 8112 ? Router->OnMessage(message) : Router->OnPluginMessage(message);
  });
}

void BookDesk::Select(const char* exchange, const char* securityId, const char* name, double multiplier) {
  fakeTerminal.Selected.emplace(exchange, securityId);
  fakeTerminal.Masters[std::string(exchange) + '|' + securityId] = MasterRecord(name, multiplier);
}
