#include "DateKinds.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <string>
#include <string_view>

#include "Error.h"
#include "KindOf.h"
#include "Text.h"
#include "nkdt/NkDtDateTime.h"
#include "nkdt/NkDtDateZp.h"
#include "nkdt/NkDtLong.h"
#include "nkdt/NkDtTime.h"

namespace nkdt::app {

namespace {

[[noreturn]] void refuse(const NkDtString& text, const char* what) {
    throw DataError("\"" + visible(text.GetValue()) + "\" is no " + what);
}

/// What the three kinds do alike. The classes themselves pass over what stands behind a text, so a text is
/// taken only if the value that it gives would be written so.
template <class V, class F>
struct CalendarKind : KindOf<V, F> {
    static void checkExternal(const NkDtString& text) {
        V value(NkDtWmNull);
        value.SetFromExtern(&text, TRUE, NkDtExternVersion);
        if (externalText(value) != text) refuse(text, "external text of such a value");
    }
};

// Dates
// ----------------------------------------------------------------------------------------------------------

template <class V>
struct AnyDateKind : CalendarKind<V, TIMESTAMP_STRUCT> {
    static constexpr bool hasStatementText = true;

    static bool hasTimeOfDay(const V& value) {
        return value.GetHour() != 0 || value.GetMin() != 0 || value.GetSecond() != 0;
    }
    static void setText(V& value, const NkDtString& text) {
        const V read(text);
        if (text.IsDefined() && NkDtString(read) != text) refuse(text, "date");
        value = read;
    }
    /// In the order of ISO 8601, which every database reads in one way.
    static std::string isoText(const V& value, bool withTime) {
        std::array<char, 64> text{};
        const int length = std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", value.GetYear(),
                                         value.GetMonth(), value.GetDay365());
        if (withTime) {
            const auto end = static_cast<std::size_t>(length);
            (void)std::snprintf(text.data() + end, text.size() - end, " %02d:%02d:%02d", value.GetHour(),
                                value.GetMin(), value.GetSecond());
        }
        return text.data();
    }
    static NkDtDateTime fromIsoText(const NkDtString& text) {
        int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
        if (std::sscanf(text.GetValue(), "%4d-%2d-%2d %2d:%2d:%2d", &year, &month, &day, &hour, &minute,
                        &second) < 3)
            refuse(text, "date");
        return NkDtDateTime(day, month, year, hour, minute, second);
    }
};

struct DateTimeKind : AnyDateKind<NkDtDateTime> {
    static constexpr ColumnKind description{"NkDtDateTime", false,       true,   false,
                                            "TIMESTAMP",    "TIMESTAMP", nullptr};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindDateTime(column, field); }
    static std::string statementText(const Value& value) { return isoText(value, true); }
    static void setStatementText(Value& value, const NkDtString& text) {
        const Value read = fromIsoText(text);
        if (statementText(read) != text.GetValue()) refuse(text, "date with a time of day");
        value = read;
    }
    static const char* statedLoss(const Value& value, Representation representation) {
        if (!value.IsDefined() || value.GetSecond() == 0) return nullptr;
        return representation == Representation::sqlLiteral ? "it has no seconds" : nullptr;
    }
    static bool lacksNoMore(const Value& value, Representation, const Value* back) {
        Value toTheMinute = value;
        toTheMinute.SetSecond(SHORT{0});
        return back != nullptr && back->IsDefined() && *back == toTheMinute;
    }
    static const char* compute(Value& value) {
        value.AddHour(13);
        return "+ 13 hours";
    }
};

struct DateKind : AnyDateKind<NkDtDateZp> {
    static constexpr ColumnKind description{"NkDtDateZp", false,  true,    false,
                                            "DATE",       "DATE", nullptr, "Date"};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindDate(column, field); }
    static std::string statementText(const Value& value) { return isoText(value, hasTimeOfDay(value)); }
    // The class's own copy of a date-time has no time of day.
    static void setStatementText(Value& value, const NkDtString& text) {
        const NkDtDateTime read = fromIsoText(text);
        value = Value(read);
        value.SetHour(read.GetHour());
        value.SetMin(read.GetMin());
        value.SetSecond(read.GetSecond());
        if (statementText(value) != text.GetValue()) refuse(text, "date");
    }
    static const char* statedLoss(const Value& value, Representation representation) {
        if (!value.IsDefined() || !hasTimeOfDay(value)) return nullptr;
        switch (representation) {
            case Representation::text:
            case Representation::userText:
            case Representation::sqlLiteral:
                return "reading a date takes no time of day";
            case Representation::archive:
                return "the archive of a date has no time of day";
            case Representation::external:
            case Representation::recordset:
            case Representation::record:
            case Representation::checkBox:
                break;
        }
        return nullptr;
    }
    static bool lacksNoMore(const Value& value, Representation, const Value* back) {
        return back != nullptr && back->IsDefined() && *back == Value(value);
    }
    static const char* compute(Value& value) {
        value.AddMonth(1);
        return "+ 1 month";
    }
};

