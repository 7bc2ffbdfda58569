/// Any text as a path, and as the name of an entry beside entries named by its pieces: the path
/// that a rule builds from the name leads to that entry or is an error, and the printed one leads
/// to it.
#include "confd_maapi.h"
#include "configuration/yang_model.h"
#include "keypath.h"
#include "platform_error.h"
#include "socket.h"

using namespace local_platform;

namespace {

const std::string kList = "/config/interface/l3";

void add_entry(TreeBuilder& builder, const std::string& name) {
    builder.set(kList + keys_text({name}) + "/ipv6/enable", "true");
}

/// An entry for `name`, and one for each piece of it that a reader could take for a key.
DataTree tree_of(const YangModel& model, const std::string& name) {
    TreeBuilder builder(model.schema());
    add_entry(builder, name);
    for (std::size_t start = 0; start < name.size();) {
        const std::size_t end =
            std::min(name.find_first_of(" \t\r\n{}[]\"\\/", start), name.size());
        add_entry(builder, name.substr(start, end - start));
        add_entry(builder, name.substr(start));
        add_entry(builder, name.substr(0, end));
        start = end + 1;
    }
    return std::move(builder).build();
}

void require(bool holds) {
    if (!holds) {
        __builtin_trap();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const char* bytes, std::size_t size) {
    static const YangModel model(VRRP_VALID_YANG_DIR);
    const std::string text(bytes, std::min(size, std::size_t(400)));
    const DataTree tree = tree_of(model, text);
    const Node& entry = *tree.find(kList)->children[0];
    confd_hkeypath_t kp;
    fill_keypath(entry, kp);
    require(tree.find(keypath_text(kp)) == &entry && entry.text == text);

    const Socket socket = Socket::maapi(tree);
    const int s = socket.number();
    const int t = socket.thandle();
    int flag = 0;
    if (text.find('\0') == std::string::npos) {
        const std::string built = kList + "{" + text + "}/ipv6/enable";
        const int answer = maapi_exists(s, t, "%s", built.c_str());
        require(answer == (is_addressable(text) ? 1 : -1));
        require(answer != 1 || tree.find(built)->parent->parent == &entry);
    }
    const char* const path = text.c_str();
    const int exists = maapi_exists(s, t, "%s", path);
    const int count = maapi_num_instances(s, t, "%s", path);
    const int read = maapi_get_bool_elem(s, t, &flag, "%s", path);
    require(exists >= 0 || (count < 0 && read != 0));
    require(read != 0 || (exists == 1 && flag == 1 && count < 0));
    require(count <= 0 || exists == 1);
    return 0;
}
