// What is configuration data in a NETCONF document.
#include "configuration/netconf_envelope.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "errors/cannot_check.h"

namespace {

const std::string kBase = "urn:ietf:params:xml:ns:netconf:base:1.0";

/// `text` with BASE for the namespace, checked and without the blanks that stand where an envelope
/// stood.
std::string data_in(std::string text) {
    const std::size_t base = text.find("BASE");
    if (base != std::string::npos) {
        text.replace(base, 4, kBase);
    }
    const std::string data = without_netconf_envelope("file", text);
    EXPECT_EQ(data.size(), text.size()) << "everything stays where it was";
    EXPECT_EQ(std::count(data.begin(), data.end(), '\n'),
              std::count(text.begin(), text.end(), '\n'));
    const std::size_t begin = data.find_first_not_of(" \n");
    return begin == std::string::npos
               ? ""
               : data.substr(begin, data.find_last_not_of(" \n") + 1 - begin);
}

TEST(Envelope, IsTakenOffWhenItIsWhole) {
    EXPECT_EQ(data_in("<config xmlns=\"BASE\">\n<a/>\n</config>\n"), "<a/>");
    EXPECT_EQ(data_in("<n:data xmlns:n='BASE'\n><a/><b/></n:data >"), "<a/><b/>");
    EXPECT_EQ(data_in("<data xmlns=\"BASE\"/>"), "");
    EXPECT_EQ(data_in("<data xmlns=\"BASE\"></data>"), "");
}

TEST(Envelope, IsLeftToTheParserWhenItIsNot) {
    for (const std::string text :
         {"", "<", "<!-- <config", "<?xml", "<config", "<a/>", "<config><a/></config>",
          "<config xmlns=\"urn:other\"><a/></config>", "<configuration xmlns=\"BASE\"/>",
          "<config xmlns=\"BASE\"><a/>", "<config xmlns=\"BASE\"><a/></configX>",
          "<config xmlns=\"BASE\"><a/></config", "<config xmlns=\"BASE\"><a/></config><b/>"}) {
        std::string whole = text;
        const std::size_t base = whole.find("BASE");
        if (base != std::string::npos) {
            whole.replace(base, 4, kBase);
        }
        EXPECT_EQ(data_in(text), whole);
    }
}

TEST(Envelope, WithOtherNamespacesIsRefused) {
    EXPECT_THROW(data_in("<data xmlns=\"BASE\" xmlns:i=\"urn:i\"><i:a/></data>"), CannotCheck);
}

}  // namespace
