#pragma once

/// @file
/// Which plain types may stand beside a value in an expression.
///
/// The language would turn a 2.5 into 2, a working mode into 1 and a character into its code before an
/// operator sees it. The value classes therefore take other types by templates that are constrained to exact
/// types, and delete the rest.

#include <cstddef>
#include <limits>
#include <type_traits>

#include "nkdt/NkDtTypes.h"

class CString;

namespace nkdt {

template <class T, class... Types>
inline constexpr bool isOneOf = (std::is_same_v<T, Types> || ...);

/// One of these classes, or a class derived from one.
template <class T, class... Classes>
inline constexpr bool isKindOf = (std::is_base_of_v<Classes, T> || ...);

#if defined(__cpp_char8_t)
template <class T>
inline constexpr bool isUtf8Character = std::is_same_v<T, char8_t>;
#else
template <class T>
inline constexpr bool isUtf8Character = false;
#endif

template <class T>
inline constexpr bool isCharacter = isOneOf<T, char, wchar_t, char16_t, char32_t> || isUtf8Character<T>;

/// The whole types: every integer type but truth values and characters.
template <class T>
inline constexpr bool isWhole = std::is_integral_v<T> && !std::is_same_v<T, bool> && !isCharacter<T>;

/// Value classes that have a text form of their own beside the text classes.
template <class T>
inline constexpr bool isNumberValue =
    isKindOf<T, NkDtLong, NkDtShort, NkDtDouble, NkDtDecimal, NkDtDateTime, NkDtDateZp, NkDtTime>;

/// Value classes that hold a number with decimal places.
template <class T>
inline constexpr bool isRealValue = isKindOf<T, NkDtDecimal, NkDtDouble>;

/// Value classes of the calendar and the clock; no number is made of one, though their texts begin with one.
template <class T>
inline constexpr bool isTimeValue = isKindOf<T, NkDtDateTime, NkDtDateZp, NkDtTime>;

/// Value classes that a text is assigned from and appends through their text form.
template <class T>
inline constexpr bool hasTextForm = isNumberValue<T> || isKindOf<T, NkDtBool>;

/// A pointer or an array, of characters or of anything else.
template <class T>
inline constexpr bool isPointer = std::is_pointer_v<std::decay_t<T>>;

/// What would count as a number beside a character or a truth value.
template <class T, class Derived>
inline constexpr bool isNoFactor = (std::is_scalar_v<T> || isPointer<T> ||
                                    isKindOf<T, NkDtBasis>)&&!isKindOf<T, Derived>;

/// What never stands beside a whole number: its value would be narrowed or misread.
template <class T>
inline constexpr bool isNoWholeOperand =
    std::is_floating_point_v<T> || std::is_same_v<T, bool> || isCharacter<T> ||
    isOneOf<T, std::nullptr_t, NkDtWorkingMode> || isKindOf<T, NkDtBool, NkDtChar> || isTimeValue<T>;

/// The text types.
template <class T>
inline constexpr bool isText = isKindOf<T, NkDtString, CString>;

/// What never stands beside a text, a character excepted.
template <class T>
inline constexpr bool isNoTextOperand = (std::is_arithmetic_v<T> && !std::is_same_v<T, TCHAR>) ||
                                        std::is_enum_v<T> || std::is_same_v<T, std::nullptr_t>;

/// What is no position in a text, though the language would count it as one.
template <class T>
inline constexpr bool isNoPosition =
    std::is_same_v<T, bool> || isCharacter<T> || std::is_floating_point_v<T> ||
    isKindOf<T, NkDtBool, NkDtChar> || isRealValue<T>;

/// What is no position or length that is given to a function: one that is wider could be cut.
template <class T>
inline constexpr bool isNoLength = isNoPosition<T> || (isWhole<T> && (sizeof(T) > sizeof(INT)));

/// What a text is never compared with; beside a 16-bit text it would compare pointers.
template <class T>
inline constexpr bool isNoTextComparand = isNoTextOperand<T> ||
                                          (!std::is_class_v<T> &&
                                           std::is_convertible_v<const T&, const OLECHAR*>);

/// A framework text or one character, beside which a text stands as beside a text.
template <class T>
inline constexpr bool isTextComparand = isOneOf<T, CString, TCHAR> || isKindOf<T, NkDtChar>;

/// What no text is built from: fractions, truth values, wide characters, nothing.
template <class T>
inline constexpr bool isNoTextSource = std::is_floating_point_v<T> || isOneOf<T, bool, std::nullptr_t> ||
                                       (isCharacter<T> && !std::is_same_v<T, TCHAR>);

/// What no character is built from: a number or a truth value would become the character with its code.
template <class T>
inline constexpr bool isNoCharacterSource = isNoTextOperand<T> || hasTextForm<T>;

/// What a character is never compared with; beside a plain text it would count as its first character.
template <class T>
inline constexpr bool isNoCharacterComparand = isNoCharacterSource<T> || isPointer<T> || isKindOf<T, CString>;

/// A pointer that is no text: a number added to it would be a step.
template <class T>
inline constexpr bool isForeignPointer = isPointer<T> && !std::is_convertible_v<const T&, LPCTSTR>;

/// What is never added to a character, because the character would count as a number.
template <class T>
inline constexpr bool isNoCharacterAddend = isNoTextOperand<T> || isForeignPointer<T>;

/// The plain types that stand for a truth value: `bool`, and the whole types that a `BOOL` holds.
template <class T>
inline constexpr bool isTruthOperand = std::is_same_v<T, bool> ||
                                       (isWhole<T> && (sizeof(T) < sizeof(BOOL) || std::is_same_v<T, BOOL>));

/// What no truth value is built from.
template <class T>
inline constexpr bool isNoTruthSource =
    (std::is_arithmetic_v<T> && !isTruthOperand<T>) || std::is_enum_v<T> ||
    std::is_same_v<T, std::nullptr_t> || isNumberValue<T> || isKindOf<T, NkDtChar>;

/// What is never added to a truth value, because the value would count as a number.
template <class T>
inline constexpr bool isNoTruthAddend =
    std::is_arithmetic_v<T> || std::is_enum_v<T> || std::is_same_v<T, std::nullptr_t> || isForeignPointer<T>;

/// What a truth value is never compared with.
template <class T>
inline constexpr bool isNoTruthComparand = isNoTruthSource<T> || isPointer<T> || isText<T>;

template <bool condition>
using If = std::enable_if_t<condition, int>;
/// As the type of a result, for friends, whose templates cannot have default arguments.
template <bool condition, class Result>
using ResultIf = std::enable_if_t<condition, Result>;
/// A whole type that has no overload of its own.
template <class T, class... Stated>
using IfOtherWhole = If<isWhole<T> && !isOneOf<T, Stated...>>;

/// TRUE if @p n is a value of the whole type To.
template <class To, class From>
constexpr bool fits(From n) noexcept {
    if constexpr (std::is_signed_v<From>) {
        const auto wide = static_cast<LONGLONG>(n);
        return wide >= LONGLONG{std::numeric_limits<To>::min()} &&
               wide <= LONGLONG{std::numeric_limits<To>::max()};
    } else {
        return static_cast<ULONGLONG>(n) <= static_cast<ULONGLONG>(std::numeric_limits<To>::max());
    }
}

/// The number in 64 bits; one beyond them becomes the largest, which compares alike with every 32-bit value.
template <class From>
constexpr LONGLONG to64(From n) noexcept {
    return fits<LONGLONG>(n) ? static_cast<LONGLONG>(n) : std::numeric_limits<LONGLONG>::max();
}

}  // namespace nkdt
