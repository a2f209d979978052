#include "ExportCommand.h"

#include <filesystem>
#include <iostream>
#include <set>

#include "commands/exchange/NewFiles.h"
#include "commands/exchange/SourceKeys.h"
#include "commands/exchange/SourceTable.h"
#include "commands/exchange/writeSources.h"
#include "database/DatabaseErrors.h"
#include "database/stored/StoredFile.h"
#include "database/stored/ownParts.h"
#include "text/TextWidth.h"
#include "text/counted.h"
#include "text/formatted.h"
#include "text/message.h"

namespace {

namespace fs = std::filesystem;

/// Why a file cannot be written as sources, a line each.
using Obstacles = std::vector<std::string>;

std::string cellForMessage(const RawCell& cell)
{
    return cell.isNull() ? "NULL" : cell.bytes;
}

std::string placeOf(const StoredRow& row, bool isText)
{
    const std::string faultType = "fault type " + cellForMessage(row[StoredFile::CODE]);
    return isText ? formatted("text of {}, language {}", faultType,
                              cellForMessage(row[StoredFile::LANGUAGE]))
                  : faultType;
}

/// @return whether the row has a code that can travel.
bool addCellObstacles(const StoredRow& row, const SourceTable& table, const std::string& place,
                      Obstacles& obstacles)
{
    for (const SourceTable::Column& column : table.columns) {
        const std::string mistake = mistakeIn(row[column.position], column);
        if (!mistake.empty()) {
            obstacles.push_back(formatted("{}, {}: {}", place, column.name, mistake));
        }
    }
    return mistakeIn(row[StoredFile::CODE], table.columns.front()).empty();
}

void addRowObstacles(const StoredFile& content, Obstacles& obstacles)
{
    const SourceTable faultTypes = SourceTable::ofFaultTypes();
    const SourceTable texts = SourceTable::ofTexts();
    const SourceTable::Column language = {"language", FieldKind::NUMBER_16, StoredFile::CODE};
    SourceKeys keys;
    const auto add = [&](const std::string& place, const std::string& mistake) {
        if (!mistake.empty()) {
            obstacles.push_back(formatted("{}: {}", place, mistake));
        }
    };
    for (const StoredRow& row : content.faultTypes) {
        const std::string place = placeOf(row, false);
        if (addCellObstacles(row, faultTypes, place, obstacles)) {
            add(place, keys.addFaultType(shortNumber(row[StoredFile::CODE])));
        }
    }
    for (const StoredRow& row : content.texts) {
        const std::string place = placeOf(row, true);
        const std::string mistake = mistakeIn(row[StoredFile::LANGUAGE], language);
        if (!mistake.empty()) {
            add(place, row[StoredFile::LANGUAGE].isNull() ? "the language is missing" : mistake);
        } else if (addCellObstacles(row, texts, place, obstacles)) {
            add(place, keys.addText(shortNumber(row[StoredFile::CODE]),
                                    shortNumber(row[StoredFile::LANGUAGE])));
        }
    }
}

/// A file of texts that is there already, and would stay, is of a language that is gone.
void addFolderObstacles(const std::string& folder, const std::map<std::string, std::string>& files,
                        Obstacles& obstacles)
{
    std::set<std::string> odd;
    std::error_code none;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, none)) {
        const std::string name = entry.path().filename().string();
        if (isLikeTextsFile(name) && files.count(name) == 0) {
            odd.insert(entry.path().string());
        }
    }
    for (const std::string& file : odd) {
        obstacles.push_back(file + ": the database has no such language; remove it");
    }
}

std::map<std::string, std::string> sourcesWithout(Obstacles& obstacles, const Database& database,
                                                  const ExportRequest& request)
{
    if (!request.dropsOwn) {
        for (const std::string& part : ownParts(database)) {
            obstacles.push_back(part + " is your own; --drop-own leaves it out");
        }
    }
    const StoredFile content = readStored(database);
    addRowObstacles(content, obstacles);
    if (!obstacles.empty()) {
        return {};
    }
    const std::map<std::string, std::string> files = sourcesOf(content);
    addFolderObstacles(request.folder, files, obstacles);
    return files;
}

void write(const std::map<std::string, std::string>& files, const std::string& folder,
           Output& output)
{
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        throw UnreadableFile(formatted("{}: cannot be made: {}", folder, error.message()));
    }
    Table table = {{{"file", Table::Kind::TEXT}, {"size", Table::Kind::NUMBER}}, {}};
    NewFiles newFiles;
    for (const auto& [name, content] : files) {
        newFiles.add(fs::path(folder) / name, content);
        table.rows.push_back({(fs::path(folder) / name).string(), std::uint64_t{content.size()}});
    }
    newFiles.putInPlace();
    output.print(table);
}

}  // namespace

ExitStatus runExport(const Database& database, const ExportRequest& request, Output& output)
{
    Obstacles obstacles;
    const std::map<std::string, std::string> files = sourcesWithout(obstacles, database, request);
    for (const std::string& obstacle : obstacles) {
        std::cerr << printableLine(formatted("{}: {}", database.file(), obstacle)) << '\n';
    }
    if (!obstacles.empty()) {
        printMessage(formatted("not exported: {}: {} cannot travel", database.file(),
                               counted(obstacles.size(), "thing")));
        return ExitStatus::NOT_FOUND_OR_FINDINGS;
    }
    write(files, request.folder, output);
    return ExitStatus::DONE;
}
