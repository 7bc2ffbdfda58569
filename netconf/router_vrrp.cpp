/// The module that netconfd loads for router-vrrp: it has the plug-in check every commit.
#include <yuma/agt/agt_commit_validate.h>
#include <yuma/agt/agt_util.h>
#include <yuma/ncx/cfg.h>
#include <yuma/ncx/log.h>
#include <yuma/ncx/ncxmod.h>
#include <yuma/ncx/rpc_err.h>

#include "checking/requests.h"
#include "files/key_file.h"
#include "server_schema.h"

using local_platform::DataTree;

namespace {

const auto* const kModule = reinterpret_cast<const xmlChar*>("router-vrrp");

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// What is loaded once for all commits.
struct Checker {
    local_platform::Host host{variable("VRRP_VALID_PLUGIN")};
    ServerSchema schema = read_schema();
    std::optional<local_platform::CryptoKey> key;
};

std::unique_ptr<Checker> checker;

/// Tells the client of `message`; `app_tag` is kept by the server until it has sent its reply.
void tell(ses_cb_t* session, xml_msg_hdr_t* message, rpc_err_sev_t severity, const char* app_tag,
          const std::string& text, const void* at = nullptr) {
    ncx_errinfo_t info{};
    info.error_app_tag = reinterpret_cast<xmlChar*>(const_cast<char*>(app_tag));
    info.error_message = reinterpret_cast<xmlChar*>(const_cast<char*>(text.c_str()));
    agt_record_error_errinfo(session, message, NCX_LAYER_CONTENT, ERR_NCX_OPERATION_FAILED, nullptr,
                             NCX_NT_NONE, nullptr, at == nullptr ? NCX_NT_NONE : NCX_NT_VAL,
                             const_cast<void*>(at), &info);
    if (auto* const told = reinterpret_cast<rpc_err_rec_t*>(dlq_lastEntry(&message->errQ))) {
        told->error_severity = severity;
    }
}

/// Tells every finding of `candidate`; an error refuses it.
status_t check(ses_cb_t* session, xml_msg_hdr_t* message, const val_value_t& candidate) {
    const ServerSchema& schema = checker->schema;
    const ServerData data = read_data(schema, candidate);
    const DataTree running = read_data(schema, *cfg_get_config_id(NCX_CFGID_RUNNING)->root).tree;
    const local_platform::Instance instance(data.tree, running, checker->key);
    status_t result = NO_ERR;
    for (const Request& request : requests_of(schema.rules, checker->host, data.tree, running)) {
        const local_platform::Response response = ask(checker->host, instance, request);
        if (response.result == CONFD_OK) {
            continue;
        }
        const bool is_warning = response.result == CONFD_VALIDATION_WARN;
        result = is_warning ? result : ERR_NCX_OPERATION_FAILED;
        tell(session, message, is_warning ? RPC_ERR_SEV_WARNING : RPC_ERR_SEV_ERROR,
             request.rule->name.c_str(), message_of(response, *request.node),
             data.values.at(request.node));
    }
    return result;
}

status_t validate(ses_cb_t* session, xml_msg_hdr_t* message, val_value_t* candidate) {
    try {
        return check(session, message, *candidate);
    } catch (const std::exception& error) {
        tell(session, message, RPC_ERR_SEV_ERROR, "not-checked", error.what());
        return ERR_NCX_OPERATION_FAILED;
    }
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

status_t y_router_vrrp_init(const xmlChar* /*module*/, const xmlChar* /*revision*/) {
    ncx_module_t* loaded = nullptr;
    const status_t result =
        ncxmod_load_module(kModule, nullptr, &agt_get_profile()->agt_savedevQ, &loaded);
    return result == NO_ERR ? agt_commit_validate_register(kModule, validate) : result;
}

/// The server does not start when what checks its commits cannot be loaded.
status_t y_router_vrrp_init2() {
    try {
        checker = std::make_unique<Checker>();
        if (const std::string file = variable("VRRP_VALID_KEY_FILE"); !file.empty()) {
            checker->key = read_key_file(file);
        }
        return NO_ERR;
    } catch (const std::exception& error) {
        log_error("\nError: router-vrrp: %s\n", error.what());
        return ERR_NCX_OPERATION_FAILED;
    }
}

void y_router_vrrp_cleanup() {
    agt_commit_validate_unregister(kModule);
    checker.reset();
}
}
#pragma GCC visibility pop
