// Reads NETCONF XML.
#include <expat.h>
#include <libyang/libyang.h>

#include <algorithm>
#include <cctype>
#include <exception>
#include <utility>

#include "configuration/node_reader.h"
#include "model/prefixed_value.h"

namespace {

#if XML_MAJOR_VERSION * 100 + XML_MINOR_VERSION < 209
constexpr auto byte_index = XML_GetCurrentByteIndex;
constexpr auto byte_count = XML_GetCurrentByteCount;
#else  // which deprecates them
constexpr auto byte_index = XML_GetCurrentByteIndex64;
constexpr auto byte_count = XML_GetCurrentByteCount64;
#endif

constexpr char kSeparator = '\n';  // no namespace has one
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kBase = "urn:ietf:params:xml:ns:netconf:base:1.0";
constexpr std::string_view kDatastores = "urn:ietf:params:xml:ns:yang:ietf-netconf-nmda";
constexpr std::string_view kConfd = "http://tail-f.com/ns/config/1.0";
constexpr std::string_view kYang = "urn:ietf:params:xml:ns:yang:1";
constexpr std::string_view kNotification = "urn:ietf:params:xml:ns:netconf:notification:1.0";

/// The end of a message over SSH, which a session's record has behind it.
constexpr std::string_view kEndOfMessage = "]]>]]>";

/// What the parser sees around the outermost elements, of which a file may have several.
constexpr std::string_view kAround = "<_>";
constexpr std::string_view kAroundEnd = "</_>";

struct ParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserDeleter>;

struct QualifiedName {
    std::string_view xml_namespace;
    std::string_view local;

    explicit QualifiedName(std::string_view name) {
        const std::size_t separator = name.find(kSeparator);
        xml_namespace = name.substr(0, separator == std::string_view::npos ? 0 : separator);
        local = name.substr(separator + 1);  // all of it without one
    }
    bool is(std::string_view of_namespace, std::string_view name) const {
        return xml_namespace == of_namespace && local == name;
    }
};

enum class Kind {
    around,     ///< the outermost elements
    reply,      ///< <rpc-reply>
    rpc,        ///< <rpc>
    edit,       ///< <edit-config>, <edit-data>
    operation,  ///< <default-operation> of an edit
    ignored,    ///< of an edit, whatever it holds
    data,       ///< what holds nodes: an envelope, a container, a list's entry
    leaf,
    unknown
};

/// An element that has not ended yet.
struct Level {
    Kind kind;
    const lysc_node* schema = nullptr;  ///< of a node; null for the configuration
    std::size_t offset = 0;             ///< of its name
    std::shared_ptr<const EditAttributes> attributes = {};  ///< a leaf's
};

/// What NETCONF puts around data.
struct Envelope {
    std::string_view xml_namespace;
    std::string_view name;
    Kind around;
    Kind kind;
};
constexpr Envelope kEnvelopes[] = {
    {kBase, "config", Kind::around, Kind::data},
    {kBase, "data", Kind::around, Kind::data},
    {kDatastores, "data", Kind::around, Kind::data},
    {kConfd, "config", Kind::around, Kind::data},
    {kBase, "rpc-reply", Kind::around, Kind::reply},
    {kBase, "rpc", Kind::around, Kind::rpc},
    {kBase, "edit-config", Kind::around, Kind::edit},
    {kDatastores, "edit-data", Kind::around, Kind::edit},
    {kBase, "edit-config", Kind::rpc, Kind::edit},
    {kDatastores, "edit-data", Kind::rpc, Kind::edit},
    {kBase, "data", Kind::reply, Kind::data},
    {kDatastores, "data", Kind::reply, Kind::data},
    {kBase, "config", Kind::edit, Kind::data},
    {kDatastores, "config", Kind::edit, Kind::data},
    {kBase, "default-operation", Kind::edit, Kind::operation},
    {kDatastores, "default-operation", Kind::edit, Kind::operation},
};

template <typename Value>
using Words = std::initializer_list<std::pair<std::string_view, Value>>;

const Words<EditOperation> kOperations = {
    {"merge", EditOperation::merge},   {"replace", EditOperation::replace},
    {"create", EditOperation::create}, {"delete", EditOperation::delete_},
    {"remove", EditOperation::remove},
};
const Words<EditOperation> kDefaultOperations = {{"merge", EditOperation::merge},
                                                 {"replace", EditOperation::replace},
                                                 {"none", EditOperation::none}};
const Words<Insertion> kInsertions = {{"first", Insertion::first},
                                      {"last", Insertion::last},
                                      {"before", Insertion::before},
                                      {"after", Insertion::after}};

class XmlReader {
  public:
    explicit XmlReader(NodeReader& nodes) : nodes_(nodes), is_edit_(nodes.options().is_edit) {}

