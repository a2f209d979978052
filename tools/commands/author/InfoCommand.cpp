#include "InfoCommand.h"

#include <functional>
#include <nlohmann/json.hpp>

#include "commands/info/InfoJson.h"
#include "commands/info/boundedInfo.h"
#include "commands/info/infoTexts.h"
#include "database/DatabaseErrors.h"
#include "output/JsonList.h"
#include "text/formatted.h"
#include "text/message.h"

namespace {

using Kind = Table::Kind;
using Print = std::function<void(const std::string& file, const FileInfo& info)>;

/// Goes on with the next file where one cannot be read.
ExitStatus forEachFile(const InfoRequest& request, const Print& print)
{
    ExitStatus status = ExitStatus::DONE;
    for (const std::string& file : request.files) {
        try {
            print(file, boundedInfo(file, request.source));
        } catch (const UnreadableFile& failure) {
            printMessage(failure.what());
            status = ExitStatus::UNREADABLE;
        }
    }
    return status;
}

Table recordOf(const std::string& file, const FileInfo& info)
{
    Table table = {{{"file", Kind::TEXT}}, {{file}}};
    for (const InfoText& text : infoTexts(info)) {
        table.columns.push_back({text.name, Kind::TEXT});
        table.rows.front().emplace_back(text.value);
    }
    return table;
}

Table::Cell numberOrNothing(std::optional<std::size_t> number)
{
    return number ? Table::Cell(static_cast<std::uint64_t>(*number)) : Table::Cell("");
}

Table languagesOf(const FileInfo& info, std::optional<std::uint16_t> source)
{
    Table table = {
        {{"language", Kind::NUMBER}, {"with_text", Kind::NUMBER}, {"without_text", Kind::NUMBER}},
        {}};
    if (source) {
        table.columns.push_back({formatted("same_as_{}", *source), Kind::NUMBER});
    }
    for (const LanguageInfo& language : info.languages) {
        Table::Row& row = table.rows.emplace_back();
        row.emplace_back(std::uint64_t{language.language});
        row.emplace_back(std::uint64_t{language.withText});
        row.emplace_back(std::uint64_t{language.withoutText});
        if (source) {
            row.push_back(numberOrNothing(language.sameAsSource));
        }
    }
    return table;
}

ExitStatus printForPeople(const InfoRequest& request, Output& output)
{
    bool isFirst = true;
    return forEachFile(request, [&](const std::string& file, const FileInfo& info) {
        output.printText(isFirst ? "" : "\n");
        isFirst = false;
        output.printRecords(recordOf(file, info));
        if (!info.languages.empty()) {
            output.printText("\n");
            output.print(languagesOf(info, request.source));
        }
    });
}

ExitStatus printJson(const InfoRequest& request, Output& output)
{
    JsonList list(output);
    const ExitStatus status =
        forEachFile(request, [&](const std::string& file, const FileInfo& info) {
            nlohmann::ordered_json object = {{"file", file}};
            object.update(toJson(info));
            list.add(object);
        });
    list.end();
    return status;
}

/// A line for each language of a file, or one without a language.
ExitStatus printCsv(const InfoRequest& request, Output& output)
{
    output.printCsvLine({"file", "release", "content", "fault_types", "texts", "journal_mode",
                         "size", "sqlite_version", "language", "with_text", "without_text",
                         "same_as_source"});
    return forEachFile(request, [&](const std::string& file, const FileInfo& info) {
        const std::vector<std::string> common = {file,
                                                 std::to_string(info.release),
                                                 info.content,
                                                 std::to_string(info.faultTypes),
                                                 std::to_string(info.texts),
                                                 journalModeOf(info),
                                                 std::to_string(info.size),
                                                 info.sqliteVersion};
        const auto print = [&](const std::vector<std::string>& cells) {
            std::vector<std::string> line = common;
            line.insert(line.end(), cells.begin(), cells.end());
            output.printCsvLine(line);
        };
        for (const LanguageInfo& language : info.languages) {
            print({std::to_string(language.language), std::to_string(language.withText),
                   std::to_string(language.withoutText),
                   language.sameAsSource ? std::to_string(*language.sameAsSource) : ""});
        }
        if (info.languages.empty()) {
            print({"", "", "", ""});
        }
    });
}

}  // namespace

ExitStatus runInfo(const InfoRequest& request, Output& output)
{
    switch (output.format()) {
    case Format::JSON:
        return printJson(request, output);
    case Format::CSV:
        return printCsv(request, output);
    default:
        return printForPeople(request, output);
    }
}
