// Makes allocations of the test program fail on demand: all forms of operator new, and page blocks.
#pragma once

// The count-th allocation from now on, counted from 1, fails once. 0 for none.
void FailAllocation(int count) noexcept;
// No further allocation fails. True if one has failed since FailAllocation.
bool StopFailing() noexcept;
