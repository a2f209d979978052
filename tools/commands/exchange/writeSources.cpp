#include "writeSources.h"

#include "SourceTable.h"
#include "output/formats.h"
#include "text/nullMark.h"

namespace {

std::string lineOf(const std::vector<std::string>& cells)
{
    return renderCsvLine(cells, Terminal{false, Terminal::UNLIMITED, false});
}

std::string headerOf(const SourceTable& table)
{
    std::vector<std::string> names;
    for (const SourceTable::Column& column : table.columns) {
        names.push_back(column.name);
    }
    return lineOf(names);
}

std::string lineOf(const StoredRow& row, const SourceTable& table)
{
    std::vector<std::string> cells;
    for (const SourceTable::Column& column : table.columns) {
        const RawCell& cell = row[column.position];
        cells.push_back(cell.isNull() ? NULL_MARK : withoutNullMark(cell.bytes));
    }
    return lineOf(cells);
}

}  // namespace

std::map<std::string, std::string> sourcesOf(const StoredFile& content)
{
    const SourceTable faultTypes = SourceTable::ofFaultTypes();
    const SourceTable texts = SourceTable::ofTexts();
    std::map<std::string, std::string> files;
    std::string& faultsFile = files[FAULTS_FILE] = headerOf(faultTypes);
    for (const StoredRow& row : content.faultTypes) {
        faultsFile += lineOf(row, faultTypes);
    }
    for (const StoredRow& row : content.texts) {
        std::string& file = files[textsFileOf(shortNumber(row[StoredFile::LANGUAGE]))];
        file += (file.empty() ? headerOf(texts) : "") + lineOf(row, texts);
    }
    return files;
}
