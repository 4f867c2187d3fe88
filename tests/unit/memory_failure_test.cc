// Lets the n-th request for memory fail, for every n, in every operation that asks for memory. Nothing may
// leak (a leak checker watches the whole program) and nothing may be left half-built.

#include <nkdt/NkDt.h>
#include <nkfo/NkFormat.h>
#include <nkfw/BStr.h>
#include <nkfw/Recordset.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "MemoryTesting.h"
#include "ValueTesting.h"

namespace {

using namespace valuetest;
using memorytest::Requests;

constexpr const char* kLong = "a text that is too long for a pool's block";

/// How an operation ended, to be added up where several endings are right.
enum Ending : unsigned {
    kDone = 1,
    kNewHandler = 2,       // the error of the new-handler itself
    kReplaced = 4,         // error 1, its cause the new-handler's error or an exhausted framework
    kMemoryException = 8,  // the framework's exception
    kBadAlloc = 16,        // the language's exception
    kSomethingElse = 32
};

/// Runs the operation with the n-th request failing.
template <class Operation>
Ending endingOf(Requests& requests, Operation&& operation) {
    Ending ending = kDone;
    NkEhBasis* error = nullptr;
    try {
        operation();
    } catch (NkEhBasis* caught) {
        error = caught;
    } catch (CMemoryException* caught) {
        caught->Delete();
        ending = kMemoryException;
    } catch (const std::bad_alloc&) {
        ending = kBadAlloc;
    } catch (...) {
        ending = kSomethingElse;
    }
    requests.end();
    if (error == nullptr) return ending;
    const ErrorPtr owner(error);
    if (error->GetErrorNumber() == ulNkEhKeinSpeicher) return kNewHandler;
    const ULONG cause = error->GetCauseNumber();
    const bool exhausted = cause == ulNkEhKeinSpeicher || cause == NkDtErrFrameworkException;
    const bool isText = std::string(error->GetCauseText()) == cp1252("Nicht genügend Speicher");
    return error->GetErrorNumber() == NkDtErrFolgefehler && exhausted && isText ? kReplaced : kSomethingElse;
}

class MemoryFailure : public ::testing::Test {
  protected:
    /// Lets each request of the operation fail in turn. The operation builds what it needs and keeps nothing.
    static void tryEach(const char* name, unsigned endings, const std::function<void()>& operation) {
        SCOPED_TRACE(name);
        for (long n = 1;; ++n) {
            Requests requests(n);
            const Ending ending = endingOf(requests, operation);
            if (!Requests::failed()) {
                EXPECT_EQ(ending, kDone);
                EXPECT_GT(n, 1) << "asks for no memory";
                return;
            }
            EXPECT_TRUE((ending & endings) != 0) << "request " << n << " ended in " << ending;
        }
    }

    /// The same for an operation on a value; @p check is asked what became of it after each failure, given
    /// the state before. Afterwards the operation must succeed on it.
    template <class Value>
    static void tryEachOn(const char* name, const std::function<Value()>& make, unsigned endings,
                          const std::function<void(Value&)>& operation,
                          const std::function<void(const Value&, const Value&)>& check) {
        SCOPED_TRACE(name);
        for (long n = 1;; ++n) {
            Value value = make();
            const Value before(value);
            Requests requests(n);
            const Ending ending = endingOf(requests, [&] { operation(value); });
            if (!Requests::failed()) {
                EXPECT_EQ(ending, kDone);
                EXPECT_GT(n, 1) << "asks for no memory";
                return;
            }
            EXPECT_TRUE((ending & endings) != 0) << "request " << n << " ended in " << ending;
            check(value, before);
            EXPECT_NO_THROW(operation(value));
        }
    }

