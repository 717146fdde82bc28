#include "host_link/host_functions/function_table.h"

#include <gtest/gtest.h>

#include "tests/support/fake_terminal.h"

namespace {

std::string namesAsked;
void* FindNothing(const char* name) {
  namesAsked += std::string(name) + ' ';
  return nullptr;
}

TEST(FunctionTableTest, LooksUpFunctionsInOrder) {
  namesAsked.clear();
  const CQORDLLComman terminal(FindNothing);
  EXPECT_EQ(namesAsked,
            "GetMasterRequest SendToAccess PluginDataSend SendToDataFeed SendDepthBroadCastRequest "
            "SendWatchBroadCastRequest SendIndexBroadCastRequest GetOrderNo GetDepth ApplicationFocus OnMessage "
            "IsVELDSLogin GetPluginBarID SetPluginBarName PluginRemoveBarID TERBCastRequest PasswordVerification "
            "ModifyOrderQtyCheck M2MDisplay ");
}

TEST(FunctionTableTest, MissingFunctionsAreNoOps) {
  const CQORDLLComman terminal(FindNothing);
  EXPECT_FALSE(terminal.Has(TerminalFunction::PluginDataSend));
  CQORPacketWriter message(0);
  terminal.PluginDataSend(message);
  EXPECT_EQ(message.OutputBuffer, nullptr);
  SecurityMasterData data{{"kept"}, 2.5};
  EXPECT_FALSE(terminal.GetMasterRequest("ASX", "BHP", data));
  EXPECT_EQ(data.NameText(), "kept");
  terminal.ApplicationFocus(nullptr, true);
  EXPECT_EQ(terminal.GetPluginBarID("book"), 0U);
  terminal.PluginRemoveBarID(1);
}

// This program is the main program and exports the five functions that are called.
TEST(FunctionTableTest, FindsTheExportsOfTheMainProgram) {
  fakeTerminal = {};
  const CQORDLLComman terminal;
  for (const TerminalFunctionRow& row : kTerminalFunctions)
    EXPECT_EQ(terminal.Has(row.Function), FakeTerminalFunction(row.Name) != nullptr) << row.Name;
  EXPECT_EQ(terminal.GetPluginBarID("Trade Book : All"), 1U);
  EXPECT_EQ(terminal.GetPluginBarID("Trade Book : GC"), 2U);
  terminal.PluginRemoveBarID(77);
  EXPECT_EQ(fakeTerminal.BarCalls, (std::vector<std::string>{"1 = Trade Book : All", "2 = Trade Book : GC", "-77"}));
  int window = 0;
  terminal.ApplicationFocus(&window, false);
  terminal.ApplicationFocus(nullptr, true);
  EXPECT_EQ(fakeTerminal.Focus, (std::vector<std::pair<void*, bool>>{{&window, false}, {nullptr, true}}));
}

TEST(FunctionTableTest, ReadsNameAndMultiplierOfAMasterRecord) {
  fakeTerminal = {};
  // A name of 49 characters has no NUL; the multiplier is at 435, and the record ends behind it.
  const std::string name = "BHP GROUP LIMITED 0123456789 0123456789 01234567X";
  fakeTerminal.Masters["ASX|BHP.AX"] =
      Bytes(266, 0xEE) + Bytes(name.begin(), name.end()) + Bytes(120, 0xEE) + Hex("0000000000000440");
  const CQORDLLComman terminal(FakeTerminalFunction);
  SecurityMasterData data;
  EXPECT_TRUE(terminal.GetMasterRequest("ASX", "BHP.AX", data));
  EXPECT_EQ(data.NameText(), name);
  EXPECT_EQ(data.Multiplier, 2.5);
  data.Name[3] = '\0';
  EXPECT_EQ(data.NameText(), "BHP");
  EXPECT_FALSE(terminal.GetMasterRequest("ASX", "CBA", data));
  EXPECT_EQ(data.NameText(), "BHP");
  EXPECT_EQ(data.Multiplier, 2.5);
  EXPECT_EQ(fakeTerminal.MasterRequests, (std::vector<std::string>{"ASX|BHP.AX", "ASX|CBA"}));
}

TEST(FunctionTableTest, ButtonAndIconCodesBecomeStyles) {
  const std::uint32_t kRows[][3] = {{0, 5, 0x0},  {1, 5, 0x4},   {2, 5, 0x1},  {3, 5, 0x5},  {4, 5, 0x2},  {5, 5, 0x6},
                                    {6, 5, 0x3},  {7, 5, 0x100}, {8, 5, 0x0},  {0, 0, 0x10}, {0, 1, 0x30}, {0, 2, 0x20},
                                    {0, 3, 0x40}, {0, 4, 0x80},  {0, 6, 0x70}, {0, 7, 0x0},  {1, 2, 0x24}};
  for (const auto& [button, icon, style] : kRows) {
    EXPECT_EQ(MessageStyle(button, icon, 0, false), style) << button << ' ' << icon;
    EXPECT_EQ(MessageStyle(button, icon, 0x1000, true), style | 0x81000) << button << ' ' << icon;
  }
}

class FakeBoxes : public MessageBoxes {
 public:
  int Show(const Request& request) override {
    const auto& [first, second] = request.ButtonCaptions;
    Shown = request.Caption + L'|' + request.Text + L'|' + first + L'|' + second + L'|' + request.CheckCaption + L'|' +
            std::to_wstring(request.Style) + (request.Parent == this ? L"|own" : L"") +
            (request.WithCheck ? L"|box" : L"") + (request.Checked ? L"|checked" : L"");
    return 1001;
  }
  std::wstring Shown;
};

TEST(FunctionTableTest, MessageBoxesGetTheWholeRequest) {
  CQORDLLComman terminal(FindNothing);
  EXPECT_EQ(terminal.ShowMessage(nullptr, L"a", L"b", 0, 0, 0), 0);
  EXPECT_EQ(terminal.ShowMessageWithCheck(nullptr, L"a", L"b", 0, 0, 0, true), 0);
  FakeBoxes boxes;
  terminal.Boxes = &boxes;
  terminal.ButtonCaptions = {L"Keep", L"Drop"};
  EXPECT_EQ(terminal.ShowMessage(&boxes, L"Trade Book", L"Which?", 7, 2, 0x2000), 1001);
  EXPECT_EQ(boxes.Shown, L"Trade Book|Which?|Keep|Drop||8480|own");  // 0x2120
  terminal.RightToLeft = true;
  for (const bool checked : {true, false}) {
    EXPECT_EQ(terminal.ShowMessageWithCheck(nullptr, L"Sure?", L"", 1, 3, 0, checked), 1001);
    EXPECT_EQ(boxes.Shown,
              std::wstring(L"Sure?||Keep|Drop| Don't Ask Again|524356|box") + (checked ? L"|checked" : L""));
  }
}

TEST(FunctionTableTest, ResourceScopesSelectThisModuleAndRestoreTheFormerOne) {
  const ModuleHandle own = ModuleOfAddress(&namesAsked);
  ASSERT_NE(own, nullptr);
  EXPECT_EQ(SelectedResources(), nullptr);
  {
    const CQORDLLResource outer;
    EXPECT_EQ(SelectedResources(), own);
    { const CQORDLLResource inner; }
    EXPECT_EQ(SelectedResources(), own);
  }
  EXPECT_EQ(SelectedResources(), nullptr);
}

}  // namespace
