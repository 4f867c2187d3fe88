#pragma once

/// @file
/// One row of a table, found by its key: it is read, its values are changed, and what was modified is written
/// back, unless somebody else was faster.
///
/// A row is named by a text of its key: as a person reads it, or as a statement has it, where the first names
/// no row (0.125 for a double that is shown as 0,13; 2004-03-05). What cannot be named is a key that is an
/// empty text, and in SQLite one that is stored in another form than the binding writes it, such as a date
/// with a time of day in a DATE column: no table is searched row by row.
///
/// @code
/// StoredRow row(database, "Artikel", "4711", selection);
/// row.columns()[2].cell->value().SetFromOFL("12,50");
/// const StoredRow::Saved saved = row.save();
/// @endcode

#include <cstddef>
#include <string>
#include <vector>

#include "RowForm.h"
#include "Table.h"
#include "nkfw/String.h"

namespace nkdt::app {

class StoredRow {
  public:
    /// How a saving ended. What was not saved is still modified.
    struct Saved {
        enum Outcome {
            done,       ///< the modified values are in the database
            nothing,    ///< no value was modified
            refused,    ///< columns do not take their values
            deleted,    ///< the row is not there any more
            overtaken,  ///< values of the row have changed since it was read
        };
        Outcome outcome = done;
        std::vector<std::size_t> columns{};  ///< of done: the saved ones; of overtaken: the changed ones
        RowForm::Refusals refusals{};        ///< of refused: why, in the order of the columns
    };

    /// Reads the row: the chosen columns that can be bound, and the key.
    /// @param key the key, UTF-8
    ///
    /// Throws a UsageError if the table has not a key of one column, or the text is no value of it; a
    /// DataError if there is no such row.
    StoredRow(CDatabase& database, const CString& table, const std::string& key, const Selection& selection);

    /// The columns with the row's values.
    BoundColumns& columns() noexcept { return m_columns.bound; }
    const std::vector<LeftOutColumn>& leftOut() const noexcept { return m_columns.leftOut; }
    /// The index of the key's column.
    std::size_t key() const noexcept { return m_key; }
    /// Table and key, as a name for a person.
    const CString& title() const noexcept { return m_title; }

    /// Writes the values that are modified, and no other, in one transaction. It takes the row's lock, looks
    /// whether the row still has the values that were read, and only then writes. The values are not modified
    /// any more when they are in the database for good; a failure of the database is thrown. A row that is
    /// saved has to be read anew before it is changed again.
    ///
    /// What the values do not tell is not seen: a change in a column that is left out, or in the fraction of
    /// a second.
    Saved save();

  private:
    using Indices = std::vector<std::size_t>;
    /// How the row is locked until the transaction ends.
    enum class Lock {
        byUpdate,     // an update that changes nothing
        withoutTrace  // something that neither triggers nor the rights on the key notice
    };

    std::size_t findKey() const;
    void read(const std::string& key);
    bool readBy(const Cell& key);
    Indices modified() const;
    Saved saveUnder(Lock kind, const Indices& columns);
    bool lockByUpdate();
    bool lockWithoutTrace();
    CString lockingUpdate() const;
    Saved writeLocked(const Indices& columns);

    CDatabase& m_database;
    const CString m_table;
    const CString m_keyName;
    TableColumns m_columns;
    std::size_t m_key;
    CString m_title;
    CString m_condition;           // of SQL, that the row alone meets
    std::vector<CString> m_texts;  // of the columns, as they were read
};

}  // namespace nkdt::app
