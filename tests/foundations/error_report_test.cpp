#include "foundations/error_report.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST(ErrorReportTest, NamesFunctionLineAndMessage) {
  EXPECT_EQ(FailureLine("It went wrong: ", 0, "QOR::Base::CQORString::Grow", 84),
            "QOR::Base::CQORString::Grow\t84\tIt went wrong: ");
  EXPECT_EQ(FailureLine("", 0, "", 4294967295u), "\t4294967295\t");
}

TEST(ErrorReportTest, AppendsTheTextOfTheSystem) {
  const std::string line = FailureLine("Open: ", 2, "F", 7);
  constexpr std::string_view kStart = "F\t7\tOpen: ErrorNo: 2, ";
  ASSERT_TRUE(line.starts_with(kStart)) << line;
  EXPECT_GT(line.size(), kStart.size());
  EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos);
  // A number that no system knows has no text.
  EXPECT_EQ(FailureLine("Open: ", 123456789, "F", 7), "F\t7\tOpen: ErrorNo: 123456789, ");
}

// Of all numbers that systems use: texts of several lines become one, and places for inserts stay visible.
TEST(ErrorReportTest, KeepsEveryTextOnOneLineWithItsInserts) {
  bool hasInsert = std::filesystem::path::preferred_separator != '\\';  // only Windows has texts with inserts
  for (unsigned long number = 1; number < 16000; ++number) {
    const std::string line = FailureLine("", number, "F", 7);
    EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << line;
    hasInsert = hasInsert || line.find("%1") != std::string::npos;
  }
  EXPECT_TRUE(hasInsert);
}

TEST(ErrorReportTest, ReportsOneLineToStandardError) {
  testing::internal::CaptureStderr();
  CQORLog::ReportFailure("No room: ", 0, "F", 12);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "F\t12\tNo room: \n");
}

}  // namespace
