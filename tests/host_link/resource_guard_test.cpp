#include "host_link/host_functions/function_table.h"

#include <gtest/gtest.h>

namespace {

int somethingOfThisModule = 0;

TEST(ResourceGuardTest, SelectsTheOwnModuleAndPutsTheFormerOneBack) {
  const ModuleHandle own = ModuleOfAddress(&somethingOfThisModule);
  ASSERT_NE(own, nullptr);
  EXPECT_EQ(SelectedResources(), nullptr);
  {
    const CQORDLLResource outer;
    EXPECT_EQ(SelectedResources(), own);
    {
      const CQORDLLResource inner;
      EXPECT_EQ(SelectedResources(), own);
    }
    EXPECT_EQ(SelectedResources(), own);
  }
  EXPECT_EQ(SelectedResources(), nullptr);
}

}  // namespace
