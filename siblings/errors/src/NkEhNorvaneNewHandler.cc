#include <charconv>
#include <cstddef>
#include <string_view>

#include "Literal1252.h"
#include "nkeh/NkEhBasis.h"

using namespace nkfw::literals;

namespace {

constexpr LPCTSTR sourceFile = ".\\NkEhNorvaneNewHandler.cc";
constexpr LPCTSTR classText = "Speicherverwaltung";
constexpr std::string_view functionText = "NkEhNorvaneNewHandler(size_t), Bytes angefordert: ";

}  // namespace

void NkEhNorvaneNewHandler(std::size_t nSize) {
    TCHAR function[functionText.size() + 24];
    TCHAR* const number = function + functionText.copy(function, functionText.size());
    *std::to_chars(number, function + sizeof function - 1, nSize).ptr = '\0';
    throw new NkEhBasis(sourceFile, classText, function, "Nicht genügend Speicher"_cp1252, ulNkEhKeinSpeicher,
                        1, 1, nullptr, TRUE, 0, TRUE);
}
