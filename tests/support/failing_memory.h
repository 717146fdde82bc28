// Makes the allocations of the test program fail on demand: operator new in all its forms and the blocks of pages.
// One thread at a time.
#pragma once

// From now on the count-th allocation (from 1) is refused, once.
void FailAllocation(int count) noexcept;
// From now on none fails; true when one has since FailAllocation.
bool StopFailing() noexcept;
