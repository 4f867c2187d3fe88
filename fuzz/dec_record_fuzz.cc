/// @file
/// Any 14 bytes as a binary decimal record: to a number, to its texts and back.

#include <cstring>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "Imp/dtdecimi.h"
#include "nkdt/NkDtExcep.h"

namespace {

using fuzz::require;

/// The record's numbers, from its bytes.
struct Fields {
    SHORT sign;
    SHORT scale;
    ULONGLONG magnitude;
};

unsigned wordAt(const std::uint8_t* bytes) {
    return bytes[0] | static_cast<unsigned>(bytes[1]) << 8U;
}

Fields fieldsOf(const std::uint8_t* bytes) {
    ULONGLONG magnitude = 0;
    for (std::size_t i = 12; i > 4; --i)
        magnitude = magnitude << 8U | bytes[i - 1];
    return {static_cast<SHORT>(wordAt(bytes)), static_cast<SHORT>(wordAt(bytes + 2)), magnitude};
}

void checkNumber(const Decimal96& number, const Fields& fields) {
    require(number.scale() == fields.scale, "the scale is kept as it is");
    if (fields.magnitude != 0) {
        require(number.isNegative() == (fields.sign != 0), "every sign but 0 is negative");
        require(number.abs().mantissaLow() == fields.magnitude && number.abs().mantissaHigh() == 0,
                "the magnitude is kept");
    } else if (fields.sign == 0 || fields.sign == 1) {
        require(number.isZero(), "a magnitude of 0 is 0");
    } else {
        require((-number).mantissaLow() == ULONGLONG{1} << 32U, "a strange sign makes -2^32 of 0");
    }
}

/// The text of a writer; empty when the number's scale cannot be multiplied out.
template <class Text>
std::string textOf(std::string_view (*write)(const Decimal96&, Text&), const Decimal96& number) {
    Text buffer;
    std::string result;
    const ULONG error = fuzz::errorNumberOf([&] {
        const std::string_view text = write(number, buffer);
        require(text.size() < sizeof buffer && buffer[text.size()] == '\0', "a text fits its buffer");
        result = text;
    });
    require(error == 0 || (error == NkDtErrDezimal && number.scale() < 0), "only large numbers overflow");
    return result;
}

void checkTexts(const Decimal96& number) {
    const std::string plain = textOf(&NkDtDecimal_Imp::plainText, number);
    const std::string sql = textOf(&NkDtDecimal_Imp::sqlText, number);
    const std::string field = textOf(&NkDtDecimal_Imp::fieldText, number);
    const std::string external = textOf(&NkDtDecimal_Imp::externText, number);
    require(
        plain.empty() == sql.empty() && sql.empty() == external.empty() && external.empty() == field.empty(),
        "a number has all texts or none");
    if (plain.empty()) return;
    require(NkDtDecimal_Imp::fromPlainText(plain.c_str()) == number, "the plain text reads back");
    require(NkDtDecimal_Imp::fromPlainText(sql.c_str()) == number, "the SQL text reads back");
    require(NkDtDecimal_Imp::fromExtern(external.c_str()) == number, "the external text reads back");
    const ULONG error = fuzz::errorNumberOf(
        [&] { require(NkDtDecimal_Imp::fromFieldText(field.c_str()) == number, "the field reads back"); });
    require(error == 0 || (error == NkDtErrEingabeZuLang && sql.size() > 28), "only long fields are refused");
}

void checkCurrency(const Decimal96& number) {
    COleCurrency currency;
    const ULONG error = fuzz::errorNumberOf([&] { currency = NkDtDecimal_Imp::toCurrency(number); });
    if (error == NkDtErrFolgefehler) {
        require(number.scale() < 0, "the arithmetic fails on large numbers only");
        return;
    }
    if (error == 0) {
        require(NkDtDecimal_Imp::fromCurrency(currency) == number.round(4), "a currency has four places");
        return;
    }
    require(error == NkDtErrWertebereich && number.abs() > Decimal96("922337203685477"),
            "only what is beyond the range is refused");
}

void checkRecord(const Decimal96& number, const Fields& fields) {
    const DEC record = NkDtDecimal_Imp::toRecord(number);
    std::uint8_t bytes[sizeof record];
    std::memcpy(bytes, &record, sizeof record);
    const Fields back = fieldsOf(bytes);
    require(bytes[12] == 0 && bytes[13] == 0, "the reserved word is written as 0");
    if (number.isZero()) {
        require(back.sign == 0 && back.scale == 0 && back.magnitude == 0, "0 is written as zero bytes");
        return;
    }
    require(back.sign == (fields.sign != 0 ? 1 : 0), "the sign comes back as 0 or 1");
    require(back.scale == fields.scale, "the scale comes back");
    require(fields.magnitude == 0 || back.magnitude == fields.magnitude, "the magnitude comes back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < sizeof(DEC)) return 0;
    DEC record;
    std::memcpy(&record, data, sizeof record);
    const Fields fields = fieldsOf(data);
    const Decimal96 number = NkDtDecimal_Imp::fromRecord(record);
    checkNumber(number, fields);
    checkTexts(number);
    checkCurrency(number);
    checkRecord(number, fields);
    return 0;
}
