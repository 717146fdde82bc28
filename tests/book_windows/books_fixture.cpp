#include "tests/book_windows/books_fixture.h"

#include <wx/utils.h>

#include <cstring>

#include "foundations/paths.h"
#include "grid_base/settings/registry_store.h"
#include "grid_ops/columns/trade_columns.h"
#include "host_link/messages/packet_writer.h"

namespace fs = std::filesystem;

BookTerminal terminal;

namespace {

void TakeMessage(CQORPacketWriter* message) {
  std::uint16_t number = 0;
  std::memcpy(&number, message->GetData() + kHeaderSize + 3, sizeof number);
  terminal.Messages.push_back(number);
  terminal.LastMessage.assign(message->GetData(), message->GetData() + message->GetSize());
  if (number != 32022) return;
  terminal.State->SelectedKey = terminal.Answer;
  std::strcpy(terminal.State->SelectedMaster.Name.data(), terminal.SecurityName);
}
std::uint32_t GiveBarId(const char*, const char* book) {
  terminal.BarIds.push_back(book);
  const char* number = std::strpbrk(book, "123456789");
  if (terminal.GivesOneId) return terminal.LastId = 7;
  return terminal.LastId = number == nullptr ? 0 : static_cast<std::uint32_t>(std::atoi(number));
}
void GiveMaster(MasterRequest* request, std::uint32_t, std::uint16_t*) {
  static std::string record;
  record = std::string(kMasterNameOffset, '\0') + terminal.SecurityName + std::string(500, '\0');
  std::memcpy(record.data() + kMasterMultiplierOffset, &terminal.Multiplier, sizeof terminal.Multiplier);
  const bool isSecurity =
      *request->Texts[MasterRequest::kExchange] != 0 && *request->Texts[MasterRequest::kSecurityID] != 0;
  if (terminal.KnowsSecurities && isSecurity) request->MasterRecord = reinterpret_cast<std::uintptr_t>(record.data());
}
void TakeBarId(std::uint32_t id, const char*) {
  terminal.BarIds.push_back("-" + std::to_string(id));
}

void* FindFunction(const char* name) {
  if (std::strcmp(name, "PluginDataSend") == 0) return reinterpret_cast<void*>(&TakeMessage);
  if (std::strcmp(name, "GetPluginBarID") == 0) return reinterpret_cast<void*>(&GiveBarId);
  if (std::strcmp(name, "GetMasterRequest") == 0) return reinterpret_cast<void*>(&GiveMaster);
  if (std::strcmp(name, "PluginRemoveBarID") == 0) return reinterpret_cast<void*>(&TakeBarId);
  return nullptr;
}

}  // namespace

FilterKey KeyOf(const char* exchange, const char* securityId) {
  FilterKey key{};
  std::strcpy(key.Exchange, exchange);
  std::strcpy(key.SecurityID, securityId);
  return key;
}

void BooksTest::SetUp() {
  GuiTest::SetUp();
  if (IsSkipped()) return;
  Folder = fs::temp_directory_path() /
           (u8"tradebook books \u00e9\u20ac " + PathOfWide(std::to_wstring(wxGetProcessId())).u8string());
  fs::remove_all(Folder);
  fs::create_directories(Folder);
  fs::current_path(Folder);
  for (const wchar_t* path : {L"PLUGINDLLS", L"TradeBook"})  // the store outlives a test
    CQORPRegistrySP::Create(0, 0)->RemovePath(path, false);
  Start();
}

void BooksTest::TearDown() {
  if (Main != nullptr) Stop();
  fs::current_path(fs::temp_directory_path());
  std::error_code ignored;
  fs::remove_all(Folder, ignored);
  GuiTest::TearDown();
}

void BooksTest::Start() {
  terminal = {};
  Main = new CQORPFrame(nullptr, wxID_ANY, L"Terminal", wxRect(0, 0, 1500, 900));
  Main->Show();
  State = std::make_unique<PluginState>(Decoder);
  State->TradeStore.AutoTradeWriteCSV = false;
  terminal.State = State.get();
  Functions = std::make_unique<CQORDLLComman>(FindFunction);
  List = std::make_unique<BookList>(*State, *Functions, BookCallbacks{77, 78, 79});
  State->TradeStore.OnDownloadEnd();
  WaitForActivation(*Main);
}

void BooksTest::Stop() {
  Main->Destroy();
  Main = nullptr;
  Pump();
  List.reset();
  Functions.reset();
  State.reset();
}

CTradeBookBar& BooksTest::Open() {
  List->OpenBookByCommand();
  CTradeBookBar& bar = BarOf(terminal.LastId);
  WaitForActivation(bar);
  return bar;
}

void BooksTest::FocusMain() {
  Main->Raise();
  WaitForActivation(*Main);
  Main->SetFocus();
  Pump();
}

CTradeBookBar& BooksTest::OpenFor(const char* exchange, const char* securityId) {
  terminal.Answer = KeyOf(exchange, securityId);
  FocusMain();
  return Open();
}

void BooksTest::Trade(std::uint32_t id, const char* exchange, const char* securityId, std::uint8_t side,
                      std::uint32_t quantity, double price, std::uint16_t number) {
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
  Decoder.EncodeRecord(writer, record, false, number, false);
  writer.Finish();
  CQORPacketReader reader(writer.GetData(), static_cast<std::uint16_t>(writer.GetSize()));
  std::uint16_t needed = 0, consumed = 0;
  ASSERT_TRUE(reader.ParseHeader(needed, consumed));
  State->TradeStore.OnTrade(reader);
}

void BooksTest::Beat() {
  List->RepaintAllBooks();
  Pump();
}

std::wstring BooksTest::Cell(CTradeBookBar& bar, int row, const char* key) {
  CQORPGridCell cell;
  for (int i = 0; i < kTradeColumnCount; ++i)
    if (kTradeColumns[i].Key == key) bar.Grid()->ShowCell(row, i, cell);
  return cell.Text;
}
