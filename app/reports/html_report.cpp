#include <algorithm>
#include <sstream>

#include "reports/difference_report.h"
#include "reports/finding_groups.h"
#include "reports/html_elements.h"
#include "reports/html_style.h"
#include "reports/instance_picture.h"
#include "reports/report_text.h"
#include "reports/source_lines.h"
#include "reports/spool.h"

namespace {

constexpr const char* kTitle = "VRRP configuration check";
constexpr std::size_t kLinesAround = 2;
constexpr std::size_t kMostFigures = 6;  ///< beside one finding

/// The report of one candidate, as the part of a page.
class Section {
  public:
    Section(const Report& report, bool accept_warnings, std::size_t number)
        : report_(report),
          accept_warnings_(accept_warnings),
          lines_(report.sources),
          name_("report-" + std::to_string(number)) {}

    /// "error", "warning" or "good".
    const char* look() const {
        if (!report_.failure.empty() || report_.count(Severity::error) > 0) {
            return "error";
        }
        const bool is_clean =
            report_.requests > 0 && (report_.count(Severity::warning) == 0 || accept_warnings_);
        return is_clean ? "good" : "warning";
    }

    std::string result() const {
        if (!report_.failure.empty()) {
            return "Could not be checked";
        }
        if (report_.count(Severity::error) > 0) {
            return "Refused";
        }
        if (report_.requests == 0) {
            return "Nothing to check";
        }
        return report_.count(Severity::warning) == 0 ? "Accepted"
               : accept_warnings_                    ? "Accepted, warnings included"
                                                     : "Accepted once the warnings are confirmed";
    }

    void add_to(pugi::xml_node parent) const {
        pugi::xml_node article = add_element(parent, "article");
        set_attribute(article, "id", name_);
        add_element(article, "h2", "", report_.candidate);
        add_result(article);
        if (!report_.instances.empty()) {
            add_element(article, "h3", "", "VRRP instances");
            draw_instances(article, report_, [this](std::size_t i) { return anchor(i); });
        }
        if (report_.changes) {
            add_changes(article);
        }
        if (!report_.findings.empty()) {
            add_findings(article);
        }
    }

    /// The same in a table of all candidates.
    void add_row_to(pugi::xml_node table) const {
        pugi::xml_node row = add_element(table, "tr");
        pugi::xml_node link = add_element(add_element(row, "td"), "a", "", report_.candidate);
        set_attribute(link, "href", "#" + name_);
        add_element(row, "td", look(), result());
        add_element(row, "td", "", std::to_string(report_.count(Severity::error)));
        add_element(row, "td", "", std::to_string(report_.count(Severity::warning)));
    }

  private:
    std::string anchor(std::size_t finding) const {
        return name_ + "-finding-" + std::to_string(finding + 1);
    }

    void add_result(pugi::xml_node article) const {
        const std::string look = std::string("result ") + this->look();
        pugi::xml_node box = add_element(article, "div", look.c_str(), result());
        add_element(box, "p", "", report_.failure.empty() ? result_text(report_) : report_.failure);
        for (const std::string& remark : remarks(report_)) {
            add_element(box, "p", "", remark);
        }
        pugi::xml_node list = add_element(article, "dl");
        const auto add = [&](const char* term, const std::string& text) {
            add_element(list, "dt", "", term);
            add_element(list, "dd", "", text);
        };
        add("Candidate", report_.candidate);
        add("Running", report_.running.empty() ? "empty" : report_.running);
        if (!report_.rule_names.empty()) {
            add("Rules", std::to_string(report_.rule_names.size()));
        }
    }

    void add_changes(pugi::xml_node article) const {
        add_element(article, "h3", "", "Changes");
        if (report_.changes->empty()) {
            add_element(article, "p", "", "The candidate changes nothing.");
            return;
        }
        pugi::xml_node body = add_element(add_element(article, "table"), "tbody");
        std::string group;
        const std::vector<Change>& changes = *report_.changes;
        for (std::size_t i = 0; i < changes.size(); ++i) {
            if (i + 1 < changes.size() && is_told_below(changes[i], changes[i + 1])) {
                continue;
            }
            const bool is_whole = changes[i].node.empty();
            if (is_whole || (changes[i].group != group && !changes[i].group.empty())) {
                add_group(add_element(body, "tr"), changes[i], is_whole);
            }
            if (!is_whole) {
                add_change(add_element(body, "tr", "change"), changes[i]);
            }
            group = changes[i].group;
        }
    }

