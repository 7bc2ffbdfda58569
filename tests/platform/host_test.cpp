// The host, and plug-ins that go wrong.
#include "host.h"

#include <dlfcn.h>

#include <cstdlib>

#include "support.h"

using namespace local_platform;

namespace {

const std::string kPlugin = TEST_PLUGINS_DIR "/plugin.so";

/// What comes of loading `file`, one request and unloading, when the plug-in goes wrong in this
/// `way`: the error without the file's name, or nothing. On standard error: whether it was
/// finished.
std::string complaint(const std::string& file, const char* way) {
    setenv("PLUGIN_GOES_WRONG", way, 1);
    try {
        Host host(file);
        EXPECT_EQ(host.validation_point(), std::string(256, 'p'));
        const DataTree tree{router_model()};
        const Instance instance(tree, tree);
        confd_hkeypath_t kp{};
        confd_value_t newval{};
        EXPECT_EQ(host.validate(instance, "", kp, newval).result,
                  std::string(way) == "validate fails" ? 5 : CONFD_OK);
        host.unload();
    } catch (const PlatformError& error) {
        const std::string what = error.what();
        EXPECT_EQ(what.substr(0, file.size() + 2), file + ": ");
        return what.substr(std::min(file.size() + 2, what.size()));
    }
    return {};
}

TEST(Host, SaysWhatWentWrongInAPluginAndUnloadsIt) {
    const char* const finished = "[finished]";
    const struct {
        const char* way;
        const char* complaint;
        const char* finished;
    } kCases[] = {
        {"", "", finished},
        {"validate fails", "", finished},
        {"lib_init fails", "lib_init failed with 5", ""},
        {"lib_init throws", "lib_init threw an exception: the plug-in's own words", ""},
        {"get_validation_point fails", "get_validation_point failed with 5", finished},
        {"get_validation_point throws",
         "get_validation_point threw an exception: the plug-in's own words", finished},
        {"validate throws", "validate threw an exception: the plug-in's own words", finished},
        {"validate throws a number", "validate threw an exception that says nothing", finished},
        {"lib_finish fails", "lib_finish failed with 5", finished},
        {"lib_finish throws", "lib_finish threw an exception: the plug-in's own words", finished},
    };
    for (const auto& [way, expected, on_stderr] : kCases) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(complaint(kPlugin, way), expected) << way;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), on_stderr) << way;
        EXPECT_EQ(dlopen(kPlugin.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr) << way << ": unloaded";
    }
    setenv("PLUGIN_GOES_WRONG", "lib_finish throws", 1);
    const Host nobody_asks(kPlugin);
}

TEST(HostDeathTest, APluginThatExitsEndsTheProcessWithAMessageAndCode2) {
    for (const char* const entry :
         {"its initialisation", "lib_init", "get_validation_point", "validate", "lib_finish"}) {
        for (const char* const how : {" exits", " exits quickly"}) {
            EXPECT_EXIT(complaint(kPlugin, (std::string(entry) + how).c_str()),
                        testing::ExitedWithCode(2),
                        std::string("plugin.so: the plug-in ended the program in ") + entry);
        }
    }
    EXPECT_EXIT(complaint(kPlugin, "") + (std::exit(0), ""), testing::ExitedWithCode(0), "")
        << "the program's own";
}

TEST(Host, NamesTheEntryThatALibraryLacks) {
    for (const std::string entry : {"lib_init", "get_validation_point", "validate", "lib_finish"}) {
        EXPECT_EQ(complaint(TEST_PLUGINS_DIR "/without_" + entry + ".so", ""),
                  "not a validation plug-in: it has no entry \"" + entry + "\"");
    }
    for (const char* const file : {TEST_PLUGINS_DIR "/missing.so", __FILE__, "missing.so"}) {
        EXPECT_EQ(complaint(file, "").rfind("cannot load the plug-in: ", 0), 0U) << file;
    }
}

}  // namespace
