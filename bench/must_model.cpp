#include "must_model.h"

#include <libyang/libyang.h>

#include <stdexcept>

void MustModel::Deleter::operator()(ly_ctx* context) const {
    ly_ctx_destroy(context);
}

void MustModel::Deleter::operator()(lyd_node* data) const {
    lyd_free_all(data);
}

MustModel::MustModel(const std::string& yang_dir, const std::string& module,
                     const std::string& configuration) {
    // It says on each evaluation of some forms that it cannot tell which node they mean.
    ly_log_options(LY_LOSTORE_LAST);
    ly_ctx* context = nullptr;
    if (ly_ctx_new(yang_dir.c_str(), LY_CTX_NO_YANGLIBRARY, &context) != LY_SUCCESS) {
        throw std::runtime_error("no YANG context");
    }
    context_.reset(context);
    ly_ctx_set_searchdir(context, VRRP_BENCH_YANG_DIR);
    for (const std::string& name :
         {std::string("l3-interface"), std::string("router-vrrp"), module}) {
        if (!name.empty() &&
            ly_ctx_load_module(context, name.c_str(), nullptr, nullptr) == nullptr) {
            throw std::runtime_error(name + ": " + ly_errmsg(context));
        }
    }
    lyd_node* data = nullptr;
    if (lyd_parse_data_mem(context, configuration.c_str(), LYD_JSON,
                           LYD_PARSE_ONLY | LYD_PARSE_STRICT, 0, &data) != LY_SUCCESS) {
        throw std::runtime_error(ly_errmsg(context));
    }
    data_.reset(data);
}

bool MustModel::validate() {
    lyd_node* data = data_.release();
    const LY_ERR result = lyd_validate_all(&data, context_.get(),
                                           LYD_VALIDATE_PRESENT | LYD_VALIDATE_NO_STATE, nullptr);
    data_.reset(data);
    return result == LY_SUCCESS;
}
