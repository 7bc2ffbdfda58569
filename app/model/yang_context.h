/// libyang's view of a folder of YANG modules.
#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

struct ly_ctx;
struct lys_module;

struct ContextDeleter {
    void operator()(ly_ctx* context) const;
};
using YangContext = std::unique_ptr<ly_ctx, ContextDeleter>;

/// A context with every module in a folder.
struct YangModules {
    YangContext context;
    std::vector<const lys_module*> modules;  ///< in the order of their names
};

/// Loads every module in `yang_dir`. Throws InputError.
YangModules load_modules(const std::string& yang_dir);

/// Contexts with the same modules, for threads that make data at the same time. A context keeps
/// the texts of all its data together, behind one lock: on a common one, threads would spend their
/// time waiting for each other.
class ContextPool {
  public:
    /// Throws InputError.
    explicit ContextPool(std::string yang_dir);

    /// The first context, which is there from the beginning.
    const YangModules& first() const { return first_; }

    struct GiveBack {
        ContextPool* pool;
        void operator()(ly_ctx* context) const;
    };
    using Borrowed = std::unique_ptr<ly_ctx, GiveBack>;

    /// A context that nobody else borrows meanwhile; loaded when there is none. Throws InputError.
    Borrowed borrow();

    /// Loads as many as `threads` will borrow at a time. Throws InputError.
    void load_for(std::size_t threads);

  private:
    std::string yang_dir_;
    YangModules first_;
    std::mutex mutex_;
    std::vector<YangContext> others_;
    std::vector<ly_ctx*> free_;
};
