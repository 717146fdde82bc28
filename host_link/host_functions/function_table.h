// CQORDLLComman: the plug-in's table of the terminal's functions, and its message box wrapper. Every call into the
// terminal goes through here, where the pointer is tested: what the running terminal lacks silently does nothing.
// Filled once, before any other call; after that read only, on the terminal's calling thread.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "host_link/host_functions/terminal_functions.h"
#include "platform/modules.h"

// Shows a message box; the windows of the plug-in bring one. Null while there are none: a box then answers 0.
class MessageBoxes {
 public:
  struct Request {
    void* Parent = nullptr;  // window, may be null
    std::wstring Caption;
    std::wstring Text;
    std::uint32_t Style = 0;
    std::array<std::wstring, 2> ButtonCaptions;  // of the buttons with ids 1000 and 1001, where the style asks for them
    bool WithCheck = false;
    bool Checked = false;  // initial state of the check box
    std::wstring CheckCaption;
  };
  virtual ~MessageBoxes() = default;
  virtual int Show(const Request& request) = 0;
};

// The name and the multiplier of a security as the terminal's master record has them.
struct SecurityMasterData {
  std::array<char, kMasterNameSize> Name{};
  double Multiplier = 0;

  // The name up to its NUL, which the terminal need not have put there.
  std::string NameText() const { return {Name.begin(), std::find(Name.begin(), Name.end(), '\0')}; }
};

class CQORDLLComman {
 public:
  using Resolver = void* (*)(const char* name);

  // Looks every function up by its name; without a resolver among the exports of the process's main program.
  explicit CQORDLLComman(Resolver resolve = nullptr) noexcept;
  virtual ~CQORDLLComman() = default;
  CQORDLLComman(const CQORDLLComman&) = delete;
  CQORDLLComman& operator=(const CQORDLLComman&) = delete;

  // Button and icon codes are those of terminal_functions.h. Both return the dialog's result.
  virtual int ShowMessageWithCheck(void* parent, const std::wstring& caption, const std::wstring& text,
                                   std::uint32_t button, std::uint32_t icon, std::uint32_t extraStyle, bool checked);
  virtual int ShowMessage(void* parent, const std::wstring& caption, const std::wstring& text, std::uint32_t button,
                          std::uint32_t icon, std::uint32_t extraStyle);

  bool Has(TerminalFunction function) const noexcept { return Address(function) != nullptr; }

  void PluginDataSend(CQORPacketWriter& message) const noexcept;
  // Asks for the master record of a security; false when there is none.
  bool GetMasterRequest(const char* exchange, const char* securityId, SecurityMasterData& data) const;
  void ApplicationFocus(void* window, bool closed) const noexcept;
  // The control id for a new bar; 0 when the terminal gives none.
  std::uint32_t GetPluginBarID(const char* bookName) const noexcept;
  void PluginRemoveBarID(std::uint32_t barId) const noexcept;

  MessageBoxes* Boxes = nullptr;
  std::array<std::wstring, 2> ButtonCaptions;  // of the two custom buttons
  bool RightToLeft = false;                    // of message boxes

  // The colours that the class has always carried, as COLORREF values; nothing reads them. The first three slots of its
  // layout hold kNoColor.
  static constexpr std::int64_t kNoColor = -1;
  static constexpr std::array<std::uint32_t, 12> kDefaultColors = {0xFF875F, 0, 0xFF0000, 0xDAD4A4, 0xE6ECCA, 0x787878,
                                                                   0x9B82FF, 0, 0xFF,     0xDAD4A4, 0xE6ECCA, 0x787878};

  static constexpr const char* kPluginName = "Trade Book";

 private:
  void* Address(TerminalFunction function) const noexcept { return Functions[static_cast<std::size_t>(function)]; }
  template <typename Signature>
  Signature Function(TerminalFunction function) const noexcept {
    return reinterpret_cast<Signature>(Address(function));
  }

  std::array<void*, kTerminalFunctionCount> Functions{};
};

// CQORDLLResource: for as long as it lives, dialogs, menus and windows take their resources from the plug-in's module;
// after it from the one selected before. Every entry that can reach a window holds one for the call. The selection is
// the process's and belongs to the terminal's calling thread.

// The module whose resources are selected now; null stands for the terminal's own.
ModuleHandle SelectedResources() noexcept;

class CQORDLLResource {
 public:
  CQORDLLResource() noexcept;
  virtual ~CQORDLLResource();
  CQORDLLResource(const CQORDLLResource&) = delete;
  CQORDLLResource& operator=(const CQORDLLResource&) = delete;

 private:
  ModuleHandle SavedHandle;
};
static_assert(sizeof(CQORDLLResource) == 2 * sizeof(void*));
