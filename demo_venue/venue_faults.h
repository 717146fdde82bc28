// The faults that a venue can commit: one table feeds their script, its help and what is done.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "terminal/common/errors.h"

class VenueSession;

struct FaultKind {
  const char* Name;
  std::uint32_t Number;  // the default of its number; 0 for a fault without one
  const char* Help;
  void (*Do)(VenueSession& session, std::uint32_t number);
};

struct VenueFault {
  std::uint64_t After;  // trades sent
  const FaultKind* Kind;
  std::uint32_t Number;
};

// Lines "after N FAULT [NUMBER]" in any order; # begins a remark. The result is in the order of trades. Throws
// TerminalError with file and line; dayCount is the most that may stand behind "after".
std::vector<VenueFault> ReadFaults(const std::filesystem::path& file, std::uint64_t dayCount);
// The same for a script's text; name stands for the file in errors.
std::vector<VenueFault> ParseFaults(std::string_view script, const std::filesystem::path& name, std::uint64_t dayCount);

// A line for each fault.
std::string FaultsHelp();
