// The page for the change ticket.
#include <gmock/gmock.h>

#include <pugixml.hpp>
#include <set>

#include "reports/report_format.h"
#include "samples.h"

using namespace testing;

namespace {

/// The page, which is XML as well, and its text.
struct Page {
    explicit Page(const std::vector<Report>& reports, bool accept_warnings = false) {
        const std::string page = format_reports(reports, {"html", accept_warnings});
        EXPECT_TRUE(document.load_string(page.c_str())) << page;
        for (const auto& found : document.select_nodes("//body//text()")) {
            text += found.node().value();
        }
    }

    std::size_t count(const char* path) const { return document.select_nodes(path).size(); }

    pugi::xml_document document;
    std::string text;
};

Report refused() {
    Report report = checked("candidate.json", {changed_address(), bare_warning()});
    report.sources = {
        std::make_shared<SourceText>("candidate.json", "1\n2\n3\n4\n    \"e\": 5\n    \"id\": 5")};
    report.changes = {{ChangeKind::added, "/a{b}", "a b", "", {}, {}, {}},
                      {ChangeKind::changed, "/a{b}/c", "a b", "c", "1", "2", {}}};
    report.instances = {{"l3-vlan10", "ipv4", "5"},
                        {"other", "ipv4", "5"},
                        {"other", "ipv6", "5"},
                        {"a", "ipv4", "1"}};
    return report;
}

TEST(Page, TellsTheResultTheChangeAndEachFindingBesideItsLines) {
    const Page page({refused()});
    for (const char* const part :
         {"Refused", "a b added", "~ changed", "c 1 → 2", "IPv4 address cannot be changed",
          "candidate.json:6:5", "192.0.2.2/25 (running.json:8:3)", "Note: the name holds a blank.",
          "What to do: Keep the address.", "changing the VRRP router version"}) {
        EXPECT_THAT(page.text, HasSubstr(part));
    }
    EXPECT_EQ(page.count("//figure"), 2U) << "of running there are no lines to show";
    EXPECT_EQ(page.count("//mark"), 1U);
    EXPECT_STREQ(page.document.select_node("//mark").node().text().get(), "\"id\"");
    EXPECT_THAT(page.text, HasSubstr("44\n5    \"e\": 5\n6\"id\": 5\n")) << "two lines around";
}

TEST(Page, DrawsInstancesAndJoinsThoseInConflict) {
    const Page page({refused()});
    EXPECT_EQ(page.count("//svg//rect"), 4U);
    EXPECT_EQ(page.count("//svg//a[@class='chip warning']"), 1U);
    EXPECT_EQ(page.count("//svg//path[@class='conflict']"), 1U);
    EXPECT_EQ(page.count("//svg//*[@class='chip error']"), 2U) << "IPv6 has the identifier once";
    EXPECT_THAT(page.document.select_node("//svg").node().attribute("aria-label").value(),
                HasSubstr("ipv4 identifier 5 is used on l3-vlan10, other."));
    std::set<std::string> ids;
    for (const auto& found : page.document.select_nodes("//@id")) {
        EXPECT_TRUE(ids.insert("#" + std::string(found.attribute().value())).second);
    }
    EXPECT_EQ(page.count("//svg//a"), 2U);
    for (const auto& found : page.document.select_nodes("//a/@href")) {
        EXPECT_EQ(ids.count(found.attribute().value()), 1U) << found.attribute().value();
    }
    Report many = refused();
    for (int i = 0; i < 100; ++i) {
        many.instances.insert(many.instances.begin(),
                              {"i" + std::to_string(i), "ipv4", "9" + std::to_string(i)});
    }
    for (const char* const id : {"2", "3", "4", "6", "7", "8"}) {
        many.instances.push_back({"other", "ipv4", id});
    }
    const Page crowded({many});
    std::set<int> lines;
    for (const auto& found : crowded.document.select_nodes("//svg//rect/@y")) {
        lines.insert(found.attribute().as_int());
    }
    EXPECT_GE(lines.size(), 60U);
    for (auto line = std::next(lines.begin()); line != lines.end(); ++line) {
        EXPECT_GE(*line - *std::prev(line), 30) << "a chip is drawn over another";
    }
    EXPECT_THAT(crowded.text, HasSubstr("43 more interfaces not drawn"));
    EXPECT_EQ(crowded.count("//svg//path[@class='conflict']"), 1U) << "what is wrong is drawn";
}

TEST(Page, SaysTheResultOfEachCandidate) {
    Report empty = checked("empty", {});
    empty.requests = 0;
    const std::vector<Report> reports = {refused(), not_checked("broken"), checked("clean", {}),
                                         empty, checked("warned", {bare_warning()})};
    for (const bool accept_warnings : {false, true}) {
        const Page page(reports, accept_warnings);
        std::vector<std::string> results;
        for (const auto& found :
             page.document.select_nodes("//article/div[contains(@class, 'result')]")) {
            results.push_back(found.node().attribute("class").value() + std::string(": ") +
                              found.node().text().get());
        }
        EXPECT_EQ(results, (std::vector<std::string>{
                               "result error: Refused", "result error: Could not be checked",
                               "result good: Accepted", "result warning: Nothing to check",
                               accept_warnings
                                   ? "result good: Accepted, warnings included"
                                   : "result warning: Accepted once the warnings are confirmed"}));
        EXPECT_EQ(page.count("//thead") + page.count("//style"), 2U);
        EXPECT_EQ(page.count("//script | //link | //img | //@src"), 0U);
    }
}

}  // namespace
