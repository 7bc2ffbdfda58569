#include <algorithm>
#include <array>
#include <ctime>
#include <iomanip>
#include <map>
#include <set>
#include <tuple>

#include "reports/difference_text.h"
#include "reports/fingerprint.h"
#include "reports/html_style.h"
#include "reports/report_text.h"
#include "reports/report_writer.h"
#include "reports/source_lines.h"
#include "reports/spool.h"
#include "reports/xml_elements.h"

namespace {

constexpr std::size_t kLinesAround = 2;
constexpr std::size_t kMostFigures = 6;  ///< beside one finding

// Of pugixml: no blanks that are not text, and "<td></td>", since HTML has no "<td/>".
constexpr unsigned kPage = pugi::format_raw | pugi::format_no_empty_element_tags;

constexpr const char* kBeforeStyle =
    "<!DOCTYPE html><html lang=\"en\"><head><meta charset=\"utf-8\"/>"
    "<meta http-equiv=\"Content-Security-Policy\" "
    "content=\"default-src 'none'; style-src 'unsafe-inline'\"/>"
    "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>"
    "<title>VRRP configuration check</title><style>";
constexpr const char* kBehindStyle = "</style></head><body><main><h1>VRRP configuration check</h1>";

struct Result {
    const char* look;
    const char* words;
};

Result result_of(const Report& report, bool accept_warnings) {
    const Outcome outcome = outcome_of(report);
    if (outcome == Outcome::clean && report.requests == 0) {
        return {"warning", "Nothing to check"};
    }
    if (outcome == Outcome::warned && accept_warnings) {
        return {"good", "Accepted, warnings included"};
    }
    constexpr Result kResults[] = {{"error", "Refused"},
                                   {"error", "Could not be checked"},
                                   {"warning", "Accepted once the warnings are confirmed"},
                                   {"good", "Accepted"}};
    return kResults[static_cast<std::size_t>(outcome)];
}

pugi::xml_node add_group(pugi::xml_node body, const std::string& name) {
    pugi::xml_node heading = add_element(add_element(body, "tr"), "th", {}, name + " ");
    heading.append_attribute("colspan") = 2;
    heading.append_attribute("scope") = "rowgroup";
    return heading;
}

void add_changes(pugi::xml_node article, const std::vector<Change>& changes) {
    add_element(article, "h3", {}, "Changes");
    if (changes.empty()) {
        add_element(article, "p", {}, "The candidate changes nothing.");
        return;
    }
    pugi::xml_node body = add_element(add_element(article, "table"), "tbody");
    bool was_alone = false;
    for (const ChangeLine& line : difference_lines(changes)) {
        const std::string word = line.look == nullptr ? "" : line.look->word;
        if (line.is_alone && !was_alone) {
            add_group(body, "Elsewhere");
        }
        was_alone = line.is_alone;
        if (line.is_alone || line.depth == 2) {
            pugi::xml_node row = add_element(body, "tr", "change");
            add_element(row, "td", word, line.look->mark + word);
            add_element(row, "td", {}, line.text);
        } else if (pugi::xml_node heading = add_group(body, line.text); line.look != nullptr) {
            add_element(heading, "span", word, word);
        }
    }
}

/// The lines around `place`, with a mark on what is there.
void add_figure(pugi::xml_node parent, const SourceText& source, const Location& place) {
    pugi::xml_node figure = add_element(parent, "figure");
    add_element(figure, "figcaption", {}, text_of(place));
    pugi::xml_node lines = add_element(figure, "pre");
    const std::size_t first = place.line > kLinesAround ? place.line - kLinesAround : 1;
    const std::size_t last = std::min(place.line + kLinesAround, source.line_count());
    for (std::size_t line = first; line <= last; ++line) {
        const Excerpt shown = excerpt(source, line, line == place.line ? place.column : 0);
        add_element(lines, "span", "number", std::to_string(line));
        add_text(lines, shown.before);
        if (!shown.marked.empty()) {
            add_element(lines, "mark", {}, shown.marked);
        }
        add_text(lines, shown.after);
        lines.append_child(pugi::node_pcdata).set_value("\n");
    }
}

/// The finding's place and those of the values, each line once, where the source is known.
void add_figures(pugi::xml_node section, const Report& report, const Finding& finding) {
    std::vector<Location> places = {finding.location, finding.node_location};
    for (const ReadValue& value : finding.values) {
        places.push_back(value.location);
    }
    std::set<std::pair<std::string, std::size_t>> shown;
    pugi::xml_node figures;
    for (const Location& place : places) {
        const SourceText* const source = source_of(report, place);
        if (source != nullptr && shown.size() < kMostFigures &&
            shown.emplace(place.file, place.line).second) {
            figures = figures ? figures : add_element(section, "div");
            add_figure(figures, *source, place);
        }
    }
}

using Keys = std::tuple<std::string_view, std::string_view, std::string_view>;

Keys keys_of(const VrrpInstance& instance) {
    return {instance.interface, instance.family, instance.id};
}

/// The first finding in each instance, errors before warnings.
std::map<Keys, const Finding*> worst_findings(const std::vector<Finding>& findings) {
    std::map<Keys, const Finding*> worst;
    for (const Severity severity : {Severity::error, Severity::warning}) {
        for (const Finding& finding : findings) {
            if (finding.instance && finding.severity == severity) {
                worst.emplace(keys_of(*finding.instance), &finding);
            }
        }
    }
    return worst;
}

/// The report of one candidate, as a part of the page.
class Article {
  public:
    Article(const Report& report, const std::vector<Finding>& findings, bool accept_warnings,
            std::size_t number)
        : report_(report),
          findings_(findings),
          result_(result_of(report, accept_warnings)),
          name_("report-" + std::to_string(number)) {}

