#include "grid_ops/csv_commands.h"

#include <algorithm>
#include <string>

#include "foundations/date_time.h"

namespace fs = std::filesystem;

namespace {

constexpr fs::path::value_type kSeparators[] = {'\\', '/', 0};

fs::path& LastOf(const CsvCommand& command, ExportFolders& folders) {
  return folders.Last[static_cast<std::size_t>(&command - kCsvCommands)];
}

// Joins texts: an empty folder leaves the separator in front of the name, meant so.
fs::path Joined(fs::path folder, const fs::path& name) {
  folder += fs::path::preferred_separator;
  folder += name;
  return folder;
}

}  // namespace

const CsvCommand* FindCsvCommand(int id) noexcept {
  const auto* command = std::find_if(std::begin(kCsvCommands), std::end(kCsvCommands),
                                     [id](const CsvCommand& each) { return each.Id == id; });
  return command == std::end(kCsvCommands) ? nullptr : command;
}

fs::path ProposeCsvPath(const CsvCommand& command, ExportFolders& folders, const fs::path& gridFolder,
                        std::int64_t now) {
  if (command.Id == kSelectedColumnsCommand) folders.Base = Joined(gridFolder, "CSV");
  const fs::path& last = LastOf(command, folders);
  const fs::path start = last.empty() && command.StartsFromBase ? folders.Base : last;
  return Joined(start,
                std::string(command.Stem) + FormatTimeText(now, std::string(command.DatePattern), false) + ".CSV");
}

void RememberCsvFolder(const CsvCommand& command, ExportFolders& folders, const fs::path& proposal,
                       const fs::path& chosen) {
  LastOf(command, folders) = command.Last == CsvCommand::Remembers::Proposal ? proposal : FolderOf(chosen);
}

fs::path FolderOf(const fs::path& path) {
  const fs::path::string_type& text = path.native();
  const std::size_t end = text.find_last_of(kSeparators);
  return end == fs::path::string_type::npos ? fs::path() : fs::path(text.substr(0, end));
}
