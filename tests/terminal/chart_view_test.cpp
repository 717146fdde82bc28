// The window of the chart under real events.
#include "terminal/windows/frame/chart_view.h"

#include "terminal/common/errors.h"
#include "tests/terminal/chart_trades.h"
#include "tests/terminal/test_files.h"
#include "tests/toolkit/dialog_answers.h"
#include "tests/toolkit/gui_test.h"
#include "toolkit/system/make_child.h"

namespace {

class ChartViewTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    View = &MakeChild<ChartView>(Frame, Ledger, [this] { ++RowsAsked; });
    View->SetSize(Frame->GetClientSize());
    ASSERT_TRUE(PumpUntil([this] { return View->GetClientSize().x > 600 && View->IsShownOnScreen(); }));
    View->Model().Select("ARCA", "IBM");
    for (unsigned at = 0; at < 60; ++at)
      Ledger.Trade(at + 1, "10:" + std::to_string(at / 10) + std::to_string(at % 10) + ":00", 100 + at % 7, 1 + at % 3,
                   1 + at % 2);
    ShowAnew();
  }
  void TearDown() override {
    Frame->DestroyChildren();  // ahead of the ledger
    GuiTest::TearDown();
  }
  void ShowAnew() {
    View->ShowChanges();
    PaintNow(*View);
  }
  wxPoint At(double part) const {
    const ChartRect& plot = View->Layout().Prices;
    return {plot.Left + static_cast<int>(plot.Width() * part), (plot.Top + plot.Bottom) / 2};
  }
  void Wheel(const wxPoint& point, int rotation) {
    wxMouseEvent event(wxEVT_MOUSEWHEEL);
    event.SetPosition(point);
    event.m_wheelDelta = 120;
    event.m_wheelRotation = rotation;
    View->GetEventHandler()->ProcessEvent(event);
    PaintNow(*View);
  }
  const ChartRange& Range() const { return View->Model().Range(); }

  ChartLedger Ledger;
  ChartView* View = nullptr;
  int RowsAsked = 0;
};

TEST_F(ChartViewTest, KeysAndMouseChangeTheRange) {
  const ChartRange whole = Range();
  const double anchor = View->Layout().SecondsAt(At(0.25).x);
  Wheel(At(0.25), 60);
  EXPECT_EQ(Range(), whole) << "half a step";
  Wheel(At(0.25), 300);
  EXPECT_NEAR(Range().Length(), whole.Length() * 0.512, 1);
  EXPECT_NEAR(View->Layout().SecondsAt(At(0.25).x), anchor, 5) << "the time below the pointer stays";
  const ChartRange zoomed = Range();
  Drag(*View, At(0.5), At(0.4));
  EXPECT_NEAR(Range().From - zoomed.From, zoomed.Length() * 0.1, 5);
  EXPECT_EQ(Range().Length(), zoomed.Length());
  const std::pair<int, std::pair<double, double>> keys[] = {{WXK_LEFT, {-0.1, 1}}, {WXK_RIGHT, {0.1, 1}},
                                                            {'+', {0.1, 0.8}},     {'-', {-0.125, 1.25}},
                                                            {WXK_UP, {0.1, 0.8}},  {WXK_DOWN, {-0.125, 1.25}}};
  for (const auto& [key, change] : keys) {
    const ChartRange before = Range();
    Press(*View, key);
    EXPECT_NEAR((Range().From - before.From) / before.Length(), change.first, 1e-6) << key;
    EXPECT_NEAR(Range().Length() / before.Length(), change.second, 1e-6) << key;
  }
  for (const int key : {static_cast<int>(WXK_HOME), static_cast<int>('0')}) {
    Press(*View, '+');
    EXPECT_NE(Range(), whole);
    Press(*View, key);
    EXPECT_EQ(Range(), whole);
  }
  Press(*View, '+');
  Press(*View, WXK_END);
  EXPECT_EQ(Range().To, whole.To);
  Press(*View, WXK_PAGEUP);
  EXPECT_EQ(Range().From, whole.From);
  DoubleClick(*View, At(0.5));
  EXPECT_EQ(Range(), whole);
  View->Run(ChartCommand::SelectedRows);
  EXPECT_EQ(RowsAsked, 1);
}

