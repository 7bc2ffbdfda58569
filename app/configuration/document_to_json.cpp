#include <libyang/libyang.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>

#include "configuration/document_writer.h"
#include "configuration/leaf_value.h"

namespace {

constexpr unsigned kReadFlags =
    rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

/// Writes the members of one object without the object around them.
class Members {
  public:
    explicit Members(Writer& writer) : writer_(writer) {}

    bool Null() { return writer_.Null(); }
    bool Bool(bool value) { return writer_.Bool(value); }
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(int64_t) { return false; }
    bool Uint64(uint64_t) { return false; }
    bool Double(double) { return false; }
    bool RawNumber(const char* text, rapidjson::SizeType size, bool /*copy*/) {
        return writer_.RawValue(text, size, rapidjson::kNumberType);
    }
    bool String(const char* text, rapidjson::SizeType size, bool /*copy*/) {
        return writer_.String(text, size);
    }
    bool Key(const char* text, rapidjson::SizeType size, bool /*copy*/) {
        return writer_.Key(text, size);
    }
    bool StartObject() { return depth_++ == 0 || writer_.StartObject(); }
    bool EndObject(rapidjson::SizeType count) { return --depth_ == 0 || writer_.EndObject(count); }
    bool StartArray() { return writer_.StartArray(); }
    bool EndArray(rapidjson::SizeType count) { return writer_.EndArray(count); }

  private:
    Writer& writer_;
    int depth_ = 0;
};

class JsonWriter {
  public:
    std::string write(const Document& document, const std::string& envelope) {
        writer_.SetIndent(' ', 2);
        writer_.StartObject();
        if (!envelope.empty()) {
            write_text(envelope);
            writer_.StartObject();
        }
        write_members(document.root());
        if (!envelope.empty()) {
            writer_.EndObject();
        }
        writer_.EndObject();
        return std::string(buffer_.GetString(), buffer_.GetSize()) + "\n";
    }

  private:
    static rapidjson::SizeType size(std::string_view text) {
        return static_cast<rapidjson::SizeType>(text.size());
    }

    void write_text(std::string_view text) { writer_.String(text.data(), size(text)); }

    /// Writes `members`, as the file has them: "name": value.
    void write_raw(std::string_view members) {
        const std::string object = "{" + std::string(members) + "}";
        rapidjson::StringStream stream(object.c_str());
        Members filter(writer_);
        rapidjson::Reader().Parse<kReadFlags>(stream, filter);
    }

    void write_members(const DocumentNode& node) {
        const lysc_node* array = nullptr;  // that has not ended yet
        const auto end_array = [&] {
            if (array != nullptr) {
                writer_.EndArray();
                array = nullptr;
            }
        };
        write_annotation(node, "@");
        for (const DocumentNode* const child : children_to_write(node)) {
            if (child->schema != array || array == nullptr) {
                end_array();
                if (child->schema == nullptr || (child->schema->nodetype & LYS_ANYDATA) != 0) {
                    write_raw(child->text);
                    continue;
                }
                const std::string name = name_of(*child);
                write_annotation(node, "@" + name);
                write_text(name);
                if ((child->schema->nodetype & (LYS_LIST | LYS_LEAFLIST)) != 0) {
                    array = child->schema;
                    writer_.StartArray();
                }
            }
            write_value(*child);
        }
        end_array();
    }

    void write_annotation(const DocumentNode& node, std::string_view name) {
        const NodeAttributes* const attributes = node.attributes;
        for (std::size_t i = 0; attributes != nullptr && i < attributes->annotations.size(); ++i) {
            if (attributes->annotations[i].name == name) {
                write_raw(attributes->annotations[i].value);
            }
        }
    }

    static std::string name_of(const DocumentNode& node) {
        const lysc_node* const above = node.parent->schema;
        const bool is_qualified = above == nullptr || above->module != node.schema->module;
        return (is_qualified ? std::string(node.schema->module->name) + ":" : "") +
               node.schema->name;
    }

    void write_value(const DocumentNode& node) {
        if ((node.schema->nodetype & (LYS_LEAF | LYS_LEAFLIST)) == 0) {
            writer_.StartObject();
            write_members(node);
            writer_.EndObject();
            return;
        }
        const std::string text = canonical_value(*node.schema, node.text);
        switch (json_kind(*node.schema, node.kind, node.text)) {
            case ValueKind::number:
                writer_.RawValue(text.data(), text.size(), rapidjson::kNumberType);
                return;
            case ValueKind::boolean:
                writer_.Bool(text == "true");
                return;
            case ValueKind::null:
                writer_.StartArray();
                writer_.Null();
                writer_.EndArray();
                return;
            default:
                write_text(text);
        }
    }

    rapidjson::StringBuffer buffer_;
    Writer writer_{buffer_};
};

}  // namespace

std::string write_json(const Document& document, const Envelope& envelope) {
    return JsonWriter().write(document, envelope.name);
}
