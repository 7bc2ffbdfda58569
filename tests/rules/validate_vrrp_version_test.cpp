#include "rule.h"

namespace {

const std::string kVersion = kIpv4Instance + "/version";
const std::string kLong = instance(std::string(300, 'k'), "ipv6", 5) + "/version";
const Answer kWarned = {
    "CONFD_VALIDATION_WARN: changing the VRRP router version will restart the VRRP router "
    "process."};

/// What is called when the keypath prints as `path`. When it does not print, the path is empty and
/// names the root, which is always there.
Calls reads(const std::string& path) {
    return {kOpenSession, Calls("confd_pp_kpath").fails_unseen(kWarned), kSocket.fails_unseen(ok()),
            Calls("cdb_exists " + path).fails(ok()).says_1(kWarned)};
}

const AddRule kRule(
    "vrrp_version_validation", "validate_vrrp_version", {},
    {
        Case("first version", Candidate{{kVersion, "3"}},
             Running{{kIpv4Instance + "/priority", "100"}}, Request{kVersion}, ok(),
             Calls{reads(kVersion), kCloseSession}),
        Case("version that is running", Candidate{{kVersion, "3"}}, Running{{kVersion, "3"}},
             Request{kVersion}, kWarned, Calls{reads(kVersion), kSetError, kCloseSession}),
        Case("path cut to 255 characters", Candidate{{kLong, "2"}}, Running{{kLong, "2"}},
             Request{kLong}, ok(), Calls{reads(kLong.substr(0, 255)), kCloseSession}),
        Case("path that is not printed", Candidate{{kVersion, "3"}}, Request{kVersion},
             PlatformAnswers{{"confd_pp_kpath", -1}}, kWarned,
             Calls{reads(""), kSetError, kCloseSession}),
    });

}  // namespace
