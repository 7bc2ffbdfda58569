#include <algorithm>

#include "entry_keys.h"
#include "hook.h"
#include "keypath.h"
#include "platform_error.h"
#include "value_text.h"

namespace local_platform {
namespace {

std::string quoted(const std::string& key) {
    std::string text = "\"";
    for (const char c : key) {
        text.append(c == '"' || c == '\\' ? "\\" : "").append(1, c);
    }
    return text + "\"";
}

std::string bracketed(const std::vector<std::string>& keys) {
    const bool is_bare = std::all_of(keys.begin(), keys.end(), is_addressable);
    std::string text;
    for (const std::string& key : keys) {
        text += text.empty() ? is_bare ? "{" : "[" : " ";
        text += is_bare ? key : quoted(key);
    }
    return text + (is_bare ? "}" : "]");
}

/// The key texts of the entry at `element`, whose list's tag is `tag`.
std::vector<std::string> key_texts(const confd_value_t (&element)[MAXKEYLEN],
                                   const confd_value_t& tag) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < MAXKEYLEN && element[i].type != C_NOEXISTS; ++i) {
        const bool has_leaf = tag.type == C_XMLTAG && i < tag.val.xmltag->keys.size();
        const SchemaNode* const list = has_leaf ? tag.val.xmltag : nullptr;
        texts.push_back(
            value_text(element[i], has_leaf ? &list->children[key_position(*list, i)] : nullptr));
    }
    return texts;
}

bool is_printable(const confd_hkeypath_t& kp) {
    return kp.len > 0 && kp.len <= MAXDEPTH;
}

}  // namespace

void fill_keypath(const Node& node, confd_hkeypath_t& kp) {
    kp.len = 0;
    for (const Node* step = &node; step->parent != nullptr; step = step->parent) {
        if (kp.len == MAXDEPTH) {
            throw PlatformError("a path has more than " + std::to_string(MAXDEPTH) + " elements");
        }
        confd_value_t* const element = kp.v[kp.len++];
        element[0] = tag_of(*step->schema);
        const int count = step->is_entry() ? read_keys(*step, element) : 1;
        element[count].type = C_NOEXISTS;
    }
}

std::string keypath_text(const confd_hkeypath_t& kp) {
    std::string text;
    for (int i = is_printable(kp) ? kp.len - 1 : -1; i >= 0; --i) {
        const confd_value_t above = i + 1 < kp.len ? kp.v[i + 1][0] : confd_value_t{};
        text += kp.v[i][0].type == C_XMLTAG ? "/" + kp.v[i][0].val.xmltag->name
                                            : bracketed(key_texts(kp.v[i], above));
    }
    return text;
}

std::string keys_text(const std::vector<std::string>& keys) {
    if (keys.empty() || keys.size() >= MAXKEYLEN) {
        throw PlatformError("a list entry has 1 to " + std::to_string(MAXKEYLEN - 1) + " keys");
    }
    return bracketed(keys);
}

}  // namespace local_platform

int confd_pp_kpath(char* buf, int bufsiz, const confd_hkeypath_t* kp) {
    return local_platform::serve("confd_pp_kpath", -1, {}, [&] {
        const int length = local_platform::print(local_platform::keypath_text(*kp), buf, bufsiz);
        return length > 0 ? length
                          : local_platform::fail("a keypath without elements, or with too many");
    });
}