    void read() {
        make_parser();
        const std::string_view text = text_without_end();
        begin_ = behind_declaration(
            std::min(text.find_first_not_of(kBlanks, byte_order_mark_size(text)), text.size()));
        const XML_Status status = XML_Parse(parser_.get(), text.data() + begin_,
                                            static_cast<int>(text.size() - begin_), 0);
        if (failure_ != nullptr) {
            std::rethrow_exception(failure_);
        }
        if (status == XML_STATUS_ERROR) {
            refuse_text();
        }
        if (XML_Parse(parser_.get(), kAroundEnd.data(), kAroundEnd.size(), 1) != XML_STATUS_OK) {
            refuse_text();
        }
        if (is_edit_ && !has_data_) {
            nodes_.refuse(0, "the edit has no <config>; add one with what it changes");
        }
    }

  private:
    // The parser

    /// Expat's events; an exception must not pass through it.
    template <typename Event>
    void guarded(Event event) {
        try {
            if (failure_ == nullptr) {
                event();
            }
        } catch (...) {
            failure_ = std::current_exception();
            XML_StopParser(parser_.get(), XML_FALSE);
        }
    }
    static XmlReader& self(void* data) { return *static_cast<XmlReader*>(data); }

    void make_parser() {
        parser_.reset(XML_ParserCreateNS("UTF-8", kSeparator));
        XML_Parser parser = parser_.get();
        XML_SetUserData(parser, this);
        XML_Parse(parser, kAround.data(), static_cast<int>(kAround.size()), 0);
        XML_SetElementHandler(
            parser,
            [](void* data, const char* name, const char** attributes) {
                self(data).guarded([&] { self(data).start(QualifiedName(name), attributes); });
            },
            [](void* data, const char*) { self(data).guarded([&] { self(data).end(); }); });
        XML_SetCharacterDataHandler(parser, [](void* data, const char* text, int size) {
            self(data).guarded([&] {
                self(data).characters({text, static_cast<std::size_t>(size)});
            });
        });
        XML_SetStartNamespaceDeclHandler(
            parser, [](void* data, const char* prefix, const char* uri) {
                self(data).scope_.emplace_back(prefix == nullptr ? "" : prefix,
                                               uri == nullptr ? "" : uri);
            });
        XML_SetEndNamespaceDeclHandler(parser, [](void* data, const char*) {
            if (!self(data).scope_.empty()) {  // a binding that failed was none
                self(data).scope_.pop_back();
            }
        });
    }

