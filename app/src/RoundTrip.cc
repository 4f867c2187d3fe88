#include "RoundTrip.h"

#include "Error.h"
#include "SqlLiteral.h"
#include "Text.h"
#include "nkfw/Archive.h"
#include "nkfw/File.h"
#include "nkfw/Recordset.h"

namespace nkdt::app {

namespace {

// The receiver starts with the other definedness, so that a conversion that does nothing is noticed.
void prepareReceiver(const Cell& from, Cell& to) {
    to.value().Clear();
    if (from.value().IsDefined()) return;
    to.value().SetWorkingMode(NkDtWmDefined);
    to.value().SetWorkingMode(NkDtWmNull);
}

void throughText(Cell& from, Cell& to) {
    to.setText(from.text());
}

void throughUserText(Cell& from, Cell& to) {
    to.value().SetFromOFL(from.value().ConvToOFL());
}

void throughSql(Cell& from, Cell& to) {
    const NkDtString literal = from.sqlLiteral();
    std::string_view rest(literal.GetValue(), static_cast<std::size_t>(literal.GetLength()));
    setFromSqlLiteral(to, takeSqlLiteral(rest));
    if (!rest.empty()) throw DataError("\"" + visible(rest) + "\" follows the SQL literal");
}

void throughExtern(Cell& from, Cell& to) {
    BOOL defined = FALSE;
    USHORT version = 0;
    const NkDtString text = from.value().ConvToExtern(defined, version);
    to.value().SetFromExtern(&text, defined, version);
}

// The field is the receiver's, because the sender's may be bound to a database.
void throughRecordset(Cell& from, Cell& to) {
    CRecordset rs;
    to.value().Assign(from.value());
    to.store(rs);
    prepareReceiver(from, to);
    to.fetch(rs);
}

void throughArchive(Cell& from, Cell& to) {
    CMemFile file;
    CArchive out(&file, CArchive::store);
    from.serialize(out);
    out.Close();
    file.Seek(0, CFile::begin);
    CArchive in(&file, CArchive::load);
    to.serialize(in);
    in.Close();
    if (file.GetPosition() != file.GetLength()) throw DataError("the archive was not read to its end");
}

void throughRecord(Cell& from, Cell& to) {
    to.takeThroughRecord(from);
}

std::string shownValue(const Cell& cell) {
    return cell.value().IsDefined() ? "\"" + visible(cell.text().GetValue()) + "\"" : "undefined";
}

}  // namespace

const std::vector<Road>& roads() {
    static const std::vector<Road> all{
        {"text", Representation::text, throughText},
        {"user-interface text", Representation::userText, throughUserText},
        {"SQL literal", Representation::sqlLiteral, throughSql},
        {"external text", Representation::external, throughExtern},
        {"recordset field", Representation::recordset, throughRecordset},
        {"archive", Representation::archive, throughArchive},
    };
    return all;
}

const std::vector<Road>& roadsOf(const ColumnKind& kind) {
    static const std::vector<Road> withRecord = [] {
        std::vector<Road> all = roads();
        all.push_back({"DEC record", Representation::record, throughRecord});
        return all;
    }();
    return kind.decimal ? withRecord : roads();
}

Arrival travel(const Road& road, Cell& from, Cell& back) {
    Arrival arrival;
    const Cell* arrived = nullptr;
    try {
        prepareReceiver(from, back);
        road.travel(from, back);
        arrived = &back;
        if (back.equals(from)) return arrival;
        arrival = {Arrival::lost, "came back as " + shownValue(back)};
    } catch (...) {
        arrival = {Arrival::lost, takeCaughtText()};
    }
    const char* const stated = from.statedLoss(road.representation, arrived);
    if (stated != nullptr) arrival = {Arrival::notRepresentable, stated};
    return arrival;
}

}  // namespace nkdt::app
