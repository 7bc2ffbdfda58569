// Reads RFC 7951 JSON.
#include <libyang/libyang.h>
#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>

#include "configuration/node_reader.h"

namespace {

/// What the members of an envelope are called.
constexpr std::string_view kEnvelopes[] = {"ietf-restconf:data", "ietf-netconf:config",
                                           "ietf-netconf:data", "ietf-netconf-nmda:data", "data"};
/// What makes an edit of data, in an annotation.
constexpr std::string_view kEditAnnotations[] = {"ietf-netconf:operation", "yang:insert"};
/// The modules that use other names for something else.
constexpr std::string_view kProtocols[] = {"ietf-restconf", "ietf-netconf", "ietf-yang-patch",
                                           "ietf-netconf-nmda"};

template <typename Names>
bool is_among(const Names& names, std::string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

/// An object or array that has not ended yet.
struct Level {
    enum class Kind { object, list, leaf_list, empty_leaf, unknown } kind;
    const lysc_node* schema = nullptr;  ///< of the node; null for the configuration
    std::size_t offset = 0;             ///< of an array's name
    std::size_t first_name = 0;         ///< an object's among the names
    bool is_filled = false;             ///< an empty leaf's [null]
};

/// What the next value of an object is.
struct Member {
    enum class Kind { none, data, unknown, annotation, envelope } kind = Kind::none;
    const lysc_node* schema = nullptr;
    std::size_t offset = 0;
    UnknownPart part;
};

std::string quoted(std::string_view name) {
    return "\"" + std::string(name) + "\"";
}

class JsonReader {
  public:
    explicit JsonReader(NodeReader& nodes)
        : nodes_(nodes),
          mark_size_(byte_order_mark_size(nodes.text())),
          stream_(nodes.text().data() + mark_size_, nodes.text().size() - mark_size_) {}

    void read() {
        constexpr unsigned kFlags = rapidjson::kParseIterativeFlag |
                                    rapidjson::kParseNumbersAsStringsFlag |
                                    rapidjson::kParseValidateEncodingFlag;
        rapidjson::Reader parser;
        const rapidjson::ParseResult result = parser.Parse<kFlags>(stream_, *this);
        if (result.IsError()) {
            refuse_text(result);
        }
    }

    // RapidJSON's events. An object or array is reported at its bracket, everything else at its
    // end. Numbers are reported as written, never as the types that come last.
    bool Null() { return scalar(ValueKind::null, at() - 4, {}); }
    bool Bool(bool value) {
        return scalar(ValueKind::boolean, at() - (value ? 4 : 5), value ? "true" : "false");
    }
    bool RawNumber(const char* text, rapidjson::SizeType size, bool /*copy*/) {
        return scalar(ValueKind::number, at() - size, {text, size});
    }
    bool String(const char* text, rapidjson::SizeType size, bool /*copy*/) {
        return scalar(ValueKind::string, begin_of_string(), {text, size});
    }
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(int64_t) { return false; }
    bool Uint64(uint64_t) { return false; }
    bool Double(double) { return false; }

    bool Key(const char* text, rapidjson::SizeType size, bool /*copy*/) {
        const std::string_view name(text, size);
        const std::size_t offset = begin_of_string();
        names_.emplace_back(name, offset);
        const std::size_t colon = name.find(':');
        if (levels_.back().kind != Level::Kind::unknown) {
            read_name(name, offset);
        } else if (is_among(kEditAnnotations, name)) {
            refuse(offset, "a JSON file is merged as a whole, so " + quoted(name) +
                               " is not supported; write the edit in XML");
        } else if (member_.kind == Member::Kind::unknown && colon != std::string_view::npos) {
            nodes_.require_unknown(member_.part, nodes_.module(name.substr(0, colon)).module,
                                   offset);
        }
        return true;
    }

    bool StartObject() {
        nodes_.require_depth(levels_.size(), at());
        Level next{Level::Kind::object};
        next.first_name = names_.size();
        if (levels_.empty()) {
            nodes_.begin_data(nodes_.options().is_edit, EditOperation::merge);
        } else if (is_unknown(false)) {
            next.kind = Level::Kind::unknown;
        } else if (levels_.back().kind == Level::Kind::list) {
            next.schema = levels_.back().schema;
            nodes_.open(*next.schema, at());
        } else if (is_member(LYS_CONTAINER)) {
            next.schema = member_.schema;
            nodes_.open(*next.schema, member_.offset);
        } else if (levels_.back().kind != Level::Kind::object ||
                   member_.kind != Member::Kind::envelope) {
            refuse_value("an object");
        }
        levels_.push_back(next);
        return true;
    }

    bool EndObject(rapidjson::SizeType /*count*/) {
        const Level ended = levels_.back();
        require_names_once(ended);
        levels_.pop_back();
        if (ended.kind == Level::Kind::unknown) {
            end_unknown_value(at() + 1);
        } else if (ended.schema != nullptr) {
            nodes_.close();
        }
        return true;
    }

    bool StartArray() {
        nodes_.require_depth(levels_.size(), at());
        if (levels_.empty()) {
            refuse(at(), "an array where {...} is expected");
        }
        if (is_unknown(true)) {
            levels_.push_back({Level::Kind::unknown});
            return true;
        }
        if (!is_member(LYS_LIST | LYS_LEAFLIST | LYS_LEAF)) {
            refuse_value("an array");
        }
        levels_.push_back({is_member(LYS_LIST)       ? Level::Kind::list
                           : is_member(LYS_LEAFLIST) ? Level::Kind::leaf_list
                                                     : Level::Kind::empty_leaf,
                           member_.schema, member_.offset});
        return true;
    }

    bool EndArray(rapidjson::SizeType /*count*/) {
        const Level ended = levels_.back();
        levels_.pop_back();
        if (ended.kind == Level::Kind::unknown) {
            end_unknown_value(at() + 1);
        } else if (ended.kind == Level::Kind::empty_leaf && !ended.is_filled) {
            refuse(ended.offset, quoted(ended.schema->name) + " is given as []; write " +
                                     wanted_for(*ended.schema, false));
        }
        return true;
    }

  private:
    std::size_t at() const { return mark_size_ + stream_.Tell(); }

    /// Refuses what is no JSON, with what people mostly did.
    [[noreturn]] void refuse_text(const rapidjson::ParseResult& result) const {
        const std::string_view text = nodes_.text();
        const std::size_t at = mark_size_ + result.Offset();
        const std::size_t last = text.find_last_not_of(" \t\r\n", at == 0 ? 0 : at - 1);
        const char wrong = at < text.size() ? text[at] : '\0';
        require_no_text_slip(nodes_, at);
        if (at >= text.size() || result.Code() == rapidjson::kParseErrorStringMissQuotationMark) {
            refuse(at, "bad JSON: the file ends inside a value; is it complete?");
        }
        if ((wrong == '}' || wrong == ']') && text[last] == ',') {
            refuse(last, std::string("bad JSON: a comma before ") + wrong + "; remove it");
        }
        const char* const reason = wrong == '/' || wrong == '#' ? "a comment; remove it"
                                   : wrong == '\'' ? "a single quote; write double quotes"
                                                   : rapidjson::GetParseError_En(result.Code());
        refuse(at, std::string("bad JSON: ") + reason);
    }

    /// Of the string that just ended: after the last quote before its own that is not escaped.
    std::size_t begin_of_string() const {
        const std::string_view text = nodes_.text();
        std::size_t quote = at() - 1;
        std::size_t last_other = 0;
        do {
            quote = text.rfind('"', quote - 1);
            last_other = text.find_last_not_of('\\', quote - 1);
        } while ((quote - 1 - last_other) % 2 == 1);
        return quote;
    }

    [[noreturn]] void refuse(std::size_t offset, const std::string& what_is_wrong) const {
        nodes_.refuse(offset, what_is_wrong);
    }

    /// Whether the value that begins now is that of a member whose node is of `types`.
    bool is_member(int types) const {
        return levels_.back().kind == Level::Kind::object && member_.kind == Member::Kind::data &&
               (member_.schema->nodetype & types) != 0;
    }

    /// How RFC 7951 writes `node`, or when `is_in_array` one entry of it.
    static const char* wanted_for(const lysc_node& node, bool is_in_array) {
        switch (node.nodetype) {
            case LYS_CONTAINER:
                return "{...}";
            case LYS_LIST:
                return is_in_array ? "{...}" : "[{...}, ...]";
            case LYS_LEAFLIST:
                return is_in_array ? "a value" : "[...]";
            default:
                return reinterpret_cast<const lysc_node_leaf&>(node).type->basetype == LY_TYPE_EMPTY
                           ? "[null]"
                           : "a value";
        }
    }

    [[noreturn]] void refuse_value(const char* given, std::size_t offset) const {
        const bool is_in_array = levels_.back().kind != Level::Kind::object;
        const lysc_node* const schema = is_in_array ? levels_.back().schema : member_.schema;
        if (schema == nullptr) {
            refuse(offset, std::string(given) + " where {...} is expected");
        }
        refuse(offset, quoted(schema->name) + " is given as " + given + "; write " +
                           wanted_for(*schema, is_in_array));
    }
    [[noreturn]] void refuse_value(const char* given) const { refuse_value(given, at()); }

    void read_name(std::string_view name, std::size_t offset) {
        const lysc_node* const parent = levels_.back().schema;
        const bool is_outermost = levels_.size() == 1;
        member_.offset = offset;
        if (!name.empty() && name[0] == '@') {
            member_.kind = Member::Kind::annotation;
            return;
        }
        if (!envelope_.empty() && is_outermost) {
            refuse(offset,
                   quoted(name) + " is next to the configuration's " + envelope_ + "; remove it");
        }
        if (is_among(kEnvelopes, name) && is_outermost) {
            if (has_data_) {
                refuse(offset, quoted(name) + " is next to data; give only one of them");
            }
            member_.kind = Member::Kind::envelope;
            envelope_ = name;
            return;
        }
        has_data_ = true;
        const std::size_t colon = name.find(':');
        const bool is_bare = colon == std::string_view::npos;
        const std::string_view local = name.substr(colon + 1);  // all of it without one
        const std::string_view prefix = name.substr(0, is_bare ? 0 : colon);
        if (prefix.empty() && (parent == nullptr || !is_bare)) {
            refuse(offset,
                   quoted(name) + " names no module; write \"MODULE:" + std::string(local) + "\"");
        }
        if (is_among(kProtocols, prefix) && nodes_.module(prefix).module == nullptr) {
            refuse(offset, quoted(name) +
                               " is not a configuration; give a configuration, or an answer that "
                               "contains one");
        }
        NamedModule* const named = prefix.empty() ? nullptr : &nodes_.module(prefix);
        member_.schema = nodes_.find(parent, named, local, offset, member_.part);
        const bool is_data =
            member_.schema != nullptr && (member_.schema->nodetype & LYS_ANYDATA) == 0;
        member_.kind = is_data ? Member::Kind::data : Member::Kind::unknown;
    }

    /// Takes note of a value that begins inside an unknown part, or as one.
    bool is_unknown(bool is_array) {
        const Level::Kind kind = levels_.back().kind;
        const bool begins_here =
            kind == Level::Kind::object &&
            (member_.kind == Member::Kind::unknown || member_.kind == Member::Kind::annotation);
        if (kind != Level::Kind::unknown && !begins_here) {
            return false;
        }
        if (member_.kind == Member::Kind::unknown && !is_array) {  // an array's entries count
            nodes_.count(member_.part);
        }
        return true;
    }

    void end_unknown_value(std::size_t end) {
        if (levels_.back().kind != Level::Kind::object) {
            return;
        }
        if (member_.part.anydata != nullptr) {
            nodes_.add(*member_.part.anydata, member_.offset, ValueKind::text,
                       nodes_.text().substr(member_.offset, end - member_.offset));
        }
        member_ = {};
    }

    bool scalar(ValueKind kind, std::size_t begin, std::string_view text) {
        if (levels_.empty()) {
            refuse(begin, "a value where {...} is expected");
        }
        if (is_unknown(false)) {
            end_unknown_value(at());
            return true;
        }
        Level& level = levels_.back();
        const bool is_in_array = level.kind == Level::Kind::leaf_list;
        const bool is_empty = level.kind == Level::Kind::empty_leaf;
        if (!is_member(LYS_LEAF) && !is_in_array && !is_empty) {
            refuse_value("a value", begin);
        }
        const lysc_node& schema = is_in_array || is_empty ? *level.schema : *member_.schema;
        if (is_empty && (kind != ValueKind::null || std::exchange(level.is_filled, true))) {
            refuse(level.offset, quoted(schema.name) + " is given as an array; write " +
                                     wanted_for(schema, false));
        }
        if (!is_empty && kind == ValueKind::null) {
            refuse(begin, quoted(schema.name) + " is given as null; write " +
                              wanted_for(schema, is_in_array) + ", or leave it out");
        }
        const std::size_t quote = kind == ValueKind::string ? 1 : 0;
        nodes_.note_value(schema, begin + quote, at() - quote);
        nodes_.add(schema, is_in_array ? begin : member_.offset, kind, text);
        return true;
    }

    void require_names_once(const Level& level) {
        const auto first = names_.begin() + static_cast<std::ptrdiff_t>(level.first_name);
        std::sort(first, names_.end());
        const auto repeated = std::adjacent_find(
            first, names_.end(),
            [](const auto& one, const auto& other) { return one.first == other.first; });
        if (repeated != names_.end()) {
            refuse(std::next(repeated)->second,
                   quoted(repeated->first) + " is given twice in one object; give it once");
        }
        names_.erase(first, names_.end());
    }

    NodeReader& nodes_;
    std::size_t mark_size_;
    rapidjson::MemoryStream stream_;
    std::vector<Level> levels_;
    /// The names of all objects that have not ended, and where they are.
    std::vector<std::pair<std::string, std::size_t>> names_;
    Member member_;
    std::string envelope_;  ///< the name of the member that holds the data; empty without one
    bool has_data_ = false;
};

}  // namespace

void read_json(NodeReader& nodes) {
    JsonReader(nodes).read();
}
