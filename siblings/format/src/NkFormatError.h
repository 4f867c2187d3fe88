#pragma once

/// @file
/// Raising the errors of the format library. Everything here is off the usual path.

#include <concepts>
#include <cstddef>
#include <string_view>

#include "nkfo/NkFormat.h"
#include "nkfw/Types.h"

namespace nkfo {

/// Where an error arises: the source module and the operation's signature. A named constant beside each
/// operation.
struct Origin {
    LPCTSTR pszSourceFile;
    LPCTSTR pszFunctionText;
};

/// A text of limited length, composed without memory of its own; what does not fit is left out.
class Message {
  public:
    Message& operator<<(std::string_view text) noexcept;
    Message& operator<<(char c) noexcept { return *this << std::string_view(&c, 1); }
    template <std::integral N>
    Message& operator<<(N n) noexcept {
        return number(static_cast<LONGLONG>(n));
    }
    /// Appends @p text in quotes, cut when it is long, control characters made visible as ".".
    Message& quote(std::string_view text) noexcept;
    LPCTSTR text() const noexcept { return m_text; }

  private:
    Message& number(LONGLONG n) noexcept;

    char m_text[256] = {};
    std::size_t m_length = 0;
};

/// Throws an NkEhBasis with that number and text.
[[noreturn]] void raise(const Origin& origin, NkFoFehler number, LPCTSTR pszText);

/// `"text" an Position n: reason`; position 0 is left out.
[[noreturn]] void refuse(const Origin& origin, NkFoFehler number, std::string_view text, std::size_t position,
                         std::string_view reason);

}  // namespace nkfo
