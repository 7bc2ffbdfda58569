// Reads NETCONF XML.
#include <expat.h>
#include <libyang/libyang.h>

#include <algorithm>
#include <cctype>
#include <exception>
#include <optional>
#include <utility>

#include "configuration/document_builder.h"
#include "configuration/source_text.h"
#include "configuration/value_prefixes.h"

namespace {

constexpr char kSeparator = '\n';  // no namespace has one
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kBase = "urn:ietf:params:xml:ns:netconf:base:1.0";
constexpr std::string_view kDatastores = "urn:ietf:params:xml:ns:yang:ietf-netconf-nmda";
constexpr std::string_view kYang = "urn:ietf:params:xml:ns:yang:1";
constexpr std::string_view kNotification = "urn:ietf:params:xml:ns:netconf:notification:1.0";

constexpr const char* kMakesAnEdit = " makes this an edit; check it with --edit and --running";

struct ParserDeleter {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using Parser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserDeleter>;

struct QualifiedName {
    std::string_view xml_namespace;
    std::string_view local;
};

QualifiedName split(std::string_view name) {
    const std::size_t separator = name.find(kSeparator);
    if (separator == std::string_view::npos) {
        return {{}, name};
    }
    return {name.substr(0, separator), name.substr(separator + 1)};
}

/// An element that has not ended yet.
struct Level {
    enum class Kind {
        top,        ///< around the outermost elements
        reply,      ///< <rpc-reply>
        rpc,        ///< <rpc>
        edit,       ///< <edit-config>, <edit-data>
        parameter,  ///< of an edit
        ignored,    ///< of an edit, whatever it holds
        data,       ///< what holds nodes
        leaf,
        skipped
    } kind;
    DocumentNode* node = nullptr;  ///< that the element is, or holds nodes of
};

struct EditName {
    std::string_view name;
    EditOperation operation;
};
constexpr EditName kOperations[] = {
    {"merge", EditOperation::merge},   {"replace", EditOperation::replace},
    {"create", EditOperation::create}, {"delete", EditOperation::delete_},
    {"remove", EditOperation::remove}, {"none", EditOperation::none}};

struct InsertionName {
    std::string_view name;
    Insertion insertion;
};
constexpr InsertionName kInsertions[] = {{"first", Insertion::first},
                                         {"last", Insertion::last},
                                         {"before", Insertion::before},
                                         {"after", Insertion::after}};

class XmlReader {
  public:
    explicit XmlReader(DocumentBuilder& builder) : builder_(builder) {}

    /// Reads the document, or one document after the other.
    void read();

  private:
    /// Reads the document that begins at `begin`; where it ends, or nothing when there is none.
    std::optional<std::size_t> read_one(std::size_t begin);

    /// Expat's events; an exception must not pass through it.
    template <typename Event>
    void guarded(Event event);
    static XmlReader& self(void* data) { return *static_cast<XmlReader*>(data); }

    void start(std::string_view name, const char** attributes);
    void end();
    void characters(std::string_view text);
    void bind(const char* prefix, const char* uri);
    void unbind();

