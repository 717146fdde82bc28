// CQORPRegistry: settings by path and key. A path is node names with backslashes between them, a key the name of a
// value below the path last created or opened; blanks in both are ignored.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "grid_base/settings/settings_archive.h"

struct SettingsPoint {
  std::int32_t X = 0;
  std::int32_t Y = 0;
};

struct SettingsRectangle {
  std::int32_t Left = 0;
  std::int32_t Top = 0;
  std::int32_t Right = 0;
  std::int32_t Bottom = 0;
  bool operator==(const SettingsRectangle&) const = default;
};
static_assert(sizeof(SettingsRectangle) == 16);

// Every Read returns false, with its output unchanged, if no path is open or there is no such key; every Write returns
// false if the settings are read-only or no path is open. Text and numbers have one stored form: each can be read as
// the other.
class CQORPRegistry {
 public:
  virtual ~CQORPRegistry() = default;

  // These answer 0, 1 and 1, the fourth after the reads 0. Nothing calls them; they hold their places in the vtable.
  virtual int FirstQuery() const { return 0; }
  virtual int SecondQuery() const { return 1; }
  virtual int ThirdQuery() const { return 1; }

  // Creates what the path lacks and opens its last node; false if read-only.
  virtual bool CreatePath(const std::wstring& path) = 0;
  // Opens the last node of the path; if a part is missing, nothing is open afterwards.
  virtual bool OpenPath(const std::wstring& path) = 0;
  virtual void ClosePath() = 0;
  // Intentional: compares its key with its blanks, unlike all others.
  virtual bool RemoveValue(const std::wstring& key) = 0;
  virtual bool RemovePath(const std::wstring& path, bool administrator) = 0;

  virtual bool Write(const std::wstring& key, const SettingsObject* object) = 0;
  virtual bool Write(const std::wstring& key, const SettingsObject& object) = 0;
  virtual bool Write(const std::wstring& key, const std::uint8_t* bytes, std::uint32_t size) = 0;
  virtual bool Write(const std::wstring& key, const SettingsPoint& point) = 0;
  virtual bool Write(const std::wstring& key, const SettingsRectangle& rectangle) = 0;
  virtual bool Write(const std::wstring& key, const std::vector<std::uint16_t>& words) = 0;
  virtual bool Write(const std::wstring& key, const std::wstring& text) = 0;
  virtual bool Write(const std::wstring& key, std::uint32_t number) = 0;
  virtual bool Write(const std::wstring& key, std::int32_t number) = 0;

  virtual bool Read(const std::wstring& key, std::unique_ptr<SettingsObject>& object) = 0;
  virtual bool Read(const std::wstring& key, SettingsObject& object) = 0;
  virtual bool Read(const std::wstring& key, std::vector<std::uint8_t>& bytes) = 0;
  virtual bool Read(const std::wstring& key, SettingsRectangle& rectangle) = 0;
  virtual bool Read(const std::wstring& key, SettingsPoint& point) = 0;
  virtual bool Read(const std::wstring& key, std::vector<std::uint16_t>& words) = 0;
  virtual bool Read(const std::wstring& key, std::wstring& text) = 0;
  virtual bool Read(const std::wstring& key, std::uint32_t& number) = 0;
  virtual bool Read(const std::wstring& key, std::int32_t& number) = 0;
  virtual int FourthQuery() const { return 0; }

  // Non-zero for the machine's settings, zero for the user's.
  int Administrator = 0;
  int ReadOnly = 0;
  std::wstring LastPath;  // the path last opened
};
