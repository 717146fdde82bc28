#include "terminal/link/terminal_host.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "foundations/text_tools.h"
#include "host_link/messages/packet_reader.h"

namespace {

TerminalHost* Running = nullptr;

std::string NarrowText(const char16_t* text) {
  return text == nullptr ? std::string() : WideToNarrow(Utf16ToWide(std::u16string_view(text)));
}

// FNV-1a, cut to 30 bits and above 0, which stands for no id.
std::uint32_t BarIdOf(std::string_view name) {
  std::uint32_t hash = 2166136261;
  for (const char character : name) hash = (hash ^ static_cast<unsigned char>(character)) * 16777619;
  return 1 + (hash >> 2);
}

void PassProperties(CQORPacketReader& message, TerminalWindows& windows) {
  const PropertyRequest request = ReadPropertyRequest(message);
  if (request.Complete()) windows.ShowProperties(request);
}

void PassQuestion(CQORPacketReader& message, TerminalWindows& windows) {
  const SelectionQuestion question = ReadSelectionQuestion(message);
  if (question.Answer != nullptr) windows.TellSelection(question.Window, question.Answer);
}

}  // namespace

void TerminalHost::GetMasterRequest(MasterRequest* request, const std::uint16_t* requestNumber) const {
  if (request == nullptr || requestNumber == nullptr || *requestNumber != MasterRequest::kRequestNumber) return;
  const Security* security = Securities->Find(NarrowText(request->Texts[MasterRequest::kExchange]),
                                              NarrowText(request->Texts[MasterRequest::kSecurityID]));
  if (security != nullptr) request->MasterRecord = reinterpret_cast<std::uintptr_t>(security->MasterRecord.data());
}

// The writer is open, and its length word is 0: walks from the end of the header to the cursor.
void TerminalHost::PluginDataSend(const CQORPacketWriter* message) {
  if (message == nullptr || message->Buffer == nullptr) return;
  CQORPacketReader reader(message->Buffer, message->Cursor);
  reader.Cursor = message->HeaderSize;
  if (!reader.NextTag() || reader.Tag != 10002 || !reader.ReadU16(reader.MessageNumber)) return;
  ++ReceivedCounts[reader.MessageNumber];
  if (Log != nullptr) Log->Add(false, reader.MessageNumber, {reader.Data + reader.Cursor, reader.Data + reader.End});
  if (reader.MessageNumber == 32005) Beat.Register(ReadBeatRequest(reader));
  if (Windows == nullptr) return;
  if (reader.MessageNumber == 32003) PassProperties(reader, *Windows);
  if (reader.MessageNumber == 32004) Windows->PropertiesFilled();
  if (reader.MessageNumber == 32022) PassQuestion(reader, *Windows);
}

void TerminalHost::ApplicationFocus(const void* window, bool closed) {
  if (Windows != nullptr) Windows->FocusMoved(window, closed);
}

std::uint32_t TerminalHost::GetPluginBarID(const char* bookName) {
  const std::string name = bookName == nullptr ? "" : bookName;
  std::uint32_t id = BarIdOf(name);
  while (!BarNames.emplace(id, name).second) ++id;
  return id;
}

TerminalHost* RunningHost() noexcept {
  return Running;
}

RunningHostScope::RunningHostScope(TerminalHost& host) noexcept {
  Running = &host;
}
RunningHostScope::~RunningHostScope() {
  Running = nullptr;
}

void RefreshBeat::Register(const BeatRequest& request) {
  Callback = request.Callback;
  Period = std::max(request.Period, std::chrono::milliseconds(1));
  Due = Clock.Now() + Period;
}

// Late beats are not made up for.
void RefreshBeat::CallIfDue() {
  if (Callback == nullptr) return;
  const PlayClock::Time now = Clock.Now();
  if (now < Due) return;
  Due = now + Period;
  ++CallCount;
  Callback();
}

void RefreshBeat::WaitUntil(PlayClock::Time time) {
  CallIfDue();
  while (Clock.Now() < time) {
    Clock.SleepUntil(Callback == nullptr ? time : std::min(time, Due));
    CallIfDue();
  }
}

std::optional<PlayClock::Time> RefreshBeat::NextCall() const {
  return Callback == nullptr ? std::nullopt : std::optional(Due);
}
