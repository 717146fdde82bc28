#include "tests/screen_reader/reader.h"

#include <atspi/atspi.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace {

constexpr unsigned kDeadlineSeconds = 30;  // only a failing test waits that long
constexpr unsigned kControlMask = 4;
constexpr std::pair<const char*, Told> kEvents[] = {
    {"object:state-changed:focused", Told::Focus},
    {"object:property-change:accessible-name", Told::Name},
    {"object:property-change:accessible-description", Told::Description}};

std::string Owned(char* text) {
  const std::unique_ptr<char, decltype(&g_free)> owner(text, g_free);
  return text == nullptr ? std::string() : text;
}

std::string ProgramOf(AtspiAccessible* window) {
  AtspiAccessible* program = atspi_accessible_get_application(window, nullptr);
  if (program == nullptr) return {};
  std::string name = Owned(atspi_accessible_get_name(program, nullptr));
  g_object_unref(program);
  return name;
}

void Take(AtspiEvent* event, void* untaken) {
  const auto* known =
      std::ranges::find_if(kEvents, [&](const auto& row) { return std::string_view(event->type) == row.first; });
  if (known != std::end(kEvents) && (known->second != Told::Focus || event->detail1 == 1)) {
    Heard heard{known->second,
                ProgramOf(event->source),
                Owned(atspi_accessible_get_name(event->source, nullptr)),
                Owned(atspi_accessible_get_description(event->source, nullptr)),
                {}};
    if (G_VALUE_HOLDS_STRING(&event->any_data)) heard.Text = g_value_get_string(&event->any_data);
    static_cast<std::deque<Heard>*>(untaken)->push_back(heard);
  }
  g_boxed_free(ATSPI_TYPE_EVENT, event);
}

int Wake(void* late) {
  *static_cast<bool*>(late) = true;
  return G_SOURCE_REMOVE;
}

}  // namespace

Reader::Reader() {
  atspi_init();
  Listener = atspi_event_listener_new(Take, &Untaken, nullptr);
  for (const auto& [name, told] : kEvents) atspi_event_listener_register(Listener, name, nullptr);
}

Reader::~Reader() {
  for (const auto& [name, told] : kEvents) atspi_event_listener_deregister(Listener, name, nullptr);
  g_object_unref(Listener);
}

Heard Reader::Next(const std::function<bool(const Heard&)>& fits) {
  bool late = false;
  const unsigned alarm = g_timeout_add_seconds(kDeadlineSeconds, Wake, &late);
  Heard found;
  for (bool done = false; !done && !late;) {
    if (Untaken.empty()) {
      g_main_context_iteration(nullptr, TRUE);
      continue;
    }
    const Heard heard = Untaken.front();
    Untaken.pop_front();
    done = fits(heard);
    if (done) found = heard;
  }
  if (!late) g_source_remove(alarm);
  return found;
}

Heard Reader::Next(Told what, const std::string& name) {
  return Next([&](const Heard& heard) { return heard.What == what && heard.Name == name; });
}

void Reader::Press(unsigned key, bool control) {
  if (control) atspi_generate_keyboard_event(kControlMask, nullptr, ATSPI_KEY_LOCKMODIFIERS, nullptr);
  atspi_generate_keyboard_event(key, nullptr, ATSPI_KEY_SYM, nullptr);
  if (control) atspi_generate_keyboard_event(kControlMask, nullptr, ATSPI_KEY_UNLOCKMODIFIERS, nullptr);
}
