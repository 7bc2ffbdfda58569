/// Building blocks of XML and of pages, on pugixml. Texts are made printable here.
#pragma once

#include <initializer_list>
#include <pugixml.hpp>
#include <sstream>
#include <string>

#include "text/printable.h"

inline void set_attribute(pugi::xml_node element, const char* name, const std::string& value) {
    element.append_attribute(name) = printable(value).c_str();
}

inline void add_text(pugi::xml_node parent, const std::string& text) {
    parent.append_child(pugi::node_pcdata).set_value(printable(text).c_str());
}

/// An element of the class `look`, where that is not empty, which holds `text`.
inline pugi::xml_node add_element(pugi::xml_node parent, const char* name,
                                  const std::string& look = {}, const std::string& text = {}) {
    pugi::xml_node element = parent.append_child(name);
    if (!look.empty()) {
        set_attribute(element, "class", look);
    }
    if (!text.empty()) {
        add_text(element, text);
    }
    return element;
}

/// The head of a table with a heading for each column.
inline void add_heads(pugi::xml_node table, std::initializer_list<const char*> headings) {
    pugi::xml_node row = add_element(add_element(table, "thead"), "tr");
    for (const char* const heading : headings) {
        add_element(row, "th", {}, heading).append_attribute("scope") = "col";
    }
}

/// `element` as text, with `flags` of pugixml.
inline std::string xml_of(pugi::xml_node element, unsigned flags) {
    std::ostringstream text;
    element.print(text, "  ", flags, pugi::encoding_utf8);
    return text.str();
}
