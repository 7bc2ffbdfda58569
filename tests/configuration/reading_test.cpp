// Which files are configurations, and what is said of those that are none.
#include <gmock/gmock.h>

#include "support.h"

using namespace testing;

namespace {

/// The text of the leaf at `path`; "absent" without it.
std::string value_at(const std::string& text, const char* path) {
    const Configuration configuration = read(text);
    const auto* const node = configuration.tree.find(path);
    return node == nullptr ? "absent" : std::string(node->text);
}

TEST(Reading, TakesADeviceAsPeoplesToolsWriteIt) {
    const std::string xml = "<system xmlns='DEVICE'><host-name>r1</host-name></system>";
    const std::string json = R"("device:system": {"host-name": "r1"})";
    const std::vector<std::string> rows = {
        "\xef\xbb\xbf \r\n<?xml version='1.0' encoding='utf-8'?>\r\n<!-- a -->" + xml +
            "<!-- b -->",
        ("<d:system xmlns:d='DEVICE' tags='b'><?note a>b?>\n<d:host-name><![CDATA[r]]>&#49;"
         "<!-- > --></d:host-name></d:system>"),
        "<?xml version='1.0'?>\n<!-- <data> --><config xmlns='BASE'>" + xml + "</config>",
        ("<n:data xmlns:n='BASE' xmlns:d='DEVICE' n:a='>'><d:system><d:host-name>r1</d:host-name>"
         "</d:system></n:data><!-- behind -->"),
        "<rpc-reply xmlns='BASE'><data xmlns='NMDA'>" + xml + "</data></rpc-reply>",
        "<other xmlns='urn:other'><system/></other>" + xml,
        "<config xmlns='http://tail-f.com/ns/config/1.0'>" + xml + "</config>\n]]>]]>\n",
        R"({"data": {)" + json + "}}",
        "\xef\xbb\xbf{\r\n\t" + json + "\r\n}\r\n",
        R"({"device:system": {"host-n\u0061me": "r\u0031"}})",
        R"({"device:system": {"device:host-name": "r1", "@host-name": {"a:b": [1, {}]}}})",
        R"({"ietf-restconf:data": {)" + json + "}}",
        R"({"other:list": [{"system": [[{}]]}], "other:leaf": 1.5e3, )" + json + "}",
    };
    for (const std::string& text : rows) {
        EXPECT_EQ(value_at(named(text), "/system/host-name"), "r1") << text;
    }
}

TEST(Reading, NamesWhatIsNoConfigurationAndWhere) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {" \n", " the file is empty"},
        {"a:\n  b: 1\n", "1:1: YAML"},
        {"\nhostname r1\n", "2:1: no configuration file; export it"},
        {"[1]", "1:1: a JSON array"},
        {"{} {}", "1:4: bad JSON"},
        {"{\n \"device:system\": {,}}", "2:20: bad JSON"},
        {"{\"device:system\": {\"host-name\": \"\xff\"}}", "1:34: a byte that is not UTF-8"},
        {"<a xmlns='urn:a'>\xe4</a>", "1:18: a byte that is not UTF-8"},
        {"\xff\xfe{", " is UTF-16"},
        {"\x1f\x8b\x08", " is packed with gzip"},
        {"{\"a:b\": [1,\n ]}", "1:11: bad JSON: a comma before ]; remove it"},
        {"{\"a:b\": \"c", "1:11: bad JSON: the file ends inside a value"},
        {"{\n// b\n}", "2:1: bad JSON: a comment"},
        {"{'a:b': 1}", "1:2: bad JSON: a single quote"},
        {"{\n=======\n}", "2:1: the mark of a merge conflict"},
        {"<a xmlns='urn:a'>\n<<<<<<< b\n</a>", "2:1: the mark of a merge conflict"},
        {"<a xmlns='urn:a'>b&c</a>", "1:19: bad XML: a bare &; write &amp;"},
        {"<a xmlns='urn:a'>\n<b></a>", "2:1: bad XML: the element <b> is not closed"},
        {"<html/>", "1:1: <html> is not a configuration"},
        {"<rpc-reply xmlns='BASE'><rpc-error/></rpc-reply>", "1:60: <rpc-error> is not a config"},
        {"<rpc-reply xmlns='BASE'></rpc-reply>", "1:60: <rpc-reply> has no <data>"},
        {"<rpc xmlns='BASE'><get-config/></rpc>", "1:54: <get-config> is not a configuration"},
        {R"({"ietf-restconf:errors": {}})", "1:2: \"ietf-restconf:errors\" is not a config"},
        {R"({"ietf-restconf:data": {}, "device:system": {}})", "1:28: "},
        {"<data xmlns='BASE'/><system xmlns='DEVICE'/>", "1:56: <system> is next to <data>"},
        {"<!DOCTYPE a [<!ENTITY b 'c'>]><a/>", "1:1: a document type"},
        {"<?xml version='1.0' encoding='latin1'?><a/>", "1:1: its encoding is LATIN1"},
        {"<system xmlns='DEVICE'>\n\t\xc3\xa4</system>", "2:2: text inside system"},
        {"<system xmlns='DEVICE'><mtu><a/></mtu></system>", "1:52: <a> is inside mtu"},
        {"<system xmlns='DEVICE'/>x", "1:48: bad XML"},
        {"<a:system/>", "1:1: bad XML"},
        {"<system/>", "1:1: <system> has no namespace"},
        {R"({"system": {}})", "1:2: \"system\" names no module"},
        {R"({"device:system": {":mtu": 70}})", "1:20: \":mtu\" names no module"},
        {"<system xmlns='DEVICE'><mtu operation='delete'/></system>",
         "1:47: <mtu> has the attribute \"operation\", which has no namespace; write nc:"},
        {"<system xmlns='DEVICE'><mtu xmlns:n='BASE' n:operation='delete'/></system>",
         "1:47: operation=\"delete\" makes this an edit"},
        {R"({"device:system": {"@mtu": {"ietf-netconf:operation": "delete"}}})",
         "1:29: a JSON file is merged as a whole"},
        {R"({"other:a": {"@b": {"ietf-netconf:operation": "delete"}}})",
         "1:21: a JSON file is merged as a whole"},
        {"<data xmlns='BASE'><system/></data>", "1:55: <system> is in the namespace of NETC"},
        {"<config xmlns='BASE' xmlns:n='BASE' n:operation='merge'/>", "1:1: operation="},
        {"<a xmlns='other'><b xmlns:o = 'BASE' o:operation = 'merge'/></a>", "1:18: operation="},
        {R"({"device:system": {"host-name": "a\u0000"}})", "1:20: host-name has the character"},
        {R"({"device:port": [{"slot": "\udc00", "number": 1}]})", "1:19: slot has the chara"},
        {"<system xmlns='DEVICE'><host-name>&#xfdd0;</host-name></system>",
         "1:47: host-name has the character \\ufdd0"},
        {R"({"device:system": {"mtu": 70, "m\u0074u": 71}})", "1:31: \"mtu\" is given twice"},
        {R"({"a:b": {"c": [{"d": 1, "e": 2,
            "d": 1}]}})",
         "2:13: \"d\" is given twice"},
    };
    for (const auto& [text, complaint] : rows) {
        EXPECT_THAT(complaint_about(named(text)), StartsWith("file:" + complaint)) << text;
    }
}

