#include "NkFormatError.h"

#include <algorithm>
#include <charconv>

#include "nkeh/NkEhBasis.h"

namespace nkfo {

namespace {

constexpr LPCTSTR classText = "NkFormat";
constexpr std::size_t longestQuote = 100;

}  // namespace

Message& Message::operator<<(std::string_view text) noexcept {
    const std::size_t count = std::min(text.size(), sizeof m_text - 1 - m_length);
    text.copy(m_text + m_length, count);
    m_length += count;
    return *this;
}

Message& Message::number(LONGLONG n) noexcept {
    char digits[24];
    const char* const end = std::to_chars(digits, digits + sizeof digits, n).ptr;
    return *this << std::string_view(digits, static_cast<std::size_t>(end - digits));
}

Message& Message::quote(std::string_view text) noexcept {
    *this << '"';
    for (const char c : text.substr(0, longestQuote)) {
        const bool control = static_cast<unsigned char>(c) < 0x20;
        *this << (control ? '.' : c);
    }
    return *this << (text.size() > longestQuote ? "...\"" : "\"");
}

[[gnu::cold]] void raise(const Origin& origin, NkFoFehler number, LPCTSTR pszText) {
    throw new NkEhBasis(origin.pszSourceFile, classText, origin.pszFunctionText, pszText, number, 1, 1,
                        nullptr, TRUE, 0, TRUE);
}

[[gnu::cold]] void refuse(const Origin& origin, NkFoFehler number, std::string_view text,
                          std::size_t position, std::string_view reason) {
    Message message;
    message.quote(text);
    if (position > 0) message << " an Position " << position;
    message << ": " << reason;
    raise(origin, number, message.text());
}

}  // namespace nkfo
