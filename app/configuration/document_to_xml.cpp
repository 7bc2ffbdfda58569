#include <libyang/libyang.h>

#include <pugixml.hpp>
#include <sstream>

#include "configuration/document_writer.h"
#include "configuration/leaf_value.h"
#include "configuration/value_prefixes.h"

namespace {

/// What a file of XML holds that holds nothing; there must be an element.
constexpr const char* kNothing =
    "<config xmlns=\"urn:ietf:params:xml:ns:netconf:base:1.0\">\n</config>\n";
constexpr const char* kIndent = "  ";
constexpr std::string_view kXml = "http://www.w3.org/XML/1998/namespace";

/// Where an element is put as it stands: text in angle brackets, which no value has.
constexpr const char* kPlace = "as-it-stands";

void set(pugi::xml_node element, const std::string& name, const std::string& value) {
    element.append_attribute(name.c_str()).set_value(value.c_str());
}

class XmlWriter {
  public:
    std::string write(const Document& document, const Envelope& envelope) {
        write_children(document.root(), document_.root(), envelope.default_namespace);
        std::ostringstream out;
        for (const pugi::xml_node element : document_) {
            element.print(out, kIndent, pugi::format_indent, pugi::encoding_auto, envelope.depth);
        }
        std::string text = envelope.head + (envelope.head.empty() ? "" : "\n");
        if (envelope.tail.empty() && !document_.first_child()) {
            return text + kNothing;
        }
        text += with_pieces(finished(out.str()));
        for (unsigned level = 1; level < envelope.depth; ++level) {
            text += kIndent;
        }
        return text + envelope.tail + (envelope.tail.empty() ? "" : "\n");
    }

  private:
    void write_children(const DocumentNode& node, pugi::xml_node element,
                        const std::string& default_namespace) {
        for (const DocumentNode* const child : children_to_write(node)) {
            if (child->is_skipped() || (child->schema->nodetype & LYS_ANYDATA) != 0) {
                write_raw(*child, element, default_namespace);
            } else {
                write_node(*child, element, default_namespace);
            }
        }
    }

    void write_node(const DocumentNode& node, pugi::xml_node parent,
                    const std::string& default_namespace) {
        const lys_module& module = *node.schema->module;
        pugi::xml_node element = parent.append_child(node.schema->name);
        if (default_namespace != module.ns) {
            set(element, "xmlns", module.ns);
        }
        write_annotations(node, element);
        if ((node.schema->nodetype & (LYS_LEAF | LYS_LEAFLIST)) == 0) {
            write_children(node, element, module.ns);
            return;
        }
        const std::string text = canonical_value(*node.schema, node.text);
        const PrefixedValue value = with_prefixes(*node.schema, text);
        for (const auto& [prefix, xml_namespace] : value.bindings) {
            set(element, "xmlns:" + prefix, xml_namespace);
        }
        if (!value.text.empty()) {
            element.text().set(value.text.c_str());
        }
    }

    static void write_annotations(const DocumentNode& node, pugi::xml_node element) {
        const NodeAttributes* const attributes = node.attributes;
        for (std::size_t i = 0; attributes != nullptr && i < attributes->annotations.size(); ++i) {
            const Annotation& annotation = attributes->annotations[i];
            const std::string prefix =
                annotation.xml_namespace == kXml ? "xml" : "a" + std::to_string(i + 1);
            if (prefix != "xml") {
                set(element, "xmlns:" + prefix, std::string(annotation.xml_namespace));
            }
            set(element, prefix + ":" + std::string(annotation.name),
                std::string(annotation.value));
        }
    }

    /// Leaves a place for the element as the file has it, with what it needs of the namespaces
    /// around it there.
    void write_raw(const DocumentNode& node, pugi::xml_node parent,
                   const std::string& default_namespace) {
        parent.append_child(pugi::node_pi).set_name(kPlace);
        const std::size_t name_end = node.text.find_first_of(" \t\r\n/>");
        pieces_.emplace_back(node.text.substr(0, name_end));
        pieces_.back() += missing_declarations(node, default_namespace);
        pieces_.back() += node.text.substr(name_end);
    }

    static std::string missing_declarations(const DocumentNode& node,
                                            const std::string& default_namespace) {
        pugi::xml_document tag;
        tag.load_string((start_tag(node.text) + "/>").c_str());
        const pugi::xml_node element = tag.first_child();
        bool has_default = element.attribute("xmlns") != nullptr;
        pugi::xml_node missing = tag.append_child("missing");
        for (const NamespaceBinding& binding : node.attributes->namespaces) {
            const std::string prefix(binding.prefix);
            const std::string name = prefix.empty() ? "xmlns" : "xmlns:" + prefix;
            const bool is_used =
                prefix.empty() || node.text.find(prefix + ":") != std::string_view::npos;
            if (!is_used || element.attribute(name.c_str()) != nullptr) {
                continue;
            }
            has_default = has_default || prefix.empty();
            if (!prefix.empty() || binding.uri != default_namespace) {
                set(missing, name, std::string(binding.uri));
            }
        }
        if (!has_default && !default_namespace.empty()) {
            set(missing, "xmlns", "");
        }
        std::ostringstream out;
        missing.print(out, "", pugi::format_raw);
        const std::string text = out.str();  // "<missing xmlns="..."/>"
        const std::size_t begin = std::string_view("<missing").size();
        return text.substr(begin, text.size() - begin - std::string_view("/>").size());
    }

    /// The start tag of `element` without its end.
    static std::string start_tag(std::string_view element) {
        char quote = '\0';
        std::size_t end = 0;
        for (; quote != '\0' || (element[end] != '>' && element[end] != '/'); ++end) {
            const char c = element[end];
            quote = quote == c ? '\0' : quote == '\0' && (c == '"' || c == '\'') ? c : quote;
        }
        return std::string(element.substr(0, end));
    }

    /// The library's text with "<a/>" for "<a />", and references for the carriage returns in
    /// values, which a reader takes for line ends otherwise.
    static std::string finished(const std::string& text) {
        std::string result;
        bool is_quoted = false;
        bool is_tag = false;
        for (const char& c : text) {
            is_tag = is_tag ? c != '>' || is_quoted : c == '<';
            is_quoted = is_tag && (c == '"' ? !is_quoted : is_quoted);
            const bool is_end = is_tag && !is_quoted && c == ' ' && (&c)[1] == '/';
            if (c == '\r') {
                result += "&#13;";
            } else if (!is_end) {
                result += c;
            }
        }
        return result;
    }

    std::string with_pieces(const std::string& text) const {
        const std::string place = std::string("<?") + kPlace + "?>";
        std::string result;
        std::size_t begin = 0;
        for (const std::string& piece : pieces_) {
            const std::size_t end = text.find(place, begin);
            result.append(text, begin, end - begin).append(piece);
            begin = end + place.size();
        }
        return result.append(text, begin, std::string::npos);
    }

    std::vector<std::string> pieces_;  ///< in the order of their places
    pugi::xml_document document_;
};

}  // namespace

std::string write_xml(const Document& document, const Envelope& envelope) {
    return XmlWriter().write(document, envelope);
}
