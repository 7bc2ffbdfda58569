// The host's half that loads a plug-in.
#include "host.h"

#include <gtest/gtest.h>

using namespace local_platform;

namespace {

TEST(Host, SaysWhatIsWrongWithAPlugin) {
    const std::pair<std::string, std::string> kWrong[] = {
        {"/without_lib_init.so", "it has no entry \"lib_init\""},
        {"/without_get_validation_point.so", "it has no entry \"get_validation_point\""},
        {"/without_validate.so", "it has no entry \"validate\""},
        {"/without_lib_finish.so", "it has no entry \"lib_finish\""},
        {"/without_validate.cpp", "cannot load the plug-in: "},
        {"/missing.so", "cannot load the plug-in: "}};
    for (const auto& [name, reason] : kWrong) {
        const std::string file = TEST_PLUGINS_DIR + name;
        try {
            const Host host(file);
            ADD_FAILURE() << file << " was loaded";
        } catch (const PlatformError& error) {
            EXPECT_EQ(std::string(error.what()).rfind(file + ": ", 0), 0U) << error.what();
            EXPECT_NE(std::string(error.what()).find(reason), std::string::npos) << error.what();
        }
    }
}

}  // namespace
