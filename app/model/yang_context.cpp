#include "model/yang_context.h"

#include <libyang/libyang.h>

#include <algorithm>
#include <filesystem>
#include <future>

#include "errors/input_error.h"
#include "model/libyang_log.h"

namespace {

/// The names of the modules in `dir`, in alphabetical order.
std::vector<std::string> module_names(const std::string& dir) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(dir, error)) {
        const std::string stem = entry.path().stem().string();
        if (entry.path().extension() == ".yang") {
            names.push_back(stem.substr(0, stem.find('@')));
        }
    }
    if (error) {
        throw InputError(dir + ": the folder of YANG modules cannot be read: " + error.message());
    }
    if (names.empty()) {
        throw InputError(dir + ": has no YANG module; name the folder with --yang-dir");
    }
    std::sort(names.begin(), names.end());
    // Several revisions of a module are one module.
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

}  // namespace

void ContextDeleter::operator()(ly_ctx* context) const {
    ly_ctx_destroy(context);
}

YangModules load_modules(const std::string& yang_dir) {
    ly_log_options(LY_LOSTORE);
    const std::vector<std::string> names = module_names(yang_dir);
    ly_ctx* context = nullptr;
    // Only that folder: libyang would take a newer module that lies about in the working one.
    constexpr uint16_t kOptions =
        LY_CTX_SET_PRIV_PARSED | LY_CTX_NO_YANGLIBRARY | LY_CTX_DISABLE_SEARCHDIR_CWD;
    if (ly_ctx_new(yang_dir.c_str(), kOptions, &context) != LY_SUCCESS) {
        throw InputError(yang_dir + ": the folder of YANG modules cannot be used");
    }
    YangModules loaded{YangContext(context), {}};
    const std::string folder = yang_dir + "/";
    for (const std::string& name : names) {
        const char* every_feature[] = {"*", nullptr};
        loaded.modules.push_back(ly_ctx_load_module(context, name.c_str(), nullptr, every_feature));
        if (loaded.modules.back() == nullptr) {
            std::string file = folder + name;
            throw InputError(schema_error(*context, file.append(".yang")));
        }
    }
    return loaded;
}

ContextPool::ContextPool(std::string yang_dir)
    : yang_dir_(std::move(yang_dir)),
      first_(load_modules(yang_dir_)),
      free_{first_.context.get()} {}

void ContextPool::GiveBack::operator()(ly_ctx* context) const {
    const std::lock_guard lock(pool->mutex_);
    pool->free_.push_back(context);
}

void ContextPool::load_for(std::size_t threads) {
    if (threads < 2) {
        return;  // the first is there
    }
    std::vector<std::future<Borrowed>> loading(threads);
    for (std::future<Borrowed>& context : loading) {
        context = std::async([this] { return borrow(); });
    }
    std::vector<Borrowed> loaded;
    loaded.reserve(threads);  // given back together, so that each is another one
    for (std::future<Borrowed>& context : loading) {
        loaded.push_back(context.get());
    }
}

ContextPool::Borrowed ContextPool::borrow() {
    {
        const std::lock_guard lock(mutex_);
        if (!free_.empty()) {
            ly_ctx* const context = free_.back();
            free_.pop_back();
            return Borrowed(context, GiveBack{this});
        }
    }
    YangContext loaded = load_modules(yang_dir_).context;
    const std::lock_guard lock(mutex_);
    free_.reserve(others_.size() + 2);  // so that all can be given back
    others_.push_back(std::move(loaded));
    return Borrowed(others_.back().get(), GiveBack{this});
}
