// RegistryStore: the settings that the process keeps between runs, one tree in one file, opened as registry objects.
#pragma once

#include <filesystem>
#include <memory>

#include "grid_base/settings/registry.h"
#include "grid_base/settings/settings_tree.h"

// All handles see a write at once. The file has the old content or the new, never a part. A file that cannot be read
// whole is copied to a free name before it is replaced.
//
// One tree, read when the store is made and written by ReplaceFileContent when the last handle that may write is
// released and something has changed: a save of many parts writes once. Handles keep the store alive.
class RegistryStore : public std::enable_shared_from_this<RegistryStore> {
 public:
  static std::shared_ptr<RegistryStore> Make(const std::filesystem::path& file);

  // Settings with the two flags set and no open path. Throws only std::bad_alloc.
  std::unique_ptr<CQORPRegistry> Open(int administrator, int readOnly);

  // Writes changes to the file now. False on failure, which is reported once until a save succeeds; the next save tries
  // again.
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

  // Sets the folder of the file; only the first call counts, before the first Create. Default: the current folder.
  static void UseFolder(const std::filesystem::path& folder);
  static std::unique_ptr<CQORPRegistry> Create(int administrator, int readOnly);
  static bool Save() noexcept;
};
