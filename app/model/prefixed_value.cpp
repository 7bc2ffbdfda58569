#include "model/prefixed_value.h"

#include <libyang/libyang.h>
#include <libyang/plugins_types.h>

#include <memory>
#include <new>

#include "model/leaf_value.h"

namespace {

constexpr const char* kBlanks = " \t\r\n";

/// The bindings as one of libyang's sized arrays: their number lies before the first.
class PrefixArray {
  public:
    explicit PrefixArray(const BoundPrefixes& prefixes)
        : bytes_(
              new std::byte[sizeof(LY_ARRAY_COUNT_TYPE) + prefixes.size() * sizeof(lysc_prefix)]) {
        new (bytes_.get()) LY_ARRAY_COUNT_TYPE(prefixes.size());
        lysc_prefix* item = items();
        for (const auto& [prefix, module] : prefixes) {
            char* const text = prefix.empty() ? nullptr : const_cast<char*>(prefix.c_str());
            new (item++) lysc_prefix{text, module};
        }
    }

    lysc_prefix* items() const {
        return reinterpret_cast<lysc_prefix*>(bytes_.get() + sizeof(LY_ARRAY_COUNT_TYPE));
    }

  private:
    std::unique_ptr<std::byte[]> bytes_;
};

}  // namespace

bool may_have_prefixes(const lysc_node& leaf) {
    const lysc_type& type = type_of(leaf);
    return type.basetype == LY_TYPE_IDENT || type.basetype == LY_TYPE_INST ||
           type.basetype == LY_TYPE_UNION || type.plugin->store == lyplg_type_store_xpath10;
}

std::optional<std::string> with_module_names(const lysc_node& leaf, const std::string& value,
                                             const BoundPrefixes& prefixes) {
    const lysc_type& type = type_of(leaf);
    const ly_ctx* const context = leaf.module->ctx;
    const std::size_t begin = std::min(value.find_first_not_of(kBlanks), value.size());
    const std::string text = value.substr(begin, value.find_last_not_of(kBlanks) + 1 - begin);
    const PrefixArray array(prefixes);
    lyd_value stored{};
    ly_err_item* error = nullptr;
    const LY_ERR result =
        type.plugin->store(context, &type, text.data(), text.size(), 0, LY_VALUE_SCHEMA_RESOLVED,
                           array.items(), LYD_HINT_DATA, &leaf, &stored, nullptr, &error);
    ly_err_free(error);
    if (result != LY_SUCCESS && result != LY_EINCOMPLETE) {
        return is_value(leaf, text) ? std::nullopt : std::optional(value);
    }
    const std::string canonical = lyd_value_get_canonical(context, &stored);
    type.plugin->free(context, &stored);
    return canonical;
}