    std::size_t offset() const {
        return begin_ + static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get()));
    }
    std::size_t offset_behind() const {
        return offset() + static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get()));
    }

    /// A part of the file, its line ends as XML has them, without blanks at its end.
    std::string text_between(std::size_t begin, std::size_t end) const;
    /// All before `end`, as UTF-8 has it.
    std::string head_before(std::size_t end) const;

    Level enter(const QualifiedName& name);
    Level enter_outermost(const QualifiedName& name);
    Level enter_rpc(const QualifiedName& name);
    Level enter_edit(const QualifiedName& name);
    Level enter_data(DocumentNode& parent, const QualifiedName& name);
    Level begin_data(const QualifiedName& name);
    Level begin_skip(const SkippedPiece& piece);
    void begin_edit();
    void read_attributes(const Level& level, const char** attributes);
    void require_no_operation(const char** attributes) const;
    void read_edit_attribute(DocumentNode& node, const QualifiedName& name, std::string_view value);
    void end_leaf(DocumentNode& node);
    void end_data();
    void end_parameter();
    std::string module_of_prefix(std::string_view prefix);
    std::string_view with_bound_prefixes(const std::optional<std::string>& value,
                                         std::string_view as_given);
    void note_bindings(std::size_t count);
    [[noreturn]] void refuse(const std::string& what_is_wrong) const {
        builder_.refuse(offset(), what_is_wrong);
    }
    [[noreturn]] void refuse_document(const QualifiedName& name) const;

    DocumentBuilder& builder_;
    Parser parser_;
    std::size_t begin_ = 0;
    std::exception_ptr failure_;
    std::vector<Level> levels_;
    std::vector<std::pair<std::string, std::string>> scope_;  ///< prefixes and namespaces
    std::size_t own_bindings_ = 0;  ///< how many of them the element that starts now has made
    SkippedPiece piece_;
    const NodeAttributes* piece_attributes_ = nullptr;
    std::size_t skipped_depth_ = 0;
    std::string value_;            ///< of the leaf or parameter that has not ended yet
    std::string_view value_part_;  ///< the same while it is one piece of the file
    bool is_value_part_ = true;
    bool is_parameter_of_default_ = false;
    bool has_data_ = false;
    std::size_t document_end_ = 0;
};

template <typename Event>
void XmlReader::guarded(Event event) {
    if (failure_ != nullptr) {
        return;
    }
    try {
        event();
    } catch (...) {
        failure_ = std::current_exception();
        XML_StopParser(parser_.get(), XML_FALSE);
    }
}

void XmlReader::read() {
    const std::string_view text = builder_.text();
    std::size_t begin = byte_order_mark_size(text);
    levels_.push_back({Level::Kind::top, &builder_.root()});
    for (;;) {
        begin = std::min(text.find_first_not_of(kBlanks, begin), text.size());
        if (begin == text.size()) {
            break;
        }
        const std::optional<std::size_t> end = read_one(begin);
        if (!end) {
            break;
        }
        begin = *end;
    }
    if (builder_.document().is_edit && !has_data_) {
        builder_.refuse(0, "the edit has no <config>; add one with what it changes");
    }
}

std::optional<std::size_t> XmlReader::read_one(std::size_t begin) {
    begin_ = begin;
    document_end_ = 0;
    scope_.clear();
    parser_.reset(XML_ParserCreateNS(nullptr, kSeparator));
    XML_Parser parser = parser_.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(
        parser,
        [](void* data, const char* name, const char** attributes) {
            self(data).guarded([&] { self(data).start(name, attributes); });
        },
        [](void* data, const char*) { self(data).guarded([&] { self(data).end(); }); });
    XML_SetCharacterDataHandler(parser, [](void* data, const char* text, int size) {
        self(data).guarded([&] { self(data).characters({text, static_cast<std::size_t>(size)}); });
    });
    XML_SetStartNamespaceDeclHandler(parser, [](void* data, const char* prefix, const char* uri) {
        self(data).guarded([&] { self(data).bind(prefix, uri); });
    });
    XML_SetEndNamespaceDeclHandler(parser, [](void* data, const char*) { self(data).unbind(); });
    XML_SetStartDoctypeDeclHandler(
        parser, [](void* data, const char*, const char*, const char*, int) {
            self(data).guarded([&] {
                self(data).refuse("a document type is not allowed in a configuration; remove it");
            });
        });
    XML_SetXmlDeclHandler(parser, [](void* data, const char*, const char* encoding, int) {
        self(data).guarded([&] {
            std::string name = encoding == nullptr ? "UTF-8" : encoding;
            for (char& c : name) {
                c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
            }
            if (name != "UTF-8" && name != "US-ASCII") {
                self(data).refuse("its encoding is " + name + "; save it as UTF-8");
            }
        });
    });
    const std::string_view rest = builder_.text().substr(begin);
    const XML_Status status = XML_Parse(parser, rest.data(), static_cast<int>(rest.size()), 1);
    if (failure_ != nullptr) {
        std::rethrow_exception(failure_);
    }
    if (document_end_ > 0) {
        return document_end_;
    }
    const XML_Error error = XML_GetErrorCode(parser);
    if (status == XML_STATUS_ERROR && error != XML_ERROR_NO_ELEMENTS) {
        refuse(std::string("bad XML: ") + XML_ErrorString(error));
    }
    if (levels_.size() > 1) {
        refuse("bad XML: the text ends inside an element");
    }
    return std::nullopt;
}

