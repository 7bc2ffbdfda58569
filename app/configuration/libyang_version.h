/// Where the versions of libyang differ: 2.1 on Debian 12, 3 on Debian 13. What a version has is
/// seen from its types, since the changes came one by one.
#pragma once

#include <libyang/libyang.h>
#include <libyang/version.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

/// Whether the entries of a list come in the order of their keys, not in that of the file.
constexpr bool kSortsEntries = LY_VERSION_MAJOR >= 3;

/// Where libyang found an error; empty and 0 where it does not say.
struct ErrorPlace {
    std::string path;
    bool is_schema = false;  ///< a path of the model, not of data
    uint64_t line = 0;
};

/// Of version 3, which says all of it in members of its own.
template <typename Item>
auto place_of(const Item& error, int /*preferred*/) -> decltype(error.data_path, ErrorPlace()) {
    const bool is_schema = error.data_path == nullptr;
    const char* const path = is_schema ? error.schema_path : error.data_path;
    return {path == nullptr ? "" : path, is_schema, error.line};
}

/// Of version 2, from a text such as: Schema location "/m:node", line number 12.
template <typename Item>
ErrorPlace place_of(const Item& error, long /*otherwise*/) {
    const std::string_view text = error.path == nullptr ? "" : error.path;
    ErrorPlace place;
    place.is_schema = text.substr(0, 1) == "S";
    const std::size_t open = text.find('"');
    const std::size_t close = text.rfind('"');
    if (open < close) {
        place.path = text.substr(open + 1, close - open - 1);
    }
    constexpr std::string_view kLineNumber = "ine number ";
    if (const std::size_t found = text.find(kLineNumber); found != std::string_view::npos) {
        place.line = std::strtoull(text.data() + found + kLineNumber.size(), nullptr, 10);
    }
    return place;
}

/// A statement below a use of an extension. Its name has the prefix of the module.
struct Substatement {
    std::string_view name;
    const char* argument;
    std::vector<Substatement> below;
};

/// Of version 2, to which they are statements that it does not know.
inline std::vector<Substatement> substatements(const lysp_stmt* first) {
    std::vector<Substatement> all;
    for (; first != nullptr; first = first->next) {
        all.push_back({first->stmt, first->arg, substatements(first->child)});
    }
    return all;
}
template <typename Extension>
std::vector<Substatement> substatements(const Extension& use, long /*otherwise*/) {
    return substatements(use.child);
}

/// Of version 3, to which they are uses of extensions themselves.
template <typename Extension>
auto substatements(const Extension& use, int /*preferred*/)
    -> decltype(use.exts, std::vector<Substatement>()) {
    std::vector<Substatement> all;
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(use.exts, i) {
        all.push_back({use.exts[i].name, use.exts[i].argument, substatements(use.exts[i], 0)});
    }
    return all;
}

/// Makes an empty anydata or anyxml node with `make`, which is lyd_new_any() of version 2.
inline LY_ERR new_any(LY_ERR (*make)(lyd_node*, const lys_module*, const char*, const void*,
                                     ly_bool, LYD_ANYDATA_VALUETYPE, ly_bool, lyd_node**),
                      lyd_node* parent, const lysc_node& schema, lyd_node*& made) {
    return make(parent, schema.module, schema.name, nullptr, 1, LYD_ANYDATA_DATATREE, 0, &made);
}
/// The same of version 3.
inline LY_ERR new_any(LY_ERR (*make)(lyd_node*, const lys_module*, const char*, const void*,
                                     LYD_ANYDATA_VALUETYPE, uint32_t, lyd_node**),
                      lyd_node* parent, const lysc_node& schema, lyd_node*& made) {
    return make(parent, schema.module, schema.name, nullptr, LYD_ANYDATA_DATATREE, 0, &made);
}