    void add_to(pugi::xml_node parent) const {
        pugi::xml_node article = add_element(parent, "article");
        set_attribute(article, "id", name_);
        add_element(article, "h2", {}, report_.candidate);
        add_result(article);
        if (!findings_.empty()) {
            add_findings(article);
        }
        if (report_.changes) {
            add_changes(article, *report_.changes);
        }
        if (!report_.instances.empty()) {
            add_instances(article);
        }
    }

    /// The same in a table of all candidates, with a link to it when it `is_shown`.
    void add_row_to(pugi::xml_node table, bool is_shown) const {
        pugi::xml_node row = add_element(table, "tr");
        pugi::xml_node name = add_element(row, "td");
        if (is_shown) {
            name = add_element(name, "a");
            set_attribute(name, "href", "#" + name_);
        }
        add_text(name, report_.candidate);
        add_element(row, "td", result_.look, result_.words);
        for (const Severity severity : {Severity::error, Severity::warning}) {
            add_element(row, "td", {}, std::to_string(report_.count(severity)));
        }
    }

  private:
    std::string anchor(const Finding& finding) const {
        return name_ + "-finding-" + std::to_string(&finding - findings_.data() + 1);
    }

    void add_result(pugi::xml_node article) const {
        pugi::xml_node box =
            add_element(article, "div", std::string("result ") + result_.look, result_.words);
        if (report_.failure.empty()) {
            add_element(box, "p", {}, result_text(report_));
        }
        for (const std::string& note : notes(report_)) {
            add_element(box, "p", {}, note);
        }
        add_element(
            article, "p", "soft",
            "Running configuration: " + (report_.running.empty() ? "empty" : report_.running) +
                "; " + counted(report_.rule_names.size(), "rule"));
        for (const auto& source : report_.sources) {
            add_element(add_element(article, "p", "soft", "SHA-256 of " + source->name() + ": "),
                        "code", {}, sha256(source->bytes()));
        }
    }

    void add_findings(pugi::xml_node article) const {
        add_element(article, "h3", {}, "Findings");
        std::string cause;
        pugi::xml_node parent = article;
        for (const Finding& finding : findings_) {
            if (finding.cause != cause) {
                cause = finding.cause;
                parent =
                    cause.empty() ? article : add_element(article, "div", "cause", cause + ":");
            }
            add_finding(parent, finding);
        }
    }

    void add_finding(pugi::xml_node parent, const Finding& finding) const {
        pugi::xml_node section = add_element(parent, "section", "finding");
        set_attribute(section, "id", anchor(finding));
        pugi::xml_node words = add_element(section, "div");
        pugi::xml_node heading = add_element(words, "h4");
        const std::string severity = severity_word(finding.severity);
        add_element(heading, "span", "badge " + severity, severity);
        add_text(heading, finding.message);
        add_element(words, "p", "soft", text_of(finding.location));
        for (const std::string& line : finding_lines(finding)) {
            add_element(words, "p", {}, line);
        }
        add_figures(section, report_, finding);
    }

