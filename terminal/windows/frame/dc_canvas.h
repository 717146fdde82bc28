// DcCanvas: draws a chart on a window or a bitmap.
#pragma once

#include <wx/dc.h>

#include "terminal/chart/chart_canvas.h"
#include "terminal/windows/frame/window_tools.h"

class DcCanvas : public ChartCanvas {
 public:
  DcCanvas(wxDC& dc, const wxFont& font, const ChartTheme& theme) : Dc(dc), Theme(theme) { Dc.SetFont(font); }

  int TextWidth(const std::string& text) const override { return Dc.GetTextExtent(Wide(text)).x; }
  int TextHeight() const override { return Dc.GetCharHeight(); }

  void Line(const ChartPlace& from, const ChartPlace& to, ChartInk ink) override {
    Dc.SetPen(wxPen(Color(ink)));
    Dc.DrawLine(from.X, from.Y, to.X, to.Y);
  }
  void Polyline(std::span<const ChartPlace> places, ChartInk ink) override {
    std::vector<wxPoint> points;
    points.reserve(places.size());
    for (const ChartPlace& place : places) points.emplace_back(place.X, place.Y);
    Dc.SetPen(wxPen(Color(ink)));
    Dc.DrawLines(static_cast<int>(points.size()), points.data());
  }
  void Rect(const ChartRect& rect, ChartInk ink) override {
    Fill(ink);
    Dc.DrawRectangle(rect.Left, rect.Top, rect.Width(), rect.Height());
  }
  void Triangle(const std::array<ChartPlace, 3>& corners, ChartInk ink) override {
    Fill(ink);
    const wxPoint points[] = {{corners[0].X, corners[0].Y}, {corners[1].X, corners[1].Y}, {corners[2].X, corners[2].Y}};
    Dc.DrawPolygon(3, points);
  }
  void Text(const ChartPlace& place, const std::string& text, ChartAlign align, ChartInk ink) override {
    const wxString shown = Wide(text);
    const int before = static_cast<int>(align) * Dc.GetTextExtent(shown).x / 2;
    Dc.SetTextForeground(Color(ink));
    Dc.DrawText(shown, place.X - before, place.Y);
  }

 private:
  wxColour Color(ChartInk ink) const {
    const std::uint32_t rgb = ColorOf(Theme, ink);
    return {static_cast<unsigned char>(rgb >> 16), static_cast<unsigned char>(rgb >> 8 & 0xFF),
            static_cast<unsigned char>(rgb & 0xFF)};
  }
  void Fill(ChartInk ink) {
    Dc.SetPen(*wxTRANSPARENT_PEN);
    Dc.SetBrush(wxBrush(Color(ink)));
  }

  wxDC& Dc;
  const ChartTheme& Theme;
};
