// CQORDLLComman: the addresses of the terminal's functions, the plug-in's only way to call them, and its message boxes.
// A function that the terminal does not export is a no-op. Filled once, when the module is loaded.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "host_link/host_functions/terminal_functions.h"
#include "platform/modules.h"

// Shows message boxes; implemented by the plug-in's windows.
class MessageBoxes {
 public:
  struct Request {
    void* Parent = nullptr;  // window, may be null
    std::wstring Caption;
    std::wstring Text;
    std::uint32_t Style = 0;
    std::array<std::wstring, 2> ButtonCaptions;  // of the buttons with ids 1000 and 1001, if the style has them
    bool WithCheck = false;
    bool Checked = false;  // initial state of the check box
    std::wstring CheckCaption;
  };
  virtual ~MessageBoxes() = default;
  virtual int Show(const Request& request) = 0;
};

// A security's name and multiplier from the terminal's master record.
struct SecurityMasterData {
  std::array<char, kMasterNameSize> Name{};
  double Multiplier = 0;

  // The name up to its NUL; a name of full length has none.
  std::string NameText() const { return {Name.begin(), std::find(Name.begin(), Name.end(), '\0')}; }
};

class CQORDLLComman {
 public:
  using Resolver = void* (*)(const char* name);

  // Looks up every function by name, by default among the exports of the process's main program.
  explicit CQORDLLComman(Resolver resolve = nullptr) noexcept;
  virtual ~CQORDLLComman() = default;
  CQORDLLComman(const CQORDLLComman&) = delete;
  CQORDLLComman& operator=(const CQORDLLComman&) = delete;

  // Button and icon codes: see terminal_functions.h. Both return the dialog's result, or 0 without Boxes.
  virtual int ShowMessageWithCheck(void* parent, const std::wstring& caption, const std::wstring& text,
                                   std::uint32_t button, std::uint32_t icon, std::uint32_t extraStyle, bool checked);
  virtual int ShowMessage(void* parent, const std::wstring& caption, const std::wstring& text, std::uint32_t button,
                          std::uint32_t icon, std::uint32_t extraStyle);

  bool Has(TerminalFunction function) const noexcept { return Address(function) != nullptr; }

  void PluginDataSend(CQORPacketWriter& message) const noexcept;
  // Asks for a security's master record; false, with data unchanged, if there is none.
  bool GetMasterRequest(const char* exchange, const char* securityId, SecurityMasterData& data) const;
  void ApplicationFocus(void* window, bool closed) const noexcept;
  // The control id for a new bar; 0 if the terminal assigns none.
  std::uint32_t GetPluginBarID(const char* bookName) const noexcept;
  void PluginRemoveBarID(std::uint32_t barId) const noexcept;

  MessageBoxes* Boxes = nullptr;               // null without windows
  std::array<std::wstring, 2> ButtonCaptions;  // of the two custom buttons
  bool RightToLeft = false;                    // of message boxes

  // The class's default colours as COLORREF values; nothing reads them. The first three slots of its layout hold
  // kNoColor.
  static constexpr std::int64_t kNoColor = -1;
  static constexpr std::array<std::uint32_t, 12> kDefaultColors = {0xFF875F, 0, 0xFF0000, 0xDAD4A4, 0xE6ECCA, 0x787878,
                                                                   0x9B82FF, 0, 0xFF,     0xDAD4A4, 0xE6ECCA, 0x787878};

  static constexpr const char* kPluginName = "Trade Book";

 private:
  void* Address(TerminalFunction function) const noexcept { return Functions[static_cast<std::size_t>(function)]; }
  template <TerminalFunction function, typename Signature>
  Signature Function() const noexcept {
    static_assert(kTerminalFunctions[static_cast<std::size_t>(function)].IsCalled, "the table says that it is not");
    return reinterpret_cast<Signature>(Address(function));
  }

  std::array<void*, kTerminalFunctionCount> Functions{};
};

// CQORDLLResource: a scope in which dialogs, menus and windows take their resources from the plug-in's module. Its end
// restores the former selection, which is per process. Every entry point that can reach a window opens one.

// The module whose resources are selected; null for the terminal's own.
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
