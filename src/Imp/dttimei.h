#pragma once

/// @file
/// The value record of a duration, the arithmetic of its ticks, and its texts. None of them takes memory from
/// the heap.

#include <cstddef>
#include <string_view>

#include "nkdt/NkDtTime.h"
#include "nkfw/Types.h"

namespace nkdt {

/// A length of time and how it is shown.
struct Duration {
    LONG ticks = 0;
    NkDtTime::TimeMode mode = NkDtTime::Minutes;  // never CurrentMode

    friend constexpr bool operator==(const Duration&, const Duration&) = default;
};

}  // namespace nkdt

class NkDtTime_Imp {
  public:
    using Duration = nkdt::Duration;
    using TimeMode = NkDtTime::TimeMode;

    static constexpr LONG hour = 1200;  ///< ticks
    static constexpr LONG minute = 20;
    static constexpr LONG hundredth = 12;

    /// Room for the longest texts, "-1789569:42" and "C-05090207214200", with their terminators.
    using Text = char[12];
    using ExternText = char[17];

    constexpr NkDtTime_Imp() noexcept = default;
    explicit constexpr NkDtTime_Imp(Duration duration) noexcept : value(duration) {}

    /// The ticks of hours and a part below the hour, each of any size and sign. Error 8 "Wert außerhalb des
    /// Wertebereichs" when they do not fit.
    static LONG BuildTimeValue(LONGLONG nHours, LONGLONG nSubHour, TimeMode eMode);
    /// The number as ticks; error 8 of @p origin when it does not fit.
    static LONG fitting(LONGLONG nTicks, const nkdt::Origin& origin);

    /// The part below the hour in the mode's unit, 0 for HoursOnly.
    static constexpr LONG subHour(LONG nTicks, TimeMode eMode) noexcept {
        if (eMode == NkDtTime::HoursOnly) return 0;
        return nTicks % hour / (eMode == NkDtTime::Hundredths ? hundredth : minute);
    }

    /// "-01:30", "-01,50" or "-01". The buffer holds the text with a terminator.
    static std::string_view ConvTimeToString(Duration duration, Text& buffer) noexcept;
    /// Reads such a text; tells in which mode it was read when @p eMode is CurrentMode. Error 1 with the
    /// cause 5, 8 or 21, see the constructor of NkDtTime.
    static Duration ConvStringToTime(LPCTSTR psz, TimeMode eMode);

    /// The layout of a date and a time of day, see NkDtTime::ConvToExtern().
    static std::string_view externText(LONG nTicks, ExternText& buffer) noexcept;
    /// Reads such a text. Numbers are read as `sscanf` reads them by their widths: blanks and a sign in front
    /// are accepted, and from the first part that is no number on all parts are 0. Error 18 "Ungültige
    /// Externe Darstellung" for a text that begins with another letter; error 8.
    static LONG fromExtern(std::string_view text, const nkdt::Origin& origin);

    Duration value;
};
