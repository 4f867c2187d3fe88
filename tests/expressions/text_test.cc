/// @file
/// NkDtString in everyday expressions, beside plain texts, characters and CString.

#include <nkdt/NkDtChar.h>
#include <nkfw/BStr.h>
#include <nkfw/String.h>

#include <algorithm>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "Check.h"
#include "Refused.h"

namespace expressions {

namespace {

/// An application's own class.
class Name : public NkDtString {
  public:
    using NkDtString::NkDtString;
    using NkDtString::operator=;
};

INT lengthOf(const NkDtString& s) {
    return s.GetLength();
}
std::string plain(LPCTSTR psz) {
    return psz;
}

// Comparing: texts, never pointers.

void comparing() {
    const NkDtString s("Köln");
    const NkDtString twin("Köln");
    // Another place with the same characters.
    const std::string elsewhere = "Köln";
    const CString cs("Köln");
    char buffer[] = "Köln";
    equal(s, twin);
    equal(s, "Köln");
    equal(s, elsewhere.c_str());
    equal(s, buffer);
    equal(s, cs);
    less(NkDtString("a"), "b");
    less(NkDtString("a"), NkDtString("b"));
    less(NkDtString("a"), CString("b"));
    less(NkDtString("a"), 'b');
    less("a", NkDtString("b"));
    less(CString("a"), NkDtString("b"));
    less('a', NkDtString("b"));
    equal(NkDtString("c"), 'c');
    isFalse(NkDtString("cc") == 'c');
    isFalse('c' == NkDtString(""));
    isTrue("" == NkDtString(""));
    isTrue(NkDtString("") == CString());
    isTrue("x" != s);
    isTrue(s != "x");
    // Equality is exact, the order ignores case.
    isFalse(NkDtString("abc") == "ABC");
    isFalse(NkDtString("abc") < "ABC");
    isTrue(NkDtString("abc") <= "ABC");

    const NkDtString missing(NkDtWmMissing);
    const NkDtString null(NkDtWmNull);
    raises(2, [&] { (void)(missing == "x"); });
    raises(2, [&] { (void)("x" == missing); });
    raises(2, [&] { (void)(missing != cs); });
    raises(2, [&] { (void)('x' < missing); });
    raises(2, [&] { (void)(cs >= missing); });
    equal(null, "");
    equal(null, CString());
    const LPCTSTR nothing = nullptr;
    raises(5, [&] { (void)(s == nothing); });
    raises(5, [&] { (void)(nothing < s); });

    bool reached = false;
    if (s == "Köln") reached = true;
    holds(reached && !(s < "Köln") && !(s == "x") && s != "x");
    const CString a("a");
    holds(a == "a" && "a" == a && a < CString("b") && a != "b");
#if defined(__cpp_impl_three_way_comparison)
    holds((a <=> CString("b")) < 0 && (a <=> "a") == 0 && ("b" <=> a) > 0);
#endif
}

// Building and assigning.

void building() {
    isText(NkDtString("abc"), "abc");
    isText(NkDtString('c'), "c");
    isText(NkDtString(CString("abc")), "abc");
    isText(NkDtString(0), "0");
    isText(NkDtString(0L), "0");
    isText(NkDtString(-5), "-5");
    isText(NkDtString(5u), "5");
    isText(NkDtString(5000000000L), "5000000000");
    isText(NkDtString(-9223372036854775807LL - 1), "-9223372036854775808");
    isText(NkDtString(18446744073709551615ULL), "18446744073709551615");
    isText(NkDtString(static_cast<short>(-5)), "-5");
    isText(NkDtString(static_cast<unsigned char>(65)), "65");
    isText(NkDtString("abc", 2), "ab");
    const NkDtString implicitText = "abc";
    isText(implicitText, "abc");
    const NkDtString implicitCString = CString("abc");
    isText(implicitCString, "abc");
    const NkDtString listed{"abc"};
    isText(listed, "abc");
    const NkDtString empty;
    holds(!empty.IsDefined());

    NkDtString s;
    const CString cs("cs");
    isText(s = "abc", "abc");
    isText(s = cs, "cs");
    isText(s = CString("temporary"), "temporary");
    isText(s = 'c', "c");
    isText(s = NkDtString("other"), "other");
    isText(s = NkDtLong(5), "5");
    isText(s = NkDtShort(-6), "-6");
    const std::string standard = "standard";
    isText(s = standard.c_str(), "standard");
    BSTR wide = SysAllocString(u"weit");
    isText(s = wide, "weit");
    isText(NkDtString(wide), "weit");
    SysFreeString(wide);
    const LPCTSTR nothing = nullptr;
    raises(5, [&] { s = nothing; });
    isText(s, "weit");

    holds(lengthOf("abc") == 3);
    holds(lengthOf('c') == 1);
    holds(lengthOf(CString("ab")) == 2);
    holds(lengthOf(NkDtLong(12345)) == 5);
    holds(plain(NkDtString("abc")) == "abc");
}

// Joining.

void joining() {
    NkDtString s("a");
    const CString cs("c");
    isText(s + "b", "ab");
    isText("b" + s, "ba");
    isText(s + 'b', "ab");
    isText('b' + s, "ba");
    isText(s + cs, "ac");
    isText(cs + s, "ca");
    isText(s + s, "aa");
    isText("<" + s + ">" + 'x' + cs, "<a>xc");
    isText(s + NkDtString(5), "a5");
    isText(s += "b", "ab");
    isText(s += 'c', "abc");
    isText(s += cs, "abcc");
    isText(s += NkDtString("d"), "abccd");
    isText(s += NkDtLong(5), "abccd5");
    isText(s += NkDtShort(-6), "abccd5-6");
    s = "x";
    isText(s += s, "xx");
    isText(s = s + s, "xxxx");
    isText(s = "<" + s, "<xxxx");

    const NkDtString missing(NkDtWmMissing);
    isText(s + missing, "<xxxx");
    isText("abc" + missing, "abc");
    isText(missing + 'c', "c");
    holds(!(missing + missing).IsDefined());
}

// The character at any kind of position.

template <class Whole>
void characterAt() {
    const NkDtString s("abc");
    const Whole one{1};
    holds(s[one] == 'b');
    raises(3, [&] { (void)s[Whole{3}]; });
}

void characters() {
    characterAt<signed char>();
    characterAt<unsigned char>();
    characterAt<short>();
    characterAt<unsigned short>();
    characterAt<int>();
    characterAt<unsigned int>();
    characterAt<long>();
    characterAt<unsigned long>();
    characterAt<long long>();
    characterAt<unsigned long long>();
    NkDtString s("abc");
    holds(s[0] == 'a' && s[0L] == 'a' && s[0u] == 'a');
    holds(s[NkDtLong(1)] == 'b' && s[NkDtShort(2)] == 'c');
    raises(3, [&] { (void)s[-1]; });
    raises(3, [&] { (void)s[-1L]; });
    raises(3, [&] { (void)s[4294967296L]; });
    raises(3, [&] { (void)s[18446744073709551615ULL]; });
    raises(3, [&] { (void)s[NkDtLong(3)]; });
    raises(2, [&] { (void)s[NkDtLong(NkDtWmMissing)]; });
    static_assert(std::is_same_v<decltype(s[0]), TCHAR> && std::is_same_v<decltype(s[0UL]), TCHAR>);
    std::string copied;
    for (INT i = 0; i < s.GetLength(); ++i)
        copied += s[i];
    holds(copied == "abc");
}

// The framework's text.

void frameworkText() {
    const NkDtString s("abc");
    const NkDtString missing(NkDtWmMissing);
    const CString copied = s;
    const CString direct(s);
    const CString listed{s};
    CString cs;
    cs = s;
    holds(copied == "abc" && direct == "abc" && listed == "abc" && cs == "abc");
    cs += s;
    holds(cs == "abcabc");
    cs += "d";
    cs += 'e';
    cs += CString("f");
    holds(cs == "abcabcdef");
    cs = missing;
    holds(cs.IsEmpty());
    cs = 'c';
    holds(cs == "c" && CString('c') == "c" && CString('c', 3) == "ccc");
    cs = cs + 'd' + "e" + CString("f");
    cs = '<' + cs;
    holds(cs == "<cdef" && "x" + cs == "x<cdef");
    holds(CString("xabc").Find(s) == 1 && CString("abc").Compare(s) == 0);
    cs = static_cast<LPCTSTR>(nullptr);
    holds(cs.IsEmpty());
    const std::string standard(s);
    std::string assigned;
    assigned = s;
    assigned += s;
    holds(standard == "abc" && assigned == "abcabc");
    const std::string_view view(s);
    holds(view == "abc");

    std::ostringstream os;
    os << s << ';' << missing << ';' << NkDtString("") << ';' << CString("cs");
    holds(os.str() == "abc;;;cs");
}

// Containers and algorithms.

void containers() {
    static_assert(std::is_nothrow_move_constructible_v<NkDtString>);
    static_assert(std::is_copy_constructible_v<NkDtString> && std::is_default_constructible_v<NkDtString>);
    static_assert(std::is_copy_assignable_v<NkDtString> && std::is_move_assignable_v<NkDtString>);

    // Whoever moves keeps its characters where they are.
    std::vector<NkDtString> names;
    std::map<std::string, LPCTSTR> places;
    for (int i = 0; i < 100; ++i) {
        names.push_back(NkDtString(1000 + (i * 37) % 100));
        places[names.back().GetValue()] = names.back().GetValue();
    }
    std::sort(names.begin(), names.end());
    std::reverse(names.begin(), names.end());
    holds(names[0] == "1099" && names[1] == "1098" && names[99] == "1000");
    holds(std::all_of(names.begin(), names.end(),
                      [&](const NkDtString& s) { return places.at(s.GetValue()) == s.GetValue(); }));

    NkDtString a("a");
    NkDtString b("b");
    const LPCTSTR place = a.GetValue();
    std::swap(a, b);
    holds(a == "b" && b == "a" && b.GetValue() == place);
    isText(std::max(a, b), "b");
    isText(a == "b" ? a : b, "b");
    isText(a == "x" ? a : NkDtString("none"), "none");
    isText(a == "x" ? a : "none", "none");

    const std::vector<NkDtString> listed{"c", "a", "b"};
    holds(std::find(listed.begin(), listed.end(), "b") != listed.end());
    holds(std::find(listed.begin(), listed.end(), 'b') - listed.begin() == 2);
    holds(std::count(listed.begin(), listed.end(), CString("a")) == 1);
    NkDtString sum("");
    for (const NkDtString& s : listed)
        sum += s;
    isText(sum, "cab");

    std::map<NkDtString, int> towns;
    towns["Bonn"] = 1;
    towns[NkDtString("Aachen")] = 2;
    towns["Bonn"] = 3;
    holds(towns.size() == 2 && towns.begin()->second == 2 && towns.at("Bonn") == 3);
    std::optional<NkDtString> maybe;
    maybe = "abc";
    holds(maybe == "abc" && maybe != "x");
    holds(std::pair<NkDtString, int>("a", 1) < std::pair<NkDtString, int>("a", 2));
    holds(std::pair<CString, int>("a", 1) < std::pair<CString, int>("b", 0));
    holds(!(std::pair<CString, int>("b", 0) < std::pair<CString, int>("a", 1)));
    const CString one("a");
    const CString two("a");
    holds(!(std::pair<CString, int>(one, 1) < std::pair<CString, int>(two, 1)));
}

void husks() {
    NkDtString full("abc");
    const LPCTSTR place = full.GetValue();
    NkDtString taken = std::move(full);
    isText(taken, "abc");
    holds(taken.GetValue() == place);
    holds(!full.IsDefined() && full.GetLength() == 0);  // NOLINT(bugprone-use-after-move)
    raises(2, [&] { (void)(full == "abc"); });
    full = "new";
    isText(full, "new");
    full = std::move(taken);
    isText(full, "abc");
    isText(taken, "abc");
    full = full + "d";
    isText(full, "abcd");
    NkDtString husk = std::move(full);
    full += "e";
    isText(full, "e");
    isText(husk, "abcd");
}

// A class derived from a text is a text.

void derived() {
    Name name("abc");
    const NkDtString s("abc");
    equal(name, "abc");
    equal(name, s);
    equal(name, CString("abc"));
    equal(name, Name("abc"));
    less(name, 'b');
    isText(name + "d", "abcd");
    isText("d" + name, "dabc");
    isText(name + s, "abcabc");
    isText(name + NkDtLong(5), "abc5");
    isText(NkDtLong(5) + name, "5abc");
    isText(name + CString("d"), "abcd");
    name = "new";
    name += 'x';
    const CString cs = name;
    holds(cs == "newx");
    CString appended("<");
    appended += name;
    holds(appended == "<newx");
    NkDtString base;
    isText(base = name, "newx");
    name = s;
    holds(name == s);
    onlyFirstCompiles<Name>(
        "a derived text is no number", [](auto&& n) -> decltype(void(n = "5")) {},
        [](auto&& n) -> decltype(void(n = 5)) {}, [](auto&& n) -> decltype(void(n += 5)) {},
        [](auto&& n) -> decltype(void(n == 5)) {}, [](auto&& n) -> decltype(void(n == 0)) {});
    refusedBeside<Name, int, double, bool, std::nullptr_t, NkDtWorkingMode, NkDtLong, NkDtShort>(
        "compared with a derived text", comparisons);
}

// What must not compile.

void refusedAssigning() {
    onlyFirstCompiles<NkDtString>(
        "a text is assigned texts and characters", [](auto&& s) -> decltype(void(s = "5")) {},
        [](auto&& s) -> decltype(void(s = 5)) {}, [](auto&& s) -> decltype(void(s = 0)) {},
        [](auto&& s) -> decltype(void(s = 5L)) {}, [](auto&& s) -> decltype(void(s = 5u)) {},
        [](auto&& s) -> decltype(void(s = 2.5)) {}, [](auto&& s) -> decltype(void(s = 2.5f)) {},
        [](auto&& s) -> decltype(void(s = true)) {}, [](auto&& s) -> decltype(void(s = nullptr)) {},
        [](auto&& s) -> decltype(void(s = NULL)) {}, [](auto&& s) -> decltype(void(s = NkDtWmNull)) {},
        [](auto&& s) -> decltype(void(s = NkDtTypLong)) {}, [](auto&& s) -> decltype(void(s = L'x')) {},
        [](auto&& s) -> decltype(void(s = u'x')) {}, [](auto&& s) -> decltype(void(s = U'x')) {},
        [](auto&& s) -> decltype(void(s = L"x")) {}, [](auto&& s) -> decltype(void(s = {})) {},
        [](auto&& s) -> decltype(void(s = static_cast<signed char>(65))) {},
        [](auto&& s) -> decltype(void(s = static_cast<unsigned char>(65))) {});
    onlyFirstCompiles<NkDtString>(
        "a text appends texts and characters", [](auto&& s) -> decltype(void(s += "5")) {},
        [](auto&& s) -> decltype(void(s += 5)) {}, [](auto&& s) -> decltype(void(s += 0)) {},
        [](auto&& s) -> decltype(void(s += 5L)) {}, [](auto&& s) -> decltype(void(s += 5u)) {},
        [](auto&& s) -> decltype(void(s += 2.5)) {}, [](auto&& s) -> decltype(void(s += true)) {},
        [](auto&& s) -> decltype(void(s += nullptr)) {}, [](auto&& s) -> decltype(void(s += NkDtWmNull)) {},
        [](auto&& s) -> decltype(void(s += L'x')) {}, [](auto&& s) -> decltype(void(s += u'x')) {},
        [](auto&& s) -> decltype(void(s += L"x")) {});
    onlyFirstCompiles<NkDtString>(
        "a text is built from no fraction and from nothing",
        [](auto&& s) -> decltype(void(std::decay_t<decltype(s)>(5))) {},
        [](auto&& s) -> decltype(void(std::decay_t<decltype(s)>(2.5))) {},
        [](auto&& s) -> decltype(void(std::decay_t<decltype(s)>(2.5f))) {},
        [](auto&& s) -> decltype(void(std::decay_t<decltype(s)>(true))) {},
        [](auto&& s) -> decltype(void(std::decay_t<decltype(s)>(nullptr))) {},
        [](auto&& s) -> decltype(void(std::decay_t<decltype(s)>(L'x'))) {},
        [](auto&& s) -> decltype(void(std::decay_t<decltype(s)>(u'x'))) {},
        [](auto&& s) -> decltype(void(std::decay_t<decltype(s)>(L"x"))) {});
    refusedAsArgument<NkDtString, const char*, float, double, bool, wchar_t, char16_t, char32_t,
                      std::nullptr_t, const wchar_t*>("a function that takes a text");
}

void refusedJoining() {
    onlyFirstCompiles<NkDtString>(
        "a text joins texts and characters", [](auto&& s) -> decltype(void(s + "5")) {},
        [](auto&& s) -> decltype(void(s + 5)) {}, [](auto&& s) -> decltype(void(5 + s)) {},
        [](auto&& s) -> decltype(void(s + 0)) {}, [](auto&& s) -> decltype(void(0 + s)) {},
        [](auto&& s) -> decltype(void(s + 2.5)) {}, [](auto&& s) -> decltype(void(s + true)) {},
        [](auto&& s) -> decltype(void(s + nullptr)) {}, [](auto&& s) -> decltype(void(s + NkDtWmNull)) {},
        [](auto&& s) -> decltype(void(s + L'x')) {}, [](auto&& s) -> decltype(void(s - 1)) {},
        [](auto&& s) -> decltype(void(s - s)) {});
    refusedBeside<NkDtString, signed char, unsigned char, short, int, unsigned, long, unsigned long,
                  long long, float, double, bool, wchar_t, char16_t, char32_t, std::nullptr_t,
                  NkDtWorkingMode, NkDtTyps>("a text joins texts and characters", addition);
}

void refusedComparing() {
    onlyFirstCompiles<NkDtString>(
        "a text compares with texts and characters", [](auto&& s) -> decltype(void(s == "5")) {},
        [](auto&& s) -> decltype(void(s == 5)) {}, [](auto&& s) -> decltype(void(s == 0)) {},
        [](auto&& s) -> decltype(void(0 == s)) {}, [](auto&& s) -> decltype(void(s != 0)) {},
        [](auto&& s) -> decltype(void(s < 0)) {}, [](auto&& s) -> decltype(void(s == 0L)) {},
        [](auto&& s) -> decltype(void(s == NULL)) {}, [](auto&& s) -> decltype(void(s == nullptr)) {},
        [](auto&& s) -> decltype(void(nullptr != s)) {}, [](auto&& s) -> decltype(void(s == 2.5)) {},
        [](auto&& s) -> decltype(void(s == true)) {}, [](auto&& s) -> decltype(void(s == NkDtWmNull)) {},
        [](auto&& s) -> decltype(void(s == L'x')) {}, [](auto&& s) -> decltype(void(s == L"x")) {},
        [](auto&& s) -> decltype(void(s == u"x")) {}, [](auto&& s) -> decltype(void(u"x" == s)) {},
        [](auto&& s) -> decltype(void(s < u"x")) {});
    refusedBeside<NkDtString, signed char, unsigned char, short, int, unsigned, long, unsigned long,
                  long long, float, double, bool, wchar_t, char16_t, char32_t, std::nullptr_t,
                  NkDtWorkingMode, NkDtTyps, NkDtLong, NkDtShort, BSTR, const OLECHAR*, const wchar_t*>(
        "a text compares with texts and characters", comparisons);
#if defined(__cpp_impl_three_way_comparison)
    onlyFirstCompiles<NkDtString>(
        "equality and order of a text follow different rules", [](auto&& s) -> decltype(void(s < s)) {},
        [](auto&& s) -> decltype(void(s <=> s)) {}, [](auto&& s) -> decltype(void(s <=> "x")) {},
        [](auto&& s) -> decltype(void("x" <=> s)) {},
        [](auto&& s) -> decltype(void(s <=> std::declval<CString&>())) {},
        [](auto&& s) -> decltype(void(std::declval<CString&>() <=> s)) {});
#endif
}

void refusedElsewhere() {
    refusedInComputing<NkDtString, int, unsigned, long, double, bool, char, const char*, NkDtChar>(
        "nothing is computed with a text");
    onlyFirstCompiles<NkDtString>(
        "a length is an INT", [](auto&& s) -> decltype(void(s.Cut(2))) {},
        [](auto&& s) -> decltype(void(s.Cut(2LL))) {}, [](auto&& s) -> decltype(void(s.Cut(2.9))) {},
        [](auto&& s) -> decltype(void(s.Cut('a'))) {}, [](auto&& s) -> decltype(void(s.Cut(true))) {},
        [](auto&& s) -> decltype(void(s.Insert("x", 'a'))) {},
        [](auto&& s) -> decltype(void(s.Copy("x", 2.5))) {},
        [](auto&& s) -> decltype(void(s.CopyParts("x", 2LL))) {},
        [](auto&& s) -> decltype(void(s.Split(s, s, 2.0f))) {},
        [](auto&& s) -> decltype(void(s.GetnValue(5LL, 1))) {},
        [](auto&& s) -> decltype(void(s.GetnValue(1, true))) {});
    onlyFirstCompiles<NkDtString>(
        "a text is filled with a character", [](auto&& s) -> decltype(void(s.FillUp('0', 5, NkDtStrLeft))) {},
        [](auto&& s) -> decltype(void(s.FillUp(5, '0', NkDtStrLeft))) {},
        [](auto&& s) -> decltype(void(s.FillUp(48, 5, NkDtStrLeft))) {},
        [](auto&& s) -> decltype(void(s.FillUp('0', 5LL, NkDtStrLeft))) {},
        [](auto&& s) -> decltype(void(s.SetAt(0, 321))) {},
        [](auto&& s) -> decltype(void(s.SetAt('a', 'a'))) {});
    onlyFirstCompiles<NkDtString>(
        "a character value fills", [](auto&& s) -> decltype(void(s.SetAt(0, NkDtChar('x')))) {},
        [](auto&& s) -> decltype(void(s.SetAt(NkDtChar('x'), 'x'))) {});
    onlyFirstCompiles<NkDtString>(
        "a position is a whole number", [](auto&& s) -> decltype(void(s[0])) {},
        [](auto&& s) -> decltype(void(s['a'])) {}, [](auto&& s) -> decltype(void(s[L'a'])) {},
        [](auto&& s) -> decltype(void(s[true])) {}, [](auto&& s) -> decltype(void(s[1.5])) {},
        [](auto&& s) -> decltype(void(s[1.5f])) {}, [](auto&& s) -> decltype(void(0 [s])) {},
        [](auto&& s) -> decltype(void(s[0] = 'a', s[0L] = 'a')) {});
    onlyFirstCompiles<NkDtString>(
        "a text is no pointer and no truth", [](auto&& s) -> decltype(void(s.GetValue() ? 1 : 0)) {},
        [](auto&& s) -> decltype(void(s ? 1 : 0)) {}, [](auto&& s) -> decltype(void(!s)) {},
        [](auto&& s) -> decltype(void(s && true)) {}, [](auto&& s) -> decltype(void(*s)) {},
        [](auto&& s) -> decltype(void(++s)) {});
    onlyFirstCompiles<CString>(
        "no number becomes the character with its code", [](auto&& cs) -> decltype(void(cs = 'c')) {},
        [](auto&& cs) -> decltype(void(cs = 5)) {}, [](auto&& cs) -> decltype(void(cs = 0)) {},
        [](auto&& cs) -> decltype(void(cs = 2.5)) {}, [](auto&& cs) -> decltype(void(cs = true)) {},
        [](auto&& cs) -> decltype(void(cs = nullptr)) {}, [](auto&& cs) -> decltype(void(cs = L'x')) {},
        [](auto&& cs) -> decltype(void(cs = NkDtWmNull)) {}, [](auto&& cs) -> decltype(void(cs += 5)) {},
        [](auto&& cs) -> decltype(void(cs += true)) {}, [](auto&& cs) -> decltype(void(cs + 5)) {},
        [](auto&& cs) -> decltype(void(5 + cs)) {}, [](auto&& cs) -> decltype(void(cs + NkDtWmNull)) {},
        [](auto&& cs) -> decltype(void(std::decay_t<decltype(cs)>(5))) {},
        [](auto&& cs) -> decltype(void(std::decay_t<decltype(cs)>(65, 3))) {},
        [](auto&& cs) -> decltype(void(std::decay_t<decltype(cs)>(nullptr))) {});
}

}  // namespace

void text() {
    comparing();
    building();
    joining();
    characters();
    frameworkText();
    containers();
    husks();
    derived();
    refusedAssigning();
    refusedJoining();
    refusedComparing();
    refusedElsewhere();
}

}  // namespace expressions
