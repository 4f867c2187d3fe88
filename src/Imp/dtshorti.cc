#include "Imp/dtshorti.h"

#include "Literal1252.h"

using namespace nkfw::literals;

namespace {

constexpr const char* module = ".\\Imp\\dtshorti.cc";
constexpr const char* functions = "Funktionen für NkDtShort"_cp1252;
constexpr const char* record = "NkDtShort_Imp";

}  // namespace

namespace nkdt {

constinit const Origin ShortLimits::add = {module, functions, "AddierenShort(LONG,LONG)"};
constinit const Origin ShortLimits::subtract = {module, functions, "SubtrahierenShort(LONG,LONG)"};
constinit const Origin ShortLimits::multiply = {module, functions, "MultiplizierenShort(LONG,LONG)"};
constinit const Origin ShortLimits::divide = {module, functions, "DividierenShort(LONG,LONG)"};
constinit const Origin ShortLimits::construct = {module, record, "NkDtShort_Imp(double)"};
constinit const Origin ShortLimits::fromString = {module, record, "FromString(LPCTSTR)"};

}  // namespace nkdt
