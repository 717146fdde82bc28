// BookWindows: what the entry points ask of the open books as windows. The plug-in holds one, or none while it has no
// windows; then nothing of this happens.
#pragma once

#include <cstdint>
#include <string>

class BookWindows {
 public:
  virtual ~BookWindows() = default;

  // The menu command: a new book, or the book with the focus widened.
  virtual void OpenBookByCommand() = 0;
  // The records of all trades are about to go: no book, open, closed or hidden, may point at one.
  virtual void ForgetTrades() {}
  // Every open book applies its filter anew, shows itself and redraws.
  virtual void ReapplyFilters() = 0;
  // Nothing where the windows keep no layout.
  virtual void SaveLayout() {}
  virtual void RestoreLayout() {}
  // Brings the rows of every book up to date and redraws them.
  virtual void RepaintAllBooks() = 0;
  // The Exchange and SecurityID cells of the book's selected row; false when the address is no book of ours or nothing
  // is selected in it.
  virtual bool SelectedSecurity(std::uint64_t bookAddress, std::string& exchange, std::string& securityId) = 0;
};
