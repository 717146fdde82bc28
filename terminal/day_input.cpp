#include "terminal/day_input.h"

#include "terminal/trade_day.h"

CDayInput::CDayInput(const RunFiles& files, std::optional<LiveFrom> live, CBadLines& badLines)
    : Securities(files.Securities, badLines), Day(files.Day), Live(live), BadLines(badLines) {
  if (!IsMessageDay(Day)) Desk.emplace(files.Desk, badLines);
}

CDayScript& CDayInput::Open() {
  const LiveFrom asNumbered;
  if (Live) return OpenFrom(*Live);
  return Desk ? OpenWithDownload(CountTradeLines(Day) / 2) : OpenFrom(asNumbered);
}

CDayScript& CDayInput::OpenWithDownload(std::uint64_t trades) {
  return OpenFrom({LiveFrom::Kind::Count, static_cast<std::int64_t>(trades)});
}

CDayScript& CDayInput::OpenFrom(LiveFrom live) {
  Script.reset();
  BadLines.StartAgain(Day);
  return Script.emplace(Desk ? OpenTradeDay(Day, *Desk, Securities, BadLines) : OpenMessageDay(Day, BadLines), live);
}
