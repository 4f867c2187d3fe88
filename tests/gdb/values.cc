// A value of each class in each state, for a debugger that stops in look().

#include <nkdec/Decimal96.h>
#include <nkdt/NkDt.h>

#include <utility>

namespace {

template <class Value>
struct States {
    explicit States(const Value& value) : defined(value), changed(value) { changed.SetModified(TRUE); }

    Value defined;
    Value changed;
    Value missing{NkDtWmMissing};
    Value null{NkDtWmNull};
    Value source{NkDtWmNull};
    Value movedFrom{std::move(source)};
};

[[gnu::noinline]] void look() {
    asm volatile("" ::: "memory");
}

}  // namespace

int main() {
    const States<NkDtString> text(NkDtString("M\xFCller \"A\"\\\n\x81"));
    const NkDtString longText("0123456789012345678901234567890123456789");
    const NkDtString emptyText("");
    const States<NkDtChar> character(NkDtChar('\xC4'));
    const NkDtChar noCharacter('\0');
    const States<NkDtBool> truth(NkDtBool(TRUE));
    const NkDtBool falsehood(FALSE);
    const NkDtBool five(5);
    const States<NkDtLong> number(NkDtLong(-2147483647 - 1));
    const States<NkDtShort> shortNumber(NkDtShort(-32768));
    const States<NkDtDecimal> decimal(NkDtDecimal("-1234.50"));
    const NkDtDecimal small("-0.05");
    const NkDtDecimal wide("1234567890123456789012345678");
    const States<NkDtDouble> real(NkDtDouble(0.1));
    const States<NkDtDateTime> moment(NkDtDateTime(5, 3, 2004, 14, 7, 9));
    const States<NkDtDateZp> day(NkDtDateZp(5, 3, 2004));
    NkDtDateZp dayWithTime(5, 3, 2004);
    dayWithTime.SetHour(8);
    const States<NkDtTime> duration(NkDtTime(-1, -30));
    const NkDtTime hundredths(1, 50, NkDtTime::Hundredths);
    NkDtTime wholeHours(1, 30);
    wholeHours.SetMode(NkDtTime::HoursOnly);

    NkDtLong alwaysDefined(NkDtWmDefined);
    alwaysDefined += NkDtLong(NkDtWmMissing);  // undefined, though the mode says always defined

    CMemFile file;
    {
        CArchive store(&file, CArchive::store);
        store << static_cast<LONG>(FALSE) << static_cast<LONG>(7);
    }
    file.Seek(0, CFile::begin);
    NkDtLong nullSeven(NkDtWmNull);
    {
        CArchive load(&file, CArchive::load);
        nullSeven.Serialize(load);
    }

    const CString frameworkText("K\xF6ln");
    const Decimal96 plainDecimal("1.50");
    NkDtExcep* error = nullptr;
    try {
        NkDtDecimal refused("1");
        refused.SetFromOFL("1x");
    } catch (NkDtExcep* caught) {
        error = caught;
    }
    look();
    if (error != nullptr) error->Delete();
}
