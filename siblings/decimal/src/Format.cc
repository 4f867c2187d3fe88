#include "nkdec/Decimal96Format.h"

#include <algorithm>

char* Decimal96Format::write(const Decimal96& number, char* buffer) const {
    const int most = m_showPoint ? m_places : 0;
    const bool all = m_showPoint && m_showAll;
    const Decimal96 shown = all ? number : number.round(most, m_rounding);
    char* end = shown.toString(buffer);
    if (!shown.isNumber()) return end;
    char* const point = std::find(buffer, end, '.');
    if (point != end) *point = m_separator;
    if (all || m_fill == '\0') return end;

    const auto held = static_cast<int>(point == end ? 0 : end - point - 1);
    if (held == 0 && most > 0) *end++ = m_separator;
    end = std::fill_n(end, most - held, m_fill);
    *end = '\0';
    return end;
}
