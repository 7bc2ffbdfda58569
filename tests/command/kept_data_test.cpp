// Nothing that a device has is lost when an edit is committed.
#include <libyang/libyang.h>

#include <memory>

#include "command.h"

namespace fs = std::filesystem;

namespace {

struct YangDeleter {
    void operator()(ly_ctx* context) const { ly_ctx_destroy(context); }
    void operator()(lyd_node* data) const { lyd_free_all(data); }
};
using Context = std::unique_ptr<ly_ctx, YangDeleter>;
using Data = std::unique_ptr<lyd_node, YangDeleter>;

/// With every module of the data, also the one that the command does not get.
Context device_and_optics() {
    ly_ctx* context = nullptr;
    EXPECT_EQ(ly_ctx_new(VRRP_VALID_DEVICE_YANG, 0, &context), LY_SUCCESS);
    const char* every_feature[] = {"*", nullptr};
    EXPECT_NE(ly_ctx_load_module(context, "device", nullptr, every_feature), nullptr);
    EXPECT_NE(ly_ctx_load_module(context, "optics", nullptr, nullptr), nullptr);
    return Context(context);
}

Data data_of(const Context& context, const std::string& text) {
    const LYD_FORMAT format = text[0] == '<' ? LYD_XML : LYD_JSON;
    lyd_node* data = nullptr;
    EXPECT_EQ(lyd_parse_data_mem(context.get(), text.c_str(), format, LYD_PARSE_STRICT,
                                 LYD_VALIDATE_PRESENT, &data),
              LY_SUCCESS)
        << ly_errmsg(context.get()) << text;
    return Data(data);
}

void commit_edit(const std::string& running, const std::string& edit, const Arguments& options) {
    Arguments arguments = {"commit", "--yes", "--edit", "--running", running, "-"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = run(arguments, {edit});
    EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
}

TEST(KeptData, IsTheSameToTheYangLibraryButForTheEdit) {
    const Context context = device_and_optics();
    const Folder known;
    for (const char* const module : {"device.yang", "validation-point.yang"}) {
        fs::copy(std::string(VRRP_VALID_DEVICE_YANG "/") + module, known / module);
    }
    for (const char* const name : {"lab.json", "lab.xml"}) {
        const Folder folder;
        const std::string before = content_of(std::string(VRRP_VALID_DEVICE_DATA "/") + name);
        const std::string running = folder.put(name, before);
        const auto set_mtu = [&](const char* mtu) {
            commit_edit(running, std::string(R"({"device:system": {"mtu": )") + mtu + "}}",
                        {"--yang-dir", known.path});
            return content_of(running);
        };
        const std::string after = set_mtu("71");
        const Data expected = data_of(context, before);
        lyd_node* mtu = nullptr;
        ASSERT_EQ(lyd_find_path(expected.get(), "/device:system/mtu", 0, &mtu), LY_SUCCESS);
        ASSERT_EQ(lyd_change_term(mtu, "71"), LY_SUCCESS);
        const Data committed = data_of(context, after);
        EXPECT_EQ(lyd_compare_siblings(expected.get(), committed.get(), LYD_COMPARE_FULL_RECURSION),
                  LY_SUCCESS)
            << after;
        set_mtu("72");
        EXPECT_EQ(set_mtu("71"), after) << "the same data, the same bytes";
    }
}

TEST(KeptData, OfAWholeDeviceStaysAsItIsWritten) {
    for (const std::string example : {"whole-device.json", "whole-device.xml"}) {
        const Folder folder;
        const std::string before = content_of(VRRP_VALID_EXAMPLES "/" + example);
        const std::string running = folder.put(example, before);
        commit_edit(running,
                    R"({"l3-interface:config": {"interface": {"l3": [
                        {"name": "mgmt", "lower-layer-if": {"vlan": 4001}}]}}})",
                    {});
        EXPECT_EQ(content_of(running), replaced(before, "4000", "4001"));
    }
}

}  // namespace
