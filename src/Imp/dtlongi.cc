#include "Imp/dtlongi.h"

#include "Literal1252.h"

using namespace nkfw::literals;

namespace {

constexpr const char* module = ".\\Imp\\dtlongi.cc";
constexpr const char* functions = "Funktionen für NkDtLong"_cp1252;
constexpr const char* record = "NkDtLong_Imp";

}  // namespace

namespace nkdt {

constinit const Origin LongLimits::add = {module, functions, "AddierenLong(double,double)"};
constinit const Origin LongLimits::subtract = {module, functions, "SubtrahierenLong(double,double)"};
constinit const Origin LongLimits::multiply = {module, functions, "MultiplizierenLong(double,double)"};
constinit const Origin LongLimits::divide = {module, functions, "DividierenLong(double,double)"};
constinit const Origin LongLimits::construct = {module, record, "NkDtLong_Imp(double)"};
constinit const Origin LongLimits::fromString = {module, record, "FromString(LPCTSTR)"};

}  // namespace nkdt
