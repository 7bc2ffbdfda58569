/// Where the versions of libyang differ: 2.1 on Debian 12, 3 on Debian 13.
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

inline ErrorPlace place_of(const ly_err_item& error) {
#if LY_VERSION_MAJOR < 3
    // A text such as: Schema location "/m:node", line number 12.
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
#else
    const bool is_schema = error.data_path == nullptr;
    const char* const path = is_schema ? error.schema_path : error.data_path;
    return {path == nullptr ? "" : path, is_schema, error.line};
#endif
}

/// A statement below a use of an extension. Its name has the prefix of the module.
struct Substatement {
    std::string_view name;
    const char* argument;
    std::vector<Substatement> below;
};

#if LY_VERSION_MAJOR < 3  // to which they are statements that it does not know
inline std::vector<Substatement> substatements(const lysp_stmt* first) {
    std::vector<Substatement> all;
    for (; first != nullptr; first = first->next) {
        all.push_back({first->stmt, first->arg, substatements(first->child)});
    }
    return all;
}
inline std::vector<Substatement> substatements(const lysp_ext_instance& use) {
    return substatements(use.child);
}
#else
inline std::vector<Substatement> substatements(const lysp_ext_instance& use) {
    std::vector<Substatement> all;
    LY_ARRAY_COUNT_TYPE i = 0;
    LY_ARRAY_FOR(use.exts, i) {
        all.push_back({use.exts[i].name, use.exts[i].argument, substatements(use.exts[i])});
    }
    return all;
}
#endif

/// Makes an empty anydata or anyxml node.
inline LY_ERR new_any(lyd_node* parent, const lysc_node& schema, lyd_node** made) {
#if LY_VERSION_MAJOR < 3
    return lyd_new_any(parent, schema.module, schema.name, nullptr, 1, LYD_ANYDATA_DATATREE, 0,
                       made);
#else
    return lyd_new_any(parent, schema.module, schema.name, nullptr, LYD_ANYDATA_DATATREE, 0, made);
#endif
}
