// The zones that the tests of local time run in, as far as each platform's library knows their rules.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

struct ZoneCase {
  const char* Zone;  // as the environment variable TZ takes it
  std::int64_t Instant;
  const char* Local;  // by the pattern "dd/MM/yyyy HH:mm:ss"
};

std::vector<ZoneCase> PlatformZoneCases();

// Sets the zone of the process; null is the zone that the tests run in otherwise.
void SetZone(const char* zone);

// Sets the zone for the life of the object.
class ZoneForTest {
 public:
  explicit ZoneForTest(const char* zone) {
    if (const char* former = std::getenv("TZ"); former != nullptr) Former = former;
    SetZone(zone);
  }
  ~ZoneForTest() { SetZone(Former.empty() ? nullptr : Former.c_str()); }
  ZoneForTest(const ZoneForTest&) = delete;
  ZoneForTest& operator=(const ZoneForTest&) = delete;

 private:
  std::string Former;
};
