// The settings that the process keeps between runs: one tree for all, in one file of the working folder, handed out as
// registry objects.
#pragma once

#include <filesystem>
#include <memory>

#include "grid_base/settings/registry.h"
#include "grid_base/settings/settings_tree.h"

// Promises: whatever is written through one handle, all others read at once; the file holds either what it held or all
// that was written, never a part. Works by one tree, read when the store is made, and by ReplaceFileContent, called
// when a handle is released, something has changed and no handle that may write is left: a save of many parts writes
// once. A file that could not be read whole is kept beside, under a free name, before it is replaced.
// Handles keep the store alive.
class RegistryStore : public std::enable_shared_from_this<RegistryStore> {
 public:
  static std::shared_ptr<RegistryStore> Make(const std::filesystem::path& file);

  // Settings with the two flags set and nothing open. Throws only when memory runs out.
  std::unique_ptr<CQORPRegistry> Open(int administrator, int readOnly);

  // Brings what has changed to the file now. False on failure, which is reported once until a save succeeds again;
  // nothing is lost then: the next save tries anew.
  bool Save() noexcept;

 private:
  class Handle;
  explicit RegistryStore(std::filesystem::path file) : File(std::move(file)) {}
  void Load();
  bool KeepDamagedFile(unsigned long& errorNumber);
  void Report(const char* what, unsigned long errorNumber, unsigned line) const noexcept;

  std::filesystem::path File;
  std::shared_ptr<SettingsTree> Tree = std::make_shared<SettingsTree>();
  int WritingHandles = 0;
  bool Damaged = false;
  bool FailureTold = false;
};

// The process's one store.
class CQORPRegistrySP {
 public:
  static constexpr const char* kFileName = "TradeBookSettings.xml";

  // The folder of the file. Counts once and before the first Create; without it the current folder is taken then.
  static void UseFolder(const std::filesystem::path& folder);
  static std::unique_ptr<CQORPRegistry> Create(int administrator, int readOnly);
  static bool Save() noexcept;
};
