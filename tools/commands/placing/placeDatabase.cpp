#include "placeDatabase.h"

#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

#include "check/FileCheck.h"
#include "commands/findings/LinesWriter.h"
#include "commands/info/InfoJson.h"
#include "commands/info/boundedInfo.h"
#include "commands/info/infoTexts.h"
#include "database/DatabaseErrors.h"
#include "output/ProgressLine.h"
#include "text/formatted.h"
#include "text/message.h"

namespace {

using Kind = Table::Kind;

/// Where people are told why a file is refused: as zav check writes it in a pipe.
Output explanations()
{
    return {std::cerr, Terminal{false, Terminal::UNLIMITED, false}};
}

/// @throws UnfitFile, UnreadableFile, after it has said why.
FileInfo checkedInfo(const Placing& placing, const std::string& newFile)
{
    ProgressLine progress("checking");
    CheckOptions options;
    options.onProgress = [&] { progress.show(placing.name); };
    const FileCheck check(newFile, options);
    progress.clear();
    BoundedInfo info(newFile);  // reads while the findings are looked for

    Output lines = explanations();
    LinesWriter writer(lines, true);
    std::size_t shown = 0;
    std::size_t refusing = 0;
    writer.beginFile(placing.name);
    check.run([&](const Finding& finding) {
        const Severity severity = infoOf(finding.kind).severity;
        if (finding.kind == FindingKind::UNREADABLE) {
            throw UnreadableFile(formatted("{}: {}", placing.name, finding.what));
        }
        if (severity >= std::min(placing.failOn, placing.showFrom)) {
            writer.add(finding);
            ++shown;
            refusing += severity >= placing.failOn ? 1U : 0U;
        }
    });
    if (shown > 0) {
        writer.endFile();
    }
    if (refusing > 0) {
        throw UnfitFile(placing.name + ": the findings above refuse it");
    }
    return info.take();
}

OldDatabase oldOf(Replacement& replacement)
{
    replacement.replaced().settle();
    OldDatabase old = {replacement.replaced().exists(), std::nullopt};
    try {
        old.info = old.exists ? std::optional(boundedInfo(replacement.target())) : std::nullopt;
    } catch (const UnreadableFile&) {
        return old;
    }
    return old;
}

void printForPeople(const Placing& placing, const OldDatabase& old, const FileInfo& newInfo,
                    Output& output)
{
    Table table = {{{"file", Kind::TEXT}}, {{placing.target}}};
    for (const auto& [name, count] : placing.counts()) {
        table.columns.push_back({name, Kind::NUMBER});
        table.rows.front().emplace_back(count);
    }
    const std::vector<InfoText> texts = infoTexts(newInfo);
    const std::vector<InfoText> oldTexts =
        old.info ? infoTexts(*old.info) : std::vector<InfoText>();
    const std::string withoutInfo = old.exists ? "unreadable" : "none";
    for (std::size_t i = 0; i < texts.size(); ++i) {
        table.columns.push_back({texts[i].name, Kind::TEXT});
        const std::string before = old.info ? oldTexts[i].value : withoutInfo;
        table.rows.front().emplace_back(before + " -> " + texts[i].value);
    }
    output.printRecords(table);
}

void print(const Placing& placing, const OldDatabase& old, const FileInfo& newInfo, Output& output)
{
    if (output.format() == Format::JSON) {
        nlohmann::ordered_json object = {{"file", placing.target}};
        for (const auto& [name, count] : placing.counts()) {
            object[name] = count;
        }
        object["old"] = old.info ? toJson(*old.info) : nlohmann::ordered_json();
        object["new"] = toJson(newInfo);
        output.printJson(object);
    } else {
        printForPeople(placing, old, newInfo, output);
    }
}

void place(const Placing& placing, Output& output)
{
    placing.prepare();
    Replacement replacement(placing.target);
    placing.fill(replacement);
    const FileInfo newInfo = checkedInfo(placing, replacement.path());
    placing.judge(newInfo);
    const OldDatabase old = oldOf(replacement);
    placing.compare(newInfo, old);
    replacement.putInPlace();
    print(placing, old, newInfo, output);
}

}  // namespace

ExitStatus placeDatabase(const Placing& placing, Output& output)
{
    const auto refuse = [&](const std::exception& refusal, ExitStatus status) {
        printMessage(formatted("{}: {}", placing.refusal, refusal.what()));
        return status;
    };
    try {
        place(placing, output);
        return ExitStatus::DONE;
    } catch (const UnfitFile& refusal) {
        return refuse(refusal, ExitStatus::NOT_FOUND_OR_FINDINGS);
    } catch (const RefusedReplacement& refusal) {
        return refuse(refusal, ExitStatus::UNREADABLE);
    } catch (const UnreadableFile& refusal) {
        return refuse(refusal, ExitStatus::UNREADABLE);
    }
}

void refuseExisting(Replacement& replacement, const Placing& placing, bool isForced)
{
    if (replacement.replaced().exists() && !isForced) {
        throw RefusedReplacement(placing.target + ": is there already; --force replaces it");
    }
}
