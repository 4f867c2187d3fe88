#pragma once

/// @file
/// A text of the library as a model that states each rule of the text class in the plainest way. NUL may
/// stand inside a text: searching and comparing see a text up to its first NUL, copying goes by length.

#include <algorithm>
#include <climits>
#include <cstddef>
#include <string>
#include <utility>

#include "nkdt/NkDt.h"

namespace fuzz {

inline constexpr INT noHit = -1;

inline std::string visible(const std::string& text) {
    return text.substr(0, text.find('\0'));
}

// --- Letter case ----------------------------------------------------------------------------------

inline bool isSmall(char ch) {
    return (ch >= 'a' && ch <= 'z') || ch == '\xE4' || ch == '\xF6' || ch == '\xFC';
}

inline bool isCapital(char ch) {
    return (ch >= 'A' && ch <= 'Z') || ch == '\xC4' || ch == '\xD6' || ch == '\xDC';
}

/// The letters of a case are 32 apart, the umlauts as well.
inline std::string inOtherCase(std::string text, bool (*changes)(char)) {
    for (char& ch : text) {
        if (changes(ch)) ch = static_cast<char>(ch ^ 0x20);
    }
    return text;
}

// --- The model ------------------------------------------------------------------------------------

/// The error that the model raises; it has changed nothing.
struct Refusal {
    ULONG number;
};

inline void demand(bool holds, ULONG number) {
    if (!holds) throw Refusal{number};
}

/// A text. Operands are taken by value, so that it makes no difference whether they are the text itself.
struct TextModel {
    std::string text;
    bool defined = false;
    bool modified = false;
    NkDtWorkingMode mode = NkDtWmMissing;
    std::size_t alloc = 0;
    INT hit = noHit;

    INT length() const { return static_cast<INT>(text.size()); }
    bool isMissing() const { return !defined && mode == NkDtWmMissing; }

    TextModel constructed() const { return {text, defined, modified, mode, text.size(), noHit}; }

    void setDefined() {
        modified = modified || !defined;
        defined = true;
    }
    void reset() {
        text.clear();
        alloc = 0;
        hit = noHit;
    }
    /// Takes the text; the room grows as far as it must and never shrinks.
    void put(std::string changed) {
        alloc = std::max(alloc, changed.size());
        text = std::move(changed);
    }
    void edit(std::string changed) {
        put(std::move(changed));
        modified = true;
    }

    void clear() {
        const bool becomesUndefined = mode != NkDtWmDefined;
        modified = modified || !text.empty() || (defined && becomesUndefined);
        defined = defined && !becomesUndefined;
        reset();
    }
    void assign(TextModel source) {
        if (!source.defined) {
            reset();
            defined = false;
            return;
        }
        alloc = std::max(alloc, source.text.size());
        if (visible(text) != visible(source.text)) edit(source.text);
        setDefined();
    }
    void assignPlain(std::string source) {
        modified = modified || visible(text) != source;
        put(std::move(source));
        setDefined();
    }
    void assignCharacter(char ch) {
        const std::string source(1, ch);
        modified = modified || text != source;
        put(source);
        setDefined();
    }
    void append(TextModel source) {
        if (!defined && !source.defined) return;
        appendPlain(source.text);
        defined = true;
    }
    void appendPlain(const std::string& source) {
        if (source.empty()) return;
        edit(text + source);
        defined = true;
    }
    void setAt(INT index, char ch) {
        demand(index >= 0 && index < length(), NkDtErrStringindex);
        demand(ch != '\0', NkDtErrInitialwert);
        std::string changed = text;
        changed[static_cast<std::size_t>(index)] = ch;
        if (changed != text) edit(changed);
    }

    void remove(INT position, std::size_t count) {
        demand(position >= 0 && position <= length() &&
                   count <= text.size() - static_cast<std::size_t>(position),
               NkDtErrStringindex);
        edit(std::string(text).erase(static_cast<std::size_t>(position), count));
    }
    BOOL deleteParts(TextModel part, INT nMode) {
        if (text.empty() || part.text.empty()) return FALSE;
        if (nMode != NkDtStrAll && nMode != NkDtStrFirst) {
            remove(nMode, part.text.size());
            return TRUE;
        }
        const std::string searched = visible(part.text);
        BOOL removed = FALSE;
        while (!searched.empty() && (nMode == NkDtStrAll || !removed)) {
            const std::size_t found = visible(text).find(searched);
            if (found == std::string::npos) break;
            remove(static_cast<INT>(found), searched.size());
            removed = TRUE;
        }
        return removed;
    }
    INT getPos(TextModel part, INT nMode) {
        const std::string searched = visible(part.text);
        if (searched.empty()) return -1;
        const bool goesOn = nMode == NkDtStrPosNext && hit != noHit;
        const std::size_t start = goesOn ? static_cast<std::size_t>(hit) + part.text.size() : 0;
        const std::size_t found = visible(text).find(searched, start);
        if (found == std::string::npos) return -1;
        return hit = static_cast<INT>(found);
    }
    BOOL change(TextModel old, TextModel with, INT nMode) {
        if (text.empty() || old.text.empty() || with.isMissing()) return FALSE;
        if (with.text.empty()) return deleteParts(old, nMode);
        const std::string searched = visible(old.text);
        if (searched == visible(with.text)) return TRUE;
        if (nMode == NkDtStrAll || nMode == NkDtStrFirst) return replace(searched, with.text, nMode);
        remove(nMode, old.text.size());
        edit(std::string(text).insert(static_cast<std::size_t>(nMode), with.text));
        return TRUE;
    }
    BOOL replace(const std::string& searched, const std::string& with, INT nMode) {
        if (searched.empty()) return FALSE;
        const std::string seen = visible(text);
        std::string changed;
        std::size_t rest = 0;
        std::size_t found = seen.find(searched);
        if (found == std::string::npos) return FALSE;
        do {
            changed += seen.substr(rest, found - rest) + with;
            rest = found + searched.size();
            found = seen.find(searched, rest);
        } while (nMode == NkDtStrAll && found != std::string::npos);
        edit(changed + text.substr(rest));
        return TRUE;
    }

