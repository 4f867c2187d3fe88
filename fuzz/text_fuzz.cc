/// @file
/// Sequences of operations on two texts, held against a model that keeps a std::string, the definedness, the
/// modified flag and the allocated length.

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "nkcp/CodePage.h"
#include "nkdt/NkDt.h"

namespace {

using fuzz::Input;
using fuzz::require;

constexpr std::size_t longest = 4096;  // beyond it a text is cleared, since doubling is an operation

struct Model {
    std::string text;
    bool defined = false;
    bool modified = false;
    std::size_t alloc = 0;

    void setDefined(bool becomes) {
        modified = modified || defined != becomes;
        defined = becomes;
    }
    void reset() {
        text.clear();
        alloc = 0;
    }
    void reserve(std::size_t length) { alloc = std::max(alloc, length); }

    /// Every assignment of a whole text.
    void assign(const std::string& source) {
        if (!defined || alloc < source.size()) alloc = source.size();
        modified = modified || text != source;
        text = source;
        setDefined(true);
    }
    void assign(const Model& source) {
        if (this == &source) return;
        if (source.defined) return assign(source.text);
        reset();
        defined = false;
    }
    void append(const std::string& source) {
        if (source.empty()) return;
        const std::size_t length = text.size() + source.size();
        if (!defined || alloc < length) alloc = length;
        text += source;
        modified = defined = true;
    }
    void append(const Model& source) {
        if (!defined && !source.defined) return;
        append(std::string(source.text));
        defined = true;
    }
    void replace(const std::string& converted) {
        modified = modified || text != converted;
        text = converted;
    }
    void clear() {
        modified = modified || defined || !text.empty();
        defined = false;
        reset();
    }
    Model copy() const { return {text, defined, modified, text.size()}; }
};

/// A text with its model.
struct Pair {
    std::optional<NkDtString> value{std::in_place};
    Model model;

