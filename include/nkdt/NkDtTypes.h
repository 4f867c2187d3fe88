#pragma once

/// @file
/// The enumerations and constants that all value classes share.

#include "nkfw/Types.h"

/// What an undefined value means.
enum NkDtWorkingMode : int {
    NkDtWmMissing = 0,  ///< undefined is missing: reading or comparing it raises error 2 "Undefinierter Wert"
    NkDtWmNull = 1,     ///< undefined is null: it reads as the empty value and is neutral in arithmetic
    NkDtWmDefined = 2,  ///< the value is always defined
    NkDtWmDefault = 3   ///< the process default (NkDtSetDefaultWorkingMode()); passed, never stored
};

/// The type numbers that GetDtTyp() tells. 0, 10 and 11 are reserved.
enum NkDtTyps : int {
    NkDtTypChar = 1,
    NkDtTypString = 2,
    NkDtTypLong = 3,
    NkDtTypShort = 4,
    NkDtTypDouble = 5,
    NkDtTypDecimal = 6,
    NkDtTypBool = 7,
    NkDtTypDateTime = 8,
    NkDtTypTime = 9,
    NkDtTypDateZp = 12,
    NkDtTypBasis = 13
};

/// Directions of a code page conversion: 0 and 1, or source page followed by target page.
enum NkDtCodepageWandlung : int {
    NkDtCpAnsiToOem = 0,
    NkDtCpOemToAnsi = 1,
    NkDtCp1252To437 = 1252437,
    NkDtCp437To1252 = 4371252,
    NkDtCp1252To850 = 1252850,
    NkDtCp850To1252 = 8501252
};

/// As a length: the whole text. As an allocation length: as long as the text.
inline constexpr INT NkDtStrLenAuto = -100;

/// What the editing functions of NkDtString do where a position could stand. No value is a position.
inline constexpr INT NkDtStrFirst = -10;     ///< the first occurrence
inline constexpr INT NkDtStrAll = -11;       ///< every occurrence
inline constexpr INT NkDtStrPosFirst = -20;  ///< search from the start
inline constexpr INT NkDtStrPosNext = -21;   ///< search behind the last hit
inline constexpr INT NkDtStrLeft = -40;      ///< at the start of the text
inline constexpr INT NkDtStrRight = -41;     ///< at the end of the text

/// Version of the external text of every class.
inline constexpr USHORT NkDtExternVersion = 100;

class NkDtBasis;
class NkDtBool;
class NkDtChar;
class NkDtDateTime;
class NkDtDateZp;
class NkDtDecimal;
class NkDtDouble;
class NkDtLong;
class NkDtShort;
class NkDtString;
class NkDtTime;
class NkFormat;