  private:
    const memorytest::Pool m_off{false};
};

template <class Value>
class AnyMemoryFailure : public MemoryFailure {};
TYPED_TEST_SUITE(AnyMemoryFailure, ValueClasses, ClassNames);

template <class Value>
void isUnchanged(const Value& value, const Value& before) {
    EXPECT_EQ(textOf(value), textOf(before));
    EXPECT_EQ(stateOf(value), stateOf(before));
    EXPECT_EQ(value.GetWorkingMode(), before.GetWorkingMode());
}

/// How a construction or a `Clear` that finds no memory ends.
template <class Value>
constexpr Ending kExhausted = replacesErrors<Value> ? kReplaced : kNewHandler;

/// A text whose buffer could not be made larger is empty and owns nothing; the definedness stays, and the
/// loss of a text counts as a change.
void isEmptied(const NkDtString& value, const NkDtString& before) {
    const bool loses = before.GetLength() != 0 && !before.IsModified();
    EXPECT_EQ(describe(value), std::string("'' 0/0 ") + stateOf(before) + (loses ? " modified" : ""));
}

/// One or the other, when some requests come before the buffer's and some behind.
void isUnchangedOrEmptied(const NkDtString& value, const NkDtString& before) {
    if (value.GetAllocLength() != 0 || !before.IsDefined()) {
        isUnchanged(value, before);
    } else {
        isEmptied(value, before);
    }
}

// --- Every class --------------------------------------------------------------------------------------

TYPED_TEST(AnyMemoryFailure, LeavesNothingBehindAConstructionThatFails) {
    using S = Sample<TypeParam>;
    constexpr unsigned endings = kNewHandler | kReplaced;
    this->tryEach("by mode", endings, [] { const TypeParam value(NkDtWmNull); });
    this->tryEach("from a value", endings, [] { const TypeParam value = S::one(); });
    this->tryEach("from another", endings, [] { const TypeParam value = S::other(); });
    const NkDtString text(std::is_base_of_v<NkDtDateTime, TypeParam> ? "05.03.2004 14:07" : "1");
    this->tryEach("from a text", endings, [&] { const TypeParam value(text); });
}

TYPED_TEST(AnyMemoryFailure, LeavesNothingBehindACopyThatFails) {
    const TypeParam one = Sample<TypeParam>::one();
    const TypeParam other = Sample<TypeParam>::other();
    const TypeParam undefined(NkDtWmNull);
    for (const TypeParam* const source : {&one, &other, &undefined}) {
        const std::string before = describe(*source);
        this->tryEach("copy", kExhausted<TypeParam>, [&] { const TypeParam copy(*source); });
        this->tryEach("NewObject", kExhausted<TypeParam> | kBadAlloc,
                      [&] { const std::unique_ptr<NkDtBasis> made(source->NewObject()); });
        EXPECT_EQ(describe(*source), before);
    }
    this->tryEach("CreateObject", kExhausted<TypeParam> | kBadAlloc,
                  [] { const std::unique_ptr<CObject> made(TypeParam::GetThisClass()->CreateObject()); });
}

TYPED_TEST(AnyMemoryFailure, LeavesAHuskAHuskUntilItsRecordsCanBeMade) {
    for (long n = 1; n <= 2; ++n) {
        TypeParam source = Sample<TypeParam>::one();
        const TypeParam taken(std::move(source));
        Requests requests(n);
        const Ending ending = endingOf(requests, [&] {
            source.Clear();
            source.IsDefined();
        });
        EXPECT_EQ(ending, kExhausted<TypeParam>);
        EXPECT_EQ(describe(source), describe(TypeParam()));
        EXPECT_EQ(textOf(taken), Sample<TypeParam>::oneText);
    }
    TypeParam source = Sample<TypeParam>::one();
    const TypeParam taken(std::move(source));
    Requests requests(1);
    EXPECT_EQ(endingOf(requests, [&] { const TypeParam copy(source); }), kExhausted<TypeParam>);
}  // the husk ends here

TYPED_TEST(AnyMemoryFailure, LeavesNothingBehindAConversionThatFails) {
    using S = Sample<TypeParam>;
    const TypeParam one = S::one();
    const TypeParam other = S::other();
    const TypeParam undefined(NkDtWmNull);
    for (const TypeParam* const value : {&one, &other}) {
        const std::string before = describe(*value);
        this->tryEach("ConvToOFL", kReplaced, [&] { static_cast<void>(value->ConvToOFL()); });
        EXPECT_EQ(describe(*value), before);
    }
    for (const TypeParam* const value : {&one, &other, &undefined}) {
        const std::string before = describe(*value);
        this->tryEach("ConvToSQL", kNewHandler | kReplaced, [&] { static_cast<void>(value->ConvToSQL()); });
        this->tryEach("ConvToExtern", kNewHandler | kReplaced, [&] {
            BOOL defined = FALSE;
            USHORT version = 0;
            static_cast<void>(value->ConvToExtern(defined, version));
        });
        this->tryEach("ConvToRecordSet", kMemoryException, [&] {
            CRecordset rs;
            typename S::Field field{};
            value->ConvToRecordSet(rs, field);
        });
        EXPECT_EQ(describe(*value), before);
    }
}

TYPED_TEST(AnyMemoryFailure, LeavesNothingBehindAnArchiveThatFails) {
    const TypeParam one = Sample<TypeParam>::one();
    const TypeParam other = Sample<TypeParam>::other();
    constexpr unsigned endings = kNewHandler | kReplaced | kMemoryException | kBadAlloc;
    const auto store = [&](CFile& file) {
        CArchive archive(&file, CArchive::store);
        archive << &one << &other << &one;
        archive.Close();
    };
    this->tryEach("store", endings, [&] {
        CMemFile file;
        store(file);
    });
    CMemFile file;
    store(file);
    this->tryEach("load", endings, [&] {
        file.Seek(0, CFile::begin);
        CArchive archive(&file, CArchive::load);
        const std::unique_ptr<CObject> first(archive.ReadObject(TypeParam::GetThisClass()));
        const std::unique_ptr<CObject> second(archive.ReadObject(TypeParam::GetThisClass()));
        archive.ReadObject(TypeParam::GetThisClass());
    });
}

// --- Numbers --------------------------------------------------------------------------------------------

template <class Number>
class NumberMemoryFailure : public MemoryFailure {};
using Numbers = ::testing::Types<NkDtLong, NkDtShort, NkDtDouble, NkDtDecimal>;
TYPED_TEST_SUITE(NumberMemoryFailure, Numbers, ClassNames);

/// How a class refuses the text "12x": by which error as a value, and for what cause as a user's text. A
/// double reads the number that the text begins with.
template <class Number>
struct Malformed {
    static constexpr ULONG error = NkDtErrInitialwert;
    static constexpr ULONG cause = NkFoFehlerText;
};
template <>
struct Malformed<NkDtDouble> {
    static constexpr ULONG error = 0;
    static constexpr ULONG cause = NkFoFehlerText;
};
template <>
struct Malformed<NkDtDecimal> {
    static constexpr ULONG error = NkDtErrFormatUnzulaessig;
    static constexpr ULONG cause = NkDtErrFormatUnzulaessig;
};

TYPED_TEST(NumberMemoryFailure, LeavesNothingBehindAnOperatorThatFails) {
    const TypeParam a(7);
    const TypeParam b(5);
    const TypeParam null(NkDtWmNull);
    const TypeParam missing(NkDtWmMissing);
    this->tryEach("a + b", kNewHandler, [&] { static_cast<void>(a + b); });
    this->tryEach("a - 1", kNewHandler, [&] { static_cast<void>(a - 1); });
    this->tryEach("2 * a", kNewHandler, [&] { static_cast<void>(2 * a); });
    this->tryEach("a / null", kNewHandler, [&] { static_cast<void>(a / null); });
    this->tryEach("null * a", kNewHandler, [&] { static_cast<void>(null * a); });
    this->tryEach("a + missing", kNewHandler, [&] { static_cast<void>(a + missing); });
    this->tryEach("text + a", kNewHandler | kReplaced, [&] { static_cast<void>("Nr. " + a); });
    this->tryEach("1 / a", kNewHandler | kReplaced, [&] { static_cast<void>(1 / a); });
    EXPECT_EQ(describe(a), "7 defined");
}

TYPED_TEST(NumberMemoryFailure, AsksForNoMemoryInPlaceAndInComparisons) {
    TypeParam number(7);
    const TypeParam five(5);
    const Requests requests;
    number += five;
    number -= 2;
    ++number;
    number--;
    number = 3;
    number = five;
    const bool isFive = number == five && number < 6 && number >= 5;
    number.Clear();
    EXPECT_EQ(Requests::count(), 0);
    EXPECT_TRUE(isFive);
    EXPECT_EQ(describe(number), "0 missing modified");
}

TYPED_TEST(NumberMemoryFailure, LeavesTheValueAsItWasWhenAConversionIntoItFails) {
    const std::function<TypeParam()> five = [] { return TypeParam(5); };
    using M = Malformed<TypeParam>;
    const NkDtString malformed("12x");
    if constexpr (M::error != 0) {
        this->template tryEachOn<TypeParam>(
            "assignment of a malformed text value", five, kDone | kNewHandler,
            [&](TypeParam& value) {
                try {
                    value = TypeParam(malformed);
                } catch (NkDtExcep* caught) {
                    const ErrorPtr error(caught);
                    if (error->GetErrorNumber() != M::error) throw;
                }
            },
            isUnchanged<TypeParam>);
    }
    // A refusal is the same with and without memory.
    this->template tryEachOn<TypeParam>(
        "SetFromOFL", five, kDone,
        [](TypeParam& value) {
            try {
                value.SetFromOFL("12x");
            } catch (NkDtExcep* caught) {
                const ErrorPtr error(caught);
                if (error->GetErrorNumber() == NkDtErrFolgefehler && error->GetCauseNumber() == M::cause)
                    return;
            }
            throw 0;
        },
        isUnchanged<TypeParam>);
    this->template tryEachOn<TypeParam>(
        "assignment of a text value", five, kNewHandler | kReplaced,
        [](TypeParam& value) { value = TypeParam(NkDtString("17")); }, isUnchanged<TypeParam>);
}

// --- Durations ------------------------------------------------------------------------------------------

TEST_F(MemoryFailure, LeavesNothingBehindAnOperatorOnDurationsThatFails) {
    const NkDtTime a(7, 45);
    const NkDtTime b(0, 15);
    const NkDtTime missing(NkDtWmMissing);
    tryEach("a + b", kNewHandler, [&] { static_cast<void>(a + b); });
    tryEach("a - b", kNewHandler, [&] { static_cast<void>(a - b); });
    tryEach("a + missing", kReplaced, [&] { static_cast<void>(a + missing); });
    tryEach("text + a", kNewHandler | kReplaced, [&] { static_cast<void>("Dauer: " + a); });
    tryEach("from numbers", kReplaced, [] { const NkDtTime made(1, 30); });
    tryEach("from a text", kReplaced, [] { const NkDtTime made("1:30"); });
    EXPECT_EQ(describe(a), "9300 defined");
}

TEST_F(MemoryFailure, LeavesADurationAsItWasWhenAConversionIntoItFails) {
    const std::function<NkDtTime()> make = [] { return NkDtTime(1, 30); };
    // A refusal is the same with and without memory.
    tryEachOn<NkDtTime>(
        "SetFromOFL", make, kDone,
        [](NkDtTime& value) {
            try {
                value.SetFromOFL("1:60");
            } catch (NkDtExcep* caught) {
                const ErrorPtr error(caught);
                if (error->GetCauseNumber() == NkFoFehlerText) return;
            }
            throw 0;
        },
        isUnchanged<NkDtTime>);
    tryEachOn<NkDtTime>(
        "assignment of a text", make, kReplaced, [](NkDtTime& value) { value = "2:00"; },
        isUnchanged<NkDtTime>);
}

// --- Dates ----------------------------------------------------------------------------------------------

TEST_F(MemoryFailure, LeavesNothingBehindAnOperatorOnDatesThatFails) {
    const NkDtDateTime a(5, 3, 2004, 14, 7, 9);
    const NkDtDateZp b(1, 3, 2004);
    const NkDtTime hour(1, 0);
    const NkDtTime missing(NkDtWmMissing);
    tryEach("a + hour", kReplaced, [&] { static_cast<void>(a + hour); });
    tryEach("a - hour", kReplaced, [&] { static_cast<void>(a - hour); });
    tryEach("b + hour", kReplaced, [&] { static_cast<void>(b + hour); });
    tryEach("a + missing", kReplaced, [&] { static_cast<void>(a + missing); });
    tryEach("b - missing", kReplaced, [&] { static_cast<void>(b - missing); });
    tryEach("a - b", kNewHandler | kReplaced, [&] { static_cast<void>(a - b); });
    tryEach("text + a", kNewHandler | kReplaced, [&] { static_cast<void>("am " + a); });
    tryEach("from numbers", kReplaced, [] { const NkDtDateTime made(5, 3, 2004, 14, 7, 9); });
    tryEach("from hour and minute", kReplaced, [] { const NkDtDateTime made(10, 30); });
    tryEach("from the clock", kReplaced, [] { const NkDtDateTime made(NkDtWmDefined); });
    tryEach("from a date", kReplaced, [] { const NkDtDateTime made(COleDateTime(2004, 3, 5, 0, 0, 0)); });
    tryEach("date of a date-time", kReplaced, [&] { const NkDtDateZp made(a); });
    tryEach("date from a text", kReplaced, [] { const NkDtDateZp made("5.3.2004"); });
    EXPECT_EQ(describe(a), "05.03.2004 14:07:09 defined");
    EXPECT_EQ(describe(b), "01.03.2004 00:00:00 defined");
}

TEST_F(MemoryFailure, ChangesADateWithoutMemory) {
    NkDtDateTime date(5, 3, 2004, 14, 7, 9);
    const NkDtDateTime other(6, 3, 2004, 14, 7, 9);
    const Requests requests;
    date.SetDay365(31);
    date.AddMonth(1);
    date.AddMin(100000);
    date.SubDay365(1000);
    date.SetDateTime("05.03.2004 14:07:09");
    date.SetFromSQL("Mar  5 2004 02:07PM");
    date = other;
    const bool isOther = date == other && !(date < other);
    date.Clear();
    EXPECT_EQ(Requests::count(), 0);
    EXPECT_TRUE(isOther);
    EXPECT_EQ(describe(date), "01.01.1900 00:00:00 missing modified");
}

TEST_F(MemoryFailure, LeavesADateAsItWasWhenAConversionIntoItFails) {
    const std::function<NkDtDateTime()> make = [] { return NkDtDateTime(5, 3, 2004); };
    // A refusal is the same with and without memory.
    tryEachOn<NkDtDateTime>(
        "SetFromOFL", make, kDone,
        [](NkDtDateTime& value) {
            try {
                value.SetFromOFL("31.02.2004");
            } catch (NkDtExcep* caught) {
                const ErrorPtr error(caught);
                if (error->GetCauseNumber() == NkFoFehlerText) return;
            }
            throw 0;
        },
        isUnchanged<NkDtDateTime>);
    tryEachOn<NkDtDateTime>(
        "assignment of a text", make, kReplaced, [](NkDtDateTime& value) { value = "06.03.2004 14:07"; },
        isUnchanged<NkDtDateTime>);
}

// --- Texts ------------------------------------------------------------------------------------------------

class TextMemoryFailure : public MemoryFailure {
  protected:
    using Make = std::function<NkDtString()>;
    using Operation = std::function<void(NkDtString&)>;

