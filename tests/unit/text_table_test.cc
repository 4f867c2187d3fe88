// Holds the editing functions of NkDtString against the truth table texts.tsv, which tests/models/texts.py
// generates from the rules; the model explains the columns.
//
// A row is carried out as it stands: build the texts in their states (or go on with those that the row
// before left), make the call, write outcome and states the way the table writes them, compare.

#include <nkdt/NkDtString.h>
#include <nkeh/NkEhBasis.h>

#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "support/TableReader.h"

namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using namespace nktest;

constexpr std::size_t kMinimumRows = 50'000;
constexpr std::size_t kTexts = 3;  // s, t, u
constexpr auto kHexDigits = "0123456789abcdef"sv;

// --- The table's notation -------------------------------------------------------------------------

bool isPlain(char ch) {
    return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') || (ch >= '0' && ch <= '9') || ch == ' ';
}

std::string escaped(std::string_view characters) {
    std::string text;
    for (const char ch : characters) {
        if (isPlain(ch)) {
            text += ch;
            continue;
        }
        const auto byte = static_cast<unsigned char>(ch);
        text += '\\';
        text += kHexDigits[byte >> 4];
        text += kHexDigits[byte & 15];
    }
    return text;
}

std::string unescaped(std::string_view cell) {
    std::string characters;
    while (!cell.empty()) {
        if (cell.front() == '\\') {
            characters += static_cast<char>(number(cell.substr(1, 2), 16));
            cell.remove_prefix(3);
        } else {
            characters += cell.front();
            cell.remove_prefix(1);
        }
    }
    return characters;
}

struct Row {
    explicit Row(std::string_view text) : line(text) {
        for (std::string_view& state : before) {
            state = take(text, '\t');
        }
        call = take(text, '\t');
        expected = text;
    }

    bool goesOn() const { return before[0] == "~"; }

    std::string_view line;
    std::array<std::string_view, kTexts> before;
    std::string_view call;
    std::string_view expected;  // outcome and states, still in one piece
};

// --- Texts in their states ------------------------------------------------------------------------

// Characters are set one by one, so that NUL can stand among them and the room is the one wanted.
NkDtString definedText(NkDtWorkingMode mode, const std::string& characters, INT alloc) {
    NkDtString text("", static_cast<INT>(characters.size()), alloc);
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (characters[i] != '\0') text.SetAt(static_cast<INT>(i), characters[i]);
    }
    text.SetWorkingMode(mode);
    return text;
}

// In mode 2 a text becomes undefined by an assignment only.
NkDtString undefinedText(NkDtWorkingMode mode) {
    NkDtString text(mode);
    const NkDtString undefined(NkDtWmMissing);
    text = undefined;
    return text;
}

// mode:defined:modified:allocated length:characters
NkDtString textIn(std::string_view cell) {
    const auto mode = static_cast<NkDtWorkingMode>(number(take(cell, ':')));
    const bool defined = number(take(cell, ':')) != 0;
    const BOOL modified = number(take(cell, ':'));
    const INT alloc = number(take(cell, ':'));
    NkDtString text = defined ? definedText(mode, unescaped(cell), alloc) : undefinedText(mode);
    text.SetModified(modified);
    return text;
}

std::string stateOf(const NkDtString& text) {
    const LPCTSTR characters = text;
    const auto length = static_cast<std::size_t>(text.GetLength());
    return std::to_string(text.GetWorkingMode()) + ":" + std::to_string(text.IsDefined()) + ":" +
           std::to_string(text.IsModified()) + ":" + std::to_string(text.GetAllocLength()) + ":" +
           escaped({characters, length}) + (characters[length] == '\0' ? "" : " without terminator");
}

class Texts {
  public:
    explicit Texts(const Row& row) {
        for (std::size_t i = 0; i < kTexts; ++i) {
            if (row.before[i] != "-") m_texts[i].emplace(textIn(row.before[i]));
        }
    }

    NkDtString& named(std::string_view name) {
        const std::size_t index = "stu"sv.find(name);
        if (name.size() != 1 || index == std::string_view::npos || !m_texts[index]) {
            throw std::invalid_argument("not a text of the row: " + std::string(name));
        }
        return *m_texts[index];
    }

    std::array<std::string, kTexts> states() const {
        std::array<std::string, kTexts> result;
        for (std::size_t i = 0; i < kTexts; ++i) {
            result[i] = m_texts[i] ? stateOf(*m_texts[i]) : "-";
        }
        return result;
    }