// Durations
// ----------------------------------------------------------------------------------------------------------

struct DurationKind : CalendarKind<NkDtTime, LONG> {
    static constexpr ColumnKind description{"NkDtTime", true, false, false, "INTEGER", "INTEGER", nullptr};
    static void bind(CDatabaseRecordset& rs, LPCTSTR column, Field& field) { rs.BindLong(column, field); }
    static void setText(Value& value, const NkDtString& text) {
        if (text.IsDefined()) {
            value.SetValue(text.GetValue());
        } else {
            value.Clear();
        }
    }
    // A whole number's class reads a text up to its separator.
    static void setSqlText(Value& value, const NkDtString& text) {
        const NkDtLong ticks(text);
        if (ticks.ConvToSQL() != text) refuse(text, "number of ticks");
        value.SetFromSQL(ticks);
    }

    // The time mode is part of the value here, although the class compares without it.
    static bool areSame(const Value& a, const Value& b) { return a == b && a.GetMode() == b.GetMode(); }

    static const char* statedLoss(const Value& value, Representation representation) {
        if (!value.IsDefined()) return nullptr;
        const long ticks = ticksOf(value);
        if (representation == Representation::text && isBeyondTexts(value))
            return "reading a text takes 1789568 hours";
        if (ticks % unitOf(value, representation) != 0) return lossOfTicks(value, representation);
        if (representation == Representation::external && ticks < 0 && ticks > -ticksOfHour)
            return "it has no sign below one hour";
        if (representation != Representation::text && value.GetMode() != NkDtTime::Minutes)
            return "it has no time mode";
        return nullptr;
    }
    static bool lacksNoMore(const Value& value, Representation representation, const Value* back) {
        if (back == nullptr) return representation == Representation::text && isBeyondTexts(value);
        long ticks = ticksOf(value);
        ticks -= ticks % unitOf(value, representation);
        if (representation == Representation::external && ticks > -ticksOfHour && ticks < 0) ticks = -ticks;
        const bool keepsMode = representation == Representation::text;
        return back->IsDefined() && ticksOf(*back) == ticks &&
               back->GetMode() == (keepsMode ? value.GetMode() : NkDtTime::Minutes);
    }
    static const char* compute(Value& value) {
        value.AddMin(45, NkDtTime::Minutes);
        return "+ 0:45";
    }

  private:
    static constexpr long ticksOfHour = 1200;
    static constexpr long ticksOfMinute = 20;
    static constexpr long ticksOfHundredth = 12;
    static constexpr LONG mostHoursOfText = 1789568;

    static long ticksOf(const Value& value) {
        const NkDtString text = value.ConvToSQL();
        long ticks = 0;
        (void)std::from_chars(text.GetValue(), text.GetValue() + text.GetLength(), ticks);
        return ticks;
    }
    static bool isBeyondTexts(const Value& value) {
        return value.GetHour() > mostHoursOfText || value.GetHour() < -mostHoursOfText;
    }
    /// The ticks that the representation tells apart.
    static long unitOf(const Value& value, Representation representation) {
        const NkDtTime::TimeMode mode = value.GetMode();
        switch (representation) {
            case Representation::text:
                if (mode == NkDtTime::HoursOnly) return ticksOfHour;
                [[fallthrough]];
            case Representation::userText:
                return mode == NkDtTime::Hundredths ? ticksOfHundredth : ticksOfMinute;
            case Representation::external:
                return ticksOfMinute;
            case Representation::sqlLiteral:
            case Representation::recordset:
            case Representation::archive:
            case Representation::record:
            case Representation::checkBox:
                break;
        }
        return 1;
    }
    static const char* lossOfTicks(const Value& value, Representation representation) {
        const long unit = unitOf(value, representation);
        if (unit == ticksOfHour) return "it has nothing below an hour in this time mode";
        if (unit == ticksOfHundredth) return "it has no ticks below a hundredth of an hour";
        return "it has no ticks below a minute";
    }
};

}  // namespace

ColumnKind dateTimeKind() noexcept {
    return entry<DateTimeKind>();
}

ColumnKind dateKind() noexcept {
    return entry<DateKind>();
}

ColumnKind durationKind() noexcept {
    return entry<DurationKind>();
}

}  // namespace nkdt::app
