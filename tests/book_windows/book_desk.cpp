#include "tests/book_windows/book_desk.h"

#include <gtest/gtest.h>

#include <cstring>

#include "foundations/paths.h"
#include "foundations/text_tools.h"
#include "grid_base/settings/registry_store.h"
#include "host_link/messages/packet_writer.h"

namespace fs = std::filesystem;

namespace {

MessageRouter* newestRouter = nullptr;

void TakeAnswer(CQORPacketReader* answer) {
  if (newestRouter != nullptr) newestRouter->OnPluginMessage(*answer);
}

}  // namespace

FilterKey KeyOf(const char* exchange, const char* securityId) {
  FilterKey key{};
  std::strcpy(key.Exchange, exchange);
  std::strcpy(key.SecurityID, securityId);
  return key;
}

namespace {

// One folder for the process: its store takes the first one and keeps it.
const fs::path& ProcessFolder() {
  static const fs::path folder = [] {
    const std::string suite = testing::UnitTest::GetInstance()->current_test_info()->test_suite_name();
    fs::path made;
    for (int i = 0; made.empty() || !fs::create_directory(made); ++i)
      made = fs::temp_directory_path() /
             (u8"tradebook \u00e9\u20ac " + fs::path(suite + " " + std::to_string(i)).u8string());
    return made;
  }();
  return folder;
}

}  // namespace

BookDesk::BookDesk() : Folder(ProcessFolder()) {
  fs::create_directories(Folder);
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
  fs::remove_all(Folder, ignored);
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
                     std::uint32_t quantity, double price) {
  TradeRecord record{};
  record.VELDTradeID = id;
  std::snprintf(record.ExchangeOrderNo, sizeof record.ExchangeOrderNo, "%u", id);
  std::strcpy(record.Exchange, exchange);
  std::strcpy(record.SecurityID, securityId);
  record.Side = side;
  record.Quantity = quantity;
  record.Price = price;
  record.Multiplier = 1;
  CQORPacketWriter writer(0);
  Decoder.EncodeRecord(writer, record, false, 9101, false);
  writer.Finish();
  CQORPacketReader reader(writer.GetData(), static_cast<std::uint16_t>(writer.GetSize()));
  std::uint16_t needed = 0, consumed = 0;
  if (reader.ParseHeader(needed, consumed)) State->TradeStore.OnTrade(reader);
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
