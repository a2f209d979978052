#include "rowObstacles.h"

#include <iostream>

#include "SourceKeys.h"
#include "SourceTable.h"
#include "database/DatabaseErrors.h"
#include "database/stored/ownParts.h"
#include "text/TextWidth.h"
#include "text/counted.h"
#include "text/formatted.h"

namespace {

std::string shown(const RawCell& cell)
{
    return cell.isNull() ? "NULL" : cell.bytes;
}

std::string placeOf(const StoredRow& row, bool isText)
{
    const std::string faultType = "fault type " + shown(row[StoredFile::CODE]);
    return isText
               ? formatted("text of {}, language {}", faultType, shown(row[StoredFile::LANGUAGE]))
               : faultType;
}

/// @return whether the row has a code that can travel.
bool addCellObstacles(const StoredRow& row, const SourceTable& table, const std::string& place,
                      std::vector<std::string>& obstacles)
{
    for (const SourceTable::Column& column : table.columns) {
        const std::string mistake = mistakeIn(row[column.position], column);
        if (!mistake.empty()) {
            obstacles.push_back(formatted("{}, {}: {}", place, column.name, mistake));
        }
    }
    return mistakeIn(row[StoredFile::CODE], table.columns.front()).empty();
}

}  // namespace

std::vector<std::string> rowObstacles(const StoredFile& content)
{
    std::vector<std::string> obstacles;
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
    return obstacles;
}

std::vector<std::string> fileObstacles(const Database& database, const StoredFile& content,
                                       bool dropsOwn)
{
    std::vector<std::string> obstacles;
    for (const std::string& part : dropsOwn ? std::vector<std::string>() : ownParts(database)) {
        obstacles.push_back(part + " is your own; --drop-own leaves it out");
    }
    const std::vector<std::string> ofRows = rowObstacles(content);
    obstacles.insert(obstacles.end(), ofRows.begin(), ofRows.end());
    return obstacles;
}

void refuseObstacles(const std::string& file, const std::vector<std::string>& obstacles)
{
    for (const std::string& obstacle : obstacles) {
        std::cerr << printableLine(formatted("{}: {}", file, obstacle)) << '\n';
    }
    if (!obstacles.empty()) {
        throw UnfitFile(
            formatted("{}: {} cannot travel", file, counted(obstacles.size(), "thing")));
    }
}
