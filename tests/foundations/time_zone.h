// The zones that the tests of local time run in, as far as each platform's library knows their rules.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct ZoneCase {
  const char* Zone;  // as the environment variable TZ takes it
  std::int64_t Instant;
  const char* Local;  // by the pattern "dd/MM/yyyy HH:mm:ss"
};

std::vector<ZoneCase> PlatformZoneCases();

// Sets the zone of the process for the life of the object.
class ZoneForTest {
 public:
  explicit ZoneForTest(const char* zone);
  ~ZoneForTest();
  ZoneForTest(const ZoneForTest&) = delete;
  ZoneForTest& operator=(const ZoneForTest&) = delete;

 private:
  std::string Former;
};
