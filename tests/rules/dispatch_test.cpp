// The plug-in's entries, and the dispatch of requests.
#include "rule.h"

namespace {

TEST(Validate, RefusesWhatItCannotDispatchWithoutAMessage) {
    Delivery delivery(samples().back());
    int calls = 0;
    Lines messages;
    const local_platform::ScopedCallHook hook([&](const local_platform::Call& call) {
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
    EXPECT_EQ(messages, Lines());
}

TEST(Validate, RunsTheRuleWhoseNameTheSelectorBeginsWith) {
    for (const Case& sample : samples()) {
        Delivery delivery(sample);
        EXPECT_TRUE(lib_finish() == 0 && lib_init() == 0) << "a request needs neither";
        delivery.selector += "_and more";
        EXPECT_EQ(delivery.run().answer, sample.the<Answer>().text);
        const std::string all_but_its_end(sample.selector, 0, sample.selector.size() - 1);
        for (const std::string& unknown : {std::string(), " " + sample.selector, all_but_its_end}) {
            delivery.selector = unknown;
            const Outcome outcome = delivery.run();
            EXPECT_EQ(outcome.answer, "CONFD_ERR") << unknown;
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
}

}  // namespace