TEST(Reading, EndsAtADepthThatNoConfigurationHas) {
    const auto nested = [](const std::string& begin, const std::string& end, int levels) {
        std::string text;
        for (int i = 0; i < 2 * levels; ++i) {
            text += i < levels ? begin : end;
        }
        return text;
    };
    for (const int levels : {998, 1001, 100000}) {
        const std::string json = "{\"a:b\": " + nested("[", "]", levels) + "}";
        const std::string xml = nested("<a xmlns='urn:a'>", "</a>", levels);
        for (const std::string& text : {json, xml}) {
            const bool is_refused =
                complaint_about(text).find(": nested deeper than 1000") != std::string::npos;
            EXPECT_EQ(is_refused, levels > 1000) << levels;
        }
    }
}

TEST(Reading, TellsASlipOfThePenFromAnotherModule) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {R"({"device:system": {"host-nam": "a"}})",
         "file:1:20: system has no node \"host-nam\"; did you mean \"host-name\"?"},
        {"<sistem xmlns='DEVICE'/>",
         "file:1:1: the configuration has no node \"sistem\" of device; did you mean \"system\"?"},
        {R"({"device:x": {}})",
         "file:1:2: the configuration has no node \"x\" of device; known there: system port fan; "},
        {R"({"devise:system": {}})",
         "file:1:2: the model has no module \"devise\"; did you mean \"device\"?"},
        {R"({"device:system": {"uptime": 1}})", "file:1:20: \"uptime\" is state data"},
        {R"({"device:alarm": {}})", "file:1:2: \"alarm\" is a notification"},
        {R"({"device:system": {"reboot": {}}})", "file:1:20: \"reboot\" is an operation"},
    };
    for (const auto& [text, complaint] : rows) {
        EXPECT_THAT(complaint_about(named(text)), StartsWith(complaint)) << text;
        EXPECT_EQ(complaint_about(named(text), {false, true}), "") << text;
    }
    for (const std::string text :
         {R"({"other:backup": {"a": [{"device:system": {}}]}})",
          "<backup xmlns='urn:other'><a><system xmlns='DEVICE'/></a></backup>",
          R"({"device:x": {"optics:wavelength": 1}})"}) {
        EXPECT_THAT(complaint_about(named(text), {false, true}),
                    HasSubstr("which the model does not describe: a check would miss it"))
            << text;
    }
}

