#include "Modules.h"

#include <iterator>

namespace nklang {

namespace {

constexpr NkLanguageModule::Entry germanTexts[] = {
    {uNkLangTextInfo, "Der Wert konnte nicht verarbeitet werden."},
    {uNkLangCaption, "Fehler"},
    {uNkLangWahr, "Ja"},
    {uNkLangFalsch, "Nein"},
};

constexpr NkLanguageModule::Entry englishTexts[] = {
    {uNkLangTextInfo, "The value could not be processed."},
    {uNkLangCaption, "Error"},
    {uNkLangWahr, "Yes"},
    {uNkLangFalsch, "No"},
};

}  // namespace

// Constant initialisation: the texts can be read before main() already.
constinit const NkLanguageModule german{"nklang1031", usNkLangDeutsch, germanTexts, std::size(germanTexts)};
constinit const NkLanguageModule english{"nklang1033", usNkLangEnglisch, englishTexts,
                                         std::size(englishTexts)};

}  // namespace nklang
