// CFilterTypist: types a text into a field of a grid's filter bar, letter by letter, so that each letter filters. Not
// the moments between the letters: the caller asks for the next one. Used on the calling thread of the windows only.
#pragma once

#include <wx/event.h>
#include <wx/weakref.h>

#include <string>

#include "toolkit/grid_ctrl.h"

class wxTextCtrl;

// Types with the keyboard's own events. Where they do not arrive, as in a window that the system gives no focus, it
// writes the letters into the field, which filters as well.
class CFilterTypist {
 public:
  // Takes the place of what stands in the field; an empty text empties it. Gives back why it cannot be done, else
  // nothing.
  std::string Begin(CQORPGridCtrl& grid, int column, const std::wstring& text);
  bool IsTyping() const noexcept { return Typing; }
  // The next letter, once the last one has arrived. Gives back why it had to end, else nothing.
  std::string TypeOn();

 private:
  void Start();
  std::string Restart();
  wxTextCtrl* Field() const;
  std::wstring Expected() const { return Text.substr(0, Typed); }
  void TypeNext(wxTextCtrl& field);
  bool PressNext(const wxTextCtrl& field) const;

  wxWeakRef<CQORPGridCtrl> Grid;
  int Column = -1;
  std::wstring Text;
  std::size_t Typed = 0;  // letters that should stand in the field
  bool Typing = false;
  bool Begun = false;    // what stood in the field before is gone
  bool Writing = false;  // keys do not arrive
  int Waits = 0;
  int Restarts = 0;
};
