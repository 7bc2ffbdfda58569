/// The control side of the local libconfd, for hosts and tests: it builds the trees that the MAAPI
/// and CDB operations read, opens sockets on them, and watches or answers the operations. A plug-in
/// never sees this header.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "confd_lib.h"

#pragma GCC visibility push(default)

namespace local_platform {

/// A failure that the operator reads: it names the file, node or entry, and what is wrong with it.
struct PlatformError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The model

enum class NodeKind { container, list, leaf };

/// A node of the data model with all below it. The root is a container without a name.
struct SchemaNode {
    std::string name;
    NodeKind kind = NodeKind::container;
    confd_vtype type = C_NOEXISTS;                       ///< a leaf's; C_XMLTAG for type empty
    std::vector<std::pair<int32_t, std::string>> enums;  ///< an enumeration's values and labels
    std::vector<std::string> keys;  ///< a list's, names of leaves among children
    std::vector<SchemaNode> children;

    /// The child's position in `children`, or -1.
    int child_index(std::string_view child_name) const;
};

// Trees

/// A node of a data tree. Once built it never changes or moves while its tree lives.
struct Node {
    const SchemaNode* schema = nullptr;
    const Node* parent = nullptr;
    bool is_entry = false;            ///< an entry of the list `schema`; its parent is the list
    std::string text;                 ///< a leaf's canonical text
    confd_value_t value{};            ///< a leaf's value; for every other node a C_XMLTAG
    std::vector<confd_value_t> keys;  ///< an entry's key values
    /// A list's entries in document order; otherwise by position in the model, null when absent.
    std::vector<std::unique_ptr<Node>> children;
    /// A list's entries by canonical key text; several keys are joined by NUL.
    std::unordered_map<std::string_view, const Node*> index;
    std::string index_key;  ///< an entry's text in `index`
};

/// An immutable tree of typed nodes; copies share it.
class DataTree {
  public:
    /// An empty tree of `schema`.
    explicit DataTree(std::shared_ptr<const SchemaNode> schema);

    /// The node at `path`; null when it is absent. Throws PlatformError for a path that is
    /// malformed or names no node of the model.
    const Node* find(std::string_view path) const;
    const Node& root() const { return *root_; }
    const SchemaNode& schema() const { return *schema_; }

  private:
    friend class TreeBuilder;
    std::shared_ptr<const SchemaNode> schema_;
    std::shared_ptr<const Node> root_;
};

/// Collects the nodes of a tree, in document order.
class TreeBuilder {
  public:
    explicit TreeBuilder(std::shared_ptr<const SchemaNode> schema);

    /// Adds the node at `path` with every ancestor that is not there yet, keys included; a leaf
    /// gets `text` as its value. Throws PlatformError for a bad path or a text that the type does
    /// not allow; the builder is of no further use then.
    TreeBuilder& set(std::string_view path, std::string_view text = {});
    DataTree build() &&;

  private:
    std::shared_ptr<const SchemaNode> schema_;
    std::unique_ptr<Node> root_;
};

/// The keypath of `node`; its texts belong to the tree. Throws PlatformError above MAXDEPTH
/// elements.
void fill_keypath(const Node& node, confd_hkeypath_t& kp);

/// `kp` as confd_pp_kpath() prints it, at any length.
std::string keypath_text(const confd_hkeypath_t& kp);

/// A key's text as it stands between braces in a path: quoted where it has to be.
std::string quoted_key(std::string_view text);

// Encrypted leaves

/// The key of encrypted leaves, AES-256. Wiped when it goes.
class CryptoKey {
  public:
    static constexpr std::size_t kSize = 32;

    /// A fresh random key.
    CryptoKey();
    explicit CryptoKey(const std::array<unsigned char, kSize>& bytes) : bytes_(bytes) {}
    CryptoKey(const CryptoKey&) = default;
    CryptoKey& operator=(const CryptoKey&) = default;
    ~CryptoKey();

    const std::array<unsigned char, kSize>& bytes() const { return bytes_; }

  private:
    std::array<unsigned char, kSize> bytes_{};
};

/// The printable text that confd_decrypt() opens with `key`.
std::string encrypt(const CryptoKey& key, std::string_view clear_text);

// Sockets

/// What a socket reads.
struct Endpoint {
    enum class Kind { maapi, cdb } kind;
    int thandle;  ///< a MAAPI socket's one transaction
    DataTree tree;
    std::optional<CryptoKey> key;
};

/// An open socket; closed when it goes.
class Socket {
  public:
    /// A MAAPI socket with a transaction over `transaction`, and the key of its encrypted leaves.
    static Socket maapi(const DataTree& transaction, const std::optional<CryptoKey>& key = {});
    /// A CDB socket on the committed datastore `running`.
    static Socket cdb(const DataTree& running);

    Socket(Socket&& other) noexcept;
    Socket& operator=(Socket&&) = delete;
    ~Socket();

    int number() const { return number_; }
    int thandle() const;
    /// Gives up ownership: the caller closes the number with close_socket().
    int release();

  private:
    explicit Socket(std::unique_ptr<const Endpoint> endpoint);
    int number_;
};

/// Closes a released socket. A number that is not open is ignored.
void close_socket(int number);

/// How many sockets are open in this process.
int open_sockets();

// Watching and answering operations

/// One call of a platform operation. The views last for the call.
struct Call {
    std::string_view operation;
    int socket = -1;            ///< -1 for an operation without one
    std::string_view argument;  ///< the path, or confd_trans_seterr()'s message; empty without one
};

/// What an operation answers instead of doing its work; it writes nothing to its out-values (a
/// cursor is left at no entry).
struct Answer {
    int result = CONFD_OK;       ///< for an operation that returns a pointer, CONFD_OK or null
    const char* text = nullptr;  ///< confd_lasterr()'s answer
};

/// Sees every operation before it runs, and lets it run, answers in its place, or throws through it
/// (never through ~QelConfdCdbSessionBase).
using CallHook = std::function<std::optional<Answer>(const Call&)>;

/// Puts `hook` before every operation of the calling thread, until it goes. The innermost one
/// counts.
class ScopedCallHook {
  public:
    explicit ScopedCallHook(CallHook hook);
    ScopedCallHook(const ScopedCallHook&) = delete;
    ScopedCallHook& operator=(const ScopedCallHook&) = delete;
    ~ScopedCallHook();

  private:
    CallHook hook_;
    const CallHook* outer_;
};

/// The hook's word on one operation; nothing when there is no hook. For the platform's own
/// libraries.
std::optional<Answer> ask_hook(const Call& call);

}  // namespace local_platform

#pragma GCC visibility pop
