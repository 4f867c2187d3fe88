#include "Imp/WholeNumberImp.h"

namespace nkdt {

WholeNumberText readWholeNumber(std::string_view text) noexcept {
    constexpr LONGLONG bound = LONGLONG{1} << 40;  // far beyond 32 bits, and ten times it fits into 64
    const auto isSpace = [](char ch) { return ch == ' ' || (ch >= '\t' && ch <= '\r'); };
    const auto isDigit = [](char ch) { return ch >= '0' && ch <= '9'; };

    std::size_t i = 0;
    while (i < text.size() && isSpace(text[i]))
        ++i;
    const bool negative = i < text.size() && text[i] == '-';
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) ++i;
    const std::size_t firstDigit = i;
    LONGLONG value = 0;
    for (; i < text.size() && isDigit(text[i]); ++i) {
        if (value < bound) value = value * 10 + (text[i] - '0');
    }
    if (i == firstDigit) return {};
    return {negative ? -value : value, i};
}

}  // namespace nkdt
