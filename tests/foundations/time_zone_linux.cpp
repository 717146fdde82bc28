#include <cstdlib>
#include <ctime>

#include "tests/foundations/time_zone.h"

namespace {

// Rules in full, so that no zone files are needed.
constexpr const char* kNewYork = "EST5EDT,M3.2.0,M11.1.0";
constexpr const char* kBerlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* kMumbai = "IST-5:30";
constexpr const char* kSydney = "AEST-10AEDT,M10.1.0,M4.1.0/3";

}  // namespace

std::vector<ZoneCase> PlatformZoneCases() {
  return {
      {kNewYork, 0, "31/12/1969 19:00:00"},          {kNewYork, 1772953199, "08/03/2026 01:59:59"},
      {kNewYork, 1772953200, "08/03/2026 03:00:00"}, {kNewYork, 1783000000, "02/07/2026 09:46:40"},
      {kNewYork, 1793512799, "01/11/2026 01:59:59"}, {kNewYork, 1793512800, "01/11/2026 01:00:00"},
      {kBerlin, 1772356530, "01/03/2026 10:15:30"},  {kBerlin, 1774745999, "29/03/2026 01:59:59"},
      {kBerlin, 1774746000, "29/03/2026 03:00:00"},  {kBerlin, 1783000000, "02/07/2026 15:46:40"},
      {kBerlin, 1792889999, "25/10/2026 02:59:59"},  {kBerlin, 1792890000, "25/10/2026 02:00:00"},
      {kMumbai, 1772356530, "01/03/2026 14:45:30"},  {kMumbai, 1783000000, "02/07/2026 19:16:40"},
      {kMumbai, 32535215999, "01/01/3001 05:29:59"}, {kSydney, 1772356530, "01/03/2026 20:15:30"},
      {kSydney, 1775318399, "05/04/2026 02:59:59"},  {kSydney, 1775318400, "05/04/2026 02:00:00"},
      {kSydney, 1783000000, "02/07/2026 23:46:40"},
  };
}

void SetZone(const char* zone) {
  if (zone == nullptr)
    unsetenv("TZ");
  else
    setenv("TZ", zone, 1);
  tzset();
}
