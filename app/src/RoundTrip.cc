#include "RoundTrip.h"

#include "Error.h"
#include "SqlLiteral.h"
#include "Text.h"
#include "nkfw/Archive.h"
#include "nkfw/DataExchange.h"
#include "nkfw/File.h"
#include "nkfw/MemoryDialog.h"
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

/// A dialog with a control of each kind.
class Controls {
  public:
    enum Id : int { edit = 1, check };

    Controls() {
        m_dialog.AddEdit(edit);
        m_dialog.AddCheck(check);
    }
    /// Loads a value into a control and saves the control into another value.
    void pass(Cell& from, Cell& to, void (Cell::*exchange)(CDataExchange&, int), Id id) {
        CDataExchange load(&m_dialog, FALSE);
        (from.*exchange)(load, id);
        CDataExchange save(&m_dialog, TRUE);
        (to.*exchange)(save, id);
    }

  private:
    CMemoryDialog m_dialog;
};

Controls& controls() {
    static thread_local Controls controls;
    return controls;
}

void throughEditControl(Cell& from, Cell& to) {
    controls().pass(from, to, &Cell::exchangeEdit, Controls::edit);
}

void throughCheckBox(Cell& from, Cell& to) {
    controls().pass(from, to, &Cell::exchangeCheck, Controls::check);
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
        {"edit control", Representation::userText, throughEditControl},
    };
    return all;
}

const std::vector<Road>& roadsOf(const ColumnKind& kind) {
    const auto with = [](const Road& road) {
        std::vector<Road> all = roads();
        all.push_back(road);
        return all;
    };
    static const std::vector<Road> withRecord = with({"DEC record", Representation::record, throughRecord});
    static const std::vector<Road> withCheckBox =
        with({"check box", Representation::checkBox, throughCheckBox});
    return kind.decimal ? withRecord : kind.checkBox ? withCheckBox : roads();
}

Arrival travel(const Road& road, Cell& from, Cell& back) {
    try {
        prepareReceiver(from, back);
        road.travel(from, back);
        if (back.equals(from)) return {};
        const char* const stated = from.statedLoss(road.representation, &back);
        if (stated != nullptr) return {Arrival::notRepresentable, stated};
        return {Arrival::lost, "came back as " + shownValue(back)};
    } catch (...) {
        const std::string text = takeCaughtText();
        const char* const stated = from.statedLoss(road.representation, nullptr);
        if (stated != nullptr) return {Arrival::notRepresentable, stated};
        return {Arrival::lost, text};
    }
}

}  // namespace nkdt::app