    /// The end of the XML declaration at `begin`, if there is one. Throws for another encoding.
    std::size_t behind_declaration(std::size_t begin) const {
        const std::string_view text = nodes_.text();
        const std::size_t end = text.find("?>", begin);
        if (text.substr(begin, 5) != "<?xml" || end == std::string_view::npos ||
            kBlanks.find(text[begin + 5]) == std::string_view::npos) {
            return begin;
        }
        std::string words(text.substr(begin, end - begin));
        std::transform(words.begin(), words.end(), words.begin(),
                       [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
        const std::size_t quote =
            words.find_first_of("'\"", std::min(words.find("ENCODING"), words.size()));
        if (quote != std::string::npos) {
            const std::size_t size = words.find(words[quote], quote + 1) - quote - 1;
            const std::string encoding = words.substr(quote + 1, size);
            if (encoding != "UTF-8" && encoding != "US-ASCII") {
                nodes_.refuse(begin, "its encoding is " + encoding + "; save it as UTF-8");
            }
        }
        return end + 2;
    }

    [[noreturn]] void refuse_text() const {
        const std::string_view text = nodes_.text();
        const std::size_t at = std::min(offset(), text.size());
        const std::size_t mark = at < 2 ? 0 : at - 2;  // it stops at the "D"
        if (text.substr(mark, 9) == "<!DOCTYPE") {
            nodes_.refuse(mark, "a document type is not allowed in a configuration; remove it");
        }
        require_no_text_slip(nodes_, at);
        const XML_Error error = XML_GetErrorCode(parser_.get());
        if (levels_.size() > 1 && (error == XML_ERROR_TAG_MISMATCH || at == text.size())) {
            const std::size_t begin = levels_.back().offset;
            const std::size_t end = text.find_first_of(" \t\r\n/>", begin);
            nodes_.refuse(begin, "bad XML: the element " +
                                     std::string(text.substr(begin, end - begin)) +
                                     "> is not closed; is the file complete?");
        }
        const std::size_t reference = text.rfind('&', at);
        if (error == XML_ERROR_INVALID_TOKEN && reference != std::string_view::npos &&
            text.substr(reference, at - reference).find_first_of("<>;") == std::string_view::npos) {
            nodes_.refuse(reference, "bad XML: a bare &; write &amp;");
        }
        nodes_.refuse(at, std::string("bad XML: ") + XML_ErrorString(error));
    }

    std::size_t offset() const {
        return begin_ + static_cast<std::size_t>(byte_index(parser_.get())) - kAround.size();
    }
    std::size_t offset_behind() const {
        return offset() + static_cast<std::size_t>(byte_count(parser_.get()));
    }
    [[noreturn]] void refuse(const std::string& what_is_wrong) const {
        nodes_.refuse(offset(), what_is_wrong);
    }

    // Elements

    void start(const QualifiedName& name, const char** attributes) {
        const Level& around = levels_.back();
        nodes_.require_depth(levels_.size(), offset());
        if (around.kind == Kind::unknown) {
            nodes_.count(part_);
            nodes_.require_unknown(part_, nodes_.module(name.xml_namespace).module, offset());
            require_no_operation(attributes);
        }
        Level next = around.kind == Kind::unknown || around.kind == Kind::ignored
                         ? Level{around.kind}
                     : around.kind == Kind::data ? enter_data(around, name, attributes)
                                                 : enter(around, name, attributes);
        next.offset = offset();
        levels_.push_back(std::move(next));
        value_.clear();
        value_begin_ = offset_behind();
    }

    /// The file's text up to where a message ends.
    std::string_view text_without_end() const {
        const std::string_view text = nodes_.text();
        const std::string_view whole = text.substr(0, text.find_last_not_of(kBlanks) + 1);
        const bool has_end = whole.size() > kEndOfMessage.size() &&
                             whole.substr(whole.size() - kEndOfMessage.size()) == kEndOfMessage;
        return has_end ? whole.substr(0, whole.size() - kEndOfMessage.size()) : text;
    }

    Level enter(const Level& around, const QualifiedName& name, const char** attributes) {
        const std::string element = "<" + std::string(name.local) + ">";
        if (around.kind == Kind::leaf || around.kind == Kind::operation) {
            refuse(element + " is inside " +
                   (around.schema == nullptr ? "a parameter" : name_of(around.schema)) +
                   ", which can only have a value; remove it");
        }
        for (const Envelope& one : kEnvelopes) {
            if (one.around == around.kind && name.is(one.xml_namespace, one.name)) {
                return open_envelope(one.kind, element, attributes);
            }
        }
        if (around.kind == Kind::edit) {
            if (name.local == "url") {
                refuse("the edit refers to its data by <url>; give the data in <config>");
            }
            // Where the edit goes, and what a server does about errors, are nothing to a check.
            return {Kind::ignored};
        }
        const std::string_view uri = name.xml_namespace;
        if (around.kind != Kind::around || uri == kBase || uri == kDatastores ||
            uri == kNotification || name.local == "html") {
            refuse(element +
                   " is not a configuration; give a configuration, an answer to get-config or "
                   "get-data, or an edit-config");
        }
        if (!envelope_.empty()) {
            refuse(element + " is next to " + envelope_ + "; give only one of them");
        }
        if (!std::exchange(has_data_, true)) {
            nodes_.begin_data(is_edit_, default_operation_);
        }
        return enter_data({Kind::data}, name, attributes);
    }

    Level open_envelope(Kind kind, const std::string& element, const char** attributes) {
        is_edit_ = is_edit_ || kind == Kind::edit;
        if (has_operation(attributes)) {
            refuse("an operation at " + element + " is not supported; write it at the nodes");
        }
        if (kind == Kind::operation && has_data_) {
            refuse("<default-operation> is behind <config>; write it before");
        }
        if (kind == Kind::data) {
            if (std::exchange(has_data_, true)) {
                refuse(element + " is next to other data; give only one of them");
            }
            envelope_ = element;
            nodes_.begin_data(is_edit_, default_operation_);
        }
        return {kind};
    }

    Level enter_data(const Level& around, const QualifiedName& name, const char** attributes) {
        if (name.xml_namespace.empty()) {
            refuse("<" + std::string(name.local) +
                   "> has no namespace; add xmlns=\"...\" with that of its module");
        }
        NamedModule& module = nodes_.module(name.xml_namespace);
        if (module.module == nullptr && (module.name == kBase || module.name == kDatastores)) {
            refuse("<" + std::string(name.local) +
                   "> is in the namespace of NETCONF; add xmlns=\"...\" with that of its module");
        }
        const lysc_node* const schema =
            nodes_.find(around.schema, &module, name.local, offset(), part_);
        if (schema == nullptr) {
            nodes_.count(part_);
            require_no_operation(attributes);
            return {Kind::unknown};
        }
        auto own = read_attributes(*schema, attributes);
        if ((schema->nodetype & (LYS_CONTAINER | LYS_LIST)) == 0) {
            const bool is_leaf = (schema->nodetype & LYS_ANYDATA) == 0;
            return {is_leaf ? Kind::leaf : Kind::unknown, schema, 0, std::move(own)};
        }
        nodes_.open(*schema, offset(), std::move(own));
        return {Kind::data, schema};
    }

    void characters(std::string_view text) {
        const Level& level = levels_.back();
        const std::size_t first = text.find_first_not_of(kBlanks);
        if (level.kind == Kind::leaf || level.kind == Kind::operation) {
            value_ += text;
        } else if (level.kind == Kind::around && first != std::string_view::npos) {
            nodes_.refuse(offset() + first, "bad XML: text outside of all elements; remove it");
        } else if (level.kind < Kind::leaf && level.kind != Kind::ignored &&
                   first != std::string_view::npos) {
            nodes_.refuse(offset() + first,
                          "text inside " +
                              (level.kind == Kind::data ? name_of(level.schema) : "an envelope") +
                              ", which can only have nodes; remove it");
        }
    }

    void end() {
        const Level level = std::move(levels_.back());
        levels_.pop_back();
        switch (level.kind) {
            case Kind::unknown:
                if (level.schema != nullptr) {  // anydata
                    nodes_.add(*level.schema, level.offset, ValueKind::text,
                               nodes_.text().substr(level.offset, offset() - level.offset),
                               level.attributes);
                }
                break;
            case Kind::leaf:
                nodes_.note_value(*level.schema, value_begin_, offset());
                nodes_.add(*level.schema, level.offset, ValueKind::text,
                           resolved(*level.schema, value_), level.attributes);
                break;
            case Kind::data:
                if (level.schema != nullptr) {
                    nodes_.close();
                }
                break;
            case Kind::operation:
                default_operation_ =
                    meaning_of(kDefaultOperations, "the default-operation is \"" + value_ + "\"");
                break;
            case Kind::reply:
            case Kind::rpc:
                if (!has_data_) {
                    refuse(level.kind == Kind::reply
                               ? "<rpc-reply> has no <data>; give the answer to a get-config or "
                                 "get-data"
                               : "<rpc> has no <edit-config>; add the edit");
                }
                break;
            default:
                break;
        }
    }

    // Attributes and values

    std::shared_ptr<const EditAttributes> read_attributes(const lysc_node& schema,
                                                          const char** attributes) {
        std::shared_ptr<EditAttributes> read;
        for (; *attributes != nullptr; attributes += 2) {
            const QualifiedName name(attributes[0]);
            if (name.xml_namespace.empty() &&
                (name.local == "annotation" || name.local == "tags")) {
                continue;  // ConfD's own, which it exports like this
            }
            if (name.xml_namespace.empty()) {
                refuse("<" + name_of(&schema) + "> has the attribute \"" + std::string(name.local) +
                       "\", which has no namespace; " +
                       (name.local == "operation"
                            ? "write nc:operation with xmlns:nc=\"" + std::string(kBase) + "\""
                            : "remove it"));
            }
            if (name.is(kBase, "operation") || name.xml_namespace == kYang) {
                read = read == nullptr ? std::make_shared<EditAttributes>() : read;
                read_edit_attribute(schema, name.local, attributes[1], *read);
            }
        }
        return read;
    }

    void require_edit(const std::string& attribute) const {
        if (!is_edit_) {
            refuse(attribute + " makes this an edit; check it with --edit and --running");
        }
    }

    /// Whether one of `attributes` is an operation, which only an edit has.
    bool has_operation(const char** attributes) const {
        while (*attributes != nullptr && !QualifiedName(attributes[0]).is(kBase, "operation")) {
            attributes += 2;
        }
        if (*attributes != nullptr) {
            require_edit("operation=\"" + std::string(attributes[1]) + "\"");
        }
        return *attributes != nullptr;
    }

    /// An operation must not be overlooked because nobody looks at what has it.
    void require_no_operation(const char** attributes) const {
        if (has_operation(attributes) && part_.anydata != nullptr) {
            refuse("an operation inside " + part_.name +
                   ", which can have any data, is not supported; write it at the node above");
        }
    }

    void read_edit_attribute(const lysc_node& schema, std::string_view name,
                             const std::string& value, EditAttributes& into) {
        const std::string text = std::string(name) + "=\"" + value + "\"";
        require_edit(text);
        if (name == "operation") {
            into.operation = meaning_of(kOperations, text);
        } else if (name == "insert") {
            into.insertion = meaning_of(kInsertions, text);
        } else if (name == "value") {
            into.anchor = {{{}, resolved(schema, value)}};
        } else if (name == "key") {
            into.anchor = read_keys(schema, value);
        } else {
            refuse(text + " has no meaning here; remove it");
        }
    }

    /// The meaning of the quoted word at the end of `text`.
    template <typename Value>
    Value meaning_of(const Words<Value>& words, const std::string& text) const {
        const std::string_view word(text.data() + text.find('"') + 1,
                                    text.size() - text.find('"') - 2);
        std::string known;
        for (const auto& [one, value] : words) {
            if (one == word) {
                return value;
            }
            known.append(known.empty() ? "" : ", ").append(one);
        }
        refuse(text + " is not known; write one of " + known);
    }

    /// The keys in "[p:name='value']...", with module names in values.
    std::vector<std::pair<std::string, std::string>> read_keys(const lysc_node& list,
                                                               std::string_view text) {
        std::vector<std::pair<std::string, std::string>> keys;
        const auto take = [&text](std::size_t size) {
            const std::string_view taken = text.substr(0, size);
            text.remove_prefix(taken.size());
            return taken;
        };
        const auto skip = [&](std::string_view sign) {
            take(std::min(text.find_first_not_of(kBlanks), text.size()));
            return take(sign.size()) == sign;
        };
        bool is_good = true;
        while (is_good && !text.empty()) {
            is_good = skip("[") && skip("");
            std::string_view name = take(text.find_first_of(" \t\r\n=]"));
            name.remove_prefix(name.find(':') + 1);
            is_good = is_good && skip("=") && skip("") && !text.empty();
            const std::string_view quote = take(1);
            const std::string value(take(text.find(quote)));
            is_good = is_good && (quote == "'" || quote == "\"") && skip(quote) && skip("]");
            const lysc_node* const key =
                lys_find_child(&list, list.module, name.data(), name.size(), 0, 0);
            is_good = is_good && key != nullptr && lysc_is_key(key);
            keys.emplace_back(name, is_good ? resolved(*key, value) : "");
        }
        if (!is_good) {
            refuse("key is not written as [PREFIX:NAME='VALUE'] for each key of " + name_of(&list));
        }
        return keys;
    }

    /// `value` of `leaf` with module names for its prefixes.
    std::string resolved(const lysc_node& leaf, const std::string& value) {
        if ((leaf.nodetype & (LYS_LEAF | LYS_LEAFLIST)) == 0 || !may_have_prefixes(leaf)) {
            return value;
        }
        BoundPrefixes prefixes;
        for (auto binding = scope_.rbegin(); binding != scope_.rend(); ++binding) {
            const lys_module* const module = nodes_.module(binding->second).module;
            const auto is_same = [&](const auto& inner) { return inner.first == binding->first; };
            if (std::none_of(prefixes.begin(), prefixes.end(), is_same) && module != nullptr) {
                prefixes.emplace_back(binding->first, module);
            }
        }
        const auto text = with_module_names(leaf, value, prefixes);
        if (!text) {
            refuse("\"" + value +
                   "\" has a prefix that is not bound to a module of the model; declare it with "
                   "xmlns");
        }
        return *text;
    }

    NodeReader& nodes_;
    Parser parser_;
    std::size_t begin_ = 0;  ///< of what the parser reads
    std::exception_ptr failure_;
    std::vector<Level> levels_ = {{Kind::around}};
    std::vector<std::pair<std::string, std::string>> scope_;  ///< prefixes and namespaces
    UnknownPart part_;                                        ///< the last one
    std::string value_;  ///< of the leaf or operation that has not ended yet
    std::size_t value_begin_ = 0;
    bool is_edit_;
    EditOperation default_operation_ = EditOperation::merge;
    std::string envelope_;  ///< the element that holds the data; empty without one
    bool has_data_ = false;
};

}  // namespace

void read_xml(NodeReader& nodes) {
    XmlReader(nodes).read();
}
