/// What the SDK's libraries answer from: the test program fills it.
#pragma once

#include <map>
#include <string>

/// Leaves by path, without a leading "/"; what lies on the way to a leaf exists. An address has its
/// prefix length.
using Datastore = std::map<std::string, std::string>;

extern Datastore candidate;
extern Datastore running;
extern int open_sessions;
