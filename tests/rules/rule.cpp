#include "rule.h"

#include <algorithm>
#include <map>

#include "keypath.h"
#include "model.h"

#if __has_include(<valgrind/memcheck.h>)
#include <valgrind/memcheck.h>
#else
#define VALGRIND_MAKE_MEM_DEFINED(address, size) static_cast<void>(address)
#endif

using local_platform::CryptoKey;
using local_platform::DataTree;

namespace {

CryptoKey host_key() {
    return CryptoKey(std::array<unsigned char, CryptoKey::kSize>{});
}

const auto kModel = std::make_shared<const local_platform::SchemaNode>(vrrp_model());

DataTree candidate_of(const Case& one) {
    std::vector<Setting> settings = one.the<Candidate>();
    const std::string& node = one.the<Request>().node;
    if (tree_of(kModel, settings).find(node) == nullptr) {
        settings.push_back({node});
    }
    return tree_of(kModel, settings);
}

bool opens(const std::string& call) {
    return call.rfind("QelConfdCdbSessionBase flag", 0) == 0 ||
           call.rfind("maapi_init_cursor", 0) == 0;
}

constexpr std::size_t kStack = 1 << 15;

/// A buffer that a rule leaves uninitialised holds "xxx" then, and not what an earlier call left.
[[gnu::noinline]] void litter_stack() {
    char litter[kStack];
    for (std::size_t i = 0; i < sizeof litter; ++i) {
        litter[i] = i % 4 == 3 ? '\0' : 'x';
    }
    asm volatile("" : : "r"(litter) : "memory");
}

/// Whether what was called from here has left the start of a password in clear on the stack.
[[gnu::noinline]] bool has_left_password() {
    char left[kStack];
    asm volatile("" : : "r"(left) : "memory");
    static_cast<void>(VALGRIND_MAKE_MEM_DEFINED(left, sizeof left));
    return memmem(left, sizeof left, "Pa55wo", 6) != nullptr;
}

const std::map<int, std::string> kResults = {{CONFD_OK, "CONFD_OK"},
                                             {CONFD_ERR, "CONFD_ERR"},
                                             {CONFD_VALIDATION_WARN, "CONFD_VALIDATION_WARN"}};

}  // namespace

Lines Calls::lines() const {
    Lines lines;
    for (const Call& call : made) {
        lines.push_back(call.text);
    }
    return lines;
}

std::vector<RuleCases>& rules() {
    static std::vector<RuleCases> rules;
    return rules;
}

AddRule::AddRule(const char* selector, const char* handler,
                 const std::vector<std::pair<int, std::string>>& keys, std::vector<Case> cases) {
    for (Case& one : cases) {
        one.selector = selector;
    }
    rules().push_back({selector, handler, keys, std::move(cases)});
}

std::vector<Case> samples() {
    std::vector<Case> samples;
    for (const RuleCases& rule : rules()) {
        samples.insert(samples.end(), {rule.cases.at(0), rule.cases.at(1)});
    }
    return samples;
}

std::string instance(const std::string& interface_key, const std::string& family, int vr_id) {
    return "/router/vrrp/interface" + local_platform::keys_text({interface_key}) +
           "/address-family{" + family + "}/vr-id{" + std::to_string(vr_id) + "}";
}

Calls listing(const std::string& list, const std::vector<Answer>& unprinted,
              const Answer& unlisted) {
    const Calls next = "maapi_get_next " + list;
    Calls calls = {Calls("maapi_exists " + list).fails_unseen(unlisted),
                   Calls("maapi_init_cursor " + list).fails_unseen(unlisted)};
    for (const Answer& answer : unprinted) {
        const Calls print = "confd_pp_value " + list;
        calls = {calls, next.fails_unseen(unlisted), print.fails_unseen(answer)};
    }
    return {calls, next, "maapi_destroy_cursor " + list};
}

std::string stored(const std::string& password) {
    return local_platform::encrypt(host_key(), password);
}

bool is_release(const std::string& call) {
    return call[0] == '~' || call.rfind("maapi_destroy_cursor", 0) == 0;
}

Delivery::Delivery(const Case& one)
    : selector(one.selector),
      told(one.the<PlatformAnswers>()),
      candidate(candidate_of(one)),
      instance(candidate, tree_of(kModel, one.the<Running>()),
               one.the<CryptoKeys>().installed ? std::optional(host_key()) : std::nullopt) {
    const local_platform::Node* const node = candidate.find(one.the<Request>().node);
    fill_keypath(*node, kp);
    newval = node->value();
    if (one.the<WrongType>().place) {
        spoil(*one.the<WrongType>().place);
    }
}

Outcome Delivery::run(const local_platform::CallHook& hook, std::size_t failing) {
    Outcome outcome;
    Lines messages;
    std::string list;
    confd_trans_ctx tctx{};
    tctx.thandle = instance.thandle();
    tctx.vcb_opaque = instance.handle();
    tctx.validate_opaque = selector.data();
    tctx.messages = &messages;
    const local_platform::ScopedCallHook recorder([&](const local_platform::Call& call) {
        allocations.counting = false;
        const std::string operation(call.operation);
        std::string path(operation == "confd_trans_seterr" ? "" : call.argument);
        list = operation == "maapi_init_cursor" ? path : list;
        if (operation == "maapi_get_next" || operation == "confd_pp_value" ||
            operation == "maapi_destroy_cursor") {
            path = list;
        } else if (operation == "QelConfdCdbSessionBase") {
            path = call.flag ? "flag true" : "flag false";
        }
        const bool has_path = !path.empty() || operation.find("_exists") != std::string::npos;
        outcome.calls.push_back(operation + (has_path ? " " : "") + path);
        std::optional<local_platform::Answer> answer = hook ? hook(call) : std::nullopt;
        for (const auto& [name, result] : told) {
            answer = name == operation ? local_platform::Answer{result} : answer;
        }
        allocations.counting = true;
        return answer;
    });
    bool thrown = false;
    litter_stack();
    allocations = {true, failing, 0};
    try {
        const int result = validate(&tctx, &kp, &newval);
        EXPECT_FALSE(has_left_password());
        allocations.counting = false;
        outcome.answer = kResults.at(result);
    } catch (const std::exception& error) {
        EXPECT_FALSE(has_left_password());
        allocations.counting = false;
        thrown = true;
        outcome.answer = std::string("exception: ") + error.what();
    }
    for (const std::string& message : messages) {
        outcome.answer += ": " + message;
    }
    // One whose opening threw was never there.
    const Lines& calls = outcome.calls;
    EXPECT_EQ(std::count_if(calls.begin(), calls.end() - (thrown ? 1 : 0), opens),
              std::count_if(calls.begin(), calls.end(), is_release))
        << testing::PrintToString(calls);
    return outcome;
}
