/// What a secret leaves behind beside the memory that it is kept in.
#pragma once

#pragma GCC visibility push(default)

namespace local_platform {

/// Wipes the vector registers and the stack below the caller. Code that works on a secret leaves
/// pieces of it in both, and the dynamic linker, when it binds a function at its first call, stores
/// the registers on the stack once more. To be called when the work is done.
void wipe_traces();

}  // namespace local_platform

#pragma GCC visibility pop
