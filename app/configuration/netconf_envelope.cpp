#include "configuration/netconf_envelope.h"

#include <algorithm>
#include <string_view>

#include "errors/cannot_check.h"

namespace {

constexpr std::string_view kBaseNamespace = "urn:ietf:params:xml:ns:netconf:base:1.0";
constexpr std::string_view kBlanks = " \t\r\n";

/// Where the first element begins, after the XML declaration, comments and blanks; npos without
/// one.
std::size_t first_element(std::string_view xml) {
    std::size_t position = 0;
    for (;;) {
        position = xml.find('<', position);
        if (position == std::string_view::npos) {
            return position;
        }
        const std::string_view rest = xml.substr(position);
        const bool is_comment = rest.substr(0, 4) == "<!--";
        if (!is_comment && rest.substr(0, 2) != "<?") {
            return position;
        }
        const std::string_view end = is_comment ? "-->" : "?>";
        position = xml.find(end, position);
        if (position == std::string_view::npos) {
            return position;
        }
        position += end.size();
    }
}

/// Blanks out [begin, end), line ends aside.
void blank_out(std::string& xml, std::size_t begin, std::size_t end) {
    std::replace_if(
        xml.begin() + static_cast<std::ptrdiff_t>(begin),
        xml.begin() + static_cast<std::ptrdiff_t>(end), [](char c) { return c != '\n'; }, ' ');
}

}  // namespace

std::string without_netconf_envelope(const std::string& name, std::string xml) {
    const std::size_t begin = first_element(xml);
    const std::size_t end = xml.find('>', begin == std::string::npos ? xml.size() : begin);
    if (end == std::string::npos) {
        return xml;
    }
    const std::string_view tag = std::string_view(xml).substr(begin + 1, end - begin - 1);
    const std::string_view qualified = tag.substr(0, tag.find_first_of(kBlanks));
    const std::size_t colon = qualified.find(':');
    const std::string_view local =
        colon == std::string_view::npos ? qualified : qualified.substr(colon + 1);
    if ((local != "config" && local != "data") ||
        tag.find(kBaseNamespace) == std::string_view::npos) {
        return xml;
    }
    if (tag.find("xmlns", tag.find("xmlns") + 1) != std::string_view::npos) {
        throw CannotCheck(name + ": declares other namespaces on <" + std::string(qualified) +
                          ">; declare them on the elements below it");
    }
    if (tag.back() == '/') {  // nothing is configured
        blank_out(xml, begin, end + 1);
        return xml;
    }
    const std::string closing_tag = "</" + std::string(qualified);
    const std::size_t closing = xml.rfind(closing_tag);
    const std::size_t closing_end =
        closing == std::string::npos ? closing
                                     : xml.find_first_not_of(kBlanks, closing + closing_tag.size());
    const bool is_whole =
        closing_end != std::string::npos && xml[closing_end] == '>' &&
        first_element(std::string_view(xml).substr(closing_end + 1)) == std::string_view::npos;
    if (!is_whole) {
        return xml;
    }
    blank_out(xml, closing, closing_end + 1);
    blank_out(xml, begin, end + 1);
    return xml;
}
