// CDayInput: what a run reads its day from: the day's file with its securities and, but for a file of messages, its
// desk. Not the order of the messages: that is CDayScript. One thread.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "terminal/day_script.h"
#include "terminal/run_files.h"

class CDayInput {
 public:
  // Reads securities and desk. Throws TerminalError.
  CDayInput(const RunFiles& files, std::optional<LiveFrom> live, CBadLines& badLines);

  // The day from its begin. Any script opened before ends. Throws TerminalError.
  CDayScript& Open();
  // The same with so many trades as its download.
  CDayScript& OpenWithDownload(std::uint64_t trades);

  CSecurities Securities;

 private:
  CDayScript& OpenFrom(LiveFrom live);

  std::filesystem::path Day;
  std::optional<LiveFrom> Live;
  CBadLines& BadLines;
  std::optional<CDesk> Desk;  // a file of messages needs none
  std::optional<CDayScript> Script;
};
