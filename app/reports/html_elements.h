/// Building blocks of a page, on pugixml. Texts are made printable here.
#pragma once

#include <pugixml.hpp>
#include <string>

#include "text/printable.h"

inline void set_attribute(pugi::xml_node element, const char* name, const std::string& value) {
    element.append_attribute(name) = printable(value).c_str();
}

inline void add_text(pugi::xml_node parent, const std::string& text) {
    parent.append_child(pugi::node_pcdata).set_value(printable(text).c_str());
}

/// An element of the class `look`, where that is not empty, which holds `text`.
inline pugi::xml_node add_element(pugi::xml_node parent, const char* name, const char* look = "",
                                  const std::string& text = {}) {
    pugi::xml_node element = parent.append_child(name);
    if (*look != '\0') {
        element.append_attribute("class") = look;
    }
    if (!text.empty()) {
        add_text(element, text);
    }
    return element;
}