    /// A row for every VRRP interface, with its instances by address family, each with a link to
    /// its worst finding.
    void add_instances(pugi::xml_node article) const {
        add_element(article, "h3", {}, counted(report_.instances.size(), "VRRP instance"));
        const auto worst = worst_findings(findings_);
        add_element(article, "p", "hint soft", "Scroll sideways to see the IPv6 identifiers.");
        pugi::xml_node frame = add_element(article, "div", "scroll");
        frame.append_attribute("tabindex") = 0;
        pugi::xml_node table = add_element(frame, "table");
        add_heads(table, {"VRRP interface", "IPv4 identifiers", "IPv6 identifiers"});
        pugi::xml_node body = add_element(table, "tbody");
        pugi::xml_node ipv4;
        pugi::xml_node ipv6;
        const std::string* interface = nullptr;
        for (const VrrpInstance& instance : report_.instances) {
            if (interface == nullptr || *interface != instance.interface) {
                interface = &instance.interface;
                pugi::xml_node row = add_element(body, "tr");
                add_element(row, "td", {}, *interface);
                ipv4 = add_element(row, "td");
                ipv6 = add_element(row, "td");
            }
            pugi::xml_node cell = instance.family == "ipv4" ? ipv4 : ipv6;
            const auto found = worst.find(keys_of(instance));
            if (found == worst.end()) {
                add_element(cell, "span", "chip", instance.id);
                continue;
            }
            const Finding& finding = *found->second;
            const std::string severity = severity_word(finding.severity);
            pugi::xml_node link = add_element(cell, "a", "chip " + severity, instance.id + " !");
            set_attribute(link, "href", "#" + anchor(finding));
            set_attribute(link, "title", severity + ": " + finding.message);
        }
    }

    const Report& report_;
    const std::vector<Finding>& findings_;
    Result result_;
    std::string name_;
};

/// "2026-11-23 20:15 UTC".
std::string now() {
    const std::time_t time = std::time(nullptr);
    std::ostringstream text;
    text << std::put_time(std::gmtime(&time), "%F %R UTC");
    return text.str();
}

/// The page begins with the table of all candidates when there are several, so that all that it
/// shows of each waits for that. Of a fleet, what is clean has its row and no more.
class HtmlWriter final : public ReportWriter {
  public:
    HtmlWriter(const ReportOptions& options, const Write& write) : ReportWriter(options, write) {
        write_(std::string(kBeforeStyle) + kPageStyle + kBehindStyle +
               "<p class=\"soft\">vrrp-valid " VRRP_VALID_VERSION ", " + now() + "</p>");
    }

    void add(const Report& report, const std::vector<Finding>& findings) override {
        const Article article(report, findings, options_.accept_warnings, ++count_);
        const bool is_shown = !options_.counts_clean || !is_clean(report);
        const pugi::xml_document document;
        article.add_row_to(document.root(), is_shown);
        rows_[static_cast<std::size_t>(outcome_of(report))].write(
            xml_of(document.first_child(), kPage));
        if (is_shown) {
            article.add_to(document.root());
            articles_.write(xml_of(document.last_child(), kPage));
        }
    }

    void finish(const Summary& summary, std::size_t not_reached) override {
        const pugi::xml_document document;
        if (not_reached > 0) {
            write_(xml_of(
                add_element(document.root(), "div", "result error", not_reached_text(not_reached)),
                kPage));
        }
        if (options_.counts_clean || count_ > 1) {
            write_overview(summary);
        }
        articles_.copy_to(write_);
        write_("</main></body></html>\n");
    }

  private:
    /// All candidates in a table, what to look at first on top.
    void write_overview(const Summary& summary) const {
        const pugi::xml_document head;
        std::string lines;
        for (const std::string& line : summary_lines(summary)) {
            const char* const element = lines.empty() ? "h2" : "p";
            lines += xml_of(add_element(head.root(), element, {}, line), kPage);
        }
        add_heads(head.root(), {"Candidate", "Result", "Errors", "Warnings"});
        write_("<article>" + lines + "<table>" + xml_of(head.last_child(), kPage) + "<tbody>");
        for (const Spool& rows : rows_) {
            rows.copy_to(write_);
        }
        write_("</tbody></table></article>");
    }

    std::size_t count_ = 0;
    std::array<Spool, 4> rows_;  ///< by outcome
    Spool articles_;
};

}  // namespace

std::unique_ptr<ReportWriter> html_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<HtmlWriter>(options, write);
}
