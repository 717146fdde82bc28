// ChartView: the window of a chart: draws the model, turns keys and mouse into changes of its range, and saves
// pictures.
#pragma once

#include <wx/bitmap.h>
#include <wx/window.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "terminal/chart/chart_model.h"

enum class ChartCommand : int {
  ZoomIn = 1,
  ZoomOut,
  Earlier,
  Later,
  PageEarlier,
  PageLater,
  WholeDay,
  Newest,
  SelectedRows,
  Save,
};

class ChartView : public wxWindow {
 public:
  // The ledger must outlive the view. selectedRows shows the times of the rows that are selected in a book.
  ChartView(wxWindow* parent, const TradeLedger& ledger, std::function<void()> selectedRows);

  ChartModel& Model() noexcept { return Chart; }
  // Repaints if the picture has changed; call on the beat.
  void ShowChanges();
  void Redraw();
  void Run(ChartCommand command);
  // As PNG, or as SVG by its extension. Throws TerminalError.
  void SaveTo(const std::filesystem::path& file);
  // Of the picture as painted last.
  const ChartLayout& Layout() const noexcept { return Drawn; }

 private:
  void BindMouse();
  void OnPaint();
  void OnKey(wxKeyEvent& event);
  void OnWheel(wxMouseEvent& event);
  void OnMotion(wxMouseEvent& event);
  void EndDrag();
  void AskAndSave();
  wxBitmap Picture();
  void ZoomBy(double factor, double anchor);
  void MoveBy(double parts);

  ChartModel Chart;
  std::function<void()> SelectedRows;
  wxBitmap Painted;  // without the crosshair; not ok before the next paint
  ChartLayout Drawn;
  std::optional<ChartPlace> Pointer;
  std::optional<int> DragX;
  int WheelRest = 0;  // of a step
};
