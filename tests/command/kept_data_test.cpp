// Nothing that a device has is lost when an edit is committed.
#include "command.h"

namespace fs = std::filesystem;

namespace {

const std::string kYang = VRRP_VALID_DEVICE_YANG;

/// What yanglint reads in `file`, with every module of the data.
std::string as_read(const std::string& file) {
    Surroundings surroundings;
    surroundings.program = "yanglint";
    const Outcome outcome = run({"-t", "config", "-f", "json", "-p", kYang, kYang + "/device.yang",
                                 kYang + "/optics.yang", file},
                                surroundings);
    EXPECT_EQ(outcome.status, 0) << outcome.err << content_of(file);
    return outcome.out;
}

/// What is in `running` once `edit` is committed.
std::string committed(const std::string& running, const std::string& edit,
                      const std::string& yang_dir = VRRP_VALID_YANG_DIR) {
    const Outcome outcome = run(
        {"commit", "--yes", "--edit", "--yang-dir", yang_dir, "--running", running, "-"}, {edit});
    EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
    return content_of(running);
}

TEST(KeptData, IsReadTheSameWithTheModuleThatACommitDoesNotHave) {
    const Folder folder;
    for (const char* const module : {"/device.yang", "/validation-point.yang"}) {
        fs::copy(kYang + module, folder.path + module);
    }
    for (const std::string name : {"lab.json", "lab.xml"}) {
        const std::string running = folder / name;
        fs::copy(VRRP_VALID_DEVICE_DATA "/" + name, running);
        const std::string before = as_read(running);
        const auto set_mtu = [&](const std::string& mtu) {
            return committed(running, R"({"device:system": {"mtu": )" + mtu + "}}", folder.path);
        };
        const std::string once = set_mtu("71");
        EXPECT_EQ(as_read(running), replaced(before, "\"mtu\": 70", "\"mtu\": 71"));
        set_mtu("72");
        EXPECT_EQ(set_mtu("71"), once) << "the same data, the same bytes";
    }
}

TEST(KeptData, OfAWholeDeviceStaysAsItIsWritten) {
    const Folder folder;
    for (const std::string example : {"whole-device.json", "whole-device.xml"}) {
        const std::string before = content_of(VRRP_VALID_EXAMPLES "/" + example);
        EXPECT_EQ(committed(folder.put(example, before),
                            R"({"l3-interface:config": {"interface": {"l3": [
                                {"name": "mgmt", "lower-layer-if": {"vlan": 4001}}]}}})"),
                  replaced(before, "4000", "4001"));
    }
}

}  // namespace
