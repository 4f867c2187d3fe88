#include "DefaultFormats.h"

#include "nklang/NkLanguagePublisher.h"

namespace nkdt::defaultFormat {

namespace {

/// A whole number of at most @p digits characters: no separators, "-" in front, no filling.
NkFormat wholeNumber(ULONG digits) {
    return NkFormat(digits, 0, FormatDezimalTrennerOhne, FormatTausenderTrennerOhne, FormatVorzeichenVorn,
                    FormatVorzeichenNurMinus, 0, '0', 0, '0');
}

/// A duration of at most seven digits of hours, "-" in front, no filling.
NkFormat duration(FormatZeitDarstellung display) {
    return NkFormat(FormatZeitArtDauer, display, FormatVorzeichenVorn, FormatVorzeichenNurMinus, 7, 0, '0');
}

}  // namespace

const NkFormat text(0, kulNkFoValidAll, FormatAuffuellenNicht, ' ');
const NkFormat character(1, kulNkFoValidAll, FormatAuffuellenNicht, ' ');
const NkFormat truth(FormatModusWorte, usNkLangDeutsch);
const NkFormat longNumber = wholeNumber(11);
const NkFormat shortNumber = wholeNumber(6);
// Two decimal places at most, thousands separated by points.
const NkFormat doubleNumber(2147483647, 2, FormatDezimalTrennerKomma, FormatTausenderTrennerPunkt,
                            FormatVorzeichenVorn, FormatVorzeichenNurMinus, 0, '0', 0, '0');
// "05.03.2004", days and months with two digits.
const NkFormat date(FormatDatumArtTagMonatJahr, FormatDatumTrennerPunkt, FormatDatumJahrVierstellig,
                    FormatDatumMonatZahl, 1, '0');
const NkFormat durationHundredths = duration(FormatZeitDarstellungHundertstel);
const NkFormat durationMinutes = duration(FormatZeitDarstellungMinuten);

}  // namespace nkdt::defaultFormat
