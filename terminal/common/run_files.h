// RunFiles: every file of a run, in full.
#pragma once

#include <filesystem>

#include "terminal/program/options.h"

struct RunFiles {
  explicit RunFiles(const Options& options);
  // The same run with another day: securities and desk are those beside it, else the sample's.
  RunFiles WithDay(const std::filesystem::path& day) const;
  // The day is the one that comes with the program.
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
