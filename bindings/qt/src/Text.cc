#include "Text.h"

#include <algorithm>

#include "nkfw/Cp1252.h"

namespace nkdt::qt {

QString fromCp1252(std::string_view text) {
    QString result(static_cast<qsizetype>(text.size()), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), result.begin(), [](char byte) {
        return QChar(nkfw::unicodeFromCp1252(static_cast<unsigned char>(byte)));
    });
    return result;
}

QString fromCp1252(LPCTSTR pszText) {
    return pszText != nullptr ? fromCp1252(std::string_view(pszText)) : QString();
}

int byteOf(QChar character) noexcept {
    return character.isNull() ? -1 : nkfw::cp1252FromUnicode(character.unicode());
}

std::optional<char32_t> firstWithoutByte(const QString& text) noexcept {
    const auto* const found =
        std::find_if(text.begin(), text.end(), [](QChar character) { return byteOf(character) < 0; });
    if (found == text.end()) return std::nullopt;
    const auto* const next = found + 1;
    if (found->isHighSurrogate() && next != text.end() && next->isLowSurrogate())
        return QChar::surrogateToUcs4(*found, *next);
    return char32_t{found->unicode()};
}

QString codePointName(char32_t character) {
    return QStringLiteral("U+%1").arg(static_cast<uint>(character), 4, 16, QLatin1Char('0')).toUpper();
}

QString describeCharacter(char32_t character) {
    if (!QChar::isPrint(character) || QChar::isMark(character) || QChar::isSpace(character))
        return codePointName(character);
    return QStringLiteral("„%1“ (%2)").arg(QString::fromUcs4(&character, 1), codePointName(character));
}

QString cannotBeStored(const QString& character) {
    return QStringLiteral("Das Zeichen %1 kann nicht gespeichert werden.").arg(character);
}

}  // namespace nkdt::qt
