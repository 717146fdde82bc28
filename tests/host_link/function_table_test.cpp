#include "host_link/host_functions/function_table.h"

#include <gtest/gtest.h>

#include "tests/support/fake_terminal.h"

namespace {

class FunctionTableTest : public testing::Test {
 protected:
  FunctionTableTest() { fakeTerminal = {}; }
};

std::string namesAsked;
void* FindNothing(const char* name) {
  namesAsked += std::string(name) + ' ';
  return nullptr;
}

TEST_F(FunctionTableTest, LooksUpFunctionsInOrder) {
  namesAsked.clear();
  const CQORDLLComman terminal(FindNothing);
  EXPECT_EQ(namesAsked,
            "GetMasterRequest SendToAccess PluginDataSend SendToDataFeed SendDepthBroadCastRequest "
            "SendWatchBroadCastRequest SendIndexBroadCastRequest GetOrderNo GetDepth ApplicationFocus OnMessage "
            "IsVELDSLogin GetPluginBarID SetPluginBarName PluginRemoveBarID TERBCastRequest PasswordVerification "
            "ModifyOrderQtyCheck M2MDisplay ");
}

TEST_F(FunctionTableTest, MissingFunctionsAreNoOps) {
  const CQORDLLComman terminal(FindNothing);
  EXPECT_FALSE(terminal.Has(TerminalFunction::PluginDataSend));
  CQORPacketWriter message(0);
  terminal.PluginDataSend(message);
  EXPECT_EQ(BytesOf(message), Hex("23 0100 0000 23 1127 0000"));
  SecurityMasterData data{{"kept"}, 2.5};
  EXPECT_FALSE(terminal.GetMasterRequest("ASX", "BHP", data));
  EXPECT_STREQ(data.Name.data(), "kept");
  EXPECT_EQ(data.Multiplier, 2.5);
  terminal.ApplicationFocus(nullptr, true);
  EXPECT_EQ(terminal.GetPluginBarID("book"), 0U);
  terminal.PluginRemoveBarID(1);
}

// This program is the main program and exports the five functions that are called.
TEST_F(FunctionTableTest, FindsTheExportsOfTheMainProgram) {
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

TEST_F(FunctionTableTest, ReadsNameAndMultiplierOfAMasterRecord) {
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

TEST_F(FunctionTableTest, ButtonAndIconCodesBecomeStyles) {
  const struct {
    std::uint32_t Button;
    std::uint32_t Icon;
    std::uint32_t Style;
  } kRows[] = {{0, 5, 0x0},  {1, 5, 0x4},   {2, 5, 0x1},  {3, 5, 0x5},  {4, 5, 0x2},  {5, 5, 0x6},
               {6, 5, 0x3},  {7, 5, 0x100}, {8, 5, 0x0},  {0, 0, 0x10}, {0, 1, 0x30}, {0, 2, 0x20},
               {0, 3, 0x40}, {0, 4, 0x80},  {0, 6, 0x70}, {0, 7, 0x0},  {1, 2, 0x24}};
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::to_string(row.Button) + ' ' + std::to_string(row.Icon));
    EXPECT_EQ(MessageStyle(row.Button, row.Icon, 0, false), row.Style);
    EXPECT_EQ(MessageStyle(row.Button, row.Icon, 0x1000, true), row.Style | 0x81000);
  }
}

class FakeBoxes : public MessageBoxes {
 public:
  int Show(const Request& request) override {
    Shown = request;
    return 1001;
  }
  Request Shown;
};

TEST_F(FunctionTableTest, MessageBoxesGetTheWholeRequest) {
  CQORDLLComman terminal(FindNothing);
  EXPECT_EQ(terminal.ShowMessage(nullptr, L"a", L"b", 0, 0, 0), 0);
  EXPECT_EQ(terminal.ShowMessageWithCheck(nullptr, L"a", L"b", 0, 0, 0, true), 0);
  FakeBoxes boxes;
  const MessageBoxes::Request& shown = boxes.Shown;
  terminal.Boxes = &boxes;
  terminal.ButtonCaptions = {L"Keep", L"Drop"};
  EXPECT_EQ(terminal.ShowMessage(&boxes, L"Trade Book", L"Which?", 7, 2, 0x2000), 1001);
  EXPECT_EQ(shown.Parent, &boxes);
  EXPECT_EQ(shown.Caption + L'|' + shown.Text + L'|' + shown.CheckCaption, L"Trade Book|Which?|");
  EXPECT_EQ(shown.Style, 0x2120U);
  EXPECT_EQ(shown.ButtonCaptions, terminal.ButtonCaptions);
  EXPECT_FALSE(shown.WithCheck);

  terminal.RightToLeft = true;
  for (const bool checked : {true, false}) {
    EXPECT_EQ(terminal.ShowMessageWithCheck(nullptr, L"Trade Book", L"Sure?", 1, 3, 0, checked), 1001);
    EXPECT_EQ(shown.Parent, nullptr);
    EXPECT_EQ(shown.Caption + L'|' + shown.Text + L'|' + shown.CheckCaption, L"Trade Book|Sure?| Don't Ask Again");
    EXPECT_EQ(shown.Style, 0x80044U);
    EXPECT_EQ(shown.ButtonCaptions, terminal.ButtonCaptions);
    EXPECT_TRUE(shown.WithCheck);
    EXPECT_EQ(shown.Checked, checked);
  }
}

TEST_F(FunctionTableTest, ResourceScopesSelectThisModuleAndRestoreTheFormerOne) {
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
