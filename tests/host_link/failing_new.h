// Makes non-throwing array allocations of the test program fail on demand.
#pragma once

// While it lives, the count-th such allocation (from 1) is refused; those before and after it are served.
class FailingNew {
 public:
  explicit FailingNew(int count) noexcept;
  ~FailingNew();
  FailingNew(const FailingNew&) = delete;
  FailingNew& operator=(const FailingNew&) = delete;
};