std::string XmlReader::text_between(std::size_t begin, std::size_t end) const {
    const std::string_view text = builder_.text().substr(begin, end - begin);
    std::string part;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r') {
            part += text[i];
        } else if (text.substr(i + 1, 1) != "\n") {
            part += '\n';
        }
    }
    return part.erase(part.find_last_not_of(kBlanks) + 1);
}

std::string XmlReader::head_before(std::size_t end) const {
    std::string head = text_between(byte_order_mark_size(builder_.text()), end);
    if (head.rfind("<?xml ", 0) == 0) {
        head.replace(0, head.find("?>"), R"(<?xml version="1.0" encoding="UTF-8")");
    }
    return head;
}

void XmlReader::bind(const char* prefix, const char* uri) {
    scope_.emplace_back(prefix == nullptr ? "" : prefix, uri == nullptr ? "" : uri);
    ++own_bindings_;
}

void XmlReader::unbind() {
    if (!scope_.empty()) {  // a binding that failed was none
        scope_.pop_back();
    }
}

void XmlReader::start(std::string_view full_name, const char** attributes) {
    const QualifiedName name = split(full_name);
    const std::size_t outer_bindings = scope_.size() - std::exchange(own_bindings_, 0);
    if (levels_.back().kind == Level::Kind::skipped) {
        ++skipped_depth_;
        builder_.count_skipped(piece_);
        builder_.require_foreign(piece_, builder_.module(name.xml_namespace).module, offset());
        return;
    }
    if (levels_.back().kind == Level::Kind::ignored) {
        levels_.push_back({Level::Kind::ignored});
        return;
    }
    const Level level = enter(name);
    levels_.push_back(level);
    if (level.kind == Level::Kind::skipped) {
        note_bindings(outer_bindings);
        require_no_operation(attributes);
    }
    value_.clear();
    value_part_ = {};
    is_value_part_ = true;
    read_attributes(level, attributes);
}

Level XmlReader::enter(const QualifiedName& name) {
    const Level& around = levels_.back();
    switch (around.kind) {
        case Level::Kind::top:
            return enter_outermost(name);
        case Level::Kind::reply:
            if (name.local == "data" &&
                (name.xml_namespace == kBase || name.xml_namespace == kDatastores)) {
                return begin_data(name);
            }
            refuse_document(name);
        case Level::Kind::rpc:
            return enter_rpc(name);
        case Level::Kind::edit:
            return enter_edit(name);
        case Level::Kind::data:
            return enter_data(*around.node, name);
        default:
            refuse("<" + std::string(name.local) + "> is inside " +
                   (around.node == nullptr ? "a parameter" : name_of(*around.node)) +
                   ", which can only have a value; remove it");
    }
}

void XmlReader::refuse_document(const QualifiedName& name) const {
    refuse(
        "<" + std::string(name.local) +
        "> is not a configuration; give a configuration, an answer to get-config or get-data, or "
        "an edit-config");
}

Level XmlReader::enter_outermost(const QualifiedName& name) {
    DocumentNode& root = builder_.root();
    if (name.xml_namespace == kBase) {
        if (name.local == "config" || name.local == "data") {
            return begin_data(name);
        }
        if (name.local == "rpc-reply") {
            return {Level::Kind::reply};
        }
        if (name.local == "rpc") {
            return {Level::Kind::rpc};
        }
        return enter_rpc(name);
    }
    if (name.xml_namespace == kDatastores) {
        return name.local == "data" ? begin_data(name) : enter_rpc(name);
    }
    if (name.xml_namespace == kNotification || name.local == "html") {
        refuse_document(name);
    }
    Envelope& envelope = builder_.document().envelope;
    if (!envelope.name.empty()) {
        refuse("<" + std::string(name.local) + "> is next to <" + envelope.name +
               ">; give only one of them");
    }
    if (!has_data_) {
        envelope.head = head_before(offset());
        has_data_ = true;
    }
    return enter_data(root, name);
}

