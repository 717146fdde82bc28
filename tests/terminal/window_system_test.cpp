// Which of two window systems the terminal takes, beside the X server that the test runs on; what is not printed.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <string>

#include "terminal/windows/frame/window_tools.h"

namespace {

std::string Value(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

void Give(const char* name, const std::string& value) {
  value.empty() ? unsetenv(name) : setenv(name, value.c_str(), 1);
}

TEST(WindowSystem, TakesAReachableXServerUnlessTheUserHasChosen) {
  const std::string display = Value("DISPLAY"), chosen = Value("GDK_BACKEND");
  if (display.empty()) GTEST_SKIP() << "there is no X server";
  const std::array<std::string, 3> cases[] = {
      {display, "", "x11"}, {display, "wayland", "wayland"}, {"", "", ""}, {":65000", "", ""}};
  for (const auto& [server, backend, taken] : cases) {
    Give("DISPLAY", server);
    Give("GDK_BACKEND", backend);
    ChooseWindowSystem();
    EXPECT_EQ(Value("GDK_BACKEND"), taken) << server << backend;
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