    /// The heading of a group, which says so when it comes or goes as a whole.
    static void add_group(pugi::xml_node row, const Change& change, bool is_whole) {
        const ChangeLook& look = look_of(change.kind);
        pugi::xml_node heading = add_element(row, "th");
        heading.append_attribute("colspan") = 2;
        heading.append_attribute("scope") = "rowgroup";
        add_text(heading, change.group + (is_whole ? values_of(change) + " " : ""));
        if (is_whole) {
            add_element(heading, "span", look.word, look.word);
        }
    }

    static void add_change(pugi::xml_node row, const Change& change) {
        const ChangeLook& look = look_of(change.kind);
        add_element(row, "td", look.word, std::string(look.mark) + look.word);
        add_element(row, "td", "", change.node + values_of(change));
    }

    void add_findings(pugi::xml_node article) const {
        add_element(article, "h3", "", "Findings");
        for (const FindingGroup& block : finding_groups(report_)) {
            pugi::xml_node parent = article;
            if (!block.cause.empty()) {
                parent = add_element(article, "div", "cause");
                add_element(parent, "p", "", block.cause + ":");
            }
            for (const Finding* const finding : block.findings) {
                add_finding(parent, *finding);
            }
        }
    }

    void add_finding(pugi::xml_node parent, const Finding& finding) const {
        const auto number = static_cast<std::size_t>(&finding - report_.findings.data());
        const std::vector<Location> places = shown_places(finding);
        pugi::xml_node section =
            add_element(parent, "section", places.empty() ? "finding alone" : "finding");
        set_attribute(section, "id", anchor(number));
        pugi::xml_node words = add_element(section, "div");
        pugi::xml_node heading = add_element(words, "h4");
        const std::string severity = severity_word(finding.severity);
        add_element(heading, "span", ("badge " + severity).c_str(), severity);
        add_text(heading, finding.message);
        add_element(words, "p", "soft", ::text_of(finding.location));
        add_element(words, "p", "", finding.cli_path);
        if (!finding.values.empty()) {
            pugi::xml_node list = add_element(words, "ul", "values");
            for (const ReadValue& value : finding.values) {
                pugi::xml_node item = add_element(list, "li");
                add_element(item, "span", "soft", value.datastore + std::string(": "));
                add_text(item, value.cli_path + " ");
                add_element(item, "strong", "", value.value);
                if (value.location.is_known()) {
                    add_element(item, "span", "soft", " (" + ::text_of(value.location) + ")");
                }
            }
        }
        if (!finding.note.empty()) {
            add_element(words, "p", "", "Note: " + finding.note);
        }
        if (!finding.help.empty()) {
            add_element(words, "p", "", "What to do: " + finding.help);
        }
        pugi::xml_node see = add_element(words, "p", "soft", "Explained by ");
        add_element(see, "code", "", "vrrp-valid explain " + finding.rule);
        if (!places.empty()) {
            pugi::xml_node figures = add_element(section, "div");
            for (const Location& place : places) {
                add_figure(figures, place);
            }
        }
    }

    /// The finding's place and those of the values, each line once, where the source is known.
    std::vector<Location> shown_places(const Finding& finding) const {
        std::vector<Location> places;
        const auto add = [&](const Location& place) {
            const auto is_same = [&](const Location& other) {
                return other.file == place.file && other.line == place.line;
            };
            if (places.size() < kMostFigures && lines_.excerpt(place) &&
                std::none_of(places.begin(), places.end(), is_same)) {
                places.push_back(place);
            }
        };
        add(finding.location);
        for (const ReadValue& value : finding.values) {
            add(value.location);
        }
        return places;
    }

