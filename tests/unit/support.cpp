#include "support.h"

#include <fstream>

#include "keypath.h"

using namespace local_platform;

namespace {

std::string text_of(const Call& call) {
    const bool has_path = !call.argument.empty() && call.operation != "confd_trans_seterr";
    return std::string(call.operation) + (has_path ? " " + std::string(call.argument) : "");
}

/// How many sessions and cursors are left. One whose opening threw was never there.
int unreleased(const Lines& calls, bool thrown) {
    int open = 0;
    for (const std::string& call : calls) {
        const bool opens = call == "QelConfdCdbSessionBase" || call.rfind("maapi_init", 0) == 0;
        const bool threw = thrown && &call == &calls.back();
        open += (opens && !threw ? 1 : 0) - (is_release(call) ? 1 : 0);
    }
    return open;
}

std::optional<Answer> told_answer(const Lines& told, const Call& call) {
    for (const std::string& one : told) {
        if (one.rfind(std::string(call.operation) + " ", 0) == 0) {
            return Answer{std::stoi(one.substr(call.operation.size()))};
        }
    }
    return std::nullopt;
}

DataTree candidate_of(const Request& request) {
    Lines lines = request.candidate;
    if (make_tree(lines).find(request.node) == nullptr) {
        lines.push_back(request.node);
    }
    return make_tree(lines);
}

}  // namespace

bool is_release(std::string_view call) {
    return call == "~QelConfdCdbSessionBase" || call == "maapi_destroy_cursor";
}

std::string expand(std::string text) {
    static const std::pair<std::string, std::string> kShort[] = {
        {"$ADDRESS", "$I/ipv4/address/ip"},
        {"$LINKLOCAL", "/address-link-local/link-local"},
        {"$PASSWORD", "$V/authentication/simple-text-password"},
        {"$VLAN", "$I/lower-layer-if/vlan"},
        {"$I", "/config/interface/l3{vlan10}"},
        {"$V", "$R{l3-vlan10}$4{5}"},
        {"$W", "$R{l3-vlan10}$6{5}"},
        {"$R", "/router/vrrp/interface"},
        {"$4", "/address-family{ipv4}/vr-id"},
        {"$6", "/address-family{ipv6}/vr-id"},
        {"$key", "maapi_get_next; confd_pp_value"},
        {"$end", "maapi_get_next; maapi_destroy_cursor"},
        {"$open", "qelconfd_instance_get; QelConfdCdbSessionBase"},
        {"$socket", "QelConfdCdbSessionBase::Socket"},
        {"$close", "~QelConfdCdbSessionBase"},
        {"$error", "confd_trans_seterr"},
        {"$NUL", std::string(1, '\0')},
        {"$k64", std::string(64, 'k')},
        {"$k232", std::string(232, 'k')},
        {"$k300", std::string(300, 'k')},
        {"$k6104", std::string(6104, 'k')},
        {"$k8191", std::string(8191, 'k')},
        {"$tampered", encrypt(test_key(), "abc").replace(20, 4, "AAAA")},
        {"$foreign", encrypt(CryptoKey(), "abc")}};
    for (const auto& [mark, meaning] : kShort) {
        for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos;) {
            text.replace(at, mark.size(), meaning);
        }
    }
    return text;
}

Lines split(std::string_view text, std::string_view separator) {
    Lines pieces;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        const std::string_view piece = text.substr(0, end);
        const std::size_t first = std::min(piece.find_first_not_of(' '), end);
        pieces.emplace_back(piece.substr(first, piece.find_last_not_of(' ') + 1 - first));
        text.remove_prefix(std::min(end + separator.size(), text.size()));
    }
    return pieces;
}

std::string test_data(const std::string& name) {
    std::ifstream file(TEST_TABLES_DIR "/" + name);
    EXPECT_TRUE(file.is_open()) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Lines> table(std::string_view text) {
    std::vector<Lines> rows;
    std::string row;
    for (const std::string& line : split(text, "\n")) {
        row += (row.empty() ? "" : " ") + line;
        if (row.rfind("# ", 0) == 0) {
            row.clear();
        } else if (!row.empty() && row.back() != ';') {
            rows.push_back(split(expand(std::exchange(row, {})), "|"));
        }
    }
    return rows;
}

const CryptoKey& test_key() {
    static const CryptoKey key;
    return key;
}

const YangModel& test_model() {
    static const YangModel model(TEST_YANG_DIR);
    return model;
}

DataTree make_tree(const Lines& lines) {
    const std::string mark = "encrypt(";
    TreeBuilder builder(test_model().schema());
    for (const std::string& line : lines) {
        const std::size_t path_end = std::min(line.find(" = "), line.size());
        std::string value = path_end == line.size() ? "" : line.substr(path_end + 3);
        if (value.rfind(mark, 0) == 0) {
            value = encrypt(test_key(), value.substr(mark.size(), value.size() - mark.size() - 1));
        }
        builder.set(expand(line.substr(0, path_end)), value);
    }
    return std::move(builder).build();
}

std::vector<Request> requests(const std::string& name) {
    const std::string socket = "qelconfd_maapi_socket_get";
    std::vector<Request> made;
    for (Lines row : table(test_data(name))) {
        row.resize(7);
        row[5] = row[5].empty() ? "" : row[5] == "none" ? socket : socket + "; " + row[5];
        made.push_back({row[0].empty() ? made.back().selector : row[0], row[1], split(row[2], ", "),
                        split(row[3], ", "), row[4], row[5], split(row[6], ", ")});
    }
    return made;
}

const std::vector<Request>& samples() {
    static const std::vector<Request> kSamples = requests("samples.txt");
    return kSamples;
}

Delivery::Delivery(const Request& request)
    : request(request),
      candidate(candidate_of(request)),
      instance(candidate, make_tree(request.running),
               request.told == Lines{"no-key"} ? std::nullopt : std::optional(test_key())) {
    const Node* const node = candidate.find(request.node);
    fill_keypath(*node, kp);
    newval = node->value;
}

Outcome Delivery::run(const CallHook& hook, std::size_t failing) {
    Outcome outcome;
    Lines messages;
    confd_trans_ctx tctx{instance.thandle(), instance.handle(), request.selector.data(), &messages};
    const ScopedCallHook recorder([&](const Call& call) {
        allocations.counting = false;
        outcome.calls.push_back(text_of(call));
        outcome.list += (outcome.calls.size() == 1 ? "" : "; ") + outcome.calls.back();
        const auto answer = hook ? hook(call) : told_answer(request.told, call);
        allocations.counting = true;
        return answer;
    });
    bool thrown = false;
    allocations = {true, failing, 0};
    try {
        const int result = validate(&tctx, &kp, &newval);
        allocations.counting = false;
        outcome.verdict = result == CONFD_OK ? "ok" : result == CONFD_ERR ? "error" : "?";
        outcome.verdict = result == CONFD_VALIDATION_WARN ? "warning" : outcome.verdict;
    } catch (const std::exception& error) {
        allocations.counting = false;
        thrown = true;
        outcome.verdict = std::string("thrown: ") + error.what();
    }
    for (const std::string& message : messages) {
        outcome.verdict += ": " + message;
    }
    EXPECT_EQ(unreleased(outcome.calls, thrown), 0) << outcome.list;
    return outcome;
}
