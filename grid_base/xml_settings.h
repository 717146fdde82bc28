// CVELDPXMLSettings: settings kept in a tree in memory, moved to and from a small text file of tags. It touches the
// disk only in SaveToFile and LoadFromFile. Used on the terminal's calling thread only.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>

#include "grid_base/registry.h"
#include "grid_base/settings_node.h"

class CVELDPXMLSettings : public CQORPRegistry {
 public:
  using ObjectMaker = std::function<std::unique_ptr<SettingsObject>()>;

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

  // The root of the user's tree as a file. Saving returns false only when writing failed: a file that cannot be opened
  // counts as saved. Loading replaces the tree, root name included, and leaves the open node as it was: open a path
  // after it. A file with a fault leaves what was read before the fault.
  bool SaveToFile(const std::filesystem::path& path) const;
  bool LoadFromFile(const std::filesystem::path& path);

  CVELDPXMLNode& UserRoot() noexcept { return User; }
  // Objects read through a pointer are made by their class name.
  void KnowClass(const std::string& className, ObjectMaker maker) { Makers[className] = std::move(maker); }

 private:
  CVELDPXMLNode& SelectRoot(bool administrator) noexcept { return administrator ? Machine : User; }
  const std::wstring* ValueOf(const std::wstring& key) const;
  bool SetValue(const std::wstring& key, std::wstring value);
  bool WriteBytes(const std::wstring& key, std::span<const std::uint8_t> bytes);
  void CloseIfBelow(const CVELDPXMLNode* node) noexcept;
  std::optional<std::vector<std::uint8_t>> BytesOf(const std::wstring& key) const;

  CVELDPXMLNode Machine{L"LOCAL_MACHINE", nullptr};
  CVELDPXMLNode User{L"CURRENT_USER", nullptr};
  CVELDPXMLNode* Current = nullptr;
  std::map<std::string, ObjectMaker> Makers;
};
