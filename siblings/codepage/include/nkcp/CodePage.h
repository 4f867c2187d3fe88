#pragma once

/// @file
/// Code pages: the pages that the program runs under, the four best-fit tables between the ANSI page 1252 and
/// the OEM pages 437 and 850, and the way to and from Unicode.

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "nkfw/Export.h"
#include "nkfw/Types.h"

/// The program's ANSI code page: 1252 unless set.
NKDT_API UINT GetACP() noexcept;
/// The program's OEM code page: 850 unless set.
NKDT_API UINT GetOEMCP() noexcept;
/// Converts the text in place from the ANSI to the OEM page. FALSE, the text unchanged, for null and for
/// pages without a table.
NKDT_API BOOL NkEusy_CharToOem(LPTSTR pszText) noexcept;
/// Converts the text in place from the OEM to the ANSI page. FALSE, the text unchanged, for null and for
/// pages without a table.
NKDT_API BOOL NkEusy_OemToChar(LPTSTR pszText) noexcept;

namespace nkcp {

/// Sets the code pages that GetACP() and GetOEMCP() tell, for all threads.
NKDT_API void setAnsiCodePage(UINT page) noexcept;
NKDT_API void setOemCodePage(UINT page) noexcept;

/// A best-fit table: the target byte of each source byte.
using Table = std::array<unsigned char, 256>;

/// The table from one page to the other (1252 to 437 or 850 and back), or null where there is none.
NKDT_API const Table* bestFitTable(UINT from, UINT to) noexcept;
/// Replaces each byte up to the terminator by its entry.
NKDT_API void convertInPlace(LPTSTR pszText, const Table& table) noexcept;

/// What to do with a character that code page 1252 does not have.
enum class Unmappable {
    refuse,   ///< stop and tell where
    bestFit,  ///< take the character that looks most like it, "_" if none does
};

/// How a conversion into code page 1252 ended.
struct Conversion {
    bool complete = true;      ///< false: stopped at a character that could not be converted
    std::size_t position = 0;  ///< then: its offset in the source (bytes of UTF-8, units of UTF-16)
    char32_t character = 0;    ///< then: the character; 0xFFFD when the source is malformed there
};

/// Appends UTF-8 text to @p target in code page 1252; malformed bytes are refused whatever the option. On
/// refusal @p target holds what came before. ASCII runs are copied as blocks. The source is not part of @p
/// target.
NKDT_API Conversion appendCp1252FromUtf8(std::string_view utf8, std::string& target,
                                         Unmappable option = Unmappable::refuse);
/// The same from UTF-16 in the machine's byte order.
NKDT_API Conversion appendCp1252FromUtf16(std::u16string_view utf16, std::string& target,
                                          Unmappable option = Unmappable::refuse);
/// Converts UTF-8 in the caller's buffer in place (the result is never longer); the new length is stored in
/// @p length. On refusal the buffer holds what came before, and what is behind @p length is undefined.
NKDT_API Conversion cp1252FromUtf8InPlace(char* text, std::size_t& length,
                                          Unmappable option = Unmappable::refuse) noexcept;

/// Appends code page 1252 text to @p target as UTF-8.
NKDT_API void appendUtf8FromCp1252(std::string_view text, std::string& target);
/// Appends code page 1252 text to @p target as UTF-16.
NKDT_API void appendUtf16FromCp1252(std::string_view text, std::u16string& target);

/// The byte that looks most like the character: its own where code page 1252 has it, the base letter of other
/// Latin letters, the plain form of typographic and full-width characters; '_' when nothing looks like it.
NKDT_API unsigned char bestFitByte(char32_t character) noexcept;

}  // namespace nkcp
