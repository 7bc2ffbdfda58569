/// An operator, or a scheduler, who ends a run before it is done.
#pragma once

#include <atomic>

/// Turns true when the run is to end: then no work is begun, and nobody waits any more for a file
/// that does not come. The one variable of the process that changes and that all of it sees, since
/// a signal's handler can be handed none.
const std::atomic<bool>& is_interrupted();

/// From here on the first SIGHUP, SIGINT or SIGTERM only sets is_interrupted(), and a second one
/// ends the process at once. A signal that is ignored stays ignored, and reads and writes go on.
void note_interrupts();

/// Ends the process by the signal that was noted, as its caller expects of an interrupted one.
[[noreturn]] void end_as_interrupted();
