// Reads RFC 7951 JSON.
#include <libyang/libyang.h>
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <tuple>

#include "configuration/document_builder.h"
#include "configuration/source_text.h"

namespace {

/// The file's text as RapidJSON reads it, with NULs without end behind it: the library takes the
/// bytes that a character of UTF-8 is to have. Tells where it is at any time.
class TextStream {
  public:
    using Ch = char;

    /// Of `text` from the byte `begin` on.
    TextStream(std::string_view text, std::size_t begin)
        : begin_(text.data()), at_(begin_ + begin), end_(begin_ + text.size()) {}

    char Peek() const { return at_ == end_ ? '\0' : *at_; }
    char Take() { return at_ == end_ ? '\0' : *at_++; }
    std::size_t Tell() const { return static_cast<std::size_t>(at_ - begin_); }
    // Only a parser that writes into the text calls these.
    char* PutBegin() { return nullptr; }
    void Put(char /*c*/) {}
    std::size_t PutEnd(char* /*begin*/) { return 0; }

  private:
    const char* begin_;
    const char* at_;
    const char* end_;
};

/// What an object or array that has not ended yet holds.
struct Level {
    enum class Kind { object, list, leaf_list, empty_leaf, skipped } kind;
    DocumentNode* node = nullptr;       ///< of an object: the node; of an array: the one around it
    const lysc_node* schema = nullptr;  ///< an array's
    std::size_t first_name = 0;         ///< an object's among the names
    std::size_t offset = 0;             ///< of the array's name
    bool is_filled = false;             ///< an empty leaf's [null]
};

/// What the next value is.
struct Member {
    enum class Kind { none, data, skipped, annotation, envelope } kind = Kind::none;
    const lysc_node* schema = nullptr;
    std::size_t offset = 0;
    std::string_view name;
    SkippedPiece piece;
};

struct MemberName {
    std::string_view name;
    std::size_t offset;
};

/// What an envelope's member is called.
bool is_envelope(std::string_view name) {
    return name == "ietf-restconf:data" || name == "ietf-netconf:config" ||
           name == "ietf-netconf:data" || name == "ietf-netconf-nmda:data";
}

/// A name that RESTCONF or NETCONF uses for something else.
bool is_protocol(std::string_view module) {
    return module == "ietf-restconf" || module == "ietf-netconf" || module == "ietf-yang-patch" ||
           module == "ietf-netconf-nmda";
}

bool may_be_empty(const lysc_type& type) {
    if (type.basetype == LY_TYPE_LEAFREF) {
        return may_be_empty(*reinterpret_cast<const lysc_type_leafref&>(type).realtype);
    }
    if (type.basetype != LY_TYPE_UNION) {
        return type.basetype == LY_TYPE_EMPTY;
    }
    const auto& types = reinterpret_cast<const lysc_type_union&>(type).types;
    return std::any_of(types, types + LY_ARRAY_COUNT(types),
                       [](const lysc_type* one) { return may_be_empty(*one); });
}

class JsonReader {
  public:
    JsonReader(DocumentBuilder& builder, const TextStream& stream)
        : builder_(builder), stream_(stream) {}

    // RapidJSON's events. An object or array is reported at its bracket, everything else at its
    // end.
    bool Null() { return scalar(ValueKind::null, begin_of(4), {}); }
    bool Bool(bool value) {
        return scalar(ValueKind::boolean, begin_of(value ? 4 : 5), value ? "true" : "false");
    }
    bool RawNumber(const char* text, rapidjson::SizeType size, bool /*copy*/) {
        return scalar(ValueKind::number, begin_of(size), {text, size});
    }
    bool String(const char* text, rapidjson::SizeType size, bool /*copy*/) {
        return scalar(ValueKind::string, begin_of_string(), {text, size});
    }
    bool Key(const char* text, rapidjson::SizeType size, bool /*copy*/);
    bool StartObject();
    bool EndObject(rapidjson::SizeType /*count*/);
    bool StartArray();
    bool EndArray(rapidjson::SizeType /*count*/);
    // Numbers are reported as written, never as these.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(int64_t) { return false; }
    bool Uint64(uint64_t) { return false; }
    bool Double(double) { return false; }

  private:
    std::size_t begin_of(std::size_t size) const { return stream_.Tell() - size; }
    std::size_t begin_of_string() const;
    /// The string that just ended, in the file's text when it is unescaped there.
    std::string_view kept(std::string_view string);

