/// @file
/// What `nkdt check` does with the values of a table, once they are read: each value goes into each of its
/// representations and back, and what came back is compared.
///
/// The rows are those that `nkdt demo --rows` adds, with a column for each of the ten classes. As in the
/// program, many values take one road before the next road comes.

#include <filesystem>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <unistd.h>

#include "BenchSupport.h"
#include "RoundTrip.h"
#include "SampleTable.h"
#include "Table.h"
#include "Text.h"

namespace bench {

namespace {

using namespace nkdt::app;

constexpr std::size_t rows = 64;  // that the program takes at once

/// A file with the sample table, removed in the end.
class SampleFile {
  public:
    SampleFile()
        : m_path(std::filesystem::temp_directory_path() /
                 ("nkdt_round_trip_bench_" + std::to_string(::getpid()) + ".db")) {
        CDatabase database;
        database.Open(m_path.c_str(), CDatabase::createMissing);
        std::ostringstream silent;
        Console console{silent, silent};
        Progress progress(console, "");
        makeSampleTable(database, rows, progress);
    }
    ~SampleFile() {
        std::error_code ignored;
        std::filesystem::remove(m_path, ignored);
    }
    SampleFile(const SampleFile&) = delete;
    SampleFile& operator=(const SampleFile&) = delete;

    const char* path() const { return m_path.c_str(); }

  private:
    std::filesystem::path m_path;
};

/// The values of a table, column by column.
class Values {
  public:
    Values() {
        const SampleFile file;
        CDatabase database;
        database.Open(file.path());
        Selection selection;
        selection.columns = {
            "Nummer,Stückzahl,Name,Klasse,Lieferbar,Preis,Gewicht,Aufnahme,Geändert,Rüstzeit"};
        selection.as = {sampleDurations};
        selection.filter = "\"Nummer\" > 100000 AND \"Nummer\" < 1000000";  // the added ones
        selection.sort = "\"Nummer\"";
        const CString table = ansi(sampleTableName, "the table");
        m_bound = columnsOf(database, table, selection).bound;
        m_columns.resize(m_bound.size());
        for (TableReader reader(database, table, m_bound, selection); reader.next();) {
            for (std::size_t i = 0; i < m_bound.size(); ++i) {
                m_columns[i].push_back(makeCellFor(m_bound[i]));
                m_columns[i].back()->value().Assign(m_bound[i].cell->value());
            }
        }
        if (m_bound.size() != 10 || m_columns.front().size() != rows)
            throw std::runtime_error("the table is not what was expected");
    }

    /// Sends all values down all their roads. Returns how many did not survive and had no reason.
    std::size_t travelAll() {
        std::size_t lost = 0;
        for (std::size_t i = 0; i < m_bound.size(); ++i) {
            for (const Road& road : roadsOf(*m_bound[i].kind)) {
                for (const auto& cell : m_columns[i]) {
                    const Arrival arrival = travel(road, *cell, *m_bound[i].cell);
                    lost += arrival.outcome == Arrival::lost ? 1U : 0U;
                }
            }
        }
        return lost;
    }

  private:
    BoundColumns m_bound;
    std::vector<std::vector<std::unique_ptr<Cell>>> m_columns;
};

void roundTrips(benchmark::State& state) {
    Values values;
    for (auto _ : state) {
        if (values.travelAll() != 0) state.SkipWithError("a value was lost");
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(rows));  // rows a second
}

BENCHMARK(roundTrips)->Name("round_trips_of_64_rows/ten_columns")->Unit(benchmark::kMicrosecond);

}  // namespace

}  // namespace bench
