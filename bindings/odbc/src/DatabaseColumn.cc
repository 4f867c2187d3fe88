#include "nkdt/odbc/DatabaseColumn.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

namespace {

struct NamedType {
    std::string_view name;
    CDatabaseColumn::Type type;
};

// In upper case. A text type that may be of fixed length stands as `character` and becomes `text` by its
// length.
constexpr std::array namedTypes = {
    NamedType{"SMALLINT", CDatabaseColumn::smallInteger},
    NamedType{"INT2", CDatabaseColumn::smallInteger},
    NamedType{"TINYINT", CDatabaseColumn::smallInteger},
    NamedType{"SMALLSERIAL", CDatabaseColumn::smallInteger},
    NamedType{"INTEGER", CDatabaseColumn::integer},
    NamedType{"INT", CDatabaseColumn::integer},
    NamedType{"INT4", CDatabaseColumn::integer},
    NamedType{"MEDIUMINT", CDatabaseColumn::integer},
    NamedType{"SERIAL", CDatabaseColumn::integer},
    NamedType{"BIGINT", CDatabaseColumn::bigInteger},
    NamedType{"INT8", CDatabaseColumn::bigInteger},
    NamedType{"BIGSERIAL", CDatabaseColumn::bigInteger},
    NamedType{"NUMERIC", CDatabaseColumn::decimal},
    NamedType{"DECIMAL", CDatabaseColumn::decimal},
    NamedType{"NUMBER", CDatabaseColumn::decimal},
    NamedType{"MONEY", CDatabaseColumn::decimal},
    NamedType{"DECIMALTEXT", CDatabaseColumn::decimal},
    NamedType{"REAL", CDatabaseColumn::floating},
    NamedType{"FLOAT", CDatabaseColumn::floating},
    NamedType{"FLOAT4", CDatabaseColumn::floating},
    NamedType{"FLOAT8", CDatabaseColumn::floating},
    NamedType{"DOUBLE", CDatabaseColumn::floating},
    NamedType{"DOUBLE PRECISION", CDatabaseColumn::floating},
    NamedType{"CHAR", CDatabaseColumn::character},
    NamedType{"CHARACTER", CDatabaseColumn::character},
    NamedType{"NCHAR", CDatabaseColumn::character},
    NamedType{"NATIVE CHARACTER", CDatabaseColumn::character},
    NamedType{"BPCHAR", CDatabaseColumn::character},
    NamedType{"VARCHAR", CDatabaseColumn::text},
    NamedType{"VARCHAR2", CDatabaseColumn::text},
    NamedType{"NVARCHAR", CDatabaseColumn::text},
    NamedType{"CHARACTER VARYING", CDatabaseColumn::text},
    NamedType{"VARYING CHARACTER", CDatabaseColumn::text},
    NamedType{"LONGVARCHAR", CDatabaseColumn::text},
    NamedType{"TEXT", CDatabaseColumn::text},
    NamedType{"NTEXT", CDatabaseColumn::text},
    NamedType{"TINYTEXT", CDatabaseColumn::text},
    NamedType{"MEDIUMTEXT", CDatabaseColumn::text},
    NamedType{"LONGTEXT", CDatabaseColumn::text},
    NamedType{"CLOB", CDatabaseColumn::text},
    NamedType{"NCLOB", CDatabaseColumn::text},
    NamedType{"CITEXT", CDatabaseColumn::text},
    NamedType{"NAME", CDatabaseColumn::text},
    NamedType{"BOOLEAN", CDatabaseColumn::boolean},
    NamedType{"BOOL", CDatabaseColumn::boolean},
    NamedType{"BIT", CDatabaseColumn::boolean},
    NamedType{"DATE", CDatabaseColumn::date},
    NamedType{"TIMESTAMP", CDatabaseColumn::timestamp},
    NamedType{"DATETIME", CDatabaseColumn::timestamp},
    NamedType{"SMALLDATETIME", CDatabaseColumn::timestamp},
    NamedType{"TIMESTAMPTZ", CDatabaseColumn::timestamp},
    NamedType{"TIMESTAMP WITHOUT TIME ZONE", CDatabaseColumn::timestamp},
    NamedType{"TIMESTAMP WITH TIME ZONE", CDatabaseColumn::timestamp},
    NamedType{"TIME", CDatabaseColumn::timeOfDay},
    NamedType{"TIMETZ", CDatabaseColumn::timeOfDay},
    NamedType{"BLOB", CDatabaseColumn::binary},
    NamedType{"BYTEA", CDatabaseColumn::binary},
    NamedType{"BINARY", CDatabaseColumn::binary},
    NamedType{"VARBINARY", CDatabaseColumn::binary},
    NamedType{"LONGVARBINARY", CDatabaseColumn::binary},
    NamedType{"IMAGE", CDatabaseColumn::binary},
};

constexpr char upperAscii(char ch) noexcept {
    return ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - 'a' + 'A') : ch;
}

bool isNamed(std::string_view name, std::string_view upper) noexcept {
    return std::equal(name.begin(), name.end(), upper.begin(), upper.end(),
                      [](char a, char b) { return upperAscii(a) == b; });
}

std::string_view withoutBlanksAround(std::string_view text) noexcept {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

CDatabaseColumn::Type namedType(std::string_view name) noexcept {
    for (const NamedType& entry : namedTypes) {
        if (isNamed(name, entry.name)) return entry.type;
    }
    return CDatabaseColumn::unknown;
}

// The number behind the opening parenthesis, or -1 if there is none.
INT writtenLength(std::string_view numbers) noexcept {
    const auto digits = withoutBlanksAround(numbers);
    INT length = -1;
    (void)std::from_chars(digits.data(), digits.data() + digits.size(), length);
    return length;
}

}  // namespace

CDatabaseColumn::Type CDatabaseColumn::TypeFromName(LPCTSTR lpszTypeName, INT nLength) noexcept {
    const std::string_view declared = withoutBlanksAround(lpszTypeName == nullptr ? "" : lpszTypeName);
    const auto parenthesis = declared.find('(');
    const std::string_view name = withoutBlanksAround(declared.substr(0, parenthesis));
    const Type type = namedType(name);
    const bool isBit = type == boolean && isNamed(name, "BIT");
    if (type != character && !isBit) return type;
    INT length = parenthesis == std::string_view::npos ? -1 : writtenLength(declared.substr(parenthesis + 1));
    if (length < 0) length = nLength;
    if (length <= 1) return type;
    return isBit ? unknown : text;
}
