// The plug-in's entries and the dispatch of requests; the host's half that loads them.
#include "host.h"
#include "support.h"

using namespace local_platform;

namespace {

TEST(Validate, RefusesWhatItCannotDispatchWithoutAMessage) {
    Delivery delivery(samples().back());
    int calls = 0;
    Lines messages;
    const ScopedCallHook hook([&](const Call& call) {
        EXPECT_EQ(call.operation, "qelconfd_maapi_socket_get");
        ++calls;
        return std::nullopt;
    });
    confd_trans_ctx tctx{0, delivery.instance.handle(), nullptr, &messages};
    EXPECT_EQ(validate(nullptr, &delivery.kp, &delivery.newval), CONFD_ERR);
    EXPECT_EQ(validate(&tctx, nullptr, &delivery.newval), CONFD_ERR);
    EXPECT_EQ(validate(&tctx, &delivery.kp, nullptr), CONFD_ERR);
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(validate(&tctx, &delivery.kp, &delivery.newval), CONFD_ERR) << "no selector";
    EXPECT_EQ(calls, 1);
    tctx = {0, nullptr, delivery.request.selector.data(), &messages};
    EXPECT_EQ(validate(&tctx, &delivery.kp, &delivery.newval), CONFD_ERR) << "no socket";
    EXPECT_EQ(messages, Lines());
}

TEST(Validate, RunsTheRuleWhoseNameTheSelectorBeginsWith) {
    for (const Request& sample : samples()) {
        Delivery delivery(sample);
        delivery.request.selector += "_and more";
        EXPECT_EQ(delivery.run().verdict, sample.verdict);
        const std::string rest = sample.selector.substr(1);
        for (const std::string& unknown :
             {std::string(), "V" + rest, " v" + rest, "v" + rest.substr(1),
              sample.selector.substr(0, rest.size())}) {
            delivery.request.selector = unknown;
            const Outcome outcome = delivery.run();
            EXPECT_EQ(outcome.verdict, "error") << unknown;
            EXPECT_EQ(outcome.calls, Lines{"qelconfd_maapi_socket_get"}) << unknown;
        }
    }
}

TEST(Entries, NameTheValidationPointInTheRoomThereIs) {
    for (const auto& [size, expected] : {std::pair(16, std::string("vrrp_validation\0#", 17)),
                                         std::pair(10, std::string("vrrp_vali\0#######", 17)),
                                         std::pair(0, std::string(17, '#'))}) {
        std::string buffer(17, '#');
        EXPECT_EQ(get_validation_point(buffer.data(), size), 0);
        EXPECT_EQ(buffer, expected);
    }
    EXPECT_TRUE(lib_finish() == 0 && lib_init() == 0 && lib_init() == 0 && lib_finish() == 0);
}

TEST(Host, SaysWhatIsWrongWithAPlugin) {
    for (const Lines& row : table(R"(
            /without_lib_init.so             | it has no entry "lib_init"
            /without_get_validation_point.so | it has no entry "get_validation_point"
            /without_validate.so             | it has no entry "validate"
            /without_lib_finish.so           | it has no entry "lib_finish"
            /without_validate.cpp            | cannot load the plug-in: 
            /missing.so                      | cannot load the plug-in: )")) {
        const std::string file = TEST_PLUGINS_DIR + row[0];
        try {
            const Host host(file);
            ADD_FAILURE() << file << " was loaded";
        } catch (const PlatformError& error) {
            EXPECT_EQ(std::string(error.what()).rfind(file + ": ", 0), 0U) << error.what();
            EXPECT_NE(std::string(error.what()).find(row[1]), std::string::npos) << error.what();
        }
    }
}

}  // namespace
