#include "TestDatabase.h"

namespace {

struct NamedType {
    const char* name;
    INT length;
    CDatabaseColumn::Type type;
};

TEST(TypeFromName, FollowsTheDeclaredName) {
    const NamedType cases[] = {
        {"SMALLINT", 0, CDatabaseColumn::smallInteger},
        {"int2", 5, CDatabaseColumn::smallInteger},
        {"INTEGER", 0, CDatabaseColumn::integer},
        {"int4", 10, CDatabaseColumn::integer},
        {"Int", 0, CDatabaseColumn::integer},
        {"INT(11)", 0, CDatabaseColumn::integer},
        {"BIGINT", 0, CDatabaseColumn::bigInteger},
        {"int8", 19, CDatabaseColumn::bigInteger},
        {"NUMERIC(12,2)", 12, CDatabaseColumn::decimal},
        {"DECIMAL", 255, CDatabaseColumn::decimal},
        {"DECIMALTEXT(28,10)", 28, CDatabaseColumn::decimal},
        {"money", 0, CDatabaseColumn::decimal},
        {"REAL", 0, CDatabaseColumn::floating},
        {"double precision", 0, CDatabaseColumn::floating},
        {"float8", 17, CDatabaseColumn::floating},
        {"CHAR(1)", 1, CDatabaseColumn::character},
        {"BIT", 1, CDatabaseColumn::boolean},
        {"bit(1)", 1, CDatabaseColumn::boolean},
        {"BIT(8)", 8, CDatabaseColumn::unknown},
        {"bit", 8, CDatabaseColumn::unknown},
        {"CHAR", 0, CDatabaseColumn::character},
        {"char ( 1 )", 0, CDatabaseColumn::character},
        {"bpchar", 1, CDatabaseColumn::character},
        {"NCHAR(1)", 1, CDatabaseColumn::character},
        {"CHAR(2)", 1, CDatabaseColumn::text},
        {"bpchar", 5, CDatabaseColumn::text},
        {"NCHAR(5)", 5, CDatabaseColumn::text},
        {"VARCHAR(1)", 1, CDatabaseColumn::text},
        {"NVARCHAR(40)", 40, CDatabaseColumn::text},
        {"character varying", 20, CDatabaseColumn::text},
        {"TEXT", 65536, CDatabaseColumn::text},
        {"ntext", 0, CDatabaseColumn::text},
        {"BOOLEAN", 1, CDatabaseColumn::boolean},
        {"bit", 1, CDatabaseColumn::boolean},
        {"DATE", 10, CDatabaseColumn::date},
        {"DATETIME", 0, CDatabaseColumn::timestamp},
        {"timestamp", 26, CDatabaseColumn::timestamp},
        {"timestamp without time zone", 26, CDatabaseColumn::timestamp},
        {"TIME", 8, CDatabaseColumn::timeOfDay},
        {"BLOB", 0, CDatabaseColumn::binary},
        {"bytea", 0, CDatabaseColumn::binary},
        {"uuid", 36, CDatabaseColumn::unknown},
        {"INTEGERS", 0, CDatabaseColumn::unknown},
        {"", 0, CDatabaseColumn::unknown},
        {"  ", 0, CDatabaseColumn::unknown},
        {"(1)", 0, CDatabaseColumn::unknown},
        {nullptr, 0, CDatabaseColumn::unknown},
        {"CHAR(99999999999999999999)", 0, CDatabaseColumn::character},
        {"CHAR(", 3, CDatabaseColumn::text},
    };
    for (const NamedType& c : cases) {
        EXPECT_EQ(CDatabaseColumn::TypeFromName(c.name, c.length), c.type)
            << (c.name == nullptr ? "(null)" : c.name) << " " << c.length;
    }
}

}  // namespace
