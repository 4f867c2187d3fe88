#include "TableFile.h"

#include <algorithm>

#include "Error.h"

namespace nkdt::app {

const std::vector<TableFileFormat>& tableFileFormats() {
    static const std::vector<TableFileFormat> formats{
        {"extern", makeExternWriter, makeExternReader},
        {"sql", makeSqlWriter, makeSqlReader},
        {"archive", makeArchiveWriter, makeArchiveReader},
    };
    return formats;
}

const TableFileFormat& requireFormat(std::string_view name) {
    const auto& formats = tableFileFormats();
    const auto found =
        std::find_if(formats.begin(), formats.end(), [&](const auto& format) { return format.name == name; });
    if (found == formats.end()) throw UsageError("there is no format \"" + std::string(name) + "\"");
    return *found;
}

const ColumnKind& requireKindOfFile(std::string_view className) {
    const ColumnKind* const kind = findKind(className);
    if (kind == nullptr || kind->className != className) {
        throw DataError("the file has a column of the class \"" + std::string(className) +
                        "\", which there is not");
    }
    return *kind;
}

}  // namespace nkdt::app
