#include <gtest/gtest.h>

#include "platform/modules.h"
#include "tests/embedding/bar_module.h"
#include "tests/embedding/foreign_loop.h"

namespace {

constexpr int kMostTicks = 4000;

struct LoadedModule {
  LoadedModule() : Handle(LoadModule(ProgramFolder() / (std::string("bar_module") + ModuleSuffix()), Error)) {}
  template <typename Function>
  Function* Get(const char* name) const {
    return reinterpret_cast<Function*>(ModuleSymbol(Handle, name));
  }
  std::string Error;
  ModuleHandle Handle;
};

// Runs the module's steps from within the program's loop and gives the number of the one that did not get done; -1 for
// none.
int RunSteps(const LoadedModule& module, int count) {
  const auto runStep = module.Get<StepFunction>("RunStep");
  int step = 0, ticks = 0;
  RunForeignLoop([&] {
    const Answer answer = runStep(step);
    if (answer == Answer::Done) ++step, ticks = 0;
    return answer != Answer::Failed && ++ticks < kMostTicks && step < count;
  });
  return step < count ? step : -1;
}

// In this order: a program gets its display, loads the module, and loads it once more.
TEST(Embedding, IsSilentWithoutADisplay) {
  if (!HideDisplay()) GTEST_SKIP() << "the platform always has a display";
  const LoadedModule module;
  ASSERT_NE(module.Handle, nullptr) << module.Error;
  testing::internal::CaptureStderr();
  EXPECT_FALSE(module.Get<StartFunction>("Start")());
  EXPECT_FALSE(module.Get<StartFunction>("Start")());
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  UnloadModule(module.Handle);
  ShowDisplay();
}

TEST(Embedding, AForeignLoopServesABarUntilItsModuleIsUnloaded) {
  if (!OpenForeignWindow()) GTEST_SKIP() << "there is no display to make windows on";
  for (int time = 0; time < 2; ++time) {
    SCOPED_TRACE(time);
    const LoadedModule module;
    ASSERT_NE(module.Handle, nullptr) << module.Error;
    module.Get<SetWindowCheckFunction>("SetWindowCheck")(ForeignWindowCheck());
    ASSERT_EQ(RunSteps(module, module.Get<CountFunction>("StepCount")()), -1);
    bool unloaded = false;
    module.Get<SetUnloadFlagFunction>("SetUnloadFlag")(&unloaded);
    UnloadModule(module.Handle);
    EXPECT_TRUE(unloaded);
    int ticks = 0;
    RunForeignLoop([&ticks] { return ++ticks < 20; });  // the program goes on
  }
}

// The program ends as programs do, with the toolkit still running in it.
TEST(Embedding, AProcessMayEndWithTheToolkitRunning) {
  if (!OpenForeignWindow()) GTEST_SKIP() << "there is no display to make windows on";
  const LoadedModule module;
  ASSERT_NE(module.Handle, nullptr) << module.Error;
  module.Get<SetWindowCheckFunction>("SetWindowCheck")(ForeignWindowCheck());
  EXPECT_EQ(RunSteps(module, module.Get<CountFunction>("StepCount")() - 1), -1);
}

}  // namespace
