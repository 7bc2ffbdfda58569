#include <algorithm>
#include <optional>

#include "confd_lib.h"
#include "hook.h"
#include "keypath.h"
#include "platform_error.h"
#include "schema_node.h"
#include "value_text.h"

namespace local_platform {
namespace {

/// The leaf that gives the type of a list's key `index`; null for a keypath made without a model.
const SchemaNode* key_leaf(const confd_value_t& tag, std::size_t index) {
    if (tag.type != C_XMLTAG || index >= tag.val.xmltag->keys.size()) {
        return nullptr;
    }
    const int position = tag.val.xmltag->child_index(tag.val.xmltag->keys[index]);
    return position < 0 ? nullptr : &tag.val.xmltag->children[static_cast<std::size_t>(position)];
}

/// The text of a key that may hold any character; nothing for a number or an address.
std::optional<std::string_view> free_text(const confd_value_t& key, const SchemaNode* leaf) {
    if (key.type == C_BUF) {
        return text_of(key);
    }
    return key.type == C_ENUM_VALUE ? enum_label(key.val.enumvalue, leaf) : std::nullopt;
}

void append_quoted(BoundedText& out, std::string_view text) {
    out.append("\"");
    for (const char& c : text) {
        if (c == '"' || c == '\\') {
            out.append("\\");
        }
        out.append({&c, 1});
    }
    out.append("\"");
}

/// The keys of the entry at `element`, whose list's tag is `tag`.
void append_keys(BoundedText& out, const confd_value_t (&element)[MAXKEYLEN],
                 const confd_value_t& tag) {
    bool quoted = false;
    std::size_t count = 0;
    for (; count < MAXKEYLEN && element[count].type != C_NOEXISTS; ++count) {
        const auto text = free_text(element[count], key_leaf(tag, count));
        quoted = quoted || (text && !is_addressable(*text));
    }
    for (std::size_t i = 0; i < count; ++i) {
        out.append(i > 0 ? " " : quoted ? "[" : "{");
        const auto text = free_text(element[i], key_leaf(tag, i));
        if (!text) {
            out.append(quoted ? "\"" : "");
            append_value(out, element[i]);
            out.append(quoted ? "\"" : "");
        } else if (quoted) {
            append_quoted(out, *text);
        } else {
            out.append(*text);
        }
    }
    out.append(quoted ? "]" : "}");
}

/// What `print` appends, at any length.
template <typename Print>
std::string whole_text(Print print) {
    BoundedText measure(nullptr, 0);
    print(measure);
    std::string text(static_cast<std::size_t>(measure.finish()), '\0');
    BoundedText out(text.data(), text.size() + 1);
    print(out);
    out.finish();
    return text;
}

void append_keypath(BoundedText& out, const confd_hkeypath_t& kp) {
    const confd_value_t no_tag{};
    for (int i = kp.len - 1; i >= 0; --i) {
        if (kp.v[i][0].type == C_XMLTAG) {
            out.append("/");
            out.append(kp.v[i][0].val.xmltag->name);
        } else {
            append_keys(out, kp.v[i], i + 1 < kp.len ? kp.v[i + 1][0] : no_tag);
        }
    }
}

bool is_printable(const confd_hkeypath_t& kp) {
    return kp.len > 0 && kp.len <= MAXDEPTH;
}

}  // namespace

std::string keypath_text(const confd_hkeypath_t& kp) {
    if (!is_printable(kp)) {
        return {};
    }
    return whole_text([&](BoundedText& out) { append_keypath(out, kp); });
}

std::string keys_text(const std::vector<std::string_view>& keys) {
    confd_value_t element[MAXKEYLEN] = {};
    if (keys.empty() || keys.size() >= MAXKEYLEN) {
        throw PlatformError("a list entry has 1 to " + std::to_string(MAXKEYLEN - 1) + " keys");
    }
    std::transform(keys.begin(), keys.end(), element, text_value);
    return whole_text([&](BoundedText& out) { append_keys(out, element, {}); });
}

}  // namespace local_platform

using local_platform::serve;

int confd_pp_kpath(char* buf, int bufsiz, const confd_hkeypath_t* kp) {
    return serve("confd_pp_kpath", -1, std::string_view(), [&] {
        auto out = local_platform::BoundedText::empty_in(buf, bufsiz);
        if (!local_platform::is_printable(*kp)) {
            return local_platform::fail("a keypath without elements, or with too many");
        }
        local_platform::append_keypath(out, *kp);
        return out.finish();
    });
}