// The part of a column of pixels that differs between the pictures.
int Differences(const wxImage& one, const wxImage& other, int x) {
  int count = 0;
  for (int y = 0; y < one.GetHeight(); ++y) count += one.GetRed(x, y) != other.GetRed(x, y) ? 1 : 0;
  return count;
}

TEST_F(ChartViewTest, PaintsOnlyWhatIsNewAndThePointer) {
  const wxImage before = PictureOf(*View);
  const wxPoint place = At(0.3);
  // The display's own pointer may come in between.
  const auto differs = [&](wxEventType pointer) {
    SendMouse(*View, place, kNoKey, {pointer});
    return Differences(before, PictureOf(*View), place.x);
  };
  EXPECT_TRUE(PumpUntil([&] { return differs(wxEVT_MOTION) > View->Layout().Prices.Height() / 2; })) << "the crosshair";
  EXPECT_TRUE(PumpUntil([&] { return differs(wxEVT_LEAVE_WINDOW) == 0; }));
  int paints = 0;
  View->Bind(wxEVT_PAINT, [&paints](wxPaintEvent& event) {
    ++paints;
    event.Skip();
  });
  std::uint32_t number = 100;
  const auto paintsOther = [&] {
    paints = 0;
    Ledger.Trade(number++, "10:59:59", 50, 1, 1, "BAC");
    View->ShowChanges();
    Pump();
    return paints > 0;
  };
  EXPECT_TRUE(PumpUntil([&] { return !paintsOther(); })) << "another security";
  paints = 0;
  Ledger.Trade(number, "11:30:00", 50);
  View->ShowChanges();
  EXPECT_TRUE(PumpUntil([&paints] { return paints > 0; }));
  EXPECT_LT(View->Layout().LowPrice, 50);
}

TEST_F(ChartViewTest, SavesPictures) {
  DialogAnswers answers;
  for (const char* name : {"chart.png", "chart.SVG"}) {
    answers.AnswerAnew(TestFolder() / name);
    Press(*View, WXK_CONTROL_S);
    EXPECT_EQ(answers.Proposals, std::vector<std::filesystem::path>{"ARCA IBM.png"});
  }
  const std::string png = ReadFile(TestFolder() / "chart.png"), svg = ReadFile(TestFolder() / "chart.SVG");
  EXPECT_TRUE(png.starts_with("\x89PNG")) << png.size();
  EXPECT_NE(svg.find("<svg xmlns="), std::string::npos);
  EXPECT_NE(svg.find(">ARCA IBM</text>"), std::string::npos);
  EXPECT_TRUE(answers.Said.empty());
  View->Model().Select("NYSE", "BRK/B");
  answers.AnswerAnew({});
  View->Run(ChartCommand::Save);
  EXPECT_EQ(answers.Proposals, std::vector<std::filesystem::path>{"NYSE BRK_B.png"});
  for (const char* name : {"no/chart.png", "no/chart.svg", "chart.txt"}) {
    answers.AnswerAnew(TestFolder() / name);
    View->Run(ChartCommand::Save);
    ASSERT_EQ(answers.Said.size(), 1U) << name;
    EXPECT_NE(answers.Said[0].find(std::filesystem::path(name).filename().wstring()), std::wstring::npos);
  }
}

TEST_F(ChartViewTest, PaintsInAnySize) {
  for (const wxSize& size : {wxSize(1, 1), {20, 400}, {400, 20}, {90, 60}, {300, 150}}) {
    View->SetSize(size);
    PaintNow(*View);
    Press(*View, '+');
    Drag(*View, {5, 5}, {15, 15});
    Wheel({10, 10}, 120);
  }
}

}  // namespace
