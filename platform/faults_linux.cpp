#include "platform/faults.h"

#include <csignal>
#include <iterator>
#include <mutex>

#include <sys/mman.h>
#include <unistd.h>

namespace {

constexpr int kSignals[] = {SIGFPE, SIGILL, SIGSEGV};
static_assert(SIGFPE == 8 && SIGILL == 4 && SIGSEGV == 11);
constexpr std::size_t kStackSize = 65536;

// Handlers belong to the process, so guarded threads are counted. A fault may come while the lock is held, so it reads
// this without the lock.
std::mutex handlersLock;
int guardedThreads = 0;
FaultFunction faultFunction = nullptr;
struct sigaction formerHandlers[std::size(kSignals)];

// Static storage of the thread: a handler cannot allocate.
[[gnu::tls_model("initial-exec")]] thread_local bool isGuarded = false;
// Handles a fault of a stack that has overflowed.
[[gnu::tls_model("initial-exec")]] thread_local void* handlerStack = MAP_FAILED;
[[gnu::tls_model("initial-exec")]] thread_local stack_t formerStack;

// Does what happens without the handler. A fault comes again when its instruction is repeated; a signal that was sent
// must be sent again.
void PassOn(int number, siginfo_t* info, void* context) noexcept {
  const std::size_t index = number == SIGFPE ? 0 : number == SIGILL ? 1 : 2;
  const struct sigaction& former = formerHandlers[index];
  if ((former.sa_flags & SA_SIGINFO) != 0) {
    former.sa_sigaction(number, info, context);
  } else if (former.sa_handler != SIG_DFL && former.sa_handler != SIG_IGN) {
    former.sa_handler(number);
  } else {
    sigaction(number, &former, nullptr);
    if (info->si_code <= 0) raise(number);
  }
}

void OnSignal(int number, siginfo_t* info, void* context) noexcept {
  if (!isGuarded) return PassOn(number, info, context);
  faultFunction(info);
  _exit(1);
}

void TakeSignals() noexcept {
  struct sigaction action {};
  action.sa_sigaction = OnSignal;
  action.sa_flags = SA_SIGINFO | SA_ONSTACK;
  for (std::size_t i = 0; i < std::size(kSignals); ++i) sigaction(kSignals[i], &action, &formerHandlers[i]);
}

void GiveSignalsBack() noexcept {
  for (std::size_t i = 0; i < std::size(kSignals); ++i) {
    struct sigaction found;
    sigaction(kSignals[i], &formerHandlers[i], &found);
    const bool isOurs = (found.sa_flags & SA_SIGINFO) != 0 && found.sa_sigaction == OnSignal;
    if (!isOurs) sigaction(kSignals[i], &found, nullptr);
  }
}

void TakeStack() noexcept {
  handlerStack = mmap(nullptr, kStackSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (handlerStack == MAP_FAILED) return;
  stack_t stack{};
  stack.ss_sp = handlerStack;
  stack.ss_size = kStackSize;
  sigaltstack(&stack, &formerStack);
}

void GiveStackBack() noexcept {
  if (handlerStack == MAP_FAILED) return;
  sigaltstack(&formerStack, nullptr);
  munmap(handlerStack, kStackSize);
  handlerStack = MAP_FAILED;
}

}  // namespace

void CatchFaultSignals(FaultFunction function) noexcept {
  if (isGuarded) return;
  TakeStack();
  isGuarded = true;
  const std::lock_guard guard(handlersLock);
  faultFunction = function;
  if (guardedThreads++ == 0) TakeSignals();
}

void ReleaseFaultSignals() noexcept {
  if (!isGuarded) return;
  {
    const std::lock_guard guard(handlersLock);
    if (--guardedThreads == 0) GiveSignalsBack();
  }
  isGuarded = false;
  GiveStackBack();
}

bool CatchesFaultSignals() noexcept {
  return isGuarded;
}

void EndProcessHere(FaultFunction function) noexcept {
  function(nullptr);
  _exit(1);
}

DumpOutcome WriteProcessDump(void* /*exceptionPointers*/, unsigned long& /*error*/) noexcept {
  return DumpOutcome::Done;
}
