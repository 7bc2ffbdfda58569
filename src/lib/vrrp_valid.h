/// The entries that the host finds by name.
#pragma once

#include "platform.h"

#pragma GCC visibility push(default)

extern "C" {

/// Nothing to set up or tear down; both return 0.
int lib_init();
int lib_finish();

/// Writes the name of the one validation point into `buffer`, at most `size` bytes with the NUL;
/// `size` is not negative. Returns 0.
int get_validation_point(char* buffer, int size);

/// ConfD's validation callback, registered with the host's handle as its opaque pointer: runs the
/// rule that the request's selector names and returns its result. CONFD_ERR, with no message, for a
/// request without context, keypath or new value, without a MAAPI socket, or with a selector that
/// names no rule.
int validate(confd_trans_ctx* tctx, confd_hkeypath_t* kp, confd_value_t* newval);
}

#pragma GCC visibility pop
