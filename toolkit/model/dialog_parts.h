// What dialogs are made of, without windows: the buttons of a message box, and a list of texts with check boxes.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

struct MessageButton {
  int Id;
  std::wstring Caption;  // an & marks the letter that presses it
};

struct MessageButtons {
  std::vector<MessageButton> Buttons;  // from left to right
  std::size_t Default = 0;             // the index of the default button
  int CloseId = 0;                     // the answer of closing; 0: the box cannot be closed
};

// By the bits of the style.
MessageButtons ButtonsOfStyle(std::uint32_t style, const std::array<std::wstring, 2>& ownCaptions);

// The interface of a list of texts with check boxes, of which one is selected.
class CheckList {
 public:
  virtual ~CheckList() = default;
  virtual int GetItemCount() const = 0;
  // An invalid index gives an empty text and false, and is ignored by the functions that change the list.
  virtual std::wstring GetItemText(int index) const = 0;
  virtual bool GetCheck(int index) const = 0;
  virtual void SetCheck(int index, bool checked) = 0;
  virtual void DeleteItem(int index) = 0;
  // The new item is unchecked. An index after the end appends. The selection stays with its item.
  virtual void InsertItem(int index, const std::wstring& text) = 0;
  // The selected item; -1 for none.
  virtual int GetCurSel() const = 0;
  virtual void SetCurSel(int index) = 0;
};
