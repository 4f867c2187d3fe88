#pragma once

/// @file
/// Texts that are compared: our class and its peers. Each subject states the same steps.

#include <algorithm>
#include <string>

#include "nkdt/NkDt.h"

#ifdef NK_PEER_QT6_CORE
#include <QByteArray>
#endif

namespace bench {

struct Text {
    static constexpr const char* name = "NkDtString";
    using Value = NkDtString;
    static Value make(const char* text) { return Value(text); }
    static bool equal(const Value& a, const Value& b) { return a == b; }
    static bool less(const Value& a, const Value& b) { return a < b; }
    static Value quoted(const Value& a) { return a.ConvToSQL(); }
};

struct StdString {
    static constexpr const char* name = "std_string";
    using Value = std::string;
    static Value make(const char* text) { return Value(text); }
    static bool equal(const Value& a, const Value& b) { return a == b; }
    static bool less(const Value& a, const Value& b) { return a < b; }
    static Value quoted(const Value& a) {
        Value result;
        result.reserve(a.size() + 2);
        result += '\'';
        for (const char ch : a) {
            result += ch;
            if (ch == '\'') result += ch;
        }
        result += '\'';
        return result;
    }
};

#ifdef NK_PEER_QT6_CORE
struct QtBytes {
    static constexpr const char* name = "QByteArray";
    using Value = QByteArray;
    static Value make(const char* text) { return Value(text); }
    static bool equal(const Value& a, const Value& b) { return a == b; }
    static bool less(const Value& a, const Value& b) { return a < b; }
    static Value quoted(const Value& a) {
        Value result = a;
        result.replace('\'', "''");
        result.prepend('\'');
        result.append('\'');
        return result;
    }
};
#endif

/// The bytes alone, in a buffer that is there: what a conversion must at least do.
struct BytesLimit {
    static constexpr const char* name = "limit_bytes";
};

}  // namespace bench
