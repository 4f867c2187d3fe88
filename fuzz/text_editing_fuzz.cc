/// @file
/// Sequences of editing operations on three texts that are each other's arguments, or their own, held against
/// a model that states each rule in the plainest way. NUL stands inside the texts too: searching and
/// comparing see a text up to its first NUL, copying goes by length.

#include <algorithm>
#include <climits>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "FuzzSupport.h"
#include "TextModel.h"
#include "nkdt/NkDt.h"

namespace {

using fuzz::Input;
using fuzz::noHit;
using fuzz::require;
using Model = fuzz::TextModel;

constexpr std::size_t longest = 512;  // beyond it a text is cleared, since doubling is an operation
// --- Both side by side ----------------------------------------------------------------------------

struct Slot {
    std::optional<NkDtString> value{std::in_place};
    Model model;
};

void check(const NkDtString& value, const Model& model) {
    const LPCTSTR text = value;
    const auto length = static_cast<std::size_t>(value.GetLength());
    require(std::string_view(text, length) == model.text, "the text is as described");
    require(text[length] == '\0', "the text ends with NUL");
    require((value.IsDefined() != FALSE) == model.defined, "the definedness is as described");
    require((value.IsModified() != FALSE) == model.modified, "the modified flag is as described");
    require(value.GetWorkingMode() == model.mode, "the working mode is as described");
    require(static_cast<std::size_t>(value.GetAllocLength()) == model.alloc,
            "the allocated length is as described");
}

/// An operation under way: the text it works on, s, and its arguments, each of which may be s or the other.
struct Play {
    Input& input;
    Slot& s;
    Slot& t;
    Slot& u;

    NkDtString& text() const { return *s.value; }
    Model& model() const { return s.model; }

    /// A position in s, the ends and one beyond them included, or a number that is none.
    INT position() const {
        constexpr INT others[] = {NkDtStrAll,   NkDtStrFirst, NkDtStrPosNext, NkDtStrLeft,
                                  NkDtStrRight, -1,           INT_MIN,        INT_MAX};
        const unsigned drawn = input.byte();
        if (drawn >= 224) return others[drawn % std::size(others)];
        return static_cast<INT>(drawn % (model().text.size() + 3)) - 1;
    }
    INT oneOf(INT first, INT second) const {
        const unsigned drawn = input.choice(8);
        return drawn < 3 ? first : drawn < 6 ? second : position();
    }
    /// A character of a small alphabet, so that texts are found in each other, or any other.
    char character() const {
        constexpr std::string_view alphabet("aaabb \0\xE4", 8);
        const unsigned drawn = input.byte();
        return drawn < 224 ? alphabet[drawn % alphabet.size()] : static_cast<char>(input.byte());
    }

    /// Both do the same, in what they return and in the error that they raise.
    template <class Real, class Modelled>
    void compare(Real&& real, Modelled&& modelled) const {
        INT actual = 0;
        INT expected = 0;
        const ULONG error = fuzz::errorNumberOf([&] { actual = resultOf(real); });
        ULONG expectedError = 0;
        try {
            expected = resultOf(modelled);
        } catch (const fuzz::Refusal& refusal) {
            expectedError = refusal.number;
        }
        require(error == expectedError, "an operation raises the error described, and no other");
        require(actual == expected, "an operation returns what is described");
    }

  private:
    template <class Action>
    static INT resultOf(Action&& action) {
        if constexpr (std::is_void_v<decltype(action())>) {
            action();
            return 0;
        } else {
            return action();
        }
    }
};

// --- The operations -------------------------------------------------------------------------------

/// A text with the room and the mode drawn, character by character.
void build(const Play& p) {
    std::string text(p.input.choice(16), '\0');
    for (char& ch : text)
        ch = p.character();
    const std::size_t room = p.input.choice(24);
    const auto mode = static_cast<NkDtWorkingMode>(p.input.choice(3));
    p.s.value.emplace("", static_cast<INT>(text.size()), static_cast<INT>(room));
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\0') p.text().SetAt(static_cast<INT>(i), text[i]);
    }
    p.text().SetWorkingMode(mode);
    p.text().SetModified(FALSE);
    p.model() = {text, true, false, mode, std::max(room, text.size()), noHit};
}

void buildUndefined(const Play& p) {
    const auto mode = static_cast<NkDtWorkingMode>(p.input.choice(3));
    p.s.value.emplace(mode);
    p.model() = {"", mode == NkDtWmDefined, false, mode, 0, noHit};
}

void copyConstruct(const Play& p) {
    const NkDtString copy(std::as_const(*p.t.value));
    p.s.value.emplace(copy);
    p.model() = p.t.model.constructed();
}

void resetModified(const Play& p) {
    p.compare([&] { return p.text().GetAndResetModified(FALSE); }, [&] { return INT{p.model().modified}; });
    p.model().modified = false;
}

void clear(const Play& p) {
    p.compare([&] { p.text().Clear(); }, [&] { p.model().clear(); });
}

void assign(const Play& p) {
    const NkDtString& source = *p.t.value;
    p.compare([&] { p.text() = source; }, [&] { p.model().assign(p.t.model); });
}

void append(const Play& p) {
    p.compare([&] { p.text() += *p.t.value; }, [&] { p.model().append(p.t.model); });
}

