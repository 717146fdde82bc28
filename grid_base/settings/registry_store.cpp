#include "grid_base/settings/registry_store.h"

#include <algorithm>
#include <iterator>

#include "foundations/byte_words.h"
#include "foundations/error_report.h"
#include "foundations/paths.h"
#include "foundations/text_tools.h"
#include "grid_base/settings/settings_text.h"
#include "grid_base/settings/xml_settings.h"
#include "platform/files.h"

namespace fs = std::filesystem;

namespace {

constexpr int kMostKept = 1000;

// Copies the file to the first free name with ".damaged", ".damaged2" and so on appended: earlier copies stay.
std::error_code CopyBeside(const fs::path& file) {
  std::error_code error, ignored;
  for (int i = 1; i <= kMostKept; ++i) {
    fs::path kept = file;
    kept += i == 1 ? ".damaged" : ".damaged" + std::to_string(i);
    if (fs::copy_file(file, kept, fs::copy_options::none, error) || !fs::exists(fs::symlink_status(kept, ignored)))
      break;
  }
  return error;
}

}  // namespace

class RegistryStore::Handle final : public CVELDPXMLSettings {
 public:
  Handle(std::shared_ptr<RegistryStore> store, int administrator, int readOnly)
      : CVELDPXMLSettings(store->Tree), Store(std::move(store)), Writes(readOnly == 0) {
    Administrator = administrator;
    ReadOnly = readOnly;
    if (Writes) ++Store->WritingHandles;
  }
  ~Handle() override {
    if (Writes) --Store->WritingHandles;
    if (Store->WritingHandles == 0) Store->Save();
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

 private:
  std::shared_ptr<RegistryStore> Store;
  bool Writes;
};

std::shared_ptr<RegistryStore> RegistryStore::Make(const fs::path& file) {
  const std::shared_ptr<RegistryStore> store(new RegistryStore(file));
  store->Load();
  return store;
}

std::unique_ptr<CQORPRegistry> RegistryStore::Open(int administrator, int readOnly) {
  return std::make_unique<Handle>(shared_from_this(), administrator, readOnly);
}

void RegistryStore::Load() {
  std::error_code ignored;
  if (!fs::exists(File, ignored)) return;
  Damaged = !CVELDPXMLSettings(Tree).LoadFromFile(File);
  Tree->Changed = false;
  if (Damaged) Report("cannot be read to its end; what follows the fault is not taken. ", 0, __LINE__);
}

bool RegistryStore::Save() noexcept {
  if (!Tree->Changed) return true;
  unsigned long errorNumber = 0;
  bool saved = false;
  try {
    BreakTagsInValues(Tree->User);
    saved = KeepDamagedFile(errorNumber) && ReplaceFileContent(File, SettingsFileBytes(Tree->User), errorNumber);
  } catch (...) {  // out of memory: a failure without a number
  }
  if (saved) Tree->Changed = false;
  if (!saved && !FailureTold) Report("cannot be written; the file stays as it was. ", errorNumber, __LINE__);
  FailureTold = !saved;
  return saved;
}

// Another terminal may have copied and replaced the damaged file meanwhile.
bool RegistryStore::KeepDamagedFile(unsigned long& errorNumber) {
  std::error_code error;
  if (Damaged && fs::exists(File, error) && !CVELDPXMLSettings().LoadFromFile(File)) error = CopyBeside(File);
  Damaged = Damaged && error;
  errorNumber = static_cast<unsigned long>(error.value());
  return !Damaged;
}

void RegistryStore::Report(const char* what, unsigned long errorNumber, unsigned line) const noexcept {
  try {
    CQORLog::ReportFailure(File.string() + ' ' + what, errorNumber, "RegistryStore", line);
  } catch (...) {
    CQORLog::ReportFailure(what, errorNumber, "RegistryStore", line);
  }
}

namespace {

fs::path& ChosenFolder() {
  static fs::path folder;
  return folder;
}

RegistryStore& ProcessStore() {
  static const std::shared_ptr<RegistryStore> store =
      RegistryStore::Make((ChosenFolder().empty() ? CurrentFolder() : ChosenFolder()) / CQORPRegistrySP::kFileName);
  return *store;
}

}  // namespace

void CQORPRegistrySP::UseFolder(const fs::path& folder) {
  if (ChosenFolder().empty()) ChosenFolder() = folder;
}
std::unique_ptr<CQORPRegistry> CQORPRegistrySP::Create(int administrator, int readOnly) {
  return ProcessStore().Open(administrator, readOnly);
}
bool CQORPRegistrySP::Save() noexcept {
  return ProcessStore().Save();
}

std::optional<GridFont> FontFromBytes(std::span<const std::uint8_t> bytes) {
  if (bytes.size() < sizeof(GridFont)) return std::nullopt;
  auto font = LoadValue<GridFont>(bytes.data());
  *std::rbegin(font.FaceName) = 0;
  return font;
}

bool WriteFont(CQORPRegistry& settings, const GridFont& font) {
  std::uint8_t bytes[sizeof font];
  StoreValue(bytes, font);
  return settings.Write(L"Font", bytes, sizeof bytes);
}

void SetFaceName(GridFont& font, std::wstring_view name) {
  const std::u16string units = WideToUtf16(name);
  std::fill(std::begin(font.FaceName), std::end(font.FaceName), u'\0');
  std::copy_n(units.begin(), std::min(units.size(), std::size(font.FaceName) - 1), font.FaceName);
}

std::optional<GridFont> LoadGridFont(CQORPRegistry& settings, const std::wstring& section, GridFont currentFont) {
  if (settings.OpenPath(section)) {
    std::vector<std::uint8_t> bytes;
    return settings.Read(L"Font", bytes) ? FontFromBytes(bytes) : std::nullopt;
  }
  SetFaceName(currentFont, L"MS Sans Serif");
  currentFont.Weight = 700;
  return currentFont;
}

std::optional<GridFont> LoadGridFont(const std::wstring& section, const GridFont& currentFont) {
  return LoadGridFont(*CQORPRegistrySP::Create(0, 1), section, currentFont);
}
