/// Watching and answering platform operations.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "confd_lib.h"

namespace local_platform {

/// One call of a platform operation. The views last for the call.
struct Call {
    std::string_view operation;
    int socket = -1;            ///< -1 for an operation without one
    std::string_view argument;  ///< the path, or confd_trans_seterr()'s message; empty without one
    bool flag = false;          ///< QelConfdCdbSessionBase's third argument
};

/// What an operation answers instead of doing its work; it writes nothing to its out-values and
/// buffers, so that a caller who reads them sees what it put there; a cursor is left at no entry.
struct Answer {
    int result = CONFD_OK;       ///< for an operation that returns a pointer, CONFD_OK or null
    const char* text = nullptr;  ///< confd_lasterr()'s answer
};

/// Sees every operation before it runs, and lets it run, answers in its place, or throws through it
/// (never through ~QelConfdCdbSessionBase).
using CallHook = std::function<std::optional<Answer>(const Call&)>;

/// Puts `hook` before every operation of the calling thread, until it goes. The innermost one
/// counts.
class ScopedCallHook {
  public:
    explicit ScopedCallHook(CallHook hook);
    ScopedCallHook(const ScopedCallHook&) = delete;
    ScopedCallHook& operator=(const ScopedCallHook&) = delete;
    ~ScopedCallHook();

  private:
    CallHook hook_;
    const CallHook* outer_;
};

/// The first read of the calling thread since it last asked that could not be answered for what the
/// model is: it has no such node, or one of another kind or type. "what is wrong: PATH"; empty
/// without one. What a caller makes of such a failed read, a model that fits would not allow.
std::string take_model_misfit();

/// The hook's word on one operation; nothing when there is no hook. For the platform's own
/// libraries.
std::optional<Answer> ask_hook(const Call& call);

}  // namespace local_platform
