/// An operator, or a scheduler, who ends a run before it is done.
#pragma once

#include <atomic>

/// While it lives, the first SIGHUP, SIGINT or SIGTERM only notes that the run is to end, and
/// nobody waits any more for a file that does not come; a second one ends the process at once. A
/// signal that is ignored stays ignored.
class Interrupt {
  public:
    Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;
    ~Interrupt();

    const std::atomic<bool>& is_noted() const;
    /// Ends the process by the signal that was noted, as its caller expects of an interrupted one.
    [[noreturn]] static void pass_on();
};
