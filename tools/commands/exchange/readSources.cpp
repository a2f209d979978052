#include "readSources.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>

#include "CsvReader.h"
#include "SourceKeys.h"
#include "SourceTable.h"
#include "database/DatabaseErrors.h"
#include "text/counted.h"
#include "text/formatted.h"
#include "text/nullMark.h"
#include "text/shortened.h"

namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw UnreadableFile(
            formatted("{}: cannot be read: {}", file.string(), std::strerror(errno)));
    }
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

/// Reads the records of one file into rows.
class FileReading {
public:
    FileReading(const fs::path& path, SourceTable table, Mistakes& mistakes)
        : m_path(path.string()), m_table(std::move(table)), m_mistakes(mistakes)
    {
    }

    /// @param take  called for each row of which the code could be read; returns what is wrong with
    ///              it beside others.
    /// @return whether all codes could be read.
    template <class Take>
    bool run(const Take& take)
    {
        const std::string content = contentOf(m_path);
        CsvReader reader(content);
        CsvRecord record;
        if (!reader.next(record)) {
            add(1, "", "the names of the columns are missing");
            return false;
        }
        bool hasAll = readHeader(record);
        if (!hasAll) {
            return false;
        }
        while (reader.next(record)) {
            std::optional<StoredRow> row = rowOf(record);
            const std::string mistake = row ? take(*row, record.line) : "";
            if (!mistake.empty()) {
                add(record.line, m_table.columns.front().name, mistake);
            }
            hasAll = hasAll && row;
        }
        return hasAll;
    }

private:
    void add(std::size_t line, const std::string& column, const std::string& what)
    {
        m_mistakes.push_back({m_path, line, column, what});
    }

    /// The columns may stand in any order.
    bool readHeader(const CsvRecord& header)
    {
        const std::vector<std::string>& names = header.cells;
        std::vector<std::string> known;
        for (const SourceTable::Column& column : m_table.columns) {
            const auto found = std::find(names.begin(), names.end(), column.name);
            m_cells.push_back(static_cast<std::size_t>(found - names.begin()));
            known.push_back(column.name);
        }
        const bool isComplete = names.size() == known.size() &&
                                std::is_permutation(names.begin(), names.end(), known.begin());
        if (!isComplete) {
            add(header.line, "",
                formatted("the columns are {}; they must be {}", shortened(listed(names, ",")),
                          listed(known, ",")));
        }
        return isComplete;
    }

    /// @return nothing if it has no code.
    std::optional<StoredRow> rowOf(const CsvRecord& record)
    {
        if (!record.mistake.empty()) {
            add(record.line, "", record.mistake);
            return std::nullopt;
        }
        if (record.cells.size() != m_table.columns.size()) {
            add(record.line, "",
                formatted("there are {}, not {}", counted(record.cells.size(), "cell"),
                          m_table.columns.size()));
            return std::nullopt;
        }
        StoredRow row;
        row.reserve(m_table.columns.size() + 1);  // and the language of a text
        for (std::size_t i = 0; i < m_table.columns.size(); ++i) {
            const SourceTable::Column& column = m_table.columns[i];
            row.push_back(valueOf(record.cells[m_cells[i]], column));
            const std::string mistake = mistakeIn(row.back(), column);
            if (!mistake.empty()) {
                add(record.line, column.name, mistake);
            }
        }
        const bool hasCode = mistakeIn(row.front(), m_table.columns.front()).empty();
        return hasCode ? std::optional(std::move(row)) : std::nullopt;
    }

    static RawCell valueOf(const std::string& cell, const SourceTable::Column& column)
    {
        if (cell == NULL_MARK) {
            return {};
        }
        return column.kind == FieldKind::TEXT ? RawCell::ofText(textOfCell(cell))
                                              : RawCell(CellType::INTEGER, cell);
    }

    std::string m_path;
    SourceTable m_table;
    Mistakes& m_mistakes;
    std::vector<std::size_t> m_cells;  ///< where the columns of the table stand in the file
};

/// @return nothing if the name is not what a language makes it.
std::optional<std::uint16_t> languageOf(const std::string& name)
{
    std::uint16_t language = 0;
    const char* start = name.data() + std::string_view("texts-").size();
    std::from_chars(start, name.data() + name.size(), language);
    return name == textsFileOf(language) ? std::optional(language) : std::nullopt;
}

/// The files of texts in a folder, by language.
std::map<std::uint16_t, fs::path> textsFiles(const std::string& folder, Mistakes& mistakes)
{
    std::map<std::uint16_t, fs::path> files;
    std::vector<std::string> odd;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (!isLikeTextsFile(name)) {
            continue;
        }
        if (const std::optional<std::uint16_t> language = languageOf(name)) {
            files.emplace(*language, entry.path());
        } else {
            odd.push_back(entry.path().string());
        }
    }
    std::sort(odd.begin(), odd.end());
    for (const std::string& file : odd) {
        mistakes.push_back({file, 0, "",
                            "the name tells no language; it must be texts-N.csv with a number from "
                            "0 to 65535"});
    }
    return files;
}

/// @param keyCells  how many cells at the beginning of a row are its key, numbers of 16 bits.
void sortByKey(std::vector<StoredRow>& rows, std::size_t keyCells)
{
    constexpr unsigned CELL_BITS = 16;
    std::map<std::uint64_t, std::size_t> positions;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::uint64_t key = 0;
        for (std::size_t cell = 0; cell < keyCells; ++cell) {
            key = key << CELL_BITS | shortNumber(rows[i][cell]);
        }
        positions.emplace(key, i);
    }
    std::vector<StoredRow> sorted;
    sorted.reserve(rows.size());
    for (const auto& [key, position] : positions) {
        sorted.push_back(std::move(rows[position]));
    }
    rows = std::move(sorted);
}

void refuseTooMany(const std::string& folder, std::size_t texts, Mistakes& mistakes)
{
    const std::uint64_t most = largestNumber(FieldKind::NUMBER_16);
    if (texts > most) {
        mistakes.push_back({folder, 0, "",
                            formatted("there are {} texts; a file holds {}, each with an id of "
                                      "16 bits",
                                      texts, most)});
    }
}

}  // namespace

StoredFile readSources(const std::string& folder, Mistakes& mistakes)
try {
    StoredFile content;
    SourceKeys keys;
    const auto takeFaultType = [&](StoredRow& row, std::size_t line) {
        content.faultTypes.push_back(std::move(row));
        return keys.addFaultType(shortNumber(content.faultTypes.back().front()), line);
    };
    FileReading faultTypes(fs::path(folder) / FAULTS_FILE, SourceTable::ofFaultTypes(), mistakes);
    if (!faultTypes.run(takeFaultType)) {
        keys.lackFaultTypes();
    }
    for (const auto& [language, path] : textsFiles(folder, mistakes)) {
        const auto takeText = [&, number = language](StoredRow& row, std::size_t line) {
            row.insert(row.begin() + StoredFile::LANGUAGE, RawCell::ofNumber(number));
            content.texts.push_back(std::move(row));
            return keys.addText(shortNumber(content.texts.back().front()), number, line);
        };
        FileReading(path, SourceTable::ofTexts(), mistakes).run(takeText);
    }
    refuseTooMany(folder, content.texts.size(), mistakes);
    if (mistakes.empty()) {
        sortByKey(content.faultTypes, 1);
        sortByKey(content.texts, 2);
    }
    return content;
} catch (const fs::filesystem_error& failure) {
    throw UnreadableFile(formatted("{}: cannot be read: {}", folder, failure.code().message()));
}