    void add_figure(pugi::xml_node parent, const Location& place) const {
        pugi::xml_node figure = add_element(parent, "figure");
        add_element(figure, "figcaption", "", ::text_of(place));
        pugi::xml_node source = add_element(figure, "pre");
        const std::size_t first = place.line > kLinesAround ? place.line - kLinesAround : 1;
        const std::size_t last = std::min(place.line + kLinesAround, lines_.count(place));
        for (std::size_t line = first; line <= last; ++line) {
            const bool is_place = line == place.line;
            const auto excerpt = lines_.excerpt({place.file, line, is_place ? place.column : 0});
            add_element(source, "span", "number", std::to_string(line));
            add_text(source, excerpt->before);
            if (!excerpt->marked.empty()) {
                add_element(source, "mark", "", excerpt->marked);
            }
            add_text(source, excerpt->after);
            source.append_child(pugi::node_pcdata).set_value("\n");
        }
    }

    const Report& report_;
    bool accept_warnings_;
    SourceLines lines_;
    std::string name_;
};

void add_head(pugi::xml_node html, const std::string& title) {
    pugi::xml_node head = add_element(html, "head");
    add_element(head, "meta").append_attribute("charset") = "utf-8";
    pugi::xml_node policy = add_element(head, "meta");
    policy.append_attribute("http-equiv") = "Content-Security-Policy";
    policy.append_attribute("content") = "default-src 'none'; style-src 'unsafe-inline'";
    pugi::xml_node viewport = add_element(head, "meta");
    viewport.append_attribute("name") = "viewport";
    viewport.append_attribute("content") = "width=device-width, initial-scale=1";
    add_element(head, "title", "", title);
    add_element(head, "style").text() = kPageStyle;
}

std::string text_of(const pugi::xml_node& element) {
    std::ostringstream text;
    element.print(text, "", pugi::format_raw, pugi::encoding_utf8);
    return text.str();
}

/// The page is written in the order in which a reader wants it, so that all of it waits for the
/// table of all candidates, which is at its beginning when there are several.
class HtmlWriter final : public ReportWriter {
  public:
    HtmlWriter(bool accept_warnings, Write write)
        : accept_warnings_(accept_warnings), write_(std::move(write)) {}

    void add(const Report& report) override {
        const Section section(report, accept_warnings_, ++count_);
        const pugi::xml_document document;
        section.add_row_to(document.root());
        rows_.write(text_of(document.first_child()));
        section.add_to(document.root());
        sections_.write(text_of(document.last_child()));
        candidate_ = report.candidate;
    }

    void finish(const Summary& summary, std::size_t not_reached) override {
        const pugi::xml_document head;
        add_head(head.root(), count_ == 1 ? kTitle + (": " + candidate_) : kTitle);
        write_("<!DOCTYPE html><html lang=\"en\">" + text_of(head.first_child()) + "<body><main>");
        const pugi::xml_document top;
        add_element(top.root(), "h1", "", kTitle);
        if (not_reached > 0) {
            add_element(top.root(), "div", "result error", not_reached_text(not_reached));
        }
        for (const pugi::xml_node element : top) {
            write_(text_of(element));
        }
        if (count_ > 1) {
            write_overview(summary);
        }
        sections_.copy_to(write_);
        write_("</main></body></html>\n");
    }

  private:
    /// All candidates in a table.
    void write_overview(const Summary& summary) const {
        const pugi::xml_document document;
        add_element(document.root(), "h2", "", summary_text(summary));
        pugi::xml_node head = add_element(add_element(document.root(), "thead"), "tr");
        for (const char* const word : {"Candidate", "Result", "Errors", "Warnings"}) {
            add_element(head, "th", "", word).append_attribute("scope") = "col";
        }
        write_("<article>" + text_of(document.first_child()) + "<table>" +
               text_of(document.last_child()) + "<tbody>");
        rows_.copy_to(write_);
        write_("</tbody></table></article>");
    }

    bool accept_warnings_;
    Write write_;
    std::size_t count_ = 0;
    std::string candidate_;  ///< the last one
    Spool rows_;
    Spool sections_;
};

}  // namespace

std::unique_ptr<ReportWriter> html_writer(const ReportOptions& options, const Write& write) {
    return std::make_unique<HtmlWriter>(options.accept_warnings, write);
}
