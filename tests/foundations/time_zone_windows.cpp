#include <cstdlib>
#include <ctime>

#include "tests/foundations/time_zone.h"

namespace {

// The library knows the switches of the United States only; a zone without summer time can lie anywhere.
constexpr const char* kNewYork = "EST5EDT";
constexpr const char* kLosAngeles = "PST8PDT";
constexpr const char* kMumbai = "IST-5:30";
constexpr const char* kTokyo = "JST-9";

// Wine 8 loses the rules of summer time for the rest of the process as soon as its library has looked at the time
// with no zone set: hence one is set before the first test, and ZoneForTest never goes back to none.
constexpr const char* kNeutral = "GMT0";
[[maybe_unused]] const bool kZoneIsSet = (SetZone(nullptr), true);

}  // namespace

std::vector<ZoneCase> PlatformZoneCases() {
  return {
      {kNewYork, 0, "31/12/1969 19:00:00"},
      {kNewYork, 1772953199, "08/03/2026 01:59:59"},
      {kNewYork, 1772953200, "08/03/2026 03:00:00"},
      {kNewYork, 1783000000, "02/07/2026 09:46:40"},
      {kLosAngeles, 0, "31/12/1969 16:00:00"},
      {kLosAngeles, 1772356530, "01/03/2026 01:15:30"},
      {kLosAngeles, 1783000000, "02/07/2026 06:46:40"},
      {kMumbai, 1772356530, "01/03/2026 14:45:30"},
      {kMumbai, 1783000000, "02/07/2026 19:16:40"},
      {kMumbai, 32535215999, "01/01/3001 05:29:59"},
      {kTokyo, 1783000000, "02/07/2026 22:46:40"},
  };
}

void SetZone(const char* zone) {
  _putenv_s("TZ", zone == nullptr ? kNeutral : zone);
  _tzset();
}
