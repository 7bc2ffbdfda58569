// A key or value of a wrong type stops the process, in every build type, where the rule reads it.
#include "support.h"

namespace {

/// Gives the keys at `positions`, and the new value for -1, a type that no rule expects.
void spoil(Delivery& delivery, const std::string& positions) {
    for (const std::string& position : split(positions, " ")) {
        const int i = std::stoi(position);
        (i < 0 ? delivery.newval : delivery.kp.v[i][0]).type = C_INT32;
    }
}

TEST(AssertionDeathTest, ReportsFilePrototypeAndCondition) {
    for (const Lines& row : table(R"(
             0 | auth_simple_text_passwd | auth_simple_text_passwd | -1    | (newval)->type == C_BUF
             1 | ipv4_addr               | ipv4_addr               | 0 7   | (&kp->v[7][0])->type == C_BUF
             1 | ipv4_addr               | ipv4_addr               | 0     | (&kp->v[0][0])->type == C_IPV4
             2 | ipv4_addr               | ipv4_addr_update        | 2 4   | (&kp->v[2][0])->type == C_ENUM_VALUE
             2 | ipv4_addr               | ipv4_addr_update        | 4     | (&kp->v[4][0])->type == C_BUF
             3 | ipv6_addr               | l3_ipv6_addr            | 0 7   | (&kp->v[7][0])->type == C_BUF
             3 | ipv6_addr               | l3_ipv6_addr            | 0     | (&kp->v[0][0])->type == C_IPV6
             4 | ipv6_addr               | l3_ipv6_link_local_addr | 5     | (&kp->v[5][0])->type == C_BUF
             5 | ipv6_link_local_addr    | ipv6_link_local_addr    | 2     | (&kp->v[2][0])->type == C_ENUM_VALUE
             6 | lower_layer             | lower_layer             | 4     | (&kp->v[4][0])->type == C_BUF
             7 | lower_layer             | lower_layer_update      | 4     | (&kp->v[4][0])->type == C_BUF
             8 | secondary_ipv4_addr     | secondary_ipv4_addr     | 2 4   | (&kp->v[2][0])->type == C_ENUM_VALUE
             8 | secondary_ipv4_addr     | secondary_ipv4_addr     | 4     | (&kp->v[4][0])->type == C_BUF
            10 | vr_id                   | vr_id                   | 1 3 5 | (&kp->v[1][0])->type == C_UINT8
            10 | vr_id                   | vr_id                   | 3 5   | (&kp->v[3][0])->type == C_ENUM_VALUE
            10 | vr_id                   | vr_id                   | 5     | (&kp->v[5][0])->type == C_BUF
            11 | vrf                     | vrf                     | 4     | (&kp->v[4][0])->type == C_BUF)")) {
        Delivery delivery(samples().at(2 * std::stoul(row[0])));
        spoil(delivery, row[3]);
        std::string rest = row[2] +
                           "(int32_t, confd_trans_ctx*, confd_hkeypath_t*, confd_value_t*)" +
                           ": Assertion `" + row[4] + "' failed";
        std::size_t at = 0;
        while ((at = rest.find_first_of("()[]*")) != std::string::npos) {
            rest.replace(at, 1, rest[at] == '*' ? " ?." : ".");  // Clang puts a blank before it
        }
        EXPECT_DEATH(delivery.run(), ": src/lib/validate_vrrp_" + row[1] +
                                         ".cpp:[0-9]+: int32_t validate_vrrp_" + rest);
    }
}

TEST(Assertion, ComesAfterWhatIsReportedFirst) {
    for (const Lines& row : table(R"(
             0 | $PASSWORD                    | -1 | error: Could not validate authentication simple-text password.
             1 | $V/address/ipv4{192.0.2.1}   | 0  | error: IPv4 address must be configured on interface l3 vlan10.
             3 | $W/address/ipv6{2001:db8::1} | 0  | error: IPv6 address must be configured on interface l3 vlan10.
             2 | $W                           | 4  | ok
             8 | $W                           | 4  | ok)")) {
        const std::string selector = samples().at(2 * std::stoul(row[0])).selector;
        Delivery delivery({selector, row[1], {}, {}, {}, {}, {"no-key"}});
        spoil(delivery, row[2]);
        EXPECT_EQ(delivery.run().verdict, row[3]);
    }
}

}  // namespace
