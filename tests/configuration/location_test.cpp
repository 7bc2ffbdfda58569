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
        {"/port{a 1}/slot", "4:3", "4:3"},
        {"/port{a 1}/number", "3:18", "3:66"},
        {"/port{a 1}/link", "4:16", "4:21"},
        {"/port{a 1}/link/speed", "5:3", "5:1"},
        {"/port{😀 2}", "6:7", "6:75"},
        {"/port{😀 2}/slot", "6:7", "6:75"},
        {"/port{😀 2}/number", "6:19", "6:101"},
        {"/port{😀 2}/link/speed", "6:41", "7:19"},
    };
    const Document json_document = read(json);
    const Document xml_document = read(xml);
    for (const auto& [path, in_json, in_xml] : rows) {
        EXPECT_EQ(text_of(json_document.locate(path)), "file:" + in_json) << path;
        EXPECT_EQ(text_of(xml_document.locate(path)), "file:" + in_xml) << path;
    }
}

TEST(Location, IsFoundForKeysOfAnyKindAndSpelling) {
    const std::string text = R"({"device:port": [
        {"slot": "a b\"\\]", "number": 1, "link": {"speed": 1}},
        {"slot": "2001:DB8::1/64", "number": 2, "link": {"speed": 2}},
        {"slot": "a b\"\\]", "number": 3, "link": {"speed": 3}}]})";
    const Document document = read(text);
    const std::vector<std::pair<std::string, std::string>> rows = {
        {R"(/port["a b\"\\]" "1"]/link/speed)", "file:2:52"},
        {R"(/port["a b\"\\]" "1"])", "file:2:10"},
        {R"(/port["a b\"\\]" "3"])", "file:4:10"},
        {R"(/device:port[slot='a b"\]'][number='1']/link)", "file:2:43"},
        {"/port{2001:db8::1/64 2}/number", "file:3:36"},
        {"/port{2001:db8::1/64 2}/alias", "file:3:10"},
        {"/port{2001:db8::2/64 2}/alias", "file"},
        {"/port[", "file"},
        {"", "file"},
    };
    for (const auto& [path, place] : rows) {
        EXPECT_EQ(text_of(document.locate(path)), place) << path;
    }
}

}  // namespace