TEST(Reading, CountsWhatItSkips) {
    const std::string json = R"({"other:a": {"b": [1, 2], "c": {}}, "device:port": [
        {"slot": "s", "number": 1, "more:x": [null], "x": 1, "link": {"speed": 1, "y": {"z": 1}}}]})";
    const std::string xml = named(
        "<a xmlns='urn:other'><b>1</b><b>2</b><c/></a><port xmlns='DEVICE'><slot>s</slot>\n"
        "<number>1</number><x xmlns='urn:more'/><x>1</x><link><speed>1</speed>"
        "<y><z/></y></link></port>");
    const UnknownData of_json = read(json, {false, true}).unknown_data;
    const UnknownData of_xml = read(xml, {false, true}).unknown_data;
    EXPECT_EQ(of_json.nodes, 8U);
    EXPECT_EQ(of_xml.nodes, 8U);
    EXPECT_THAT(of_json.modules, ElementsAre("other", "more"));
    EXPECT_THAT(of_xml.modules, ElementsAre("urn:other", "urn:more"));
    for (const UnknownData& skipped : {of_json, of_xml}) {
        EXPECT_THAT(skipped.unknown, ElementsAre("file:2: /port/x", "file:2: /port/link/y"));
    }
}

TEST(Reading, SaysWhichValuesTheModelAllowsAndWhere) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {R"("host-name": "")", "\"\" is not a value of host-name; write a text of 1..8 characters"},
        {R"("host-name": 5)", "host-name is written as a number; write a string in quotes"},
        {R"("host-name": null)", "\"host-name\" is given as null"},
        {R"("host-name": ["a"])", "\"host-name\" is given as an array; write a value"},
        {R"("secret": "PASS")", "the value of secret, which is not shown, is not a value of s"},
        {R"("code": "ab")", "\"ab\" is not a value of code: Two capital letters, such as AB"},
        {R"("mtu": 1501)", "\"1501\" is not a value of mtu; write a number in 68..1500 | 9000"},
        {R"("mtu": "1500")", "mtu is written as a string in quotes; write a number"},
        {R"("offset": "1.501")",
         "\"1.501\" is not a value of offset; write a number with at most 2 digits after the po"},
        {R"("offset": 1.5)", "offset is written as a number; write a string in quotes"},
        {R"("enabled": "yes")", "enabled is written as a string in quotes; write true or false"},
        {R"("level": "mid")", "\"mid\" is not a value of level; write one of low, high"},
        {R"("kind": "device:copper")", "\"device:copper\" is not a value of kind; write an id"},
        {R"("optical": [])", "\"optical\" is given as []; write [null]"},
        {R"("limit": 10)", "limit is not a valid value; write a number in 1..9, or one of none"},
        {R"("limit": "true")", "limit is not a valid value"},
        {R"("server": "a")", "\"server\" is given as a value; write [...]"},
        {R"("server": ["a", "a"])", "server is given twice, first at line 1; give it once"},
        {R"("ntp": "a", "manual": {})", "Data for both cases \"ntp\" and \"manual\" exist"},
    };
    for (const auto& [member, complaint] : rows) {
        const std::string about = complaint_about("{\"device:system\": {" + member + "}}");
        EXPECT_THAT(about, HasSubstr(": " + complaint)) << member;
        EXPECT_THAT(about, StartsWith("file:1:")) << member;
    }
    for (const std::string member :
         {R"("mtu": 9000)", R"("offset": "-1.5")", R"("octets": "18446744073709551615")",
          R"("limit": "none")", R"("limit": true)", R"("optical": [null])",
          R"("extra": {"a": [1]})", R"("server": [])"}) {
        EXPECT_EQ(complaint_about("{\"device:system\": {" + member + "}}"), "") << member;
    }
}

