// A node's place is where an editor finds its name.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "keypath.h"
#include "support.h"

using local_platform::Node;
using local_platform::NodeKind;

namespace {

/// Writes one random configuration in both syntaxes, every value another one.
class RandomWriter {
  public:
    RandomWriter(unsigned seed, bool is_xml) : random_(seed), is_xml_(is_xml) {}

    std::string write() {
        open("device:system", true);
        leaf("host-name", true);
        leaf("ntp", false);
        close();
        if (!is_xml_) {
            separate();
            text_ += "\"device:port\"" + blank() + ":" + blank() + "[";
        }
        const unsigned ports = 1 + random_() % 4;
        for (unsigned i = 0; i < ports; ++i) {
            open(is_xml_ ? "device:port" : "", i == 0);
            leaf(is_backward_ ? "number" : "slot", true);
            leaf(is_backward_ ? "slot" : "number", false);
            open("link", false);
            leaf("speed", true);
            close();
            close();
        }
        return is_xml_ ? text_ : "\xef\xbb\xbf{" + text_ + "]" + blank() + "}";
    }

  private:
    std::string blank() {
        const char* const blanks[] = {"", " ", "\n", "\r\n\t", "\n  "};
        return blanks[random_() % 5];
    }

    void separate() { text_ += is_xml_ ? blank() : blank() + "," + blank(); }

    void open(std::string name, bool is_first) {
        const bool is_module = name.rfind("device:", 0) == 0;
        is_first ? void() : separate();
        if (is_xml_) {
            name = is_module ? name.substr(7) : name;
            text_ += "<" + (is_module ? name + " xmlns='urn:libvrrp-valid:test:device'" : name) +
                     blank() + ">" + blank();
        } else {
            text_ +=
                (name.empty() ? "" : "\"" + name + "\"" + blank() + ":" + blank()) + "{" + blank();
        }
        open_.push_back(name);
    }

    void close() {
        text_ += blank() + (is_xml_ ? "</" + open_.back() + ">" : "}");
        open_.pop_back();
    }

    void leaf(const std::string& name, bool is_first) {
        const bool is_number = name == "number" || name == "speed";
        const std::string value =
            (is_number ? "" : "\xc3\xa4\xf0\x9f\x98\x80") + std::to_string(++values_);
        is_first ? void() : separate();
        if (is_xml_) {
            text_ += "<!-- \xe2\x82\xac --><" + name + ">" + value + "</" + name + ">";
        } else {
            text_ += "\"" + name + "\"" + blank() + ":" + blank() +
                     (is_number ? value : "\"" + value + "\"");
        }
    }

    std::mt19937 random_;
    bool is_xml_;
    bool is_backward_ = random_() % 2 == 0;
    std::string text_;
    std::vector<std::string> open_;
    int values_ = 0;
};

/// What an editor shows from `location` on, counted without the code under test.
std::string_view text_at(std::string_view text, const Location& location) {
    text.remove_prefix(text.substr(0, 3) == "\xef\xbb\xbf" ? 3 : 0);
    for (std::size_t line = 1; line < location.line; ++line) {
        text.remove_prefix(text.find('\n') + 1);
    }
    for (std::size_t column = 1; column < location.column; ++column) {
        text.remove_prefix(1);
        while (!text.empty() && (static_cast<unsigned char>(text.front()) >> 6U) == 2) {
            text.remove_prefix(1);
        }
    }
    return text;
}

class Places {
  public:
    Places(const std::string& text, const Document& document) : text_(text), document_(document) {}

    /// Every node of the tree below `node` has its place; gives how many there are.
    int check(const Node& node) {
        const bool is_whole_list = node.schema->kind == NodeKind::list && !node.is_entry;
        const bool is_default = node.schema->name == "mtu";
        int count = 0;
        if (node.parent != nullptr && !is_whole_list && !is_default) {
            check_place(node);
            ++count;
        }
        for (const auto& child : node.children) {
            count += child == nullptr ? 0 : check(*child);
        }
        return count;
    }

  private:
    void check_place(const Node& node) const {
        confd_hkeypath_t kp;
        local_platform::fill_keypath(node, kp);
        const std::string path = local_platform::keypath_text(kp);
        const Location location = document_.locate(path);
        const bool is_xml = document_.format() == ConfigurationFormat::xml;
        const std::string name = node.is_entry ? "slot" : node.schema->name;
        const Node& valued = node.is_entry ? *node.children[0] : node;
        std::string_view found = text_at(text_, location);
        SCOPED_TRACE(path + " at " + text_of(location) + " of:\n" + text_);
        EXPECT_EQ(location.file, "file");
        const std::string begin = is_xml ? "<" : "\"";
        EXPECT_TRUE(found.substr(0, begin.size() + name.size()) == begin + name ||
                    found.substr(0, begin.size() + name.size() + 7) == begin + "device:" + name);
        if (!valued.text.empty()) {
            found.remove_prefix(name.size() + 2);
            EXPECT_EQ(found.find(valued.text), found.find_first_not_of(" \t\r\n:\">"));
        }
    }

    const std::string& text_;
    const Document& document_;
};

TEST(Location, OfEveryNodeIsWhereItsNameStands) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        for (const bool is_xml : {false, true}) {
            const std::string text = RandomWriter(seed, is_xml).write();
            const Document document = read(text);
            const auto tree = test_model().tree(document);
            EXPECT_GE(Places(text, document).check(tree.root()), 8);
        }
    }
}

TEST(Location, IsFoundForKeysOfAnyKindAndSpelling) {
    const std::string text = R"({"device:port": [
        {"slot": "a b\"\\]", "number": 1, "link": {"speed": 1}},
        {"slot": "2001:DB8::1/64", "number": 2, "link": {"speed": 2}}]})";
    const Document document = read(text);
    const std::vector<std::pair<std::string, std::string>> rows = {
        {R"(/port["a b\"\\]" "1"]/link/speed)", "file:2:52"},
        {R"(/port["a b\"\\]" "1"])", "file:2:10"},
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
