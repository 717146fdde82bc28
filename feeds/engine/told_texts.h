// ToldTexts: the way of every text to the engine's events: without secrets.
#pragma once

#include <string>

#include "feeds/common/feed_report.h"
#include "feeds/engine/fix_engine.h"

class ToldTexts {
 public:
  ToldTexts(FixEngineEvents& events, std::string password) : Events(events), Password(std::move(password)) {}

  void State(bool loggedOn, const std::string& text) { Events.OnState(loggedOn, Masked(text)); }
  void Tell(AlarmKind kind, const std::string& text) { Events.OnEngineAlarm(static_cast<int>(kind), Masked(text)); }
  // The password replaced by as many asterisks.
  std::string Masked(std::string text) const {
    for (std::size_t at = 0; !Password.empty() && (at = text.find(Password, at)) != std::string::npos;)
      text.replace(at, Password.size(), Password.size(), '*');
    return text;
  }

 private:
  FixEngineEvents& Events;
  const std::string Password;
};
