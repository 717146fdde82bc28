#include "toolkit/grid/grid_speaker.h"

#include <algorithm>

#include "toolkit/system/native_windows.h"

namespace {

constexpr int kShortMs = 200;   // after a sentence nothing is said
constexpr int kLongMs = 1'800;  // then only what the user does

}  // namespace

GridSpeaker::GridSpeaker(CQORPGridCtrl& owner, GridState& state) : Owner(owner), State(state) {
  Timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { OnPauseEnd(); });
}

// At once, so that readers find the sentence when they hear of the focus.
void GridSpeaker::Attach(wxWindow& rows) {
  rows.Bind(wxEVT_SET_FOCUS, [this, &rows](wxFocusEvent& event) {
    event.Skip();
    Focused = &rows;
    Speech.Forget();
    Speak();
  });
  rows.Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
    event.Skip();
    Focused = nullptr;
  });
}

void GridSpeaker::RowMoved() {
  Speech.MoveRow();
  Ask(Wish::Move);
}

void GridSpeaker::Ask(Wish wish) {
  if (!Focused) return;
  Wanted = std::max(Wanted, wish);
  const bool waits = Timer.IsRunning() && (Resting == Rest::Short || wish == Wish::Change);
  if (waits || Deferred) return;
  Deferred = true;
  Owner.CallAfter([this] {
    Deferred = false;
    Speak();
  });
}

void GridSpeaker::Speak() {
  if (!Focused) return;
  Owner.FollowNewRows();
  Wanted = Wish::None;
  CQORPGridCell scratch;
  const auto textOf = [&](int row, int column) -> std::wstring_view {
    scratch.Text.clear();
    return State.Display && State.Display(row, column, scratch) ? scratch.Text : std::wstring_view();
  };
  const std::wstring sentence = Speech.Next({State.Columns, State.Selection, State.CurrentColumn, textOf});
  if (!sentence.empty()) SetAccessibleDescription(*Focused, sentence);
  Pause(Rest::Short);
}

void GridSpeaker::Pause(Rest rest) {
  Resting = rest;
  Timer.StartOnce(rest == Rest::Short ? kShortMs : kLongMs);
}

void GridSpeaker::OnPauseEnd() {
  if (Wanted == Wish::Move || (Wanted == Wish::Change && Resting == Rest::Long)) return Speak();
  if (Resting == Rest::Short && Focused) Pause(Rest::Long);
}
