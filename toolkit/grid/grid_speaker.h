// GridSpeaker: tells screen readers what RowSpeech says of a grid, while its rows have the focus.
#pragma once

#include <wx/timer.h>
#include <wx/weakref.h>
#include <wx/window.h>

#include "toolkit/grid/grid_state.h"
#include "toolkit/model/spoken_row.h"

// At most five sentences a second, and of changes without a key or the mouse one in two seconds, as a reader breaks off
// a sentence for the next one. Texts of the current row are made for a sentence only, in an event of its own; without
// the focus all calls are no-ops.
class GridSpeaker {
 public:
  GridSpeaker(CQORPGridCtrl& owner, GridState& state);

  // The focus of a window of rows.
  void Attach(wxWindow& rows);
  // By the user.
  void RowMoved();
  void ColumnMoved() { Ask(Wish::Move); }
  // By anything else.
  void Changed() { Ask(Wish::Change); }
  void RowsInserted(int before, int rows) { Speech.RowsInserted(before, rows); }

 private:
  enum class Wish { None, Change, Move };
  enum class Rest { Short, Long };

  void Ask(Wish wish);
  void Speak();
  void Pause(Rest rest);
  void OnPauseEnd();

  CQORPGridCtrl& Owner;
  GridState& State;
  RowSpeech Speech;
  wxWeakRef<wxWindow> Focused;
  wxTimer Timer;
  Rest Resting = Rest::Short;
  Wish Wanted = Wish::None;
  bool Deferred = false;
};
