#include "value_text.h"

#include <arpa/inet.h>

#include "hook.h"

namespace local_platform {
namespace {

constexpr std::size_t kLongestAddressText = INET6_ADDRSTRLEN + sizeof "/128";

/// Reads the whole of `text` as a decimal number in [low, high].
template <typename Number>
bool parse_number(std::string_view text, Number low, Number high, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= low &&
           number <= high;
}

bool parse_address(int family, std::string_view text, void* address) {
    std::array<char, kLongestAddressText> terminated{};
    if (text.size() >= terminated.size() || text.find('\0') != std::string_view::npos) {
        return false;
    }
    std::copy(text.begin(), text.end(), terminated.begin());
    return inet_pton(family, terminated.data(), address) == 1;
}

bool parse_prefix(int family, std::string_view text, void* address, int longest, uint8_t& length) {
    const std::size_t slash = text.find('/');
    int number = 0;
    if (slash == std::string_view::npos || !parse_address(family, text.substr(0, slash), address) ||
        !parse_number(text.substr(slash + 1), 0, longest, number)) {
        return false;
    }
    length = static_cast<uint8_t>(number);
    return true;
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

bool parse_bool(std::string_view text, int& boolean) {
    boolean = text == "true" ? 1 : 0;
    return boolean == 1 || text == "false";
}

void append_ipv4(BoundedText& out, const in_addr& address) {
    std::array<uint8_t, sizeof address> octets;
    std::memcpy(octets.data(), &address, sizeof address);
    for (std::size_t i = 0; i < octets.size(); ++i) {
        out.append(i == 0 ? "" : ".");
        out.append_number(octets.at(i));
    }
}

void append_ipv6(BoundedText& out, const in6_addr& address) {
    std::array<char, INET6_ADDRSTRLEN> text;
    out.append(inet_ntop(AF_INET6, &address, text.data(), text.size()));
}

/// Reads `text` as a value of `leaf`'s type into `value`; a C_BUF points into `text`. False when
/// the type does not allow it.
bool parse_value(const SchemaNode& leaf, std::string_view text, confd_value_t& value) {
    value.type = leaf.type;
    int number = 0;
    switch (leaf.type) {
        case C_BUF:
            value = text_value(text);
            return true;
        case C_INT32:
            return parse_number(text, INT32_MIN, INT32_MAX, value.val.i32);
        case C_UINT8:
            if (!parse_number(text, 0, UINT8_MAX, number)) {
                return false;
            }
            value.val.u8 = static_cast<uint8_t>(number);
            return true;
        case C_BOOL:
            return parse_bool(text, value.val.boolean);
        case C_ENUM_VALUE:
            return parse_enum(leaf, text, value.val.enumvalue);
        case C_IPV4:
            return parse_address(AF_INET, text, &value.val.ip);
        case C_IPV6:
            return parse_address(AF_INET6, text, &value.val.ip6);
        case C_IPV4_AND_PLEN:
            return parse_prefix(AF_INET, text, &value.val.ipv4prefix.ip, 32,
                                value.val.ipv4prefix.len);
        case C_IPV6_AND_PLEN:
            return parse_prefix(AF_INET6, text, &value.val.ipv6prefix.ip6, 128,
                                value.val.ipv6prefix.len);
        case C_XMLTAG:
            value.val.xmltag = &leaf;
            return text.empty();
        case C_NOEXISTS:
            break;
    }
    return false;
}

}  // namespace

confd_value_t text_value(std::string_view text) {
    confd_value_t value;
    value.type = C_BUF;
    value.val.buf.ptr = reinterpret_cast<unsigned char*>(const_cast<char*>(text.data()));
    value.val.buf.size = static_cast<unsigned int>(text.size());
    return value;
}

std::optional<std::string_view> enum_label(int32_t number, const SchemaNode* leaf) {
    if (leaf != nullptr) {
        for (const auto& [value, label] : leaf->enums) {
            if (value == number) {
                return label;
            }
        }
    }
    return std::nullopt;
}

void append_value(BoundedText& out, const confd_value_t& value) {
    switch (value.type) {
        case C_BUF:
            return out.append(text_of(value));
        case C_INT32:
            return out.append_number(value.val.i32);
        case C_UINT8:
            return out.append_number(value.val.u8);
        case C_BOOL:
            return out.append(value.val.boolean != 0 ? "true" : "false");
        case C_ENUM_VALUE:
            return out.append_number(value.val.enumvalue);
        case C_IPV4:
            return append_ipv4(out, value.val.ip);
        case C_IPV6:
            return append_ipv6(out, value.val.ip6);
        case C_IPV4_AND_PLEN:
            append_ipv4(out, value.val.ipv4prefix.ip);
            out.append("/");
            return out.append_number(value.val.ipv4prefix.len);
        case C_IPV6_AND_PLEN:
            append_ipv6(out, value.val.ipv6prefix.ip6);
            out.append("/");
            return out.append_number(value.val.ipv6prefix.len);
        case C_XMLTAG:
            return out.append(value.val.xmltag->name);
        case C_NOEXISTS:
            return;
    }
}

bool CanonicalValue::read(const SchemaNode& leaf, std::string_view text) {
    if (!parse_value(leaf, text, value_)) {
        return false;
    }
    text_ = text;
    const bool is_own_text =
        leaf.type == C_BUF || leaf.type == C_XMLTAG || leaf.type == C_ENUM_VALUE;
    if (!is_own_text) {
        BoundedText out(buffer_.data(), buffer_.size());
        append_value(out, value_);
        text_ = {buffer_.data(), static_cast<std::size_t>(out.finish())};
    }
    return true;
}

}  // namespace local_platform

[[gnu::flatten]] int confd_pp_value(char* buf, int bufsiz, const confd_value_t* v) {
    return local_platform::serve("confd_pp_value", -1, std::string_view(), [&] {
        auto out = local_platform::BoundedText::empty_in(buf, bufsiz);
        local_platform::append_value(out, *v);
        return out.finish();
    });
}
