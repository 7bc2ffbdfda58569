#include "value_text.h"

#include <arpa/inet.h>

#include <array>
#include <charconv>

#include "hook.h"

namespace local_platform {
namespace {

/// Reads the whole of `text` as a decimal number in [low, high].
bool parse_number(std::string_view text, int low, int high, int& number) {
    const char* const end = text.data() + text.size();
    const auto [stopped, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stopped == end && number >= low && number <= high;
}

bool parse_byte(std::string_view text, int high, uint8_t& byte) {
    int number = 0;
    const bool is_one = parse_number(text, 0, high, number);
    byte = static_cast<uint8_t>(number);
    return is_one;
}

bool parse_address(int family, std::string_view text, void* address) {
    return text.find('\0') == std::string_view::npos &&
           inet_pton(family, std::string(text).c_str(), address) == 1;
}

bool parse_prefix(int family, std::string_view text, void* address, int longest, uint8_t& length) {
    const std::size_t slash = text.find('/');
    return slash != std::string_view::npos &&
           parse_address(family, text.substr(0, slash), address) &&
           parse_byte(text.substr(slash + 1), longest, length);
}

bool parse_bool(std::string_view text, int& boolean) {
    boolean = text == "true" ? 1 : 0;
    return boolean == 1 || text == "false";
}

bool parse_enum(const SchemaNode& leaf, std::string_view text, int32_t& number) {
    for (const auto& [value, label] : leaf.enums) {
        if (label == text) {
            number = value;
            return true;
        }
    }
    return false;
}

std::string enum_text(int32_t number, const SchemaNode* leaf) {
    if (leaf != nullptr) {
        for (const auto& [value, label] : leaf->enums) {
            if (value == number) {
                return label;
            }
        }
    }
    return std::to_string(number);
}

/// Reads `text` into `value`, which has its type. False when that does not allow it.
bool parse_value(const SchemaNode& leaf, std::string_view text, confd_value_t& value) {
    confd_ipv4_prefix& ipv4 = value.val.ipv4prefix;
    confd_ipv6_prefix& ipv6 = value.val.ipv6prefix;
    switch (value.type) {
        case C_BUF:
            value.val.buf.ptr = reinterpret_cast<unsigned char*>(const_cast<char*>(text.data()));
            value.val.buf.size = static_cast<unsigned int>(text.size());
            return true;
        case C_INT32:
            return parse_number(text, INT32_MIN, INT32_MAX, value.val.i32);
        case C_UINT8:
            return parse_byte(text, UINT8_MAX, value.val.u8);
        case C_BOOL:
            return parse_bool(text, value.val.boolean);
        case C_ENUM_VALUE:
            return parse_enum(leaf, text, value.val.enumvalue);
        case C_IPV4:
            return parse_address(AF_INET, text, &value.val.ip);
        case C_IPV6:
            return parse_address(AF_INET6, text, &value.val.ip6);
        case C_IPV4_AND_PLEN:
            return parse_prefix(AF_INET, text, &ipv4.ip, 32, ipv4.len);
        case C_IPV6_AND_PLEN:
            return parse_prefix(AF_INET6, text, &ipv6.ip6, 128, ipv6.len);
        case C_XMLTAG:
            value.val.xmltag = &leaf;
            return text.empty();
        case C_NOEXISTS:
            break;
    }
    return false;
}

std::string address_text(int family, const void* address) {
    std::array<char, INET6_ADDRSTRLEN> text{};
    return inet_ntop(family, address, text.data(), text.size());
}

std::string prefix_text(int family, const void* address, uint8_t length) {
    return address_text(family, address) + "/" + std::to_string(length);
}

}  // namespace

confd_value_t tag_of(const SchemaNode& schema) {
    confd_value_t tag{};
    tag.type = C_XMLTAG;
    tag.val.xmltag = &schema;
    return tag;
}

confd_value_t value_of(const SchemaNode& leaf, std::string_view text) {
    confd_value_t value{};
    value.type = leaf.type;
    return parse_value(leaf, text, value) ? value : confd_value_t{};
}

std::optional<std::string> canonical_text(const SchemaNode& leaf, std::string_view text) {
    const confd_value_t value = value_of(leaf, text);
    if (value.type == C_NOEXISTS) {
        return std::nullopt;
    }
    return value.type == C_XMLTAG ? std::string() : value_text(value, &leaf);
}

std::string value_text(const confd_value_t& value, const SchemaNode* leaf) {
    switch (value.type) {
        case C_BUF:
            return {reinterpret_cast<const char*>(value.val.buf.ptr), value.val.buf.size};
        case C_INT32:
            return std::to_string(value.val.i32);
        case C_UINT8:
            return std::to_string(value.val.u8);
        case C_BOOL:
            return value.val.boolean != 0 ? "true" : "false";
        case C_ENUM_VALUE:
            return enum_text(value.val.enumvalue, leaf);
        case C_IPV4:
            return address_text(AF_INET, &value.val.ip);
        case C_IPV6:
            return address_text(AF_INET6, &value.val.ip6);
        case C_IPV4_AND_PLEN:
            return prefix_text(AF_INET, &value.val.ipv4prefix.ip, value.val.ipv4prefix.len);
        case C_IPV6_AND_PLEN:
            return prefix_text(AF_INET6, &value.val.ipv6prefix.ip6, value.val.ipv6prefix.len);
        case C_XMLTAG:
            return value.val.xmltag->name;
        case C_NOEXISTS:
            break;
    }
    return {};
}

int print(std::string_view text, char* buffer, int size) {
    if (size > 0) {
        buffer[text.copy(buffer, static_cast<std::size_t>(size - 1))] = '\0';
    }
    return static_cast<int>(text.size());
}

}  // namespace local_platform

int confd_pp_value(char* buf, int bufsiz, const confd_value_t* v) {
    return local_platform::serve("confd_pp_value", -1, {}, [&] {
        return local_platform::print(local_platform::value_text(*v), buf, bufsiz);
    });
}