    NkDtString& operator*() { return *value; }
};

void check(const NkDtString& value, const Model& model) {
    const LPCTSTR text = value;
    require((value.IsDefined() != FALSE) == model.defined, "the definedness is as described");
    require(static_cast<std::size_t>(value.GetLength()) == model.text.size() && text == model.text,
            "the text is as described");
    require((value.IsModified() != FALSE) == model.modified, "the modified flag is as described");
    require(static_cast<std::size_t>(value.GetAllocLength()) == model.alloc,
            "the allocated length is as described");
}

std::string mapped(std::string text, UINT from, UINT to) {
    const nkcp::Table& table = *nkcp::bestFitTable(from, to);
    for (char& ch : text)
        ch = static_cast<char>(table[static_cast<unsigned char>(ch)]);
    return text;
}

TCHAR character(Input& input) {
    const auto ch = static_cast<TCHAR>(input.byte());
    return ch == '\0' ? 'x' : ch;
}

void expectError(ULONG number, ULONG expected) {
    require(number == expected, "an operation raises the error described, and no other");
}

// The operations: each does its work on the value and on the model

void construct(Input& input, Pair& pair, Pair&) {
    const std::string text = input.text();
    const auto length = static_cast<INT>(input.byte()) - 1;  // -1: the whole text
    const auto alloc = static_cast<INT>(input.byte()) - 1;
    const bool whole = length == -1;
    const bool fits = whole || static_cast<std::size_t>(length) <= text.size();
    if (text.empty() && length > 0)
        return;  // a length without characters fills with NUL, which is no text here

    std::optional<NkDtString> value;
    expectError(
        fuzz::errorNumberOf([&] { value.emplace(text.c_str(), whole ? NkDtStrLenAuto : length, alloc); }),
        fits ? 0U : NkDtErrInitiallaenge);
    if (!fits) return;
    const std::string taken = whole ? text : text.substr(0, static_cast<std::size_t>(length));
    const std::size_t room = alloc < 1 ? 0 : static_cast<std::size_t>(alloc);
    pair.value.emplace(std::move(*value));
    pair.model = {taken, true, false, std::max(room, taken.size())};
}

void constructUndefined(Input&, Pair& pair, Pair&) {
    pair.value.emplace();
    pair.model = {};
}

void copyConstruct(Input&, Pair& pair, Pair& other) {
    const NkDtString copy(*other);
    pair.value.emplace(copy);
    pair.model = other.model.copy();
}

void moveConstruct(Input&, Pair& pair, Pair& other) {
    NkDtString moved(std::move(*other));
    pair.value.emplace(std::move(moved));
    pair.model = other.model;
    other.model = {};  // a value that was moved from is like a new one
}

void assignText(Input& input, Pair& pair, Pair&) {
    const std::string text = input.text();
    switch (input.choice(3)) {
        case 0:
            *pair = text.c_str();
            break;
        case 1:
            *pair = CString(text.c_str());
            break;
        default:
            *pair = NkDtString(text.c_str());
            break;
    }
    pair.model.assign(text);
}

void assignPartOfItself(Input& input, Pair& pair, Pair&) {
    const std::size_t from = input.byte() % (pair.model.text.size() + 1);
    *pair = static_cast<LPCTSTR>(*pair) + from;
    pair.model.assign(pair.model.text.substr(from));
}

void assignCharacter(Input& input, Pair& pair, Pair&) {
    const TCHAR ch = character(input);
    *pair = ch;
    pair.model.replace(std::string(1, ch));
    pair.model.reserve(1);
    pair.model.setDefined(true);
}

void assignOther(Input& input, Pair& pair, Pair& other) {
    if (input.choice(2) == 0) {
        *pair = *other;
    } else {
        pair.value->Assign(*other);
    }
    pair.model.assign(other.model);
}

void assignItself(Input&, Pair& pair, Pair&) {
    const NkDtString& itself = *pair;
    *pair = itself;
}

void appendText(Input& input, Pair& pair, Pair&) {
    const std::string text = input.text();
    if (input.choice(2) == 0) {
        *pair += text.c_str();
    } else {
        *pair += CString(text.c_str());
    }
    pair.model.append(text);
}

void appendPartOfItself(Input& input, Pair& pair, Pair&) {
    const std::size_t from = input.byte() % (pair.model.text.size() + 1);
    *pair += static_cast<LPCTSTR>(*pair) + from;
    pair.model.append(pair.model.text.substr(from));
}

void appendCharacter(Input& input, Pair& pair, Pair&) {
    const TCHAR ch = character(input);
    *pair += ch;
    pair.model.text += ch;
    pair.model.reserve(pair.model.text.size());
    pair.model.defined = pair.model.modified = true;
}

void appendOther(Input&, Pair& pair, Pair& other) {
    *pair += *other;
    pair.model.append(other.model);
}

void appendItself(Input&, Pair& pair, Pair&) {
    const NkDtString& itself = *pair;
    *pair += itself;
    pair.model.append(Model(pair.model));
}

void concatenate(Input&, Pair& pair, Pair& other) {
    const NkDtString sum = *pair + *other;
    Model model;
    if (!pair.model.defined) {
        model = other.model.copy();
    } else if (!other.model.defined) {
        model = pair.model.copy();
    } else {
        const std::string joined = pair.model.text + other.model.text;
        model = {joined, true, false, joined.size()};
    }
    check(sum, model);
}

void setFromSql(Input& input, Pair& pair, Pair&) {
    constexpr UINT pages[] = {0, 850, 437, 1252};
    const UINT page = pages[input.choice(4)];
    const std::string text = input.text();
    const std::size_t length = input.byte() % (text.size() + 2);
    const bool fits = length >= 1 && length <= text.size();
    expectError(
        fuzz::errorNumberOf([&] { pair.value->SetFromSQL(text.c_str(), static_cast<INT>(length), page); }),
        fits ? 0U : NkDtErrInitiallaenge);
    if (!fits) return;
    const std::string column = text.substr(0, length);
    pair.model.reserve(length);
    pair.model.replace(page == 850 || page == 437 ? mapped(column, page, 1252) : column);
    pair.model.setDefined(true);
}

/// What stands between the apostrophes of a literal; it must hold apostrophes in pairs only.
std::string unquoted(std::string_view literal) {
    require(literal.size() >= 2 && literal.front() == '\'' && literal.back() == '\'',
            "a literal stands in apostrophes");
    literal = literal.substr(1, literal.size() - 2);
    std::string text;
    for (std::size_t i = 0; i < literal.size(); ++i) {
        text += literal[i];
        if (literal[i] != '\'') continue;
        ++i;
        require(i < literal.size() && literal[i] == '\'', "an apostrophe in a literal is doubled");
    }
    return text;
}

void convertToSql(Input& input, Pair& pair, Pair&) {
    constexpr UINT pages[] = {0, 850, 437};
    const UINT page = pages[input.choice(3)];
    const NkDtString literal = pair.value->ConvToSQL(page);
    if (!pair.model.defined) {
        require(literal == "NULL", "an undefined text is NULL");
        return;
    }
    const std::string expected = page == 0 ? pair.model.text : mapped(pair.model.text, 1252, page);
    require(unquoted(static_cast<LPCTSTR>(literal)) == expected, "a literal holds the text in its page");
    require(literal.GetLength() == literal.GetAllocLength(), "a literal's buffer fits");
}

void convertCodePage(Input& input, Pair& pair, Pair&) {
    struct Direction {
        int number;
        UINT from, to;
    };
    constexpr Direction directions[] = {{NkDtCpAnsiToOem, 1252, 850}, {NkDtCpOemToAnsi, 850, 1252},
                                        {NkDtCp1252To437, 1252, 437}, {NkDtCp437To1252, 437, 1252},
                                        {NkDtCp1252To850, 1252, 850}, {NkDtCp850To1252, 850, 1252}};
    const unsigned drawn = input.choice(7);
    if (drawn == std::size(directions)) {
        // The directions are an enumeration with a fixed type, so that any number can be handed over.
        const auto unknown = static_cast<NkDtCodepageWandlung>(input.byte() + 2);
        expectError(fuzz::errorNumberOf([&] { pair.value->ConvertCodePage(unknown); }),
                    pair.model.defined ? NkDtErrCodepage : 0U);
        return;
    }
    const Direction& direction = directions[drawn];
    pair.value->ConvertCodePage(static_cast<NkDtCodepageWandlung>(direction.number));
    if (pair.model.defined) pair.model.replace(mapped(pair.model.text, direction.from, direction.to));
}

void setAt(Input& input, Pair& pair, Pair&) {
    const auto index = static_cast<INT>(input.byte()) - 2;
    const auto ch = static_cast<TCHAR>(input.byte());
    const bool inside = index >= 0 && static_cast<std::size_t>(index) < pair.model.text.size();
    expectError(fuzz::errorNumberOf([&] { pair.value->SetAt(index, ch); }), !inside      ? NkDtErrStringindex
                                                                            : ch == '\0' ? NkDtErrInitialwert
                                                                                         : 0U);
    if (!inside || ch == '\0') return;
    std::string changed = pair.model.text;
    changed[static_cast<std::size_t>(index)] = ch;
    pair.model.replace(changed);
    require((*pair)[index] == ch, "a character that was set is there");
}

void part(Input& input, Pair& pair, Pair&) {
    const auto position = static_cast<INT>(input.byte()) - 2;
    const auto count = static_cast<INT>(input.byte()) - 2;
    const auto length = static_cast<INT>(pair.model.text.size());
    const bool inside = position >= 0 && count >= 0 && position + count <= length;
    std::optional<NkDtString> taken;
    expectError(fuzz::errorNumberOf([&] { taken.emplace(pair.value->GetnValue(position, count)); }),
                !pair.model.defined ? NkDtErrUndefiniert
                : inside            ? 0U
                                    : NkDtErrStringindex);
    if (!taken) return;
    const std::string expected =
        pair.model.text.substr(static_cast<std::size_t>(position), static_cast<std::size_t>(count));
    check(*taken, {expected, true, false, expected.size()});
}

void throughArchive(Input&, Pair& pair, Pair& other) {
    CMemFile file;
    CArchive out(&file, CArchive::store);
    pair.value->Serialize(out);
    out.Close();
    file.Seek(0, CFile::begin);
    CArchive in(&file, CArchive::load);
    other.value->Serialize(in);

    other.model.setDefined(pair.model.defined);
    if (pair.model.defined) {
        other.model.assign(std::string(pair.model.text));
    } else {
        other.model.clear();
    }
}

void throughExtern(Input& input, Pair& pair, Pair& other) {
    BOOL defined = FALSE;
    USHORT version = 0;
    const NkDtString external = pair.value->ConvToExtern(defined, version);
    require((defined != FALSE) == pair.model.defined && version == NkDtExternVersion,
            "an external text tells its definedness and version");
    check(external, pair.model.copy());
    // Declared defined in any case: a text that is not is an inconsistency.
    const bool insist = input.choice(2) == 1;
    expectError(
        fuzz::errorNumberOf([&] { other.value->SetFromExtern(&external, insist ? TRUE : defined, version); }),
        insist && !pair.model.defined ? NkDtErrDefiniertheit : 0U);
    if (pair.model.defined) {
        other.model.setDefined(true);
        other.model.assign(pair.model.copy());
    } else if (insist) {
        other.model.setDefined(true);
    } else {
        other.model.clear();
    }
}

void compare(Input&, Pair& pair, Pair& other) {
    const bool comparable = pair.model.defined && other.model.defined;
    bool equal = false;
    expectError(fuzz::errorNumberOf([&] { equal = (*pair == *other) != FALSE; }),
                comparable ? 0U : NkDtErrUndefiniert);
    if (!comparable) return;
    require(equal == (pair.model.text == other.model.text), "texts are equal byte for byte");
    const bool less = *pair < *other;
    const bool greater = *pair > *other;
    require(!(less && greater) && less == (*other > *pair) && less == !(*pair >= *other),
            "the order is the same from both sides");
    require(!equal || (!less && !greater), "equal texts have no order");
}

void clear(Input&, Pair& pair, Pair&) {
    pair.value->Clear();
    pair.model.clear();
}

void resetModified(Input&, Pair& pair, Pair&) {
    require((pair.value->GetAndResetModified(FALSE) != FALSE) == pair.model.modified,
            "the flag is told as it was");
    pair.model.modified = false;
}

using Operation = void (*)(Input&, Pair&, Pair&);
constexpr Operation operations[] = {
    construct,          constructUndefined, copyConstruct,   moveConstruct, assignText,
    assignPartOfItself, assignCharacter,    assignOther,     assignItself,  appendText,
    appendPartOfItself, appendCharacter,    appendOther,     appendItself,  concatenate,
    setFromSql,         convertToSql,       convertCodePage, setAt,         part,
    throughArchive,     throughExtern,      compare,         clear,         resetModified};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Pair pairs[2];
    while (!input.empty()) {
        const unsigned drawn = input.byte();
        Pair& pair = pairs[drawn % 2];
        Pair& other = pairs[1 - drawn % 2];
        operations[drawn / 2 % std::size(operations)](input, pair, other);
        for (Pair& each : pairs) {
            if (each.model.text.size() > longest) clear(input, each, each);
            check(*each, each.model);
        }
    }
    return 0;
}
