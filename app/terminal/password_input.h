/// A password from the operator.
#pragma once

struct Secret;

/// Reads a password: from a terminal without echo, asked for twice, or else the first line of
/// standard input. Throws InputError when it cannot be read, the rule for passwords would refuse
/// it, or the two differ.
void read_password(Secret& password);
