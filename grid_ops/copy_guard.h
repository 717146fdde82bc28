// Whether a book's selection may be copied. Pure; any thread.
#pragma once

inline constexpr int kMostCopiedRows = 10001;

// Null where it may, else what the user is told. Without a selection the content is called too large, however small it
// is: meant so.
constexpr const wchar_t* CopyRefusal(int selections, int topRow, int bottomRow) noexcept {
  if (selections == 0) return L"Content of the grid is too large, please make selection and repeat command.";
  if (selections > 1) return L"This command can't be used on multiple selection.";
  if (bottomRow - topRow >= kMostCopiedRows)
    return L"Selection is too large, please make smaller selection and repeat command.";
  return nullptr;
}

// What is said after the HTML copy. The second text has no way to show: a copy without a selection is refused.
constexpr const wchar_t* HtmlCopyReport(int selections) noexcept {
  return selections > 0 ? L"Selection was copied to the clipboard as HTML"
                        : L"Content of the grid was copied to the clipboard as HTML";
}
