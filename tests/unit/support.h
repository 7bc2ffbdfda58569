/// Requests to the plug-in as the tests write them down, and what comes of them.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "call_hook.h"
#include "configuration/yang_model.h"
#include "instance.h"
#include "vrrp_valid.h"

using Lines = std::vector<std::string>;

/// Writes out what stands short: $I for a layer-3 interface, $V and $W for an IPv4 and an IPv6
/// instance on it, and more.
std::string expand(std::string text);

/// The pieces of `text` between separators, without the blanks around them.
Lines split(std::string_view text, std::string_view separator);

/// The text of a file in tables/.
std::string test_data(const std::string& name);

/// A row a line, written out, its columns parted by "|". One that ends in ";" goes on in the next.
std::vector<Lines> table(std::string_view text);

/// The model in yang/.
const YangModel& test_model();

/// A tree of "path" or "path = value"; a value `encrypt(text)` is encrypted with test_key().
local_platform::DataTree make_tree(const Lines& lines);
const local_platform::CryptoKey& test_key();

struct Request {
    std::string selector, node;  ///< the node is added to the candidate where it is not there
    Lines candidate, running;
    std::string verdict, calls;  ///< expected; no calls where they do not matter
    Lines told;                  ///< "operation result" instead of its own; "no-key"
};

/// Those in a file in tables/.
std::vector<Request> requests(const std::string& name);

/// For each rule a request that it accepts, and one that it refuses or warns of.
const std::vector<Request>& samples();

struct Outcome {
    std::string verdict;  ///< "ok", "error", "error: message", "thrown: what" ...
    Lines calls;          ///< "operation path", in order
    std::string list;     ///< the same in one text
};

/// A request ready to be delivered, any number of times.
struct Delivery {
    explicit Delivery(const Request& request);

    /// Delivers it, with `hook` asked how each operation answers and allocation `failing` failing.
    /// Expects that every session and cursor is released.
    Outcome run(const local_platform::CallHook& hook = {}, std::size_t failing = 0);

    Request request;
    local_platform::DataTree candidate;
    local_platform::Instance instance;
    confd_hkeypath_t kp{};
    confd_value_t newval{};
};

/// Whether `call` ends a session or a cursor.
bool is_release(std::string_view call);

/// This binary's operator new counts the calling thread's allocations here.
struct AllocationCounter {
    bool counting = false;
    std::size_t failing = 0;  ///< the one that fails; none for 0
    std::size_t made = 0;
};
inline thread_local AllocationCounter allocations;
