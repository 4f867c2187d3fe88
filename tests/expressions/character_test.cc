/// @file
/// NkDtChar in everyday expressions, beside plain characters and texts.

#include <nkdt/Hash.h>
#include <nkdt/NkDtBool.h>
#include <nkdt/NkDtChar.h>

#include <algorithm>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Check.h"
#include "Refused.h"

namespace expressions {

namespace {

/// An application's own classes.
class Letter : public NkDtChar {
  public:
    using NkDtChar::NkDtChar;
    using NkDtChar::operator=;
};
class Name : public NkDtString {
  public:
    using NkDtString::NkDtString;
};

TCHAR valueOf(const NkDtChar& ch) {
    return ch.GetValue();
}
INT lengthOf(const NkDtString& s) {
    return s.GetLength();
}

template <class Result>
void isCharacter(const Result& result, char value, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    static_assert(std::is_same_v<Result, NkDtChar>);
    count(result.IsDefined() && result.GetValue() == value, "is the character", here);
}

/// Both orders of `==` and `!=`.
template <class A, class B>
void same(const A& a, const B& b, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    isTrue(a == b, here);
    isTrue(b == a, here);
    isFalse(a != b, here);
    isFalse(b != a, here);
}
template <class A, class B>
void differ(const A& a, const B& b, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    isFalse(a == b, here);
    isFalse(b == a, here);
    isTrue(a != b, here);
    isTrue(b != a, here);
}

void building() {
    isCharacter(NkDtChar('a'), 'a');
    isCharacter(NkDtChar("abc"), 'a');
    isCharacter(NkDtChar(NkDtString("abc")), 'a');
    isCharacter(NkDtChar(Name("abc")), 'a');
    isCharacter(NkDtChar{'a'}, 'a');
    isCharacter(NkDtChar{"abc"}, 'a');
    const NkDtChar implicitCharacter = 'a';
    isCharacter(implicitCharacter, 'a');
    const NkDtChar implicitText = "abc";
    isCharacter(implicitText, 'a');
    const NkDtChar fromText = NkDtString("abc");
    isCharacter(fromText, 'a');
    holds(!NkDtChar().IsDefined() && !NkDtChar(NkDtWmNull).IsDefined());
    const LPCTSTR nothing = nullptr;
    raises(5, [&] { (void)NkDtChar(nothing); });

    NkDtChar ch;
    isCharacter(ch = 'b', 'b');
    isCharacter(ch = "cd", 'c');
    isCharacter(ch = NkDtString("de"), 'd');
    isCharacter(ch = Name("ef"), 'e');
    isCharacter(ch = NkDtChar('f'), 'f');
    isCharacter(ch = Letter('g'), 'g');
    const char plain = ch;
    holds(plain == 'g' && valueOf('x') == 'x' && valueOf("y") == 'y' && valueOf(NkDtString("z")) == 'z');
    std::string standard = "<";
    standard += ch;
    holds(standard == "<g");
    switch (ch) {
        case 'g':
            break;
        default:
            holds(false);
    }
}

void comparing() {
    const NkDtChar ch('a');
    same(ch, NkDtChar('a'));
    same(ch, 'a');
    same(ch, Letter('a'));
    differ(ch, NkDtChar('A'));
    differ(ch, 'b');
    const NkDtChar missing(NkDtWmMissing);
    const NkDtChar null(NkDtWmNull);
    same(null, '\0');
    raises(2, [&] { (void)(missing == 'a'); });
    raises(2, [&] { (void)('a' != missing); });
    raises(2, [&] { (void)(missing == ch); });
    raises(2, [&] { (void)(ch != missing); });

    equal(NkDtString("a"), ch);
    equal(Name("a"), ch);
    equal(Name("a"), Letter('a'));
    less(NkDtString("A"), NkDtChar('b'));
    less(ch, NkDtString("b"));
    isFalse(NkDtString("ab") == ch);
    isFalse(ch == NkDtString("ab"));
    equal(NkDtString(""), null);
    raises(2, [&] { (void)(NkDtString("a") == missing); });
    raises(2, [&] { (void)(missing == NkDtString("a")); });
    raises(2, [&] { (void)(missing != NkDtString("a")); });
    raises(2, [&] { (void)(NkDtString(NkDtWmMissing) == ch); });
    raises(2, [&] { (void)(ch < NkDtString(NkDtWmMissing)); });

    bool reached = false;
    if (ch == 'a' && 'b' != ch) reached = true;
    holds(reached && !(ch == 'b'));
}

void joining() {
    const NkDtChar a('a');
    const NkDtChar b('b');
    const CString cs("cs");
    isText(a + b, "ab");
    isText(a + 'x', "ax");
    isText('x' + a, "xa");
    isText(a + "xy", "axy");
    isText("xy" + a, "xya");
    isText(a + cs, "acs");
    isText(cs + a, "csa");
    isText(NkDtString("s") + a, "sa");
    isText(a + NkDtString("s"), "as");
    isText(Letter('a') + "x", "ax");
    isText(Letter('a') + Name("n"), "an");
    isText(Name("n") + Letter('a'), "na");
    isText(a + b + 'c' + "d" + NkDtString("e") + a, "abcdea");
    isText("<" + a + '>', "<a>");
    const std::string elsewhere = "xy";
    isText(a + elsewhere.c_str(), "axy");

    const NkDtChar missing(NkDtWmMissing);
    isText(missing + "xy", "xy");
    isText("xy" + missing, "xy");
    isText(missing + 'x', "x");
    isText('x' + missing, "x");
    isText(missing + NkDtString("s"), "s");
    isText(NkDtString("s") + missing, "s");
    isText(missing + a, "a");
    isText(a + missing, "a");
    isText(a + NkDtString(NkDtWmMissing), "a");
    isText(NkDtString(NkDtWmMissing) + a, "a");
    holds(!(missing + missing).IsDefined());
    holds(!(missing + NkDtString(NkDtWmNull)).IsDefined());
    const LPCTSTR nothing = nullptr;
    raises(5, [&] { (void)(a + nothing); });
    raises(5, [&] { (void)(nothing + missing); });
}

void texts() {
    const NkDtChar ch('c');
    isText(NkDtString(ch), "c");
    const NkDtString implicitText = ch;
    isText(implicitText, "c");
    NkDtString s("abc");
    isText(s += ch, "abcc");
    isText(s += Letter('d'), "abccd");
    isText(s = ch, "c");
    isText(s = Letter('l'), "l");
    isText(s = NkDtChar('r'), "r");
    holds(lengthOf(ch) == 1);
    const NkDtChar missing(NkDtWmMissing);
    isText(s += missing, "r");
    holds(!(s = missing).IsDefined());

    std::ostringstream os;
    os << ch << ';' << missing << ';' << NkDtChar("") << ';' << Letter('l');
    holds(os.str() == "c;;;l");
}

void containers() {
    static_assert(std::is_nothrow_move_constructible_v<NkDtChar>);
    static_assert(std::is_copy_constructible_v<NkDtChar> && std::is_default_constructible_v<NkDtChar>);
    static_assert(std::is_copy_assignable_v<NkDtChar> && std::is_move_assignable_v<NkDtChar>);
    std::vector<NkDtChar> listed{'c', "a", NkDtChar('b')};
    holds(std::find(listed.begin(), listed.end(), 'b') - listed.begin() == 2);
    holds(std::count(listed.begin(), listed.end(), NkDtChar('a')) == 1);
    std::swap(listed[0], listed[1]);
    holds(listed[0] == 'a' && listed[1] == 'c');
    std::optional<NkDtChar> maybe;
    maybe = 'x';
    holds(maybe == 'x' && maybe != 'y');
    const std::unordered_set<NkDtChar> set{'a', 'b', 'a'};
    holds(set.size() == 2 && set.count('a') == 1 && set.count('x') == 0);
    holds(std::pair<NkDtChar, int>('a', 1) == std::pair<NkDtChar, int>('a', 1));
    isCharacter(listed[0] == 'a' ? listed[0] : listed[1], 'a');
}

void husks() {
    NkDtChar full('a');
    NkDtChar taken = std::move(full);
    isCharacter(taken, 'a');
    holds(!full.IsDefined());  // NOLINT(bugprone-use-after-move)
    raises(2, [&] { (void)(full == 'a'); });
    full = 'b';
    isCharacter(full, 'b');
    full = std::move(taken);
    isCharacter(full, 'a');
    isCharacter(taken, 'a');
}

void refused() {
    onlyFirstCompiles<NkDtChar>(
        "a character is assigned characters and texts", [](auto&& ch) -> decltype(void(ch = 'a')) {},
        [](auto&& ch) -> decltype(void(ch = 5)) {}, [](auto&& ch) -> decltype(void(ch = 0)) {},
        [](auto&& ch) -> decltype(void(ch = 5L)) {}, [](auto&& ch) -> decltype(void(ch = 5u)) {},
        [](auto&& ch) -> decltype(void(ch = 2.5)) {}, [](auto&& ch) -> decltype(void(ch = true)) {},
        [](auto&& ch) -> decltype(void(ch = nullptr)) {}, [](auto&& ch) -> decltype(void(ch = NULL)) {},
        [](auto&& ch) -> decltype(void(ch = NkDtWmNull)) {}, [](auto&& ch) -> decltype(void(ch = L'x')) {},
        [](auto&& ch) -> decltype(void(ch = L"x")) {}, [](auto&& ch) -> decltype(void(ch = NkDtLong(5))) {},
        [](auto&& ch) -> decltype(void(ch = NkDtBool(TRUE))) {},
        [](auto&& ch) -> decltype(void(ch = static_cast<unsigned char>(65))) {});
    onlyFirstCompiles<NkDtChar>(
        "a character is built from characters and texts",
        [](auto&& ch) -> decltype(void(std::decay_t<decltype(ch)>('a'))) {},
        [](auto&& ch) -> decltype(void(std::decay_t<decltype(ch)>(0))) {},
        [](auto&& ch) -> decltype(void(std::decay_t<decltype(ch)>(5))) {},
        [](auto&& ch) -> decltype(void(std::decay_t<decltype(ch)>(2.5))) {},
        [](auto&& ch) -> decltype(void(std::decay_t<decltype(ch)>(true))) {},
        [](auto&& ch) -> decltype(void(std::decay_t<decltype(ch)>(nullptr))) {},
        [](auto&& ch) -> decltype(void(std::decay_t<decltype(ch)>(NkDtTypChar))) {},
        [](auto&& ch) -> decltype(void(std::decay_t<decltype(ch)>(NkDtShort(5)))) {},
        [](auto&& ch) -> decltype(void(std::decay_t<decltype(ch)>(NkDtBool(TRUE)))) {},
        [](auto&& ch) -> decltype(void(std::decay_t<decltype(ch)>(L'x'))) {});
    refusedAsArgument<NkDtChar, char, signed char, unsigned char, short, int, long, float, double, bool,
                      wchar_t, char16_t, char32_t, std::nullptr_t, NkDtTyps, NkDtLong, NkDtShort, NkDtBool>(
        "a function that takes a character");
    onlyFirstCompiles<NkDtChar>(
        "characters have no order", [](auto&& ch) -> decltype(void(ch == ch)) {},
        [](auto&& ch) -> decltype(void(ch < 'a')) {}, [](auto&& ch) -> decltype(void('a' > ch)) {},
        [](auto&& ch) -> decltype(void(ch < ch)) {}, [](auto&& ch) -> decltype(void(ch >= ch)) {},
        [](auto&& ch) -> decltype(void(ch <= 5)) {}, [](auto&& ch) -> decltype(void(ch < "a")) {},
        [](auto&& ch) -> decltype(void("a" <= ch)) {}, [](auto&& ch) -> decltype(void(ch > 2.5)) {});
    onlyFirstCompiles<NkDtChar>(
        "a character is compared with characters and texts", [](auto&& ch) -> decltype(void(ch == 'a')) {},
        [](auto&& ch) -> decltype(void(ch == "abc")) {}, [](auto&& ch) -> decltype(void("abc" != ch)) {},
        [](auto&& ch) -> decltype(void(ch == CString("a"))) {}, [](auto&& ch) -> decltype(void(ch == 97)) {},
        [](auto&& ch) -> decltype(void(0 == ch)) {}, [](auto&& ch) -> decltype(void(ch == nullptr)) {},
        [](auto&& ch) -> decltype(void(ch == true)) {}, [](auto&& ch) -> decltype(void(ch == 2.5)) {},
        [](auto&& ch) -> decltype(void(ch == L'a')) {}, [](auto&& ch) -> decltype(void(ch == L"a")) {},
        [](auto&& ch) -> decltype(void(ch == u"a")) {}, [](auto&& ch) -> decltype(void(ch == NkDtWmNull)) {},
        [](auto&& ch) -> decltype(void(ch == NkDtLong(5))) {},
        [](auto&& ch) -> decltype(void(NkDtShort(5) != ch)) {},
        [](auto&& ch) -> decltype(void(ch == NkDtBool(TRUE))) {});
    onlyFirstCompiles<NkDtChar>(
        "a character joins characters and texts", [](auto&& ch) -> decltype(void(ch + 'a')) {},
        [](auto&& ch) -> decltype(void(ch + 1)) {}, [](auto&& ch) -> decltype(void(1 + ch)) {},
        [](auto&& ch) -> decltype(void(ch + 1L)) {}, [](auto&& ch) -> decltype(void(ch + 2.5)) {},
        [](auto&& ch) -> decltype(void(ch + true)) {}, [](auto&& ch) -> decltype(void(ch + nullptr)) {},
        [](auto&& ch) -> decltype(void(ch + NkDtWmNull)) {}, [](auto&& ch) -> decltype(void(ch + L'x')) {},
        [](auto&& ch) -> decltype(void(ch + L"x")) {}, [](auto&& ch) -> decltype(void(L"x" + ch)) {},
        [](auto&& ch) -> decltype(void(ch + NkDtLong(5))) {},
        [](auto&& ch) -> decltype(void(NkDtLong(5) + ch)) {}, [](auto&& ch) -> decltype(void(ch - 'a')) {},
        [](auto&& ch) -> decltype(void(ch - ch)) {}, [](auto&& ch) -> decltype(void(1 - ch)) {},
        [](auto&& ch) -> decltype(void("x" - ch)) {}, [](auto&& ch) -> decltype(void(ch += 'a')) {},
        [](auto&& ch) -> decltype(void(++ch)) {});
    onlyFirstCompiles<NkDtLong>(
        "a character is no number", [](auto&& n) -> decltype(void(n = 5)) {},
        [](auto&& n) -> decltype(void(n = NkDtChar('5'))) {},
        [](auto&& n) -> decltype(void(n += NkDtChar('5'))) {},
        [](auto&& n) -> decltype(void(n < NkDtChar('5'))) {},
        [](auto&& n) -> decltype(void(std::decay_t<decltype(n)>(NkDtChar('5')))) {});
    refusedInComputing<NkDtChar, int, unsigned, long, double, bool, char, const char*, NkDtLong, NkDtShort,
                       NkDtBool, NkDtString>("nothing is computed with a character");
    onlyFirstCompiles<NkDtChar>(
        "a database column gives a character", [](auto&& ch) -> decltype(void(ch.SetFromSQL('a', 850))) {},
        [](auto&& ch) -> decltype(void(ch.SetFromSQL(321))) {},
        [](auto&& ch) -> decltype(void(ch.SetFromSQL(2.5, 850))) {},
        [](auto&& ch) -> decltype(void(ch.SetFromSQL(true))) {},
        [](auto&& ch) -> decltype(void(ch.SetFromSQL(L'a'))) {});
    onlyFirstCompiles<NkDtString>(
        "a character is no position", [](auto&& s) -> decltype(void(s[0])) {},
        [](auto&& s) -> decltype(void(s[NkDtChar('a')])) {});
#if defined(__cpp_impl_three_way_comparison)
    onlyFirstCompiles<NkDtChar>(
        "characters have no order", [](auto&& ch) -> decltype(void(ch == ch)) {},
        [](auto&& ch) -> decltype(void(ch <=> ch)) {}, [](auto&& ch) -> decltype(void(ch <=> 'a')) {},
        [](auto&& ch) -> decltype(void('a' <=> ch)) {},
        [](auto&& ch) -> decltype(void(ch <=> NkDtString("a"))) {});
#endif
}

}  // namespace

void characterValues() {
    building();
    comparing();
    joining();
    texts();
    containers();
    husks();
    refused();
}

}  // namespace expressions