TEST(Reading, PointsAtTheNodeThatTheModelRefuses) {
    const std::string good = R"({"slot": "a", "number": 1, "link": {"speed": 1}},)";
    const std::vector<std::pair<std::string, std::string>> rows = {
        {good + "\n{\"number\": 1,\n \"slot\": \"a\", \"link\": {\"speed\": 1}}",
         "file:3:2: Duplicate instance of \"port\""},
        {good + "\n{\"slot\": \"b\",\n \"link\": {\"speed\": 1}}", "file:2:2: port has no number"},
        {good + "\n{\"slot\": \"b\", \"number\": 1}", "file:2:2: Mandatory node \"speed\""},
    };
    for (const auto& [ports, complaint] : rows) {
        EXPECT_THAT(complaint_about("{\"device:port\": [" + ports + "]}"), StartsWith(complaint));
    }
    EXPECT_THAT(complaint_about("{\"device:fan\": [{\"id\": 1, \"off\": [null]},\n{\"id\": 2}]}"),
                StartsWith("file:2:2: Mandatory choice \"drive\""));
}

TEST(Reading, ResolvesPrefixesInValuesByTheNamespacesInScope) {
    const std::string kind = "<system xmlns='DEVICE' xmlns:x='OPTICS'><kind>KIND</kind></system>";
    EXPECT_EQ(value_at(named(replaced(kind, "KIND", "x:laser")), "/system/kind"), "optics:laser");
    EXPECT_EQ(value_at(named(replaced(kind, "KIND", " fibre\n")), "/system/kind"), "device:fibre");
    EXPECT_THAT(complaint_about(named(replaced(kind, "KIND", "optics:laser"))),
                HasSubstr("\"optics:laser\" has a prefix that is not bound to a module"));
    EXPECT_THAT(
        complaint_about(named("<system xmlns='DEVICE'><host-name xmlns:x='OPTICS'>a</host-name>"
                              "<kind>x:laser</kind></system>")),
        HasSubstr("\"x:laser\" is not a value of kind"));
    const std::string peer =
        "<e:system xmlns:e='DEVICE' xmlns:x='OPTICS'><e:peer>/e:port[e:slot=':x:'][e:number='1']"
        "/x:wavelength</e:peer></e:system>";
    EXPECT_EQ(value_at(named(peer), "/system/peer"),
              "/device:port[slot=':x:'][number='1']/optics:wavelength");
}

TEST(Reading, CountsDefaultsAsThere) {
    EXPECT_EQ(value_at("{}", "/system/mtu"), "1500");
    EXPECT_EQ(value_at(named("<system xmlns='DEVICE'><mtu xmlns:w='urn:ietf:params:xml:ns:netconf:"
                             "default:1.0' w:default='true'>1500</mtu></system>"),
                       "/system/mtu"),
              "1500");
    EXPECT_EQ(value_at("{}", "/system/manual"), "absent");
}

}  // namespace