/// The source may lie inside the text that changes.
void takePlain(const Play& p) {
    const std::string seen = fuzz::visible(p.t.model.text);
    const std::size_t from = p.input.byte() % (seen.size() + 1);
    const LPCTSTR source = static_cast<LPCTSTR>(*p.t.value) + from;
    if (p.input.choice(2) == 0) {
        p.compare([&] { p.text() = source; }, [&] { p.model().assignPlain(seen.substr(from)); });
    } else {
        p.compare([&] { p.text() += source; }, [&] { p.model().appendPlain(seen.substr(from)); });
    }
}

void takeCharacter(const Play& p) {
    const char ch = p.character();
    if (p.input.choice(2) == 0) {
        p.compare([&] { p.text() = ch; }, [&] { p.model().assignCharacter(ch); });
    } else {
        p.compare([&] { p.text() += ch; }, [&] { p.model().appendPlain(std::string(1, ch)); });
    }
}

void concatenate(const Play& p) {
    const NkDtString joined = *p.t.value + *p.u.value;
    check(joined, fuzz::sum(p.t.model, p.u.model));
    p.compare([&] { p.text() = joined; }, [&] { p.model().assign(fuzz::sum(p.t.model, p.u.model)); });
}

void setAt(const Play& p) {
    const INT index = p.position();
    const char ch = p.character();
    p.compare([&] { p.text().SetAt(index, ch); }, [&] { p.model().setAt(index, ch); });
}

/// An operation with another text and one of two modes, or what else can stand there.
template <INT (NkDtString::*real)(const NkDtString&, INT), INT (Model::*modelled)(Model, INT), INT first,
          INT second>
void search(const Play& p) {
    const INT mode = p.oneOf(first, second);
    p.compare([&] { return (p.text().*real)(*p.t.value, mode); },
              [&] { return (p.model().*modelled)(p.t.model, mode); });
}

void change(const Play& p) {
    const INT mode = p.oneOf(NkDtStrAll, NkDtStrFirst);
    p.compare([&] { return p.text().Change(*p.t.value, *p.u.value, mode); },
              [&] { return p.model().change(p.t.model, p.u.model, mode); });
}

/// An operation with another text and a position.
template <void (NkDtString::*real)(const NkDtString&, INT), void (Model::*modelled)(Model, INT)>
void copyTo(const Play& p) {
    const INT position = p.position();
    p.compare([&] { (p.text().*real)(*p.t.value, position); },
              [&] { (p.model().*modelled)(p.t.model, position); });
}

template <void (NkDtString::*real)(), bool (*changes)(char), bool (*stays)(char)>
void changeCase(const Play& p) {
    p.compare([&] { (p.text().*real)(); }, [&] { p.model().changeCase(changes, stays); });
}

/// An operation with nothing but a number.
template <void (NkDtString::*real)(INT), void (Model::*modelled)(INT), INT first, INT second>
void shorten(const Play& p) {
    const INT number = p.oneOf(first, second);
    p.compare([&] { (p.text().*real)(number); }, [&] { (p.model().*modelled)(number); });
}

void divide(const Play& p) {
    const INT count = p.position();
    p.compare([&] { p.text().Split(*p.t.value, *p.u.value, count); },
              [&] { fuzz::split(p.model(), p.t.model, p.u.model, count); });
}

void fillUp(const Play& p) {
    const char ch = p.character();
    const INT count = p.input.choice(8) == 0 ? p.position() : static_cast<INT>(p.input.choice(40));
    const INT mode = p.oneOf(NkDtStrLeft, NkDtStrRight);
    p.compare([&] { p.text().FillUp(ch, count, mode); }, [&] { p.model().fillUp(ch, count, mode); });
}

void ask(const Play& p) {
    const bool exact = p.input.choice(2) == 1;
    p.compare([&] { return p.text().IsEmpty(); }, [&] { return p.model().isEmpty(); });
    p.compare([&] { return p.text().Compare(*p.t.value, exact ? TRUE : FALSE); },
              [&] { return p.model().compare(p.t.model, exact); });
}

using Operation = void (*)(const Play&);
constexpr Operation operations[] = {
    build,
    buildUndefined,
    copyConstruct,
    resetModified,
    clear,
    assign,
    append,
    takePlain,
    takeCharacter,
    concatenate,
    setAt,
    change,
    divide,
    fillUp,
    ask,
    search<&NkDtString::DeleteParts, &Model::deleteParts, NkDtStrAll, NkDtStrFirst>,
    search<&NkDtString::GetPos, &Model::getPos, NkDtStrPosFirst, NkDtStrPosNext>,
    copyTo<&NkDtString::Copy, &Model::copy>,
    copyTo<&NkDtString::CopyParts, &Model::copyParts>,
    copyTo<&NkDtString::Insert, &Model::insert>,
    changeCase<&NkDtString::ToUpper, fuzz::isSmall, fuzz::isCapital>,
    changeCase<&NkDtString::ToLower, fuzz::isCapital, fuzz::isSmall>,
    shorten<&NkDtString::Cut, &Model::cut, 0, 1>,
    shorten<&NkDtString::Trim, &Model::trim, NkDtStrLeft, NkDtStrRight>};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Slot slots[3];
    while (!input.empty()) {
        const Operation operation = operations[input.choice(std::size(operations))];
        const unsigned who = input.byte();
        const Play play{input, slots[who % 3], slots[who / 3 % 3], slots[who / 9 % 3]};
        operation(play);
        for (Slot& slot : slots) {
            check(*slot.value, slot.model);
            if (slot.model.text.size() > longest) {
                slot.value->Clear();
                slot.model.clear();
            }
        }
    }
    return 0;
}
