#include "FileInfo.h"

#include <filesystem>
#include <fstream>
#include <set>

#include "ContentHash.h"
#include "LanguageCount.h"
#include "database/DatabaseErrors.h"
#include "database/Journals.h"
#include "database/RawDatabase.h"
#include "database/TableModel.h"
#include "database/stored/valueColumns.h"
#include "text/formatted.h"

namespace {

std::string sqliteVersionIn(const std::string& header)
{
    constexpr std::size_t POSITION = 96;
    constexpr std::size_t LENGTH = 4;
    unsigned number = 0;
    for (const char byte : header.substr(POSITION, LENGTH)) {
        number = number << 8U | static_cast<unsigned char>(byte);
    }
    return number == 0
               ? ""
               : formatted("{}.{}.{}", number / 1000000, number / 1000 % 1000, number % 1000);
}

void readFaultTypes(const RawDatabase& database, ContentHash& hash, LanguageCount& languages,
                    FileInfo& info)
{
    const TableModel table = faultTypeModel();
    database.read(valueQuery(table), [&](const RawRow& row) {
        hash.add(table, row);
        languages.addFaultType(row.cell(0));
        ++info.faultTypes;
    });
}

void readTexts(const RawDatabase& database, ContentHash& hash, LanguageCount& languages,
               FileInfo& info)
{
    const TableModel table = descriptionsModel();
    database.read(valueQuery(table), [&](const RawRow& row) {
        hash.add(table, row);
        languages.addText(row);
        ++info.texts;
    });
}

std::int32_t releaseOf(const RawDatabase& database)
{
    std::int32_t release = 0;
    database.read("PRAGMA user_version", [&](const RawRow& row) {
        release = static_cast<std::int32_t>(std::stol(std::string(row.cell(0).bytes)));
    });
    return release;
}

FileInfo readInfo(const std::string& file, std::optional<std::uint16_t> source)
{
    const std::string header = headerOf(file);
    const RawDatabase database(file);
    FileInfo info = {};
    ContentHash hash;
    LanguageCount languages(source);
    readFaultTypes(database, hash, languages, info);
    readTexts(database, hash, languages, info);
    info.release = releaseOf(database);
    info.content = hash.text();
    info.languages = languages.counts();
    info.isWalMode = saysWalMode(header);
    info.size = std::filesystem::file_size(file);
    info.sqliteVersion = sqliteVersionIn(header);
    return info;
}

}  // namespace

FileInfo fileInfo(const std::string& file, std::optional<std::uint16_t> source)
{
    try {
        return readInfo(file, source);
    } catch (const FailedQuery& failure) {
        throw UnreadableFile(formatted("{}: cannot be read: {}", file, failure.what()));
    }
}