    static void tryEachText(const char* name, unsigned endings, const Operation& operation,
                            const std::function<void(const NkDtString&, const NkDtString&)>& check) {
        const std::pair<const char*, Make> makes[] = {
            {"of a short text", [] { return NkDtString("abc"); }},
            {"of a long text", [] { return NkDtString(kLong); }},
            {"of an empty text", [] { return NkDtString(""); }},
            {"of a null text", [] { return NkDtString(NkDtWmNull); }},
            {"of a missing text", [] { return NkDtString(NkDtWmMissing); }},
        };
        for (const auto& [kind, make] : makes) {
            SCOPED_TRACE(kind);
            tryEachOn<NkDtString>(name, make, endings, operation, check);
        }
    }
};

TEST_F(TextMemoryFailure, LeavesNothingBehindAConstructionThatFails) {
    const CString framework(kLong);
    const BSTR wide = framework.AllocSysString();
    tryEach("text", kNewHandler | kReplaced, [] { const NkDtString text(kLong); });
    tryEach("with room", kNewHandler | kReplaced, [] { const NkDtString text("abc", 2, 100); });
    tryEach("framework text", kNewHandler | kReplaced, [&] { const NkDtString text(framework); });
    tryEach("16-bit text", kNewHandler | kReplaced | kMemoryException, [&] { const NkDtString text(wide); });
    tryEach("character", kNewHandler, [] { const NkDtString text('x'); });
    tryEach("number", kNewHandler, [] { const NkDtString text(-5); });
    tryEach("unsigned number", kNewHandler, [] { const NkDtString text(5U); });
    tryEach("wide number", kNewHandler, [] { const NkDtString text(5LL); });
    const NkDtLong number(5);
    tryEach("number value", kNewHandler, [&] { const NkDtString text(number); });
    const NkDtChar character('x');
    tryEach("character value", kNewHandler, [&] { const NkDtString text(character); });
    const NkDtTime duration(1, 30);
    tryEach("duration", kNewHandler, [&] { const NkDtString text(duration); });
    const NkDtDateTime dateTime(5, 3, 2004, 14, 7, 9);
    tryEach("date-time", kNewHandler, [&] { const NkDtString text(dateTime); });
    const NkDtDateZp date(5, 3, 2004);
    tryEach("date", kNewHandler, [&] { const NkDtString text(date); });
    const NkDtBool truth(TRUE);
    tryEach("truth value", kNewHandler, [&] { const NkDtString text(truth); });
    SysFreeString(wide);
}

TEST_F(TextMemoryFailure, ReplacesAFailureInsideTheConstructionFromText) {
    // The state's record comes first and is not wrapped, nor is the value record; the buffer is.
    for (const auto& [n, ending] :
         {std::pair{1L, kNewHandler}, std::pair{2L, kNewHandler}, std::pair{3L, kReplaced}}) {
        Requests requests(n);
        EXPECT_EQ(endingOf(requests, [] { const NkDtString text("abc"); }), ending) << n;
    }
}

TEST_F(TextMemoryFailure, EmptiesTheTextWhenAnAssignmentCannotGrow) {
    const std::string longer = std::string(kLong) + kLong;
    const NkDtString source(longer.c_str());
    const CString framework(longer.c_str());
    const BSTR wide = framework.AllocSysString();
    tryEachText(
        "value", kNewHandler, [&](NkDtString& text) { text = source; }, isEmptied);
    tryEachText(
        "text", kNewHandler, [&](NkDtString& text) { text = longer.c_str(); }, isEmptied);
    tryEachText(
        "framework text", kNewHandler, [&](NkDtString& text) { text = framework; }, isEmptied);
    tryEachText(
        "16-bit text", kNewHandler | kMemoryException, [&](NkDtString& text) { text = wide; },
        isUnchangedOrEmptied);
    tryEachText(
        "Assign", kNewHandler, [&](NkDtString& text) { text.Assign(source); }, isEmptied);
    SysFreeString(wide);
}

TEST_F(TextMemoryFailure, EmptiesTheTextWhenACharacterFindsNoRoom) {
    const std::function<NkDtString()> empty = [] { return NkDtString(""); };
    tryEachOn<NkDtString>(
        "=", empty, kNewHandler, [](NkDtString& text) { text = 'x'; },
        [](const NkDtString& text, const NkDtString&) {
            EXPECT_EQ(describe(text), "'' 0/0 defined modified");
        });
    tryEachOn<NkDtString>(
        "+=", empty, kNewHandler, [](NkDtString& text) { text += 'x'; }, isEmptied);
}

TEST_F(TextMemoryFailure, EmptiesTheTextWhenItCannotBeLengthened) {
    const NkDtString addend(kLong);
    tryEachText(
        "+= text", kReplaced, [](NkDtString& text) { text += kLong; }, isEmptied);
    tryEachText(
        "+= framework text", kReplaced | kMemoryException, [](NkDtString& text) { text += CString(kLong); },
        isUnchangedOrEmptied);
    tryEachText(
        "+= value", kReplaced, [&](NkDtString& text) { text += addend; }, isEmptied);
    const std::function<NkDtString()> longText = [] { return NkDtString(kLong); };
    tryEachOn<NkDtString>(
        "+= itself", longText, kReplaced, [](NkDtString& text) { text += text; },
        [](const NkDtString& text, const NkDtString& before) { isEmptied(text, before); });
}

TEST_F(TextMemoryFailure, EmptiesTheTextWhenEditingCannotLengthenIt) {
    const NkDtString other(kLong);
    const NkDtString part("a");
    const std::function<NkDtString()> makes[] = {[] { return NkDtString("abc"); },
                                                 [] { return NkDtString(kLong); }};
    for (const std::function<NkDtString()>& make : makes) {
        const auto tryOn = [&make](const char* name, const Operation& operation) {
            tryEachOn<NkDtString>(name, make, kNewHandler, operation, isEmptied);
        };
        tryOn("Copy", [&](NkDtString& text) { text.Copy(other, text.GetLength()); });
        tryOn("CopyParts", [&](NkDtString& text) { text.CopyParts(other, text.GetLength()); });
        tryOn("Insert", [&](NkDtString& text) { text.Insert(other, 0); });
        tryOn("FillUp", [](NkDtString& text) { text.FillUp('x', 100, NkDtStrLeft); });
        tryOn("Change all", [&](NkDtString& text) {
            if (text.IsEmpty()) return;
            text.Change(part, other, NkDtStrAll);
        });
        tryOn("Change at a position", [&](NkDtString& text) {
            if (text.IsEmpty()) return;
            text.Change(part, other, 1);
        });
    }
}

TEST_F(TextMemoryFailure, EmptiesTheTextThatIsInsertedIntoItself) {
    const std::function<NkDtString()> make = [] { return NkDtString(kLong); };
    tryEachOn<NkDtString>(
        "Insert", make, kNewHandler,
        [](NkDtString& text) {
            if (!text.IsEmpty()) text.Insert(text, 5);
        },
        isEmptied);
}

TEST_F(TextMemoryFailure, LeavesTheDividedTextWhenAReceiverCannotGrow) {
    const NkDtString text(kLong);
    const std::function<NkDtString()> receiver = [] { return NkDtString("x"); };
    NkDtString other;
    tryEachOn<NkDtString>(
        "left", receiver, kNewHandler, [&](NkDtString& left) { text.Split(left, other, 30); },
        isUnchangedOrEmptied);
    tryEachOn<NkDtString>(
        "right", receiver, kNewHandler, [&](NkDtString& right) { text.Split(other, right, 5); },
        isUnchangedOrEmptied);
    EXPECT_EQ(bytesOf(text), kLong);
}

TEST_F(TextMemoryFailure, LeavesNothingBehindAConcatenationThatFails) {
    const NkDtString a("abc");
    const NkDtString b(kLong);
    const NkDtString null(NkDtWmNull);
    constexpr unsigned endings = kNewHandler | kReplaced;
    tryEach("a + b", endings, [&] { static_cast<void>(a + b); });
    tryEach("a + text", endings, [&] { static_cast<void>(a + kLong); });
    tryEach("text + a", endings, [&] { static_cast<void>(kLong + a); });
    tryEach("a + character", endings, [&] { static_cast<void>(a + 'x'); });
    tryEach("character + a", endings, [&] { static_cast<void>('x' + a); });
    const NkDtChar character('x');
    tryEach("a + character value", endings, [&] { static_cast<void>(a + character); });
    tryEach("character value + a", endings, [&] { static_cast<void>(character + a); });
    tryEach("character values", endings, [&] { static_cast<void>(character + character); });
    tryEach("character value + text", endings, [&] { static_cast<void>(character + kLong); });
    tryEach("text + character value", endings, [&] { static_cast<void>(kLong + character); });
    tryEach("a + truth value", endings, [&] { static_cast<void>(a + NkDtBool(TRUE)); });
    tryEach("null + b", endings, [&] { static_cast<void>(null + b); });
    tryEach("null + text", endings, [&] { static_cast<void>(null + "x"); });
    tryEach("null + null", endings, [&] { static_cast<void>(null + null); });
    EXPECT_EQ(describe(a), "'abc' 3/3 defined");
    EXPECT_EQ(bytesOf(b), kLong);
}

TEST_F(TextMemoryFailure, LeavesNothingBehindAnAccessThatFails) {
    const NkDtString text(kLong);
    const NkDtString null(NkDtWmNull);
    tryEach("GetnValue", kReplaced, [&] { static_cast<void>(text.GetnValue(2, 30)); });
    tryEach("GetnValue of a null", kReplaced, [&] { static_cast<void>(null.GetnValue(0, 0)); });
    tryEach("framework text", kMemoryException, [&] { static_cast<void>(static_cast<CString>(text)); });
    tryEach("16-bit text", kMemoryException, [&] { SysFreeString(text); });
    EXPECT_EQ(bytesOf(text), kLong);
}

TEST_F(TextMemoryFailure, LeavesTheTextAsItWasOrEmptiedWhenAConversionIntoItFails) {
    const std::string longer = std::string(kLong) + kLong;
    const NkDtString source(longer.c_str());
    const CString field(longer.c_str());
    tryEachText(
        "SetFromSQL", kReplaced,
        [&](NkDtString& text) { text.SetFromSQL(longer.c_str(), static_cast<INT>(longer.size()), 850); },
        isUnchanged<NkDtString>);
    tryEachText(
        "SetFromOFL", kReplaced, [&](NkDtString& text) { text.SetFromOFL(longer.c_str()); },
        isUnchangedOrEmptied);
    tryEachText(
        "SetFromExtern", kReplaced, [&](NkDtString& text) { text.SetFromExtern(&source, TRUE, 100); },
        [](const NkDtString& text, const NkDtString& before) {
            const bool changes = !before.IsDefined() || before.GetLength() != 0;  // marked defined first
            EXPECT_EQ(describe(text), changes ? "'' 0/0 defined modified" : "'' 0/0 defined");
        });
    tryEachText(
        "SetFromRecordSet", kNewHandler,
        [&](NkDtString& text) {
            CRecordset rs;
            text.SetFromRecordSet(rs, field);
        },
        [](const NkDtString& text, const NkDtString& before) {
            EXPECT_EQ(bytesOf(text), "");
            EXPECT_EQ(text.GetAllocLength(), 0);
            EXPECT_EQ(text.IsDefined(), before.IsDefined());
        });
    const Bytes archived = [&] {
        NkDtString text(longer.c_str());
        return stored(text);
    }();
    CMemFile file(archived.data(), static_cast<UINT>(archived.size()));
    tryEachText(
        "Serialize", kNewHandler | kMemoryException,
        [&](NkDtString& text) {
            file.Seek(0, CFile::begin);
            CArchive archive(&file, CArchive::load);
            text.Serialize(archive);
        },
        isUnchanged<NkDtString>);
}

TEST_F(TextMemoryFailure, LeavesTheTextAsItWasWhenItsCodePageCannotBeConverted) {
    const std::function<NkDtString()> make = [] { return NkDtString("M\xFCller & S\xF6hne, D\xFCsseldorf"); };
    tryEachOn<NkDtString>(
        "ConvertCodePage", make, kNewHandler, [](NkDtString& text) { text.ConvertCodePage(NkDtCp1252To850); },
        isUnchanged<NkDtString>);
    const NkDtString text = make();
    tryEach("ConvToSQL", kReplaced, [&] { static_cast<void>(text.ConvToSQL(850)); });
}

TEST_F(TextMemoryFailure, LeavesAFieldAsItWasWhenNoMemoryIsNeededForIt) {
    const NkDtString text(kLong);
    CString field;
    field.GetBuffer(100);
    field.ReleaseBuffer();
    CRecordset rs;
    rs.SetFieldNull(&field, TRUE);
    Requests requests(1);
    EXPECT_EQ(endingOf(requests, [&] { text.ConvToRecordSet(rs, field); }), kDone);
    EXPECT_EQ(Requests::count(), 0);
    EXPECT_EQ(field, CString(kLong));
}

// --- Errors need no memory
// ----------------------------------------------------------------------------------

TEST_F(MemoryFailure, RaisesItsErrorsWithoutMemory) {
    const NkDtString text("abc");
    const NkDtLong missing(NkDtWmMissing);
    NkDtLong number(5);
    const NkDtString bad("12x");
    const std::pair<ULONG, std::function<void()>> cases[] = {
        {NkDtErrStringindex, [&] { text.GetnValue(7, 1); }},
        {NkDtErrUndefiniert, [&] { missing.GetValue(); }},
        {NkDtErrWertebereich, [&] { number += 2147483647; }},
        {NkDtErrFolgefehler, [&] { number.SetFromExtern(&bad, TRUE, 100); }},
    };
    for (const auto& [expected, operation] : cases) {
        NkEhBasis* caught = nullptr;
        {
            struct Exhausted {
                Exhausted() {
                    nkfw::setAllocationProbe([](std::size_t) noexcept { return false; });
                }
                ~Exhausted() { nkfw::setAllocationProbe(nullptr); }
            } const exhausted;
            try {
                operation();
            } catch (NkEhBasis* error) {
                caught = error;
            }
        }
        ASSERT_NE(caught, nullptr);
        const ErrorPtr error(caught);
        EXPECT_EQ(error->GetErrorNumber(), expected);
    }
}

}  // namespace
