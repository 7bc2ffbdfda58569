#include <libyang/libyang.h>

#include <pugixml.hpp>
#include <sstream>

#include "configuration/document_writer.h"
#include "configuration/leaf_value.h"
#include "configuration/value_prefixes.h"

namespace {

constexpr const char* kBase = "urn:ietf:params:xml:ns:netconf:base:1.0";
constexpr std::string_view kXml = "http://www.w3.org/XML/1998/namespace";

void set(pugi::xml_node element, const std::string& name, const std::string& value) {
    element.append_attribute(name.c_str()).set_value(value.c_str());
}

class XmlWriter {
  public:
    std::string write(const Document& document) {
        const std::vector<const DocumentNode*> children = children_to_write(document.root());
        pugi::xml_node top = document_;
        std::string default_namespace;
        if (!document.envelope.empty() || children.empty()) {
            const bool is_data = document.envelope.find("data") != std::string::npos;
            top = document_.append_child(is_data ? "data" : "config");
            set(top, "xmlns", kBase);
            default_namespace = kBase;
        }
        write_children(document.root(), top, default_namespace);
        std::ostringstream out;
        document_.save(out, "  ", pugi::format_indent | pugi::format_no_declaration);
        return out.str();
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
        element.text().set(value.text.c_str());
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

    /// Writes the element as the file has it, with what it needs of the namespaces around it there.
    static void write_raw(const DocumentNode& node, pugi::xml_node parent,
                          const std::string& default_namespace) {
        pugi::xml_document piece;
        piece.load_buffer(node.text.data(), node.text.size(),
                          pugi::parse_full | pugi::parse_ws_pcdata);
        pugi::xml_node element = parent.append_copy(piece.first_child());
        bool has_default = element.attribute("xmlns") != nullptr;
        for (const NamespaceBinding& binding : node.attributes->namespaces) {
            const std::string prefix(binding.prefix);
            const std::string name = prefix.empty() ? "xmlns" : "xmlns:" + prefix;
            const bool is_used =
                prefix.empty() || node.text.find(prefix + ":") != std::string_view::npos;
            if (is_used && element.attribute(name.c_str()) == nullptr) {
                has_default = has_default || prefix.empty();
                if (!prefix.empty() || binding.uri != default_namespace) {
                    set(element, name, std::string(binding.uri));
                }
            }
        }
        if (!has_default && !default_namespace.empty()) {
            set(element, "xmlns", "");
        }
    }

    pugi::xml_document document_;
};

}  // namespace

std::string write_xml(const Document& document) {
    return XmlWriter().write(document);
}
