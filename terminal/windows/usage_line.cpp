#include "terminal/windows/usage_line.h"

#include <wx/window.h>

#include <fstream>
#include <system_error>

#include "platform/process_usage.h"

namespace {

// The window and all below it, but for windows of their own, which stand in the list of those.
std::size_t CountFrom(const wxWindow& window) {
  std::size_t count = 1;
  for (const wxWindow* child : window.GetChildren())
    if (!child->IsTopLevel()) count += CountFrom(*child);
  return count;
}

std::size_t CountWindows() {
  std::size_t count = 0;
  for (const wxWindow* window : wxTopLevelWindows) count += CountFrom(*window);
  return count;
}

}  // namespace

std::string AppendUsage(const std::filesystem::path& file, const std::string& name, std::size_t openBooks) {
  const ProcessUsage usage = MeasureProcess();
  std::error_code ignored;
  const bool isNew = !std::filesystem::exists(file, ignored);
  std::ofstream lines(file, std::ios::binary | std::ios::app);
  if (isNew) lines << "name,heap,handles,windows,books\n";
  lines << name << ',' << usage.HeapBytes << ',' << usage.Handles << ',' << CountWindows() << ',' << openBooks << '\n';
  lines.close();
  return lines.fail() ? "the usage cannot be written to " + file.filename().string() : "";
}