  private:
    std::array<std::optional<NkDtString>, kTexts> m_texts;
};

// --- Calls ----------------------------------------------------------------------------------------

// "operation object argument ..."
class Call {
  public:
    Call(Texts& texts, std::string_view text) : m_texts(texts) {
        while (!text.empty()) {
            m_words.push_back(take(text, ' '));
        }
    }

    std::string_view operation() const { return m_words.front(); }
    NkDtString& object() const { return text(1); }
    NkDtString& text(std::size_t word) const { return m_texts.named(m_words.at(word)); }
    INT n(std::size_t word) const { return number(m_words.at(word)); }
    TCHAR character(std::size_t word) const { return static_cast<TCHAR>(n(word)); }

  private:
    Texts& m_texts;
    std::vector<std::string_view> m_words;
};

// What the call yields as the table writes it.
using Operation = std::function<std::string(const Call&)>;

Operation yielding(const std::function<INT(const Call&)>& call) {
    return [call](const Call& c) { return std::to_string(call(c)); };
}

Operation silent(const std::function<void(const Call&)>& call) {
    return [call](const Call& c) {
        call(c);
        return "-"s;
    };
}

const std::map<std::string_view, Operation>& operations() {
    using C = const Call&;
    static const std::map<std::string_view, Operation> all = {
        {"DeleteParts", yielding([](C c) { return c.object().DeleteParts(c.text(2), c.n(3)); })},
        {"GetPos", yielding([](C c) { return c.object().GetPos(c.text(2), c.n(3)); })},
        {"Copy", silent([](C c) { c.object().Copy(c.text(2), c.n(3)); })},
        {"CopyParts", silent([](C c) { c.object().CopyParts(c.text(2), c.n(3)); })},
        {"Insert", silent([](C c) { c.object().Insert(c.text(2), c.n(3)); })},
        {"Change", yielding([](C c) { return c.object().Change(c.text(2), c.text(3), c.n(4)); })},
        {"ToUpper", silent([](C c) { c.object().ToUpper(); })},
        {"ToLower", silent([](C c) { c.object().ToLower(); })},
        {"Cut", silent([](C c) { c.object().Cut(c.n(2)); })},
        {"Split", silent([](C c) { c.object().Split(c.text(2), c.text(3), c.n(4)); })},
        {"Trim", silent([](C c) { c.object().Trim(c.n(2)); })},
        {"FillUp", silent([](C c) { c.object().FillUp(c.character(2), c.n(3), c.n(4)); })},
        {"IsEmpty", yielding([](C c) { return c.object().IsEmpty(); })},
        {"Compare", yielding([](C c) { return c.object().Compare(c.text(2), c.n(3)); })},
        {"Assign", silent([](C c) { c.object() = static_cast<const NkDtString&>(c.text(2)); })},
        {"Clear", silent([](C c) { c.object().Clear(); })},
    };
    return all;
}

std::string outcomeOf(const Call& call) {
    try {
        return operations().at(call.operation())(call);
    } catch (NkEhBasis* caught) {
        const std::unique_ptr<NkEhBasis> error(caught);
        return "error " + std::to_string(error->GetErrorNumber());
    }
}

// --- The whole table ------------------------------------------------------------------------------

// Empty if the row holds, else what happened instead. The texts stay for a row that goes on with them.
std::string deviation(const Row& row, std::optional<Texts>& texts) {
    if (!row.goesOn()) {
        texts.emplace(row);
        const std::array<std::string, kTexts> states = texts->states();
        for (std::size_t i = 0; i < kTexts; ++i) {
            if (states[i] != row.before[i]) return "before the call " + states[i];
        }
    }
    std::string actual = outcomeOf(Call(texts.value(), row.call));
    for (const std::string& state : texts->states()) {
        actual += "\t" + state;
    }
    return actual == row.expected ? "" : actual;
}

TEST(TextTable, EditingFollowsEveryRowInEveryState) {
    const std::string table = readTable("texts.tsv");
    std::string_view rest = table;
    ASSERT_EQ(take(rest, '\n'), "s\tt\tu\tcall\toutcome\ts\tt\tu");

    Findings findings;
    std::optional<Texts> texts;
    while (!rest.empty()) {
        const Row row(take(rest, '\n'));
        findings.count(row.call.substr(0, row.call.find(' ')));
        findings.note(row.line, deviation(row, texts));
    }
    findings.expectNone();
    EXPECT_GE(findings.rows(), kMinimumRows);
    findings.expectAllTried(operations());
}

}  // namespace
