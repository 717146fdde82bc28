// What the terminal keeps its libraries from printing.
#include "terminal/windows/window_system.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

namespace {

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