Level XmlReader::begin_data(const QualifiedName& name) {
    if (has_data_) {
        refuse("<" + std::string(name.local) + "> is next to other data; give only one of them");
    }
    has_data_ = true;
    Envelope& envelope = builder_.document().envelope;
    envelope.name = name.local;
    envelope.head = head_before(offset_behind());
    envelope.depth = static_cast<unsigned>(levels_.size());
    const auto is_default = [](const auto& binding) { return binding.first.empty(); };
    const auto inner = std::find_if(scope_.rbegin(), scope_.rend(), is_default);
    envelope.default_namespace = inner == scope_.rend() ? "" : inner->second;
    return {Level::Kind::data, &builder_.root()};
}

Level XmlReader::enter_rpc(const QualifiedName& name) {
    const bool is_edit = (name.xml_namespace == kBase && name.local == "edit-config") ||
                         (name.xml_namespace == kDatastores && name.local == "edit-data");
    if (!is_edit) {
        refuse_document(name);
    }
    builder_.document().is_edit = true;
    return {Level::Kind::edit};
}

Level XmlReader::enter_edit(const QualifiedName& name) {
    if (name.local == "config") {
        return begin_data(name);
    }
    if (name.local == "url") {
        refuse("the edit refers to its data by <url>; give the data in <config>");
    }
    is_parameter_of_default_ = name.local == "default-operation";
    // Where the edit goes, and what a server does about errors, are nothing to a check.
    return {is_parameter_of_default_ ? Level::Kind::parameter : Level::Kind::ignored};
}

Level XmlReader::begin_skip(const SkippedPiece& piece) {
    piece_ = piece;
    skipped_depth_ = 1;
    builder_.count_skipped(piece_);
    return {Level::Kind::skipped};
}

Level XmlReader::enter_data(DocumentNode& parent, const QualifiedName& name) {
    if (name.xml_namespace.empty()) {
        refuse("<" + std::string(name.local) +
               "> has no namespace; add xmlns=\"...\" with that of its module");
    }
    const NamedModule& module = builder_.module(name.xml_namespace);
    if (module.module == nullptr) {
        return begin_skip(builder_.skip_foreign(parent, module, name.local, offset()));
    }
    const lysc_node* const schema = builder_.find(parent, *module.module, name.local, offset());
    if (schema == nullptr) {
        return begin_skip(builder_.skip_unknown(parent, *module.module, name.local, offset()));
    }
    if ((schema->nodetype & LYS_ANYDATA) != 0) {
        return begin_skip({&parent, schema, nullptr, offset(), std::string(name.local)});
    }
    const bool is_inner = (schema->nodetype & (LYS_CONTAINER | LYS_LIST)) != 0;
    DocumentNode& node = builder_.add(parent, schema, offset());
    return {is_inner ? Level::Kind::data : Level::Kind::leaf, &node};
}

void XmlReader::read_attributes(const Level& level, const char** attributes) {
    const bool is_node = (level.kind == Level::Kind::data || level.kind == Level::Kind::leaf) &&
                         level.node->schema != nullptr;
    for (; is_node && *attributes != nullptr; attributes += 2) {
        const QualifiedName name = split(attributes[0]);
        const std::string_view value = attributes[1];
        if (name.xml_namespace.empty()) {
            refuse("<" + name_of(*level.node) + "> has the attribute \"" + std::string(name.local) +
                   "\", which has no namespace; " +
                   (name.local == "operation"
                        ? "write nc:operation with xmlns:nc=\"" + std::string(kBase) + "\""
                        : "remove it"));
        }
        const bool is_edit = (name.xml_namespace == kBase && name.local == "operation") ||
                             name.xml_namespace == kYang;
        if (is_edit) {
            read_edit_attribute(*level.node, name, value);
        } else {
            builder_.attributes_of(*level.node)
                .annotations.push_back({builder_.keep(name.xml_namespace),
                                        builder_.keep(name.local), builder_.keep(value)});
        }
    }
}

