// CVELDPXMLSettings: settings in a tree in memory, which SaveToFile and LoadFromFile write to and read from a text file
// of tags. Several objects can share a tree; each has its own flags and open node.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>

#include "grid_base/settings/registry.h"
#include "grid_base/settings/settings_tree.h"

class CVELDPXMLSettings : public CQORPRegistry {
 public:
  using ObjectMaker = std::function<std::unique_ptr<SettingsObject>()>;

  explicit CVELDPXMLSettings(std::shared_ptr<SettingsTree> tree = std::make_shared<SettingsTree>());
  ~CVELDPXMLSettings() override;
  CVELDPXMLSettings(const CVELDPXMLSettings&) = delete;
  CVELDPXMLSettings& operator=(const CVELDPXMLSettings&) = delete;

  bool CreatePath(const std::wstring& path) override;
  bool OpenPath(const std::wstring& path) override;
  void ClosePath() override {}  // the node stays open
  bool RemoveValue(const std::wstring& key) override;
  bool RemovePath(const std::wstring& path, bool administrator) override;

  bool Write(const std::wstring& key, const SettingsObject* object) override;
  bool Write(const std::wstring& key, const SettingsObject& object) override;
  bool Write(const std::wstring& key, const std::uint8_t* bytes, std::uint32_t size) override;
  bool Write(const std::wstring& key, const SettingsPoint& point) override;
  bool Write(const std::wstring& key, const SettingsRectangle& rectangle) override;
  bool Write(const std::wstring& key, const std::vector<std::uint16_t>& words) override;
  bool Write(const std::wstring& key, const std::wstring& text) override;
  bool Write(const std::wstring& key, std::uint32_t number) override;
  bool Write(const std::wstring& key, std::int32_t number) override;

  bool Read(const std::wstring& key, std::unique_ptr<SettingsObject>& object) override;
  bool Read(const std::wstring& key, SettingsObject& object) override;
  bool Read(const std::wstring& key, std::vector<std::uint8_t>& bytes) override;
  bool Read(const std::wstring& key, SettingsRectangle& rectangle) override;
  bool Read(const std::wstring& key, SettingsPoint& point) override;
  bool Read(const std::wstring& key, std::vector<std::uint16_t>& words) override;
  bool Read(const std::wstring& key, std::wstring& text) override;
  bool Read(const std::wstring& key, std::uint32_t& number) override;
  bool Read(const std::wstring& key, std::int32_t& number) override;

  // The root of the user's tree as a file. SaveToFile returns false only if writing fails: a file that cannot be opened
  // counts as saved. LoadFromFile replaces the tree with its root name and closes all paths but the root. A file with a
  // fault leaves what comes before the fault.
  bool SaveToFile(const std::filesystem::path& path) const;
  bool LoadFromFile(const std::filesystem::path& path);

  CVELDPXMLNode& UserRoot() noexcept { return Tree->User; }
  // Creates objects that are read through a pointer, by class name.
  void KnowClass(const std::string& className, ObjectMaker maker) { Makers[className] = std::move(maker); }

 private:
  CVELDPXMLNode& SelectRoot(bool administrator) noexcept { return administrator ? Tree->Machine : Tree->User; }
  const std::wstring* ValueOf(const std::wstring& key) const;
  bool SetValue(const std::wstring& key, std::wstring value);
  bool WriteBytes(const std::wstring& key, std::span<const std::uint8_t> bytes);
  std::optional<std::vector<std::uint8_t>> BytesOf(const std::wstring& key) const;

  std::shared_ptr<SettingsTree> Tree;
  CVELDPXMLNode* Current = nullptr;  // cleared by the tree when its node goes
  std::map<std::string, ObjectMaker> Makers;
};
