#include "GermanTexts.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace nkdt::qt {

namespace {

struct Entry {
    std::string_view source;
    const char* german;  // UTF-8
};

// The menu of an edit control.
constexpr std::array<Entry, 7> lineEditTexts = {{
    {"&Undo", "&Rückgängig"},
    {"&Redo", "&Wiederherstellen"},
    {"Cu&t", "&Ausschneiden"},
    {"&Copy", "&Kopieren"},
    {"&Paste", "&Einfügen"},
    {"Delete", "Löschen"},
    {"Select All", "Alles auswählen"},
}};

}  // namespace

QString GermanTexts::translate(const char* context, const char* source, const char* /*disambiguation*/,
                               int /*number*/) const {
    if (context == nullptr || source == nullptr || std::string_view(context) != "QLineEdit") return {};
    const auto* const found = std::find_if(lineEditTexts.begin(), lineEditTexts.end(),
                                           [&](const Entry& entry) { return entry.source == source; });
    return found != lineEditTexts.end() ? QString::fromUtf8(found->german) : QString();
}

}  // namespace nkdt::qt
