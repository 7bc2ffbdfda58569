#include <arpa/inet.h>
#include <confd_cdb.h>
#include <confd_maapi.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <set>

#include "datastores.h"

Datastore candidate;
Datastore running;
int open_sessions = 0;

namespace {

constexpr int kMaapiSocket = 17;
constexpr int kTransaction = 4711;
constexpr int kCdbSocket = 23;

/// The path that a format's one argument is, and the datastore that it is a path of; none for a
/// wrong socket.
struct Place {
    Place(const Datastore* datastore, const char* fmt, va_list arguments) : datastore(datastore) {
        path = std::string(fmt) == "%s" ? va_arg(arguments, const char*) : "a format of its own";
        path.erase(0, path.rfind('/', 0) == 0 ? 1 : 0);
    }
    const Datastore* datastore;
    std::string path;

    int exists() const {
        const auto next = datastore->lower_bound(path);
        return next != datastore->end() && next->first.rfind(path, 0) == 0 ? 1 : 0;
    }
    std::set<std::string> keys() const {
        std::set<std::string> keys;
        const std::string start = path + "{";
        for (auto leaf = datastore->lower_bound(start);
             leaf != datastore->end() && leaf->first.compare(0, start.size(), start) == 0; ++leaf) {
            keys.insert(leaf->first.substr(start.size(),
                                           leaf->first.find('}', start.size()) - start.size()));
        }
        return keys;
    }
    /// The value's text before and after its "/"; false for an absent leaf.
    bool read(std::string& text, int& length) const {
        const auto leaf = datastore->find(path);
        if (leaf == datastore->end()) {
            return false;
        }
        const std::size_t slash = leaf->second.find('/');
        text = leaf->second.substr(0, slash);
        length = slash == std::string::npos ? 0 : std::stoi(leaf->second.substr(slash + 1));
        return true;
    }
};

const Datastore kNothing;

int walk(const Place& place, std::string& entries) {
    for (const std::string& key : place.keys()) {
        entries += key + '\n';
    }
    return CONFD_OK;
}

int number(const Place& place, int& value) {
    std::string text;
    int length = 0;
    if (!place.read(text, length)) {
        return CONFD_ERR;
    }
    value = std::stoi(text);
    return CONFD_OK;
}

template <typename Prefix>
int prefix(const Place& place, int family, void* address, Prefix& value) {
    std::string text;
    int length = 0;
    if (!place.read(text, length) || inet_pton(family, text.c_str(), address) != 1) {
        return CONFD_ERR;
    }
    value.len = static_cast<uint8_t>(length);
    return CONFD_OK;
}

}  // namespace

// What reads by a path, given as a format with its one argument.
#define READ(usable, datastore, what)                                       \
    va_list arguments;                                                      \
    va_start(arguments, fmt);                                               \
    const Place place((usable) ? &(datastore) : &kNothing, fmt, arguments); \
    va_end(arguments);                                                      \
    return what
#define MAAPI_READ(what) READ(sock == kMaapiSocket && thandle == kTransaction, candidate, what)
#define CDB_READ(what) READ(sock == kCdbSocket && open_sessions == 1, running, what)

int maapi_exists(int sock, int thandle, const char* fmt, ...) {
    MAAPI_READ(place.exists());
}
int maapi_num_instances(int sock, int thandle, const char* fmt, ...) {
    MAAPI_READ(static_cast<int>(place.keys().size()));
}
int maapi_get_int32_elem(int sock, int thandle, int32_t* rval, const char* fmt, ...) {
    MAAPI_READ(number(place, *rval));
}
int maapi_get_bool_elem(int sock, int thandle, int* rval, const char* fmt, ...) {
    MAAPI_READ(number(place, *rval));
}
int maapi_get_ipv4_and_plen_elem(int sock, int thandle, confd_ipv4_prefix* rval, const char* fmt,
                                 ...) {
    MAAPI_READ(prefix(place, AF_INET, &rval->ip, *rval));
}
int maapi_get_ipv6_and_plen_elem(int sock, int thandle, confd_ipv6_prefix* rval, const char* fmt,
                                 ...) {
    MAAPI_READ(prefix(place, AF_INET6, &rval->ip6, *rval));
}
int maapi_init_cursor(int sock, int thandle, maapi_cursor* cursor, const char* fmt, ...) {
    cursor->entries = new std::string;
    MAAPI_READ(walk(place, *cursor->entries));
}
int cdb_exists(int sock, const char* fmt, ...) {
    CDB_READ(place.exists());
}
int cdb_get_int32(int sock, int32_t* rval, const char* fmt, ...) {
    CDB_READ(number(place, *rval));
}
int cdb_get_ipv4_and_plen(int sock, confd_ipv4_prefix* rval, const char* fmt, ...) {
    CDB_READ(prefix(place, AF_INET, &rval->ip, *rval));
}

int maapi_get_next(maapi_cursor* cursor) {
    static std::string key;
    const std::size_t end = cursor->entries->find('\n');
    cursor->n = end == std::string::npos ? 0 : 1;
    key = cursor->entries->substr(0, end);
    cursor->entries->erase(0, end == std::string::npos ? end : end + 1);
    cursor->keys[0].type = C_BUF;
    cursor->keys[0].val.buf.ptr = reinterpret_cast<unsigned char*>(key.data());
    return CONFD_OK;
}

void maapi_destroy_cursor(maapi_cursor* cursor) {
    delete cursor->entries;
}

int maapi_install_crypto_keys(int sock) {
    return sock == kMaapiSocket ? CONFD_OK : CONFD_ERR;
}

int confd_pp_value(char* buf, int bufsiz, const confd_value_t* v) {
    return std::snprintf(buf, static_cast<std::size_t>(bufsiz), "%s", v->val.buf.ptr);
}

int confd_pp_kpath(char* buf, int bufsiz, const confd_hkeypath_t* kp) {
    return std::snprintf(buf, static_cast<std::size_t>(bufsiz), "%s", kp->text.c_str());
}

const char* confd_lasterr(void) {
    return "";
}

void confd_trans_seterr(confd_trans_ctx* tctx, const char* fmt, ...) {
    va_list arguments;
    va_start(arguments, fmt);
    tctx->message += std::string(fmt) == "%s" ? va_arg(arguments, const char*) : fmt;
    va_end(arguments);
}

/// The text backwards.
int confd_decrypt(const char* ciphertext, int len, char* output) {
    for (int i = 0; i < len; ++i) {
        output[i] = ciphertext[len - 1 - i];
    }
    return CONFD_OK;
}
