#include "hook.h"

#include <string>
#include <utility>

namespace local_platform {
namespace {

thread_local const CallHook* current_hook = nullptr;
thread_local std::string last_error;
thread_local std::string model_misfit;

}  // namespace

ScopedCallHook::ScopedCallHook(CallHook hook) : hook_(std::move(hook)), outer_(current_hook) {
    current_hook = &hook_;
}

ScopedCallHook::~ScopedCallHook() {
    current_hook = outer_;
}

std::optional<Answer> ask_hook(const Call& call) {
    return current_hook == nullptr ? std::nullopt : (*current_hook)(call);
}

int fail(std::string_view reason, std::string_view path, bool of_model) {
    last_error = std::string(reason).append(path.empty() ? "" : ": ").append(path);
    if (of_model && model_misfit.empty()) {
        model_misfit = last_error;
    }
    return CONFD_ERR;
}

std::string take_model_misfit() {
    return std::exchange(model_misfit, {});
}

}  // namespace local_platform

const char* confd_lasterr(void) {
    const auto answer = local_platform::ask_hook({"confd_lasterr", -1, {}});
    return answer ? answer->text : local_platform::last_error.c_str();
}
