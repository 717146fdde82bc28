// A program that dies as its arguments say: on the writer thread of a record file, or beside one. Without arguments it
// looks at what writers leave behind.
#include <csignal>
#include <cstdio>
#include <exception>
#include <future>
#include <stdexcept>
#include <string>

#include "foundations/error_report.h"
#include "trade_data/record_files/ada_write_async.h"

namespace {

int Descend(int depth) {
  volatile int here[256];
  here[0] = depth;
  return depth < 0 ? 0 : Descend(depth + 1) + here[0];
}

void Die(const std::string& of) {
  volatile std::uintptr_t nowhere = 16;
  if (of == "segment") *reinterpret_cast<volatile int*>(nowhere) = 1;
  if (of == "overflow") Descend(0);
  if (of == "signal8") std::raise(8);
  if (of == "signal4") std::raise(4);
  if (of == "signal11") std::raise(11);
  if (of == "exception") throw std::runtime_error("uncaught");
}

class DyingFile : public QOR::Base::CQORFileImpl {
 public:
  explicit DyingFile(std::string of) : Of(std::move(of)) {}
  void LoadRecord(CQORPacketReader& /*reader*/) override {}
  bool WriteBytes(std::span<const std::uint8_t> /*bytes*/) override {
    Die(Of);
    Written.set_value();
    return true;
  }
  // An atomic flag would do, but under mingw-w64 its wait() can miss the call that is to end it.
  std::promise<void> Written;  // one piece at most

 private:
  std::string Of;
};

void OnDump(void* /*exceptionPointers*/) {
  std::fputs("dump", stdout);
  std::fflush(stdout);
}

// Whether two writers that have come and gone leave the handlers that were there before; in a process in which no
// writer has been yet.
bool HandlersComeBack() {
  constexpr int kSignals[] = {8, 4, 11};
  const auto mine = [](int) {};
  for (const int number : kSignals) std::signal(number, mine);
  const std::terminate_handler terminate = std::get_terminate();
  DyingFile file("");
  QOR::Base::CQORADAStore store;
  {
    QOR::Base::CQORADAWriteAsync first(file, store);
    QOR::Base::CQORADAWriteAsync second(file, store);
  }
  bool back = std::get_terminate() == terminate;
  for (const int number : kSignals) back = std::signal(number, SIG_DFL) == static_cast<void (*)(int)>(mine) && back;
  return back;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return HandlersComeBack() ? 0 : 9;
  QOR::Util::CQORExceptionHandler::SetDumpCallback(OnDump);
  DyingFile file(std::string(argv[1]) == "writer" ? argv[2] : "");
  QOR::Base::CQORADAStore store;
  QOR::Base::CQORADAWriteAsync writer(file, store);
  const std::uint8_t byte = 0;
  writer.Write({&byte, 1});
  if (std::string(argv[1]) == "main") {
    file.Written.get_future().wait();
    Die(argv[2]);
  }
  return writer.Close() ? 0 : 8;
}
