// ZoneForTest: the time zone of the process, as the environment variable TZ has it, for the life of an object.
#pragma once

#include <cstdlib>
#include <ctime>
#include <string>

class ZoneForTest {
 public:
  explicit ZoneForTest(const std::string& zone) : Text("TZ=" + zone) { Set(Text.data()); }
  ~ZoneForTest() { Set(Neutral); }
  ZoneForTest(const ZoneForTest&) = delete;
  ZoneForTest& operator=(const ZoneForTest&) = delete;

 private:
  // The environment keeps the text.
  static bool Set(char* text) {
    putenv(text);
    tzset();
    return true;
  }

  // Wine 8 loses the rules of summer time for the rest of the process as soon as its library has looked at the time
  // with no zone set: hence one is set before the first test, and the tests never go back to none.
  static inline char Neutral[] = "TZ=GMT0";
  static inline const bool kIsSet = Set(Neutral);
  std::string Text;
};
