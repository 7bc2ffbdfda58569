#include "bare_calls.h"

#include <confd_maapi.h>

#include <cstring>
#include <optional>
#include <set>
#include <stdexcept>

#include "call_hook.h"

using local_platform::Call;

/// What the calls work on, and what one leaves for the next.
struct BareCalls::Operands {
    RuleRequest& request;
    int maapi = -1;
    QelConfdInterface* framework = nullptr;
    std::optional<QelConfdCdbSessionBase> session = {};
    int cdb = -1;
    maapi_cursor cursor = {};
    int number = 0;
    confd_ipv4_prefix ipv4 = {};
    confd_ipv6_prefix ipv6 = {};
    char text[8192] = {};

    int thandle() const { return request.tctx.thandle; }
    qelconfd_t* handle() const { return static_cast<qelconfd_t*>(request.tctx.vcb_opaque); }
    const char* encrypted() const {
        return reinterpret_cast<const char*>(request.newval.val.buf.ptr);
    }
};

struct BareCalls::Operation {
    const char* name;
    void (*make)(Operands& on, const char* path);
};

// The arguments of the operations, in one line each, are easier to compare unwrapped.
// clang-format off
const BareCalls::Operation BareCalls::kOperations[] = {
    {"qelconfd_maapi_socket_get", [](Operands& on, const char*) { on.maapi = qelconfd_maapi_socket_get(on.handle()); }},
    {"qelconfd_instance_get", [](Operands& on, const char*) { on.framework = qelconfd_instance_get(on.handle()); }},
    {"QelConfdCdbSessionBase", [](Operands& on, const char*) { on.session.emplace(on.framework, CDB_RUNNING, true); }},
    {"~QelConfdCdbSessionBase", [](Operands& on, const char*) { on.session.reset(); }},
    {"QelConfdCdbSessionBase::Socket", [](Operands& on, const char*) { on.cdb = on.session->Socket(); }},
    {"maapi_exists", [](Operands& on, const char* path) { maapi_exists(on.maapi, on.thandle(), "%s", path); }},
    {"maapi_num_instances", [](Operands& on, const char* path) { maapi_num_instances(on.maapi, on.thandle(), "%s", path); }},
    {"maapi_get_int32_elem", [](Operands& on, const char* path) { maapi_get_int32_elem(on.maapi, on.thandle(), &on.number, "%s", path); }},
    {"maapi_get_bool_elem", [](Operands& on, const char* path) { maapi_get_bool_elem(on.maapi, on.thandle(), &on.number, "%s", path); }},
    {"maapi_get_ipv4_and_plen_elem", [](Operands& on, const char* path) { maapi_get_ipv4_and_plen_elem(on.maapi, on.thandle(), &on.ipv4, "%s", path); }},
    {"maapi_get_ipv6_and_plen_elem", [](Operands& on, const char* path) { maapi_get_ipv6_and_plen_elem(on.maapi, on.thandle(), &on.ipv6, "%s", path); }},
    {"maapi_init_cursor", [](Operands& on, const char* path) { maapi_init_cursor(on.maapi, on.thandle(), &on.cursor, "%s", path); }},
    {"maapi_get_next", [](Operands& on, const char*) { maapi_get_next(&on.cursor); }},
    {"maapi_destroy_cursor", [](Operands& on, const char*) { maapi_destroy_cursor(&on.cursor); }},
    {"maapi_install_crypto_keys", [](Operands& on, const char*) { maapi_install_crypto_keys(on.maapi); }},
    {"confd_decrypt", [](Operands& on, const char*) { confd_decrypt(on.encrypted(), static_cast<int>(on.request.newval.val.buf.size), on.text); }},
    {"confd_pp_value", [](Operands& on, const char*) { confd_pp_value(on.text, 64, &on.cursor.keys[0]); }},
    {"confd_pp_kpath", [](Operands& on, const char*) { confd_pp_kpath(on.text, 256, &on.request.kp); }},
    {"cdb_exists", [](Operands& on, const char* path) { cdb_exists(on.cdb, "%s", path); }},
    {"cdb_get_int32", [](Operands& on, const char* path) { cdb_get_int32(on.cdb, &on.number, "%s", path); }},
    {"cdb_get_ipv4_and_plen", [](Operands& on, const char* path) { cdb_get_ipv4_and_plen(on.cdb, &on.ipv4, "%s", path); }},
};
// clang-format on

BareCalls::BareCalls(RuleRequest& request) : operands_(new Operands{request}) {
    const auto note = [this](const Call& call) -> std::optional<local_platform::Answer> {
        for (const Operation& operation : kOperations) {
            if (call.operation == operation.name) {
                calls_.push_back({&operation, std::string(call.argument)});
                return std::nullopt;
            }
        }
        throw std::runtime_error("unexpected call of " + std::string(call.operation));
    };
    const local_platform::ScopedCallHook hook(note);
    make_request(request);
}

BareCalls::BareCalls(BareCalls&& other) noexcept = default;
BareCalls::~BareCalls() = default;

void BareCalls::make() {
    for (const BareCall& call : calls_) {
        call.operation->make(*operands_, call.path.c_str());
    }
}

std::size_t BareCalls::socket_calls() const {
    std::size_t count = 0;
    for (const BareCall& call : calls_) {
        const bool goes_out = std::strncmp(call.operation->name, "maapi_", 6) == 0 ||
                              std::strncmp(call.operation->name, "cdb_", 4) == 0;
        count += goes_out ? 1 : 0;
    }
    return count;
}

std::size_t BareCalls::paths() const {
    std::set<std::string> paths;
    for (const BareCall& call : calls_) {
        if (!call.path.empty()) {
            paths.insert(call.path);
        }
    }
    return paths.size();
}