/// An operation must not be overlooked because its element is kept unchanged.
void XmlReader::require_no_operation(const char** attributes) const {
    for (; *attributes != nullptr; attributes += 2) {
        const QualifiedName name = split(attributes[0]);
        const bool is_operation = name.xml_namespace == kBase && name.local == "operation";
        if (is_operation && !builder_.document().is_edit) {
            refuse("operation=\"" + std::string(attributes[1]) + "\"" + kMakesAnEdit);
        }
        if (is_operation && piece_.schema != nullptr) {
            refuse("\"" + piece_.name +
                   "\" can have any data, so an operation inside it is not supported; write it "
                   "at the node above");
        }
    }
}

void XmlReader::read_edit_attribute(DocumentNode& node, const QualifiedName& name,
                                    std::string_view value) {
    const std::string text = std::string(name.local) + "=\"" + std::string(value) + "\"";
    if (!builder_.document().is_edit) {
        refuse(text + kMakesAnEdit);
    }
    NodeAttributes& attributes = builder_.attributes_of(node);
    if (name.xml_namespace == kBase) {
        for (const auto& [operation_name, operation] : kOperations) {
            if (operation_name == value && operation != EditOperation::none) {
                attributes.operation = operation;
                return;
            }
        }
        refuse(text + " is not an operation; write merge, replace, create, delete or remove");
    }
    if (name.local == "insert") {
        for (const auto& [insertion_name, insertion] : kInsertions) {
            if (insertion_name == value) {
                attributes.insertion = insertion;
                return;
            }
        }
        refuse(text + " is not a position; write first, last, before or after");
    }
    if (name.local != "key" && name.local != "value") {
        refuse(text + " has no meaning here; remove it");
    }
    const auto module_of = [this](std::string_view prefix) { return module_of_prefix(prefix); };
    attributes.anchor = name.local == "key"
                            ? with_bound_prefixes(path_with_module_names(value, module_of), value)
                            : builder_.keep(value);
}

void XmlReader::characters(std::string_view text) {
    Level& level = levels_.back();
    switch (level.kind) {
        case Level::Kind::skipped:
        case Level::Kind::ignored:
            return;
        case Level::Kind::leaf:
        case Level::Kind::parameter:
            break;
        default:
            if (const std::size_t first = text.find_first_not_of(kBlanks);
                first != std::string_view::npos) {
                builder_.refuse(offset() + first,
                                "text inside " +
                                    (level.node == nullptr ? "an envelope" : name_of(*level.node)) +
                                    ", which can only have nodes; remove it");
            }
            return;
    }
    const std::string_view whole = builder_.text();
    const bool is_in_file =
        text.data() >= whole.data() && text.data() < whole.data() + whole.size();
    const bool continues = value_part_.empty() || value_part_.end() == text.begin();
    if (is_value_part_ && is_in_file && continues) {
        value_part_ = {value_part_.empty() ? text.data() : value_part_.data(),
                       value_part_.size() + text.size()};
        return;
    }
    if (is_value_part_) {
        value_ = value_part_;
        is_value_part_ = false;
    }
    value_ += text;
}

void XmlReader::end() {
    const Level level = levels_.back();
    if (level.kind == Level::Kind::skipped) {
        if (--skipped_depth_ > 0) {
            return;
        }
        DocumentNode& node = builder_.end_skipped(piece_, offset_behind());
        node.attributes = piece_attributes_;
    } else if (level.kind == Level::Kind::leaf) {
        end_leaf(*level.node);
    } else if (level.kind == Level::Kind::data && level.node == &builder_.root()) {
        end_data();
    } else if (level.kind == Level::Kind::parameter) {
        end_parameter();
    } else if (level.kind == Level::Kind::reply && !has_data_) {
        refuse("<rpc-reply> has no <data>; give the answer to a get-config or get-data");
    } else if (level.kind == Level::Kind::rpc && !has_data_) {
        refuse("<rpc> has no <edit-config>; add the edit");
    }
    levels_.pop_back();
    if (levels_.size() == 1) {
        document_end_ = offset_behind();
        XML_StopParser(parser_.get(), XML_TRUE);
    }
}

