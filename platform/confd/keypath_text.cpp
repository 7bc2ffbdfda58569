#include <algorithm>

#include "confd_lib.h"
#include "hook.h"
#include "keypath.h"
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

void append_typed_key(BoundedText& out, const confd_value_t& key, const SchemaNode* leaf) {
    if (key.type == C_BUF) {
        return append_key(out, {reinterpret_cast<const char*>(key.val.buf.ptr), key.val.buf.size});
    }
    append_value(out, key, leaf);
}

/// "{key1 key2}" of the entry at `element`, whose list's tag is `tag`.
void append_keys(BoundedText& out, const confd_value_t (&element)[MAXKEYLEN],
                 const confd_value_t& tag) {
    out.append("{");
    for (std::size_t i = 0; i < MAXKEYLEN && element[i].type != C_NOEXISTS; ++i) {
        if (i > 0) {
            out.append(" ");
        }
        append_typed_key(out, element[i], key_leaf(tag, i));
    }
    out.append("}");
}

int print_keypath(char* buffer, std::size_t size, const confd_hkeypath_t& kp) {
    BoundedText out(buffer, size);
    const confd_value_t no_tag{};
    for (int i = kp.len - 1; i >= 0; --i) {
        if (kp.v[i][0].type == C_XMLTAG) {
            out.append("/");
            out.append(kp.v[i][0].val.xmltag->name);
        } else {
            append_keys(out, kp.v[i], i + 1 < kp.len ? kp.v[i + 1][0] : no_tag);
        }
    }
    return out.finish();
}

bool is_printable(const confd_hkeypath_t& kp) {
    return kp.len > 0 && kp.len <= MAXDEPTH;
}

}  // namespace

std::string keypath_text(const confd_hkeypath_t& kp) {
    if (!is_printable(kp)) {
        return {};
    }
    std::string text(static_cast<std::size_t>(print_keypath(nullptr, 0, kp)), '\0');
    print_keypath(text.data(), text.size() + 1, kp);
    return text;
}

std::string quoted_key(std::string_view key) {
    BoundedText measure(nullptr, 0);
    append_key(measure, key);
    std::string text(static_cast<std::size_t>(measure.finish()), '\0');
    BoundedText out(text.data(), text.size());
    append_key(out, key);
    return text;
}

}  // namespace local_platform

using local_platform::serve;

int confd_pp_value(char* buf, int bufsiz, const confd_value_t* v) {
    return serve({"confd_pp_value", -1, {}}, [&] {
        local_platform::BoundedText out(buf, static_cast<std::size_t>(std::max(bufsiz, 0)));
        local_platform::append_value(out, *v, nullptr);
        return out.finish();
    });
}

int confd_pp_kpath(char* buf, int bufsiz, const confd_hkeypath_t* kp) {
    return serve({"confd_pp_kpath", -1, {}}, [&] {
        if (!local_platform::is_printable(*kp)) {
            return local_platform::fail("a keypath without elements, or with too many");
        }
        const auto size = static_cast<std::size_t>(std::max(bufsiz, 0));
        return local_platform::print_keypath(buf, size, *kp);
    });
}
