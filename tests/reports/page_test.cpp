// The page for the change ticket.
#include <gmock/gmock.h>

#include <pugixml.hpp>
#include <set>

#include "samples.h"

using namespace testing;

namespace {

/// The page, which is XML as well, and its text.
struct Page {
    explicit Page(const std::string& page) {
        EXPECT_TRUE(document.load_string(page.c_str())) << page;
        for (const auto& found : document.select_nodes("//body//text()")) {
            text += found.node().value();
        }
    }

    std::size_t count(const char* path) const { return document.select_nodes(path).size(); }

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
    std::string text;
};

Report refused() {
    Finding warning = bare_warning();
    warning.instance = VrrpInstance{"a", "ipv6", "1"};
    Report report = checked("candidate.json", {warning, changed_address(), changed_address()});
    report.sources = {
        std::make_shared<SourceText>("candidate.json", "1\n2\n3\n4\n    \"e\": 5\n    \"id\": 5")};
    report.changes = {{ChangeKind::added, "/a{b}", "a b", "", {}, {}, {}},
                      {ChangeKind::changed, "/a{b}/c", "a b", "c", "1", "2", {}},
                      {ChangeKind::removed, "/d{e}/c", "d e", "c", "1", {}, {}}};
    report.instances = {{"l3-vlan10", "ipv4", "5"},
                        {"l3-vlan10", "ipv6", "5"},
                        {"a", "ipv4", "1"},
                        {"a", "ipv6", "1"}};
    return report;
}

TEST(Page, TellsTheResultTheChangeAndEachFindingBesideItsLines) {
    Report report = refused();
    report.findings[1].cause = "layer-3 interface x";
    const Page page(formatted({report}, "html"));
    for (const char* const part :
         {"Refused", "a b added~ changedc 1 → 2d e - removedc 1", "IPv4 address cannot be changed",
          "candidate.json:6:5", "192.0.2.2/25 (running.json:8:3)", "note: the name holds a blank.",
          "help: Keep the address.", "layer-3 interface x:", "changing the VRRP router version",
          "Running configuration: empty; 3 rules"}) {
        EXPECT_THAT(page.text, HasSubstr(part));
    }
    EXPECT_EQ(page.count("//section[2]//figure | //div[@class='cause']//figure"), 4U)
        << "of running there are no lines to show";
    EXPECT_THAT(page.texts("//mark"), ElementsAre(": \"id\"", ": \"id\""));
    EXPECT_THAT(page.text, HasSubstr("44\n5    \"e\": 5\n6    \"id\": 5\n")) << "two lines around";
    EXPECT_EQ(page.count("//script | //link | //img | //@src | //thead[2]"), 0U);
}

TEST(Page, LeadsFromEachInstanceToItsWorstFinding) {
    const Page page(formatted({refused(), refused()}, "html"));
    EXPECT_THAT(page.texts("//article[2]//tr[td/*[starts-with(@class, 'chip')]]/td/*"),
                ElementsAre("chip error: 5 !", "chip: 5", "chip: 1", "chip warning: 1 !"));
    std::set<std::string> ids;
    for (const auto& found : page.document.select_nodes("//@id")) {
        EXPECT_TRUE(ids.insert("#" + std::string(found.attribute().value())).second);
    }
    EXPECT_EQ(page.count("//a"), 6U);
    for (const auto& found : page.document.select_nodes("//a/@href")) {
        EXPECT_EQ(ids.count(found.attribute().value()), 1U) << found.attribute().value();
    }
    const std::string error =
        page.document.select_node("//a[@class='chip error']/@href").attribute().value();
    EXPECT_EQ(page.texts(("//section[@id='" + error.substr(1) + "']//h4/span").c_str()).front(),
              "badge error: error");
}

TEST(Page, SaysTheResultOfEachCandidate) {
    Report empty = checked("empty", {});
    empty.requests = 0;
    const std::vector<Report> reports = {refused(), not_checked("broken"), checked("clean", {}),
                                         empty, checked("warned", {bare_warning()})};
    std::vector<std::string> results = {"error: Refused", "error: Could not be checked",
                                        "good: Accepted", "warning: Nothing to check",
                                        "warning: Accepted once the warnings are confirmed"};
    EXPECT_EQ(Page(formatted(reports, "html")).texts("//main/article[1]//td[2]"), results);
    results.back() = "good: Accepted, warnings included";
    const Page page(formatted(reports, "html", true));
    EXPECT_EQ(page.texts("//main/article[1]//td[2]"), results);
    for (std::string& result : results) {
        result.insert(0, "result ");
    }
    EXPECT_EQ(page.texts("//article/div[contains(@class, 'result')]"), results);
}

}  // namespace
