/// @file
/// NkDtBool in everyday expressions, beside `BOOL`, `bool` and texts.

#include <nkdt/Hash.h>
#include <nkdt/NkDtBool.h>
#include <nkdt/NkDtChar.h>

#include <algorithm>
#include <optional>
#include <sstream>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

#include "Check.h"
#include "Refused.h"

namespace expressions {

namespace {

/// An application's own class.
class Switch : public NkDtBool {
  public:
    using NkDtBool::NkDtBool;
    using NkDtBool::operator=;
};

BOOL valueOf(const NkDtBool& b) {
    return b.GetValue();
}
INT lengthOf(const NkDtString& s) {
    return s.GetLength();
}

template <class Result>
void isTruth(const Result& result, BOOL value, Here here = {__builtin_FILE(), __builtin_LINE()}) {
    static_assert(std::is_same_v<Result, NkDtBool>);
    count(result.IsDefined() && result.GetValue() == value, "is the truth value", here);
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
    isTruth(NkDtBool(TRUE), TRUE);
    isTruth(NkDtBool(FALSE), FALSE);
    isTruth(NkDtBool(true), TRUE);
    isTruth(NkDtBool(5), 5);
    isTruth(NkDtBool(0), 0);
    isTruth(NkDtBool(short{5}), 5);
    isTruth(NkDtBool{TRUE}, TRUE);
    isTruth(NkDtBool("Ja"), TRUE);
    isTruth(NkDtBool("0"), FALSE);
    isTruth(NkDtBool(NkDtString("nein")), FALSE);
    const NkDtBool implicitTruth = true;
    isTruth(implicitTruth, TRUE);
    const NkDtBool implicitText = "Ja";
    isTruth(implicitText, TRUE);
    holds(!NkDtBool().IsDefined() && !NkDtBool(NkDtWmNull).IsDefined());
    const LPCTSTR nothing = nullptr;
    raises(5, [&] { (void)NkDtBool(nothing); });
    raises(5, [&] { (void)NkDtBool("vielleicht"); });

    NkDtBool b;
    isTruth(b = TRUE, TRUE);
    isTruth(b = false, FALSE);
    isTruth(b = 5, 5);
    isTruth(b = "Nein", FALSE);
    isTruth(b = NkDtString("1"), TRUE);
    isTruth(b = NkDtBool(FALSE), FALSE);
    isTruth(b = Switch(TRUE), TRUE);
    b.Set(false);
    isTruth(b, FALSE);
    holds(valueOf(TRUE) == TRUE && valueOf(true) == TRUE && valueOf("Ja") == TRUE);
    const BOOL plain = NkDtBool(5);
    holds(plain == 5);
}

void comparing() {
    const NkDtBool b(TRUE);
    same(b, NkDtBool(TRUE));
    same(b, TRUE);
    same(b, true);
    same(b, short{1});
    same(b, Switch(TRUE));
    differ(b, NkDtBool(FALSE));
    differ(b, FALSE);
    differ(b, false);
    differ(b, NkDtBool(5));
    differ(b, 5);
    same(NkDtBool(NkDtWmNull), FALSE);
    const NkDtBool missing(NkDtWmMissing);
    raises(2, [&] { (void)(missing == TRUE); });
    raises(2, [&] { (void)(false != missing); });
    raises(2, [&] { (void)(missing == b); });
    raises(2, [&] { (void)(b != missing); });
}

void conditions() {
    const NkDtBool yes(TRUE);
    const NkDtBool no(FALSE);
    bool reached = false;
    if (yes) reached = true;
    holds(reached && !no && (yes && !no) && (no || yes) && (yes ? true : false));
    if (yes == TRUE && no != true) reached = false;
    holds(!reached);
    const NkDtBool missing(NkDtWmMissing);
    raises(2, [&] {
        if (missing) holds(false);
    });
    raises(2, [&] { (void)!missing; });
    raises(2, [&] { (void)(yes && missing); });
    int counted = 0;
    for (const NkDtBool& each : {yes, no, yes})
        counted += each ? 1 : 0;
    holds(counted == 2);
}

void texts() {
    const NkDtBool b(TRUE);
    const NkDtBool missing(NkDtWmMissing);
    const CString cs("cs");
    isText(NkDtString(b), "Ja");
    NkDtString s("s");
    isText(s + b, "sJa");
    isText(b + s, "Jas");
    isText("Antwort: " + b, "Antwort: Ja");
    isText(b + "!", "Ja!");
    isText(cs + b, "csJa");
    isText(b + cs, "Jacs");
    isText(Switch(FALSE) + "!", "Nein!");
    isText(s + missing, "s");
    isText(missing + "x", "x");
    isText(s += b, "sJa");
    isText(s += missing, "sJa");
    isText(s = NkDtBool(FALSE), "Nein");
    isText(s = Switch(TRUE), "Ja");
    holds(!(s = missing).IsDefined());
    holds(lengthOf(NkDtBool(FALSE)) == 4);
    std::ostringstream os;
    os << b << ';' << missing << ';' << NkDtBool(FALSE) << ';' << Switch(5);
    holds(os.str() == "Ja;;Nein;Ja");
}

void containers() {
    static_assert(std::is_nothrow_move_constructible_v<NkDtBool>);
    static_assert(std::is_copy_constructible_v<NkDtBool> && std::is_default_constructible_v<NkDtBool>);
    static_assert(std::is_copy_assignable_v<NkDtBool> && std::is_move_assignable_v<NkDtBool>);
    std::vector<NkDtBool> listed{TRUE, false, "Ja", NkDtBool(FALSE)};
    holds(std::count(listed.begin(), listed.end(), true) == 2);
    holds(std::find(listed.begin(), listed.end(), FALSE) - listed.begin() == 1);
    std::swap(listed[0], listed[1]);
    holds(listed[0] == FALSE && listed[1] == TRUE);
    std::optional<NkDtBool> maybe;
    maybe = NkDtBool(TRUE);
    holds(maybe == TRUE && maybe != false);
    const std::unordered_set<NkDtBool> set{TRUE, false, true};
    holds(set.size() == 2 && set.count(TRUE) == 1);

    NkDtBool full(TRUE);
    NkDtBool taken = std::move(full);
    isTruth(taken, TRUE);
    holds(!full.IsDefined());  // NOLINT(bugprone-use-after-move)
    raises(2, [&] { (void)(full == TRUE); });
    full = FALSE;
    isTruth(full, FALSE);
    full = std::move(taken);
    isTruth(full, TRUE);
    isTruth(taken, TRUE);
}

void refused() {
    onlyFirstCompiles<NkDtBool>(
        "a truth value is assigned truth values", [](auto&& b) -> decltype(void(b = TRUE)) {},
        [](auto&& b) -> decltype(void(b = 0L)) {}, [](auto&& b) -> decltype(void(b = 1u)) {},
        [](auto&& b) -> decltype(void(b = 1LL)) {}, [](auto&& b) -> decltype(void(b = 0.5)) {},
        [](auto&& b) -> decltype(void(b = 'J')) {}, [](auto&& b) -> decltype(void(b = L'J')) {},
        [](auto&& b) -> decltype(void(b = nullptr)) {}, [](auto&& b) -> decltype(void(b = NULL)) {},
        [](auto&& b) -> decltype(void(b = NkDtWmNull)) {}, [](auto&& b) -> decltype(void(b = L"Ja")) {},
        [](auto&& b) -> decltype(void(b = NkDtLong(1))) {},
        [](auto&& b) -> decltype(void(b = NkDtShort(1))) {},
        [](auto&& b) -> decltype(void(b = NkDtChar('J'))) {});
    onlyFirstCompiles<NkDtBool>(
        "a truth value is built from truth values and texts",
        [](auto&& b) -> decltype(void(std::decay_t<decltype(b)>(TRUE))) {},
        [](auto&& b) -> decltype(void(std::decay_t<decltype(b)>(0L))) {},
        [](auto&& b) -> decltype(void(std::decay_t<decltype(b)>(1u))) {},
        [](auto&& b) -> decltype(void(std::decay_t<decltype(b)>(0.5))) {},
        [](auto&& b) -> decltype(void(std::decay_t<decltype(b)>(0.5f))) {},
        [](auto&& b) -> decltype(void(std::decay_t<decltype(b)>('J'))) {},
        [](auto&& b) -> decltype(void(std::decay_t<decltype(b)>(nullptr))) {},
        [](auto&& b) -> decltype(void(std::decay_t<decltype(b)>(NkDtTypBool))) {},
        [](auto&& b) -> decltype(void(std::decay_t<decltype(b)>(NkDtLong(1)))) {},
        [](auto&& b) -> decltype(void(std::decay_t<decltype(b)>(NkDtChar('J')))) {});
    onlyFirstCompiles<NkDtBool>(
        "a truth value is set to truth values", [](auto&& b) -> decltype(void(b.Set(TRUE))) {},
        [](auto&& b) -> decltype(void(b.Set(0L))) {}, [](auto&& b) -> decltype(void(b.Set(0.5))) {},
        [](auto&& b) -> decltype(void(b.Set(NkDtWmNull))) {}, [](auto&& b) -> decltype(void(b.Set('J'))) {});
    refusedAsArgument<NkDtBool, BOOL, unsigned, long, long long, float, double, char, wchar_t, char16_t,
                      char32_t, std::nullptr_t, NkDtTyps, NkDtLong, NkDtShort, NkDtChar>(
        "a function that takes a truth value");
    refusedInComputing<NkDtBool, int, unsigned, long, double, bool, char, const char*, NkDtLong, NkDtShort,
                       NkDtChar, NkDtString>("nothing is computed with a truth value");
    onlyFirstCompiles<NkDtBool>(
        "a database column gives a digit", [](auto&& b) -> decltype(void(b.SetFromSQL('1'))) {},
        [](auto&& b) -> decltype(void(b.SetFromSQL(1))) {},
        [](auto&& b) -> decltype(void(b.SetFromSQL(true))) {},
        [](auto&& b) -> decltype(void(b.SetFromSQL(TRUE))) {},
        [](auto&& b) -> decltype(void(b.SetFromSQL(1.0))) {});
    onlyFirstCompiles<NkDtBool>(
        "truth values have no order", [](auto&& b) -> decltype(void(b == b)) {},
        [](auto&& b) -> decltype(void(b < b)) {}, [](auto&& b) -> decltype(void(b >= TRUE)) {},
        [](auto&& b) -> decltype(void(false < b)) {}, [](auto&& b) -> decltype(void(b > 0L)) {},
        [](auto&& b) -> decltype(void(b < "Ja")) {}, [](auto&& b) -> decltype(void(NkDtString("Ja") > b)) {});
    onlyFirstCompiles<NkDtBool>(
        "a truth value is compared with truth values", [](auto&& b) -> decltype(void(b == TRUE)) {},
        [](auto&& b) -> decltype(void(b == 0L)) {}, [](auto&& b) -> decltype(void(1u != b)) {},
        [](auto&& b) -> decltype(void(b == 0.5)) {}, [](auto&& b) -> decltype(void(b == 'J')) {},
        [](auto&& b) -> decltype(void(b == nullptr)) {}, [](auto&& b) -> decltype(void(b == NkDtWmNull)) {},
        [](auto&& b) -> decltype(void(b == "Ja")) {}, [](auto&& b) -> decltype(void("Ja" != b)) {},
        [](auto&& b) -> decltype(void(b == NkDtString("Ja"))) {},
        [](auto&& b) -> decltype(void(NkDtString("Ja") == b)) {},
        [](auto&& b) -> decltype(void(b == CString("Ja"))) {},
        [](auto&& b) -> decltype(void(b == NkDtLong(1))) {},
        [](auto&& b) -> decltype(void(NkDtShort(1) == b)) {},
        [](auto&& b) -> decltype(void(b == NkDtChar('J'))) {});
    onlyFirstCompiles<NkDtBool>(
        "a truth value is no number", [](auto&& b) -> decltype(void(b + "x")) {},
        [](auto&& b) -> decltype(void(b + 1)) {}, [](auto&& b) -> decltype(void(1 + b)) {},
        [](auto&& b) -> decltype(void(b + b)) {}, [](auto&& b) -> decltype(void(b + 'x')) {},
        [](auto&& b) -> decltype(void(b + 2.5)) {}, [](auto&& b) -> decltype(void(b - 1)) {},
        [](auto&& b) -> decltype(void(b - b)) {}, [](auto&& b) -> decltype(void("x" - b)) {},
        [](auto&& b) -> decltype(void(L"x" + b)) {}, [](auto&& b) -> decltype(void(b + NkDtLong(1))) {},
        [](auto&& b) -> decltype(void(NkDtShort(1) + b)) {}, [](auto&& b) -> decltype(void(b += 1)) {},
        [](auto&& b) -> decltype(void(++b)) {});
    onlyFirstCompiles<NkDtLong>(
        "a truth value is no number", [](auto&& n) -> decltype(void(n = 5)) {},
        [](auto&& n) -> decltype(void(n = NkDtBool(TRUE))) {},
        [](auto&& n) -> decltype(void(n -= NkDtBool(TRUE))) {},
        [](auto&& n) -> decltype(void(n >= NkDtBool(TRUE))) {},
        [](auto&& n) -> decltype(void(std::decay_t<decltype(n)>(NkDtBool(TRUE)))) {});
    onlyFirstCompiles<NkDtString>(
        "a truth value is no position", [](auto&& s) -> decltype(void(s[0])) {},
        [](auto&& s) -> decltype(void(s[NkDtBool(TRUE)])) {});
#if defined(__cpp_impl_three_way_comparison)
    onlyFirstCompiles<NkDtBool>(
        "truth values have no order", [](auto&& b) -> decltype(void(b == b)) {},
        [](auto&& b) -> decltype(void(b <=> b)) {}, [](auto&& b) -> decltype(void(b <=> TRUE)) {},
        [](auto&& b) -> decltype(void(true <=> b)) {});
#endif
}

}  // namespace

void truthValues() {
    building();
    comparing();
    conditions();
    texts();
    containers();
    refused();
}

}  // namespace expressions
