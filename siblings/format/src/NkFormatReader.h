#pragma once

/// @file
/// Reading a text of a format from front to back: what is not expected is refused with its position.

#include <cstddef>
#include <limits>
#include <string_view>

#include "Literal1252.h"
#include "NkFormatError.h"

namespace nkfo {

constexpr bool isDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

/// Upper case of the ASCII letters and the three umlauts; every other character is its own.
constexpr char foldCase(char c) noexcept {
    const auto byte = static_cast<unsigned char>(c);
    const bool lower = (byte >= 'a' && byte <= 'z') || byte == 0xE4 || byte == 0xF6 || byte == 0xFC;
    return lower ? static_cast<char>(byte - 0x20) : c;
}

constexpr bool equalWithoutCase(std::string_view a, std::string_view b) noexcept {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (foldCase(a[i]) != foldCase(b[i])) return false;
    }
    return true;
}

/// The sign that a value of this signum shows: NUL, "-" or "+".
constexpr char signOf(const SignSettings& sign, bool negative, bool zero) noexcept {
    if (zero || sign.place == FormatVorzeichenOhne) return '\0';
    if (negative) return '-';
    return sign.which == FormatVorzeichenPlusUndMinus ? '+' : '\0';
}

class TextReader {
  public:
    /// Stands in front of the text's first character that is no blank; blanks at the end are left out.
    TextReader(const Origin& origin, LPCTSTR pszText) : m_origin(origin) {
        if (pszText == nullptr) raise(origin, NkFoFehlerText, "kein Text");
        m_text = pszText;
        m_pos = m_text.data();
        m_end = m_pos + m_text.size();
        while (m_pos != m_end && *m_pos == ' ')
            ++m_pos;
        while (m_pos != m_end && m_end[-1] == ' ')
            --m_end;
    }

    const char* pos() const noexcept { return m_pos; }
    std::size_t left() const noexcept { return static_cast<std::size_t>(m_end - m_pos); }
    bool atEnd() const noexcept { return m_pos == m_end; }
    /// The next character, NUL at the end.
    char peek() const noexcept { return m_pos == m_end ? '\0' : *m_pos; }
    std::string_view rest() const noexcept { return {m_pos, left()}; }
    void skip(std::size_t count) noexcept { m_pos += count; }

    bool take(char c) noexcept {
        if (m_pos == m_end || *m_pos != c) return false;
        ++m_pos;
        return true;
    }
    void expect(char c) {
        if (take(c)) return;
        Message reason;
        reason.quote(std::string_view(&c, 1)) << " erwartet";
        refuse(reason.text());
    }
    void expectEnd() const {
        if (m_pos != m_end) refuse("unerwartetes Zeichen");
    }

    /// The digits that stand here, none perhaps, at most @p most.
    std::string_view takeDigits(std::size_t most = std::numeric_limits<std::size_t>::max()) noexcept {
        const char* const start = m_pos;
        const char* const limit = left() > most ? m_pos + most : m_end;
        while (m_pos != limit && isDigit(*m_pos))
            ++m_pos;
        return {start, static_cast<std::size_t>(m_pos - start)};
    }
    /// Exactly two digits.
    int expectTwoDigits() {
        const std::string_view digits = takeDigits(2);
        if (digits.size() != 2) refuse("Ziffer erwartet");
        return (digits[0] - '0') * 10 + (digits[1] - '0');
    }

    /// Takes all @p c in front, or gives away all at the end; returns their number.
    std::size_t takeFill(char c) noexcept {
        std::size_t count = 0;
        for (; take(c); ++count) {
        }
        return count;
    }
    std::size_t dropFill(char c) noexcept {
        std::size_t count = 0;
        for (; m_pos != m_end && m_end[-1] == c; ++count)
            --m_end;
        return count;
    }

    /// Takes the sign that may stand here, or at the end: NUL, "-" or "+". A "+" that is never shown is
    /// refused.
    char takeSign(const SignSettings& sign) {
        if (sign.place != FormatVorzeichenVorn || atEnd() || !isSign(sign, m_pos)) return '\0';
        return *m_pos++;
    }
    char dropSign(const SignSettings& sign) {
        if (sign.place != FormatVorzeichenHinten || atEnd() || !isSign(sign, m_end - 1)) return '\0';
        return *--m_end;
    }

    [[noreturn]] void refuse(std::string_view reason) const { refuseAt(m_pos, reason); }
    [[noreturn]] void refuseAt(const char* where, std::string_view reason) const {
        nkfo::refuse(m_origin, NkFoFehlerText, m_text, static_cast<std::size_t>(where - m_text.data()) + 1,
                     reason);
    }

  private:
    bool isSign(const SignSettings& sign, const char* where) const {
        if (*where != '-' && *where != '+') return false;
        if (*where == '+' && sign.which == FormatVorzeichenNurMinus) refuseAt(where, "\"+\" nicht erlaubt");
        return true;
    }

    const Origin& m_origin;
    std::string_view m_text;
    const char* m_pos;
    const char* m_end;
};

}  // namespace nkfo