void XmlReader::end_leaf(DocumentNode& node) {
    if (has_prefixes(*node.schema)) {
        const auto module_of = [this](std::string_view prefix) { return module_of_prefix(prefix); };
        const std::string value(is_value_part_ ? value_part_ : value_);
        node.text = with_bound_prefixes(with_module_names(*node.schema, value, module_of), value);
    } else {
        node.text = is_value_part_ ? value_part_ : builder_.keep(value_);
    }
}

void XmlReader::end_data() {
    Envelope& envelope = builder_.document().envelope;
    std::string& head = envelope.head;
    if (head[head.size() - 2] == '/') {  // <data/>
        const std::size_t begin = head.rfind('<') + 1;
        envelope.tail =
            "</" + head.substr(begin, head.find_first_of(" \t\n/", begin) - begin) + ">";
        head.replace(head.size() - 2, 2, ">");
    }
    envelope.tail += text_between(offset(), builder_.text().size());
}

void XmlReader::end_parameter() {
    const std::string_view value = is_value_part_ ? value_part_ : value_;
    for (const auto& [name, operation] : kOperations) {
        if (name == value &&
            (operation == EditOperation::merge || operation == EditOperation::replace ||
             operation == EditOperation::none)) {
            builder_.document().default_operation = operation;
            return;
        }
    }
    refuse("the default-operation is \"" + std::string(value) + "\"; write merge, replace or none");
}

std::string XmlReader::module_of_prefix(std::string_view prefix) {
    for (auto binding = scope_.rbegin(); binding != scope_.rend(); ++binding) {
        if (binding->first == prefix) {
            const lys_module* const module = builder_.module(binding->second).module;
            return module == nullptr ? "" : module->name;
        }
    }
    return {};
}

std::string_view XmlReader::with_bound_prefixes(const std::optional<std::string>& value,
                                                std::string_view as_given) {
    if (!value) {
        refuse("\"" + std::string(as_given) +
               "\" has a prefix that is not bound to a module of the model; declare it with xmlns");
    }
    return builder_.keep(*value);
}

/// Keeps the first `count` bindings for the skipped piece that begins, which needs them when it is
/// written elsewhere. Pieces beside each other share them.
void XmlReader::note_bindings(std::size_t count) {
    std::vector<NamespaceBinding> bindings;
    for (std::size_t i = count; i > 0; --i) {
        const auto& [prefix, uri] = scope_[i - 1];
        const auto is_hidden = [prefix = &prefix](const NamespaceBinding& inner) {
            return inner.prefix == *prefix;
        };
        if (std::none_of(bindings.begin(), bindings.end(), is_hidden)) {
            bindings.push_back({prefix, uri});
        }
    }
    const auto is_same = [](const NamespaceBinding& one, const NamespaceBinding& other) {
        return one.prefix == other.prefix && one.uri == other.uri;
    };
    if (piece_attributes_ != nullptr &&
        std::equal(bindings.begin(), bindings.end(), piece_attributes_->namespaces.begin(),
                   piece_attributes_->namespaces.end(), is_same)) {
        return;
    }
    for (NamespaceBinding& binding : bindings) {
        binding = {builder_.keep(binding.prefix), builder_.keep(binding.uri)};
    }
    DocumentNode holder;
    builder_.attributes_of(holder).namespaces = std::move(bindings);
    piece_attributes_ = holder.attributes;
}

}  // namespace

Document read_xml(const ly_ctx& context, ConfigurationFile file, const ReadOptions& options) {
    DocumentBuilder builder(context, std::move(file), options);
    XmlReader(builder).read();
    return std::move(builder).finish();
}
