// Which of two window systems the terminal takes, beside the X server that the test runs on; what is not printed.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <wx/utils.h>

#include <array>

#include "terminal/windows/frame/window_tools.h"

namespace {

void Give(const char* name, const wxString& value) {
  value.empty() ? wxUnsetEnv(name) : wxSetEnv(name, value);
}

TEST(WindowSystem, TakesAReachableXServerUnlessTheUserHasChosen) {
  wxString display, chosen, taken;
  wxGetEnv("GDK_BACKEND", &chosen);
  if (!wxGetEnv("DISPLAY", &display)) GTEST_SKIP() << "there is no X server";
  const std::array<wxString, 3> cases[] = {
      {display, "", "x11"}, {display, "wayland", "wayland"}, {"", "", ""}, {":65000", "", ""}};
  for (const auto& [server, backend, wanted] : cases) {
    Give("DISPLAY", server);
    Give("GDK_BACKEND", backend);
    ChooseWindowSystem();
    taken.clear();
    wxGetEnv("GDK_BACKEND", &taken);
    EXPECT_EQ(taken, wanted) << server << backend;
  }
  Give("DISPLAY", display);
  Give("GDK_BACKEND", chosen);
}

TEST(WindowSystem, DropsKnownComplaintsAlone) {
  const auto log = reinterpret_cast<void (*)(const char*, int, const char*, ...)>(dlsym(RTLD_DEFAULT, "g_log"));
  ASSERT_NE(log, nullptr);
  DropKnownComplaints();
  testing::internal::CaptureStderr();
  log("Gtk", 8, "gtk_tree_view_get_model: assertion 'GTK_IS_TREE_VIEW (tree_view)' failed");
  log("Gtk", 8, "gtk_widget_show: assertion 'GTK_IS_WIDGET (widget)' failed");
  const std::string printed = testing::internal::GetCapturedStderr();
  EXPECT_EQ(printed.find("TREE_VIEW"), std::string::npos) << printed;
  EXPECT_NE(printed.find("GTK_IS_WIDGET"), std::string::npos) << printed;
}

}  // namespace