    void demandOperands(const TextModel& source, INT position) const {
        demand(!isMissing() && !source.isMissing(), NkDtErrUndefiniert);
        demand(position >= 0 && position <= length(), NkDtErrStringindex);
    }
    void copy(TextModel source, INT position) {
        demandOperands(source, position);
        edit(text.substr(0, static_cast<std::size_t>(position)) + source.text);
        defined = true;
    }
    void copyParts(TextModel source, INT position) {
        demandOperands(source, position);
        if (source.text.empty()) return;
        const std::size_t from = static_cast<std::size_t>(position);
        const std::size_t end = from + source.text.size();
        if (end > text.size()) setDefined();
        edit(text.substr(0, from) + source.text + (end < text.size() ? text.substr(end) : ""));
    }
    void insert(TextModel source, INT position) {
        demandOperands(source, position);
        if (source.text.empty()) return;
        edit(std::string(text).insert(static_cast<std::size_t>(position), source.text));
        defined = true;
    }

    void changeCase(bool (*changes)(char), bool (*stays)(char)) {
        const bool allStay =
            std::all_of(text.begin(), text.end(), [&](char ch) { return stays(ch) || ch == '\xDF'; });
        modified = modified || !allStay;
        text = inOtherCase(text, changes);
    }
    void cut(INT count) {
        if (!defined || count == length()) return;
        demand(count >= 0 && count < length(), NkDtErrStringindex);
        edit(text.substr(0, static_cast<std::size_t>(count)));
    }
    void trim(INT nMode) {
        const std::size_t first = text.find_first_not_of(' ');
        const std::size_t last = text.find_last_not_of(' ');
        std::string left;
        if (first != std::string::npos) {
            const std::size_t from = nMode == NkDtStrRight ? 0 : first;
            left = text.substr(from, nMode == NkDtStrLeft ? std::string::npos : last + 1 - from);
        }
        if (left != text) edit(left);
    }
    void fillUp(char ch, INT count, INT nMode) {
        if (isMissing() || count <= length()) return;
        demand(count < INT_MAX, NkDtErrInitiallaenge);
        const std::string filling(static_cast<std::size_t>(count) - text.size(), ch);
        edit(nMode == NkDtStrLeft ? filling + text : text + filling);
        defined = true;
    }
    BOOL isEmpty() const {
        demand(!isMissing(), NkDtErrUndefiniert);
        return text.empty() ? TRUE : FALSE;
    }
    BOOL compare(const TextModel& other, bool exact) const {
        const std::string a = visible(text);
        const std::string b = visible(other.text);
        return (exact ? a == b : inOtherCase(a, isSmall) == inOtherCase(b, isSmall)) ? TRUE : FALSE;
    }
};

/// The receivers may be one and the same.
inline void split(TextModel source, TextModel& left, TextModel& right, INT count) {
    demand(count >= 0, NkDtErrStringindex);
    if (!source.defined) {
        left.clear();
        right.clear();
        return;
    }
    if (count > source.length() && left.alloc < source.text.size()) count = source.length();
    demand(count < INT_MAX, NkDtErrInitiallaenge);
    std::string first = source.text.substr(0, static_cast<std::size_t>(count));
    first.resize(static_cast<std::size_t>(count), '\0');
    left.put(first);
    left.defined = true;
    if (count < source.length()) {
        right.put(source.text.substr(static_cast<std::size_t>(count)));
        right.defined = true;
    } else {
        right.clear();
    }
}

inline TextModel sum(TextModel a, TextModel b) {
    if (!a.defined) return b.constructed();
    if (!b.defined) return a.constructed();
    return {a.text + b.text, true, false, NkDtGetDefaultWorkingMode(), a.text.size() + b.text.size(), noHit};
}

}  // namespace fuzz
