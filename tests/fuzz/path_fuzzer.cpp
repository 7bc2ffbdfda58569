/// Any text as a path, and as the key of an entry whose path must lead back to it.
#include "confd_maapi.h"
#include "configuration/yang_model.h"
#include "keypath.h"
#include "socket.h"

using namespace local_platform;

extern "C" int LLVMFuzzerTestOneInput(const char* bytes, std::size_t size) {
    static const YangModel model(VRRP_VALID_YANG_DIR);
    const std::string text(bytes, size);
    TreeBuilder builder(model.schema());
    builder.set("config/interface/l3{" + quoted_key(text) + "}/ipv6/enable", "true");
    const DataTree tree = std::move(builder).build();
    const Node& entry = *tree.find("config/interface/l3")->children[0];
    confd_hkeypath_t kp;
    fill_keypath(entry, kp);

    const Socket socket = Socket::maapi(tree);
    const char* const path = text.c_str();
    int flag = 0;
    const int exists = maapi_exists(socket.number(), socket.thandle(), "%s", path);
    const int count = maapi_num_instances(socket.number(), socket.thandle(), "%s", path);
    const int read = maapi_get_bool_elem(socket.number(), socket.thandle(), &flag, "%s", path);
    if (tree.find(keypath_text(kp)) != &entry || entry.children[0]->text != text ||
        (exists < 0 && (count >= 0 || read == 0)) ||
        (read == 0 && (exists != 1 || flag != 1 || count >= 0)) || (count > 0 && exists != 1)) {
        __builtin_trap();
    }
    return 0;
}
