// The page for the change ticket.
#include <gmock/gmock.h>

#include <pugixml.hpp>
#include <set>

#include "samples.h"

using namespace testing;

namespace {

/// The page, which is XML as well.
struct Page {
    explicit Page(const std::string& page) {
        EXPECT_TRUE(document.load_string(page.c_str())) << page;
    }

    /// What is at `path`, each with its class.
    std::vector<std::string> texts(const char* path) const {
        std::vector<std::string> texts;
        for (const auto& found : document.select_nodes(path)) {
            texts.push_back(found.node().attribute("class").value() + std::string(": ") +
                            found.node().text().get());
        }
        return texts;
    }

    pugi::xml_document document;
};

Report refused() {
    Finding warning = bare_warning();
    warning.instance = changed_address().instance;
    Finding other = bare_warning();
    other.instance = VrrpInstance{"a", "ipv6", "1"};
    Report report = checked("candidate.json", {warning, changed_address(), other});
    report.instances = {{"l3-vlan10", "ipv4", "5"}, {"l3-vlan10", "ipv6", "5"}, *other.instance};
    return report;
}

TEST(Page, TellsTheResultTheChangeAndEachFindingBesideItsLines) {
    Report report = refused();
    report.sources = {
        std::make_shared<SourceText>("candidate.json", "1\n2\n3\n4\n    \"e\": 5\n    \"id\": 5")};
    report.changes = {{ChangeKind::added, "/a{b}", "a b", "", {}, {}, {}},
                      {ChangeKind::changed, "/a{b}/c", "a b", "c", "1", "2", {}},
                      {ChangeKind::removed, "/d{e}/c", "d e", "c", "1", {}, {}},
                      {ChangeKind::added, "/f", "", "f", {}, "1", {}}};
    report.findings[1].cause = "layer-3 interface x";
    report.findings[1].values.push_back({"candidate", "", "", "", {"candidate.json", 6, 9}});
    const std::string whole = formatted({report}, "html");
    const Page page(whole);
    std::string text;
    for (const auto& found : page.document.select_nodes("//body//text()")) {
        text += found.node().value();
    }
    for (const char* const part :
         {"Refused", "a b added~ changedc 1 → 2d e - removedc 1Elsewhere + addedf 1",
          "IPv4 address cannot be changed", "candidate.json:6:5", "192.0.2.2/25 (running.json:8:3)",
          "note: the name holds a blank.", "help: Keep the address.", "layer-3 interface x:",
          "44\n5    \"e\": 5\n6    \"id\": 5\n", "Running configuration: empty; 3 rules",
          "candidate.json: 3c99bc231de16d5b8dfe54af9bb1d0e06dee344aa838f13683a1a555495ed66c",
          " UTC"}) {
        EXPECT_THAT(text, HasSubstr(part));
    }
    EXPECT_THAT(page.texts("//div[@class='cause']//figure/figcaption"),
                ElementsAre(": candidate.json:6:5", ": candidate.json:4:7"))
        << "each line once, and of running there are none to show";
    EXPECT_LT(text.find("IPv4 address cannot"), text.find("a b added"));
    EXPECT_THAT(page.texts("//mark"), ElementsAre(": \"id\""));
    EXPECT_THAT(page.texts("//script | //link | //img | //*[@src]"), ElementsAre());
    EXPECT_EQ(whole.find("/>", whole.find("<body>")), std::string::npos) << "is no end in HTML";
}

TEST(Page, LeadsFromEachInstanceToItsWorstFinding) {
    const Page page(formatted({refused(), refused()}, "html"));
    EXPECT_THAT(page.texts("//article[2]//tr/td[2]/*"), ElementsAre("chip error: 5 !"));
    EXPECT_THAT(page.texts("//article[2]//tr/td[3]/*"),
                ElementsAre("chip: 5", "chip warning: 1 !"));
    std::set<std::string> ids;
    for (const auto& found : page.document.select_nodes("//@id")) {
        EXPECT_TRUE(ids.insert("#" + std::string(found.attribute().value())).second);
    }
    for (const auto& found : page.document.select_nodes("//a/@href")) {
        EXPECT_EQ(ids.count(found.attribute().value()), 1U) << found.attribute().value();
    }
    EXPECT_EQ(page.texts("//section[concat('#', @id) = //a[@class='chip error']/@href]//h4/span"),
              std::vector<std::string>(2, "badge error: error"));
}

TEST(Page, SaysTheResultOfEachCandidate) {
    Report empty = checked("empty", {});
    empty.requests = 0;
    const std::vector<Report> reports = {refused(), not_checked("broken"), checked("clean", {}),
                                         empty, checked("warned", {bare_warning()})};
    std::vector<std::string> results = {"error: Refused", "error: Could not be checked",
                                        "warning: Accepted once the warnings are confirmed",
                                        "good: Accepted", "warning: Nothing to check"};
    EXPECT_EQ(Page(formatted(reports, "html")).texts("//main/article[1]//td[2]"), results);
    results[2] = "good: Accepted, warnings included";
    EXPECT_EQ(Page(formatted(reports, "html", true)).texts("//main/article[1]//td[2]"), results);
    ReportOptions fleet = in("html");
    fleet.counts_clean = true;
    Report clean = checked("clean", {});
    clean.changes = {{ChangeKind::added, "/f", "", "f", {}, "1", {}}};
    clean.unknown_data.nodes = 7;
    const Page page(formatted({clean, refused()}, fleet));
    EXPECT_THAT(page.texts("//article[1]//td[1]/a | //article[1]//td[1][not(a)]"),
                ElementsAre(": candidate.json", ": clean"));
    EXPECT_EQ(page.texts("//article").size(), 2U);
}

}  // namespace
