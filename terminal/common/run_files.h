// RunFiles: every file of a run of the terminal, as absolute paths.
#pragma once

#include <filesystem>

struct RunFiles {
  // The day with the securities and desk beside it, else those of the sample. An empty path is the sample day.
  static RunFiles OfDay(const std::filesystem::path& day);
  // The same run with another day.
  RunFiles WithDay(const std::filesystem::path& day) const;
  // It is the day that comes with the program.
  bool IsSampleDay() const;

  std::filesystem::path Day;
  std::filesystem::path Securities;
  std::filesystem::path Desk;
  std::filesystem::path Plugin;
  std::filesystem::path Work;
  std::filesystem::path Record;  // empty for none, as are the next two
  std::filesystem::path Screenshot;
  std::filesystem::path Script;
};
