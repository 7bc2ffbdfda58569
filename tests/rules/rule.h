/// How the tests of a rule are written down: what the datastores hold, what is asked, what the rule
/// answers, and the platform calls that it makes.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "call_hook.h"
#include "instance.h"
#include "platform/support.h"
#include "vrrp_valid.h"

using Lines = Strings;

/// The path of a VRRP instance.
std::string instance(const std::string& interface_key, const std::string& family, int vr_id);

struct Candidate : std::vector<Setting> {
    using vector::vector;
};
struct Running : std::vector<Setting> {
    using vector::vector;
};

/// The node that is asked about, with its value; an IPv4 instance unless given. It is in the
/// candidate, named there or not.
struct Request {
    std::string node = instance("l3-vlan%s%n", "ipv4", 5);
};

/// The result, and the message with it.
struct Answer {
    std::string text;
};
inline Answer ok() {
    return {"CONFD_OK"};
}
inline Answer error(const std::string& message) {
    return {"CONFD_ERR: " + message};
}

/// Platform calls in order, each with its path. What a cursor does and the printing of a key are
/// named with the list. The first call of a request, for the MAAPI socket, is left out.
struct Calls {
    struct Call {
        std::string text;
        std::optional<Answer> failed = {}, said_1 = {};
        bool ends = false;
    };

    Calls() = default;  ///< any
    Calls(const char* call) : made{{call}} {}
    Calls(const std::string& call) : made{{call}} {}
    Calls(std::initializer_list<Calls> parts) : any(false) {
        for (const Calls& part : parts) {
            made.insert(made.end(), part.made.begin(), part.made.end());
        }
    }

    /// What the rule answers when the last of them fails, and then goes on.
    Calls fails_unseen(const Answer& answer) const {
        return but([&](Call& last) { last.failed = answer; });
    }
    /// The same, and nothing but reports and releases follows.
    Calls fails(const Answer& answer) const {
        return fails_unseen(answer).but([](Call& last) { last.ends = true; });
    }
    /// What it answers when the last of them says 1.
    Calls says_1(const Answer& answer) const {
        return but([&](Call& last) { last.said_1 = answer; });
    }

    /// All that a request with these calls makes, the first included.
    Calls whole() const { return {Calls("qelconfd_maapi_socket_get").fails({"CONFD_ERR"}), *this}; }
    Lines lines() const;

    std::vector<Call> made;
    bool any = made.empty();

  private:
    template <typename Change>
    Calls but(const Change& change) const {
        Calls calls = *this;
        change(calls.made.back());
        return calls;
    }
};

/// Operations that answer this instead of doing their work.
struct PlatformAnswers : std::vector<std::pair<std::string, int>> {
    using vector::vector;
};
/// The key at this place of the keypath, or the new value, has a type that no rule expects.
struct WrongType {
    std::optional<int> place;
};
constexpr int kNewValue = -1;
/// Whether the host has a key of encrypted leaves.
struct CryptoKeys {
    bool installed = true;
};

struct Case {
    /// `parts` are of the types above, in any order.
    template <typename... Parts>
    explicit Case(std::string name, const Parts&... parts) : name(std::move(name)) {
        ((std::get<Parts>(said) = parts), ...);
    }
    template <typename Part>
    const Part& the() const {
        return std::get<Part>(said);
    }

    std::string name;
    std::string selector = {};  ///< of the rule that it was added with
    std::tuple<Candidate, Running, Request, Answer, Calls, PlatformAnswers, WrongType, CryptoKeys>
        said = {};
};
inline void PrintTo(const Case& one, std::ostream* stream) {
    *stream << one.selector << ", " << one.name;
}

struct RuleCases {
    std::string selector, handler;
    std::vector<std::pair<int, std::string>> keys;  ///< that it reads, in order, and their types
    /// An accepted request and one that is not, with all their calls and what comes of a failure;
    /// then others.
    std::vector<Case> cases;
};

/// Those that the files named after the rules' own have added.
std::vector<RuleCases>& rules();
struct AddRule {
    AddRule(const char* selector, const char* handler,
            const std::vector<std::pair<int, std::string>>& keys, std::vector<Case> cases);
};

/// The first two cases of every rule.
std::vector<Case> samples();

// Names that the cases share

/// The name holds what would be conversions in a format.
inline const std::string kL3 = "/config/interface/l3{vlan%s%n}";
inline const std::string kIpv4Instance = Request().node;
inline const std::string kIpv6Instance = instance("l3-vlan%s%n", "ipv6", 5);

inline const Calls kOpenSession = {
    Calls("qelconfd_instance_get").fails_unseen(ok()),
    Calls("QelConfdCdbSessionBase flag true").fails_unseen(ok()),
};
inline const Calls kSocket = "QelConfdCdbSessionBase::Socket";
inline const Calls kCloseSession = "~QelConfdCdbSessionBase";
inline const Calls kSetError = "confd_trans_seterr";
inline const Calls kNoCalls(std::initializer_list<Calls>{});
/// What lists the keys of `list`: one answer for each key, given when that cannot be printed, and
/// one for when the list cannot be walked, or not to its end.
Calls listing(const std::string& list, const std::vector<Answer>& unprinted,
              const Answer& unlisted);

/// A password as it is stored with the host's key of encrypted leaves, which is always the same.
std::string stored(const std::string& password);

// Delivering a case

struct Outcome {
    std::string answer;
    Lines calls;
};

/// A request ready to be delivered, any number of times.
struct Delivery {
    explicit Delivery(const Case& one);

    /// Delivers it, with `hook` asked how each operation answers and allocation `failing` failing.
    /// Expects that every session and cursor is released.
    Outcome run(const local_platform::CallHook& hook = {}, std::size_t failing = 0);

    /// Gives the key at `place` a type that no rule expects.
    void spoil(int place) { (place == kNewValue ? newval : kp.v[place][0]).type = C_INT32; }

    std::string selector;
    PlatformAnswers told;
    local_platform::DataTree candidate;
    local_platform::Instance instance;
    confd_hkeypath_t kp{};
    confd_value_t newval{};
};

/// Whether `call` ends a session or a cursor.
bool is_release(const std::string& call);

/// This binary's operator new counts the calling thread's allocations here.
struct AllocationCounter {
    bool counting = false;
    std::size_t failing = 0;  ///< the one that fails; none for 0
    std::size_t made = 0;
};
inline thread_local AllocationCounter allocations;
