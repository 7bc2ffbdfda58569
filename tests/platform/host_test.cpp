// The host, and plug-ins that go wrong.
#include "host.h"

#include <dlfcn.h>

#include <cstdlib>
#include <map>

#include "support.h"

using namespace local_platform;

namespace {

const std::string kPlugin = TEST_PLUGINS_DIR "/plugin.so";
const Strings kEntries = {"lib_init", "get_validation_point", "validate", "lib_finish"};

/// What comes of loading `file`, one request and unloading, when the plug-in goes wrong in this
/// `way`: the error without the file's name, or nothing. On standard error: whether it was
/// finished.
std::string complaint(const std::string& file, const std::string& way) {
    setenv("PLUGIN_GOES_WRONG", way.c_str(), 1);
    try {
        Host host(file);
        EXPECT_EQ(host.validation_point(), std::string(256, 'p'));
        const DataTree tree{router_model()};
        const Instance instance(tree, tree);
        confd_hkeypath_t kp{};
        confd_value_t newval{};
        EXPECT_EQ(host.validate(instance, "", kp, newval).result,
                  way == "validate fails" ? 5 : CONFD_OK);
        host.unload();
    } catch (const PlatformError& error) {
        const std::string what = error.what();
        EXPECT_EQ(what.substr(0, file.size() + 2), file + ": ");
        return what.substr(std::min(file.size() + 2, what.size()));
    }
    return {};
}

TEST(Host, SaysWhatWentWrongInAPluginAndUnloadsIt) {
    std::map<std::string, std::string> answers = {
        {"", ""}, {"validate throws a number", "validate threw an exception that says nothing"}};
    for (const std::string& entry : kEntries) {
        answers[entry + " throws"] = entry + " threw an exception: the plug-in's own words";
        answers[entry + " fails"] = entry == "validate" ? "" : entry + " failed with 5";
    }
    for (const auto& [way, expected] : answers) {
        const bool is_initialised = way.rfind("lib_init", 0) != 0;
        testing::internal::CaptureStderr();
        EXPECT_EQ(complaint(kPlugin, way), expected) << way;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), is_initialised ? "[finished]" : "")
            << way;
        EXPECT_EQ(dlopen(kPlugin.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr) << way << ": unloaded";
    }
    setenv("PLUGIN_GOES_WRONG", "lib_finish throws", 1);
    const Host nobody_asks(kPlugin);
}

TEST(HostDeathTest, APluginThatExitsEndsTheProcessWithAMessageAndCode2) {
    for (const std::string& entry : kEntries) {
        EXPECT_EXIT(complaint(kPlugin, entry + " exits"), testing::ExitedWithCode(2),
                    "plugin.so: the plug-in ended the program in " + entry);
    }
    EXPECT_EXIT(complaint(kPlugin, "its initialisation exits quickly"), testing::ExitedWithCode(2),
                "the plug-in ended the program in its initialisation");
    EXPECT_EXIT(complaint(kPlugin, "") + (std::exit(0), ""), testing::ExitedWithCode(0), "")
        << "the program's own";
}

TEST(Host, NamesTheEntryThatALibraryLacks) {
    for (const std::string& entry : kEntries) {
        EXPECT_EQ(complaint(TEST_PLUGINS_DIR "/without_" + entry + ".so", ""),
                  "not a validation plug-in: it has no entry \"" + entry + "\"");
    }
    for (const char* const file : {TEST_PLUGINS_DIR "/missing.so", __FILE__, "missing.so"}) {
        EXPECT_EQ(complaint(file, "").rfind("cannot load the plug-in: ", 0), 0U) << file;
    }
}

}  // namespace
