/// Who may do what with a file.
#pragma once

/// Gives the file `to` the owner, the mode and the extended attributes of `from`, among which are
/// access control lists, and none besides: what `to` has from its folder's default list goes. False
/// when something cannot be carried over; errno tells why.
bool carry_access(int from, int to);
