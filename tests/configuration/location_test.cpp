// A node's place is where an editor finds its name.
#include <gtest/gtest.h>

#include "support.h"

namespace {

TEST(Location, OfANodeIsWhereItsNameBegins) {
    const std::string json =
        "\xef\xbb\xbf{ \"device:system\"\r\n"
        "\t: {\"host-name\": \"ä😀\", \"ntp\":\"n\"},\n"
        "\"device:port\" :[{\"number\": 1,\r\n"
        "  \"slot\": \"a\", \"link\"\n"
        ":{\"speed\":\n"
        "7}}, {\"slot\": \"😀\",\"number\" : 2, \"link\":{\"speed\": 8}}]\n"
        "}";
    const std::string xml = named(
        "<!-- € --><system\r\n"
        "\txmlns='DEVICE' ><host-name>ä😀</host-name><ntp\n"
        ">n</ntp></system><d:port xmlns:d='DEVICE'><d:number>1</d:number><!-- <slot> -->\r\n"
        "  <d:slot>a</d:slot><d:link>\n"
        "<d:speed>\n"
        "7</d:speed></d:link></d:port> <port xmlns='DEVICE'><slot><![CDATA[😀]]></slot><number\n"
        ">2</number> <link><speed>8</speed></link>\n"
        "</port>");
    const std::vector<std::tuple<std::string, std::string, std::string>> rows = {
        {"/system", "1:3", "1:11"},
        {"/system/host-name", "2:5", "2:41"},
        {"/system/ntp", "2:24", "2:66"},
        {"/port{a 1}", "4:3", "4:3"},
        {"/port{a 1}/number", "3:18", "3:66"},
        {"/port{a 1}/link/speed", "5:3", "5:1"},
        {"/port{😀 2}", "6:7", "6:75"},
        {"/port{😀 2}/number", "6:19", "6:101"},
        {"/port{😀 2}/link/speed", "6:41", "7:19"}};
    const Configuration from_json = read(json);
    const Configuration from_xml = read(xml);
    for (const auto& [path, in_json, in_xml] : rows) {
        EXPECT_EQ(place_of(from_json, path), "file:" + in_json) << path;
        EXPECT_EQ(place_of(from_xml, path), "file:" + in_xml) << path;
    }
    EXPECT_EQ(place_of(read("{\n\"device:system\": {}}"), "/system/mtu"), "file:2:1");
    EXPECT_EQ(place_of(read("{}"), "/system/mtu"), "file");
}

}  // namespace
