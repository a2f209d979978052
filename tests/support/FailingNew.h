#pragma once

#include <new>

/// While it lives, one allocation by operator new on this thread fails with std::bad_alloc. One at
/// a time; for tests that link zav_failing_new, which replaces operator new.
class FailingNew {
public:
    /// @param which  1 for the next allocation, 2 for the one after it, ...
    explicit FailingNew(long which);
    ~FailingNew();
    FailingNew(const FailingNew&) = delete;
    FailingNew& operator=(const FailingNew&) = delete;

    /// @return whether so many allocations were made that the one failed.
    bool hasFailed() const;
};

/// Repeats an action with its first allocation failing, then with its second, and so on, until it
/// makes no allocation that fails.
///
/// @param action          what is tried, each time from the start.
/// @param afterException  called after each std::bad_alloc that came out of the action.
/// @return the number of times it came out.
template <class Action, class AfterException>
int failEachAllocation(Action action, AfterException afterException)
{
    int exceptions = 0;
    for (long which = 1;; ++which) {
        bool hasFailed = false;
        bool isThrown = false;
        {
            const FailingNew failing(which);
            try {
                action();
            } catch (const std::bad_alloc&) {
                isThrown = true;
            }
            hasFailed = failing.hasFailed();
        }
        if (isThrown) {
            ++exceptions;
            afterException();
        }
        if (!hasFailed) {
            return exceptions;
        }
    }
}
