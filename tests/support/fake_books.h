// Windows of books without a display: they note what the model tells them and answer what a test sets.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "book_windows/model/book_registry.h"

class FakeBookScreen;

class FakeBookWindow : public BookWindow {
 public:
  FakeBookWindow(FakeBookScreen& screen, Book& book, const SettingsRectangle& rect) : Shown(book), Screen(screen) {
    At.Rect = rect;
  }

  void OnRowsChanged(bool replaced) override { Note(replaced ? "rows replaced" : "rows"); }
  void OnTotalsChanged() override { Note("totals"); }
  void OnTitleChanged() override { Note("title " + Shown.State.Title()); }
  void OnSortChanged() override { Note("sort"); }
  void OnSettingsChanged() override { Note("settings"); }
  std::vector<int> BeginVirtualMode() override { return SortStates; }
  int CurrentRow() override { return Row; }
  void ClearCurrentRow() override { Note("no row"); }
  void ShowBar(bool shown) override { Note(shown ? "show" : "hide"); }
  void FocusBar() override { Note("focus bar"); }
  void FocusGrid() override { Note("focus grid"); }
  bool HoldsFocus() const override;
  bool Floats() const override { return Floating; }
  BookPlace Place() const override { return At; }
  void LoadPlace(CQORPRegistry&) override { Note("load " + Shown.ProfileKey); }
  void SavePlace(CQORPRegistry&) override { Note("save " + Shown.ProfileKey); }
  void SaveColumnProfile() override { Note("save columns"); }
  GridFont Font() const override { return {}; }
  void PopulateProperties(CQORPPropList&) override { Note("properties"); }
  void ApplyProperty(const CQORPProp&) override;
  void* BarAddress() override { return this; }
  const void* GridAddress() const override { return &Row; }
  void DestroyBar() override;

  std::string TakeNotes() { return std::exchange(Notes, {}); }

  Book& Shown;
  FakeBookScreen& Screen;
  std::vector<int> SortStates;
  int Row = -1;
  bool Floating = true;
  BookPlace At;

 private:
  void Note(const std::string& note) { Notes += (Notes.empty() ? "" : "; ") + note; }
  std::string Notes;
};

class FakeBookScreen : public BookScreen {
 public:
  bool Start() override { return HasDisplay; }
  const void* BarWithFocus() const override { return Focused; }
  BookWindow* MakeWindow(Book& book, const SettingsRectangle& rect, std::uint32_t) override {
    MadeUnderResources = SelectedResources() != nullptr;
    if (MakesNone) return nullptr;
    auto& window = *Windows.emplace_back(std::make_unique<FakeBookWindow>(*this, book, rect));
    window.SortStates = SortStates;
    return &window;
  }

  std::vector<std::unique_ptr<FakeBookWindow>> Windows;
  BookRegistry* Registry = nullptr;
  FakeBookWindow* Focused = nullptr;
  std::vector<int> SortStates;
  bool HasDisplay = true;
  bool MakesNone = false;
  bool MadeUnderResources = false;            // the last window
  FakeBookWindow* EndedByProperty = nullptr;  // the next change of a property destroys its bar
};

inline bool FakeBookWindow::HoldsFocus() const {
  return Screen.Focused == this;
}
inline void FakeBookWindow::ApplyProperty(const CQORPProp&) {
  Note("property");
  if (FakeBookWindow* ended = std::exchange(Screen.EndedByProperty, nullptr); ended != nullptr) ended->DestroyBar();
}
inline void FakeBookWindow::DestroyBar() {
  Screen.Registry->ForgetBook(Shown);
  std::erase_if(Screen.Windows, [this](const auto& window) { return window.get() == this; });
}
