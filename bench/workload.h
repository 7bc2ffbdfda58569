/// The configurations that the benchmarks check.
#pragma once

#include <string>

#include "crypto_key.h"

/// RFC 7951 JSON, for our model and for libyang alike.
struct Workload {
    std::string candidate;
    std::string running;
};

/// How many identifiers a family has.
constexpr int kIdentifiers = 255;

/// `instances` VRRP instances, each on an interface of its own, IPv4 and IPv6 by turns. In both
/// families identifiers go from 1 to `identifiers` and begin again, so that 510 at most are free of
/// conflicts. All that a rule reads is there, so every rule makes all its calls. The running
/// configuration lacks only the versions, so that the version rule is asked and has nothing to warn
/// of.
Workload make_workload(int instances, const local_platform::CryptoKey& key,
                       int identifiers = kIdentifiers);

/// The same candidate, but its last instance has the identifier of another interface's.
std::string make_conflict(int instances, const local_platform::CryptoKey& key);