    bool scalar(ValueKind kind, std::size_t offset, std::string_view text);
    void add_value(DocumentNode& parent, const lysc_node* schema, std::size_t offset,
                   ValueKind kind, std::string_view text);
    void read_name(DocumentNode& parent, std::string_view name, std::size_t offset);
    void read_skipped_name(std::string_view name, std::size_t offset);
    /// Takes note of a value that begins inside a skipped piece, or as one.
    bool is_skipped(bool is_array);
    void end_skipped_value(std::size_t end);
    void require_names_once(const Level& level);
    [[noreturn]] void refuse_value(std::size_t offset, const char* given);

    DocumentBuilder& builder_;
    const TextStream& stream_;
    std::vector<Level> levels_;
    std::vector<MemberName> names_;  ///< of all objects that have not ended
    Member member_;
    bool is_wrapped_ = false;
};

std::size_t JsonReader::begin_of_string() const {
    const std::string_view text = builder_.text();
    const auto is_escaped = [&](std::size_t quote) {
        const std::size_t last_other = text.find_last_not_of('\\', quote - 1);
        return (quote - 1 - last_other) % 2 == 1;
    };
    std::size_t quote = text.rfind('"', stream_.Tell() - 2);
    while (is_escaped(quote)) {
        quote = text.rfind('"', quote - 1);
    }
    return quote;
}

std::string_view JsonReader::kept(std::string_view string) {
    const std::string_view in_file =
        builder_.text().substr(begin_of(string.size() + 1), string.size());
    return in_file == string ? in_file : builder_.keep(string);
}

bool JsonReader::Key(const char* text, rapidjson::SizeType size, bool /*copy*/) {
    const std::size_t offset = begin_of_string();
    const std::string_view name = kept({text, size});
    names_.push_back({name, offset});
    Level& level = levels_.back();
    if (level.kind == Level::Kind::skipped) {
        read_skipped_name(name, offset);
    } else {
        read_name(*level.node, name, offset);
    }
    return true;
}

void JsonReader::read_skipped_name(std::string_view name, std::size_t offset) {
    const std::size_t colon = name.find(':');
    if (member_.kind == Member::Kind::skipped && colon != std::string_view::npos) {
        builder_.require_foreign(member_.piece, builder_.module(name.substr(0, colon)).module,
                                 offset);
    }
}

void JsonReader::read_name(DocumentNode& parent, std::string_view name, std::size_t offset) {
    member_ = {};
    member_.offset = offset;
    member_.name = name;
    const bool is_top = &parent == &builder_.root();
    if (!name.empty() && name[0] == '@') {
        member_.kind = Member::Kind::annotation;
        return;
    }
    if (is_wrapped_ && levels_.size() == 1) {
        builder_.refuse(offset, "\"" + std::string(name) + "\" is next to the configuration's " +
                                    builder_.document().envelope.name + "; remove it");
    }
    if (is_top && is_envelope(name) && levels_.size() == 1) {
        if (parent.first_child != nullptr) {
            builder_.refuse(offset,
                            "\"" + std::string(name) + "\" is next to data; give only one of them");
        }
        member_.kind = Member::Kind::envelope;
        return;
    }
    const std::size_t colon = name.find(':');
    const bool is_bare = colon == std::string_view::npos;
    const std::string_view local = is_bare ? name : name.substr(colon + 1);
    const std::string_view prefix = name.substr(0, is_bare ? 0 : colon);
    if (prefix.empty() && (is_top || !is_bare)) {
        builder_.refuse(offset, "\"" + std::string(name) + "\" names no module; write \"MODULE:" +
                                    std::string(local) + "\"");
    }
    if (is_top && is_protocol(prefix)) {
        builder_.refuse(offset, "\"" + std::string(name) +
                                    "\" is not a configuration; give a configuration, or an answer "
                                    "that contains one");
    }
    const NamedModule* const named = prefix.empty() ? nullptr : &builder_.module(prefix);
    const lys_module* const module = named == nullptr ? parent.schema->module : named->module;
    member_.kind = Member::Kind::skipped;
    if (named != nullptr && module == nullptr) {
        member_.piece = builder_.skip_foreign(parent, *named, local, offset);
        return;
    }
    member_.schema = builder_.find(parent, *module, local, offset);
    if (member_.schema == nullptr) {
        member_.piece = builder_.skip_unknown(parent, *module, local, offset);
    } else if ((member_.schema->nodetype & LYS_ANYDATA) != 0) {
        member_.piece = {&parent, member_.schema, nullptr, offset, std::string(local)};
    } else {
        member_.kind = Member::Kind::data;
    }
}

void JsonReader::refuse_value(std::size_t offset, const char* given) {
    const bool is_in_array = levels_.back().kind != Level::Kind::object;
    const lysc_node* const schema = is_in_array ? levels_.back().schema : member_.schema;
    if (schema == nullptr) {
        builder_.refuse(offset, std::string(given) + " where {...} is expected");
    }
    const std::string name = std::string("\"") + schema->name + "\"";
    const char* wanted = "a value";
    if (schema->nodetype == LYS_CONTAINER) {
        wanted = "{...}";
    } else if (schema->nodetype == LYS_LIST) {
        wanted = is_in_array ? "{...}" : "[{...}, ...]";
    } else if (schema->nodetype == LYS_LEAFLIST && !is_in_array) {
        wanted = "[...]";
    }
    builder_.refuse(offset, name + " is given as " + given + "; write " + wanted);
}

bool JsonReader::is_skipped(bool is_array) {
    const Level::Kind kind = levels_.back().kind;
    const bool begins_here =
        kind == Level::Kind::object &&
        (member_.kind == Member::Kind::skipped || member_.kind == Member::Kind::annotation);
    if (kind != Level::Kind::skipped && !begins_here) {
        return false;
    }
    if (member_.kind == Member::Kind::skipped && !is_array) {  // an array's entries count
        builder_.count_skipped(member_.piece);
    }
    return true;
}

void JsonReader::end_skipped_value(std::size_t end) {
    if (levels_.back().kind != Level::Kind::object) {
        return;
    }
    if (member_.kind == Member::Kind::annotation) {
        DocumentNode& node = *levels_.back().node;
        const std::string_view text = builder_.text().substr(member_.offset, end - member_.offset);
        for (const char* const edit : {"\"ietf-netconf:operation\"", "\"yang:insert\""}) {
            if (text.find(edit) != std::string_view::npos) {
                builder_.refuse(member_.offset,
                                std::string("a JSON file is merged as a whole, so ") + edit +
                                    " is not supported; write the edit "
                                    "in XML");
            }
        }
        builder_.attributes_of(node).annotations.push_back({{}, member_.name, text});
    } else {
        DocumentNode& node = builder_.end_skipped(member_.piece, end);
        node.kind = ValueKind::string;
    }
    member_ = {};
}

void JsonReader::add_value(DocumentNode& parent, const lysc_node* schema, std::size_t offset,
                           ValueKind kind, std::string_view text) {
    DocumentNode& node = builder_.add(parent, schema, offset);
    node.kind = kind;
    if (kind == ValueKind::string) {
        node.text = kept(text);
    } else if (kind != ValueKind::null) {
        node.text = builder_.text().substr(begin_of(text.size()), text.size());
    }
}

bool JsonReader::scalar(ValueKind kind, std::size_t offset, std::string_view text) {
    if (levels_.empty()) {
        builder_.refuse(offset, "a value where {...} is expected");
    }
    if (is_skipped(false)) {
        end_skipped_value(stream_.Tell());
        return true;
    }
    Level& level = levels_.back();
    if (level.kind == Level::Kind::empty_leaf) {
        if (kind != ValueKind::null || level.is_filled) {
            builder_.refuse(offset, std::string("\"") + level.schema->name +
                                        "\" is given in an array; write [null] or no array");
        }
        level.is_filled = true;
        add_value(*level.node, level.schema, level.offset, kind, text);
        return true;
    }
    const bool is_leaf = level.kind == Level::Kind::object && member_.kind == Member::Kind::data &&
                         member_.schema->nodetype == LYS_LEAF;
    if (!is_leaf && level.kind != Level::Kind::leaf_list) {
        refuse_value(offset, "a value");
    }
    const lysc_node* const schema = is_leaf ? member_.schema : level.schema;
    if (kind == ValueKind::null) {
        builder_.refuse(offset, std::string("\"") + schema->name +
                                    "\" is given as null; write a value, or leave it out");
    }
    add_value(*level.node, schema, is_leaf ? member_.offset : offset, kind, text);
    return true;
}

bool JsonReader::StartObject() {
    const std::size_t offset = stream_.Tell();
    if (levels_.empty()) {
        levels_.push_back({Level::Kind::object, &builder_.root()});
        return true;
    }
    Level next{Level::Kind::object};
    next.first_name = names_.size();
    const Level& level = levels_.back();
    if (is_skipped(false)) {
        next.kind = Level::Kind::skipped;
    } else if (level.kind == Level::Kind::list) {
        next.node = &builder_.add(*level.node, level.schema, offset);
    } else if (level.kind == Level::Kind::object && member_.kind == Member::Kind::envelope) {
        next.node = &builder_.root();
        builder_.document().envelope.name = member_.name;
        is_wrapped_ = true;
    } else if (level.kind == Level::Kind::object && member_.kind == Member::Kind::data &&
               member_.schema->nodetype == LYS_CONTAINER) {
        next.node = &builder_.add(*level.node, member_.schema, member_.offset);
    } else {
        refuse_value(offset, "an object");
    }
    levels_.push_back(next);
    return true;
}

void JsonReader::require_names_once(const Level& level) {
    const auto first = names_.begin() + static_cast<std::ptrdiff_t>(level.first_name);
    std::sort(first, names_.end(), [](const MemberName& one, const MemberName& other) {
        return std::tie(one.name, one.offset) < std::tie(other.name, other.offset);
    });
    const auto is_same = [](const MemberName& one, const MemberName& other) {
        return one.name == other.name;
    };
    const auto repeated = std::adjacent_find(first, names_.end(), is_same);
    if (repeated != names_.end()) {
        builder_.refuse(
            std::next(repeated)->offset,
            "\"" + std::string(repeated->name) + "\" is given twice in one object; give it once");
    }
    names_.erase(first, names_.end());
}

bool JsonReader::EndObject(rapidjson::SizeType /*count*/) {
    const Level ended = levels_.back();
    require_names_once(ended);
    levels_.pop_back();
    if (ended.kind == Level::Kind::skipped) {
        end_skipped_value(stream_.Tell() + 1);
    }
    return true;
}

bool JsonReader::StartArray() {
    const std::size_t offset = stream_.Tell();
    if (levels_.empty()) {
        builder_.refuse(offset, "an array where {...} is expected");
    }
    const Level& level = levels_.back();
    if (is_skipped(true)) {
        levels_.push_back({Level::Kind::skipped});
        return true;
    }
    if (level.kind != Level::Kind::object || member_.kind != Member::Kind::data) {
        refuse_value(offset, "an array");
    }
    Level next{Level::Kind::list, level.node, member_.schema, 0, member_.offset};
    if (member_.schema->nodetype == LYS_LEAFLIST) {
        next.kind = Level::Kind::leaf_list;
    } else if (member_.schema->nodetype == LYS_LEAF &&
               may_be_empty(*reinterpret_cast<const lysc_node_leaf*>(member_.schema)->type)) {
        next.kind = Level::Kind::empty_leaf;
    } else if (member_.schema->nodetype != LYS_LIST) {
        refuse_value(offset, "an array");
    }
    levels_.push_back(next);
    return true;
}

bool JsonReader::EndArray(rapidjson::SizeType /*count*/) {
    const Level ended = levels_.back();
    levels_.pop_back();
    if (ended.kind == Level::Kind::skipped) {
        end_skipped_value(stream_.Tell() + 1);
    } else if (ended.kind == Level::Kind::empty_leaf && !ended.is_filled) {
        builder_.refuse(ended.offset,
                        std::string("\"") + ended.schema->name + "\" is given as []; write [null]");
    }
    return true;
}

}  // namespace

Document read_json(const ly_ctx& context, ConfigurationFile file, const ReadOptions& options) {
    DocumentBuilder builder(context, std::move(file), options);
    constexpr unsigned kFlags = rapidjson::kParseIterativeFlag |
                                rapidjson::kParseNumbersAsStringsFlag |
                                rapidjson::kParseValidateEncodingFlag;
    TextStream stream(builder.text(), byte_order_mark_size(builder.text()));
    JsonReader reader(builder, stream);
    rapidjson::Reader parser;
    const rapidjson::ParseResult result = parser.Parse<kFlags>(stream, reader);
    if (result.IsError()) {
        builder.refuse(result.Offset(),
                       std::string("bad JSON: ") + rapidjson::GetParseError_En(result.Code()));
    }
    return std::move(builder).finish();
}
