#include "rule.h"

namespace {

const std::string kVlan = kL3 + "/lower-layer-if/vlan";
const Answer kMissing = error("lower-layer must be configured on interface l3 vlan%s%n.");
const Calls kExists = Calls("maapi_exists " + kVlan).fails(kMissing).says_1(ok());

const AddRule kLowerLayer(
    "vrrp_lower_layer_validation", "validate_vrrp_lower_layer", {{4, "C_BUF"}},
    {
        Case("VLAN", Candidate{{kVlan, "10"}}, ok(), kExists),
        Case("no VLAN", kMissing, Calls{kExists, kSetError}),
        Case("name that a path would quote", Request{instance("l3-}\"\\{ä", "ipv4", 5)},
             error("lower-layer must be configured on interface l3 }\"\\{ä."),
             Calls{"maapi_exists /config/interface/l3{}\"\\{ä}/lower-layer-if/vlan", kSetError}),
    });

const Answer kChanged = error("lower-layer cannot be changed on interface l3 vlan%s%n.");
const Answer kUnread = error("Could not validate lower-layer of interface l3 vlan%s%n.");
const Calls kLooks = {kOpenSession, kSocket.fails_unseen(ok()),
                      Calls("cdb_exists " + kVlan).fails(ok())};
const Calls kReads = {kLooks, Calls("maapi_get_int32_elem " + kVlan).fails(kUnread),
                      kSocket.fails_unseen(kUnread),
                      Calls("cdb_get_int32 " + kVlan).fails(kUnread)};

const AddRule kLowerLayerUpdate(
    "vrrp_lower_layer_update_validation", "validate_vrrp_lower_layer_update", {{4, "C_BUF"}},
    {
        Case("VLAN kept", Candidate{{kVlan, "10"}}, Running{{kVlan, "10"}}, ok(),
             Calls{kReads, kCloseSession}),
        Case("VLAN changed", Candidate{{kVlan, "20"}}, Running{{kVlan, "10"}}, kChanged,
             Calls{kReads, kSetError, kCloseSession}),
        Case("first VLAN", Candidate{{kVlan, "10"}}, ok(), Calls{kLooks, kCloseSession}),
        Case("VLAN removed", Running{{kVlan, "10"}}, kUnread,
             Calls{kLooks, "maapi_get_int32_elem " + kVlan, kSetError, kCloseSession}),
    });

}  // namespace
