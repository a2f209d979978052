#include "InstallCommand.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>

#include "check/FileCheck.h"
#include "commands/findings/LinesWriter.h"
#include "commands/info/InfoJson.h"
#include "commands/info/boundedInfo.h"
#include "commands/info/infoTexts.h"
#include "database/DatabaseErrors.h"
#include "database/replacement/Replacement.h"
#include "output/ProgressLine.h"
#include "text/message.h"

namespace {

namespace fs = std::filesystem;

using Kind = Table::Kind;

/// The file that is replaced.
struct Old {
    bool exists;
    std::optional<FileInfo> info;  ///< nothing if it cannot be read
};

/// Where people are told why a file is refused: as zav check writes it in a pipe.
Output explanations()
{
    return {std::cerr, Terminal{false, Terminal::UNLIMITED, false}};
}

/// @throws UnfitFile, UnreadableFile, after it has said why.
void refuseFindings(const InstallRequest& request, const std::string& copy)
{
    ProgressLine progress("checking");
    CheckOptions options;
    options.onProgress = [&] { progress.show(request.source); };
    const FileCheck check(copy, options);
    progress.clear();

    Output lines = explanations();
    LinesWriter writer(lines, true);
    std::size_t count = 0;
    writer.beginFile(request.source);
    check.run([&](const Finding& finding) {
        if (finding.kind == FindingKind::UNREADABLE) {
            throw UnreadableFile(fmt::format("{}: {}", request.source, finding.what));
        }
        if (infoOf(finding.kind).severity >= request.failOn) {
            writer.add(finding);
            ++count;
        }
    });
    if (count > 0) {
        writer.endFile();
        throw UnfitFile(request.source + ": the findings above refuse it");
    }
}

void refuseOtherContent(const InstallRequest& request, const FileInfo& info)
{
    if (!request.expectedContent.empty() && request.expectedContent != info.content) {
        throw UnfitFile(fmt::format("{}: holds the content {}, not {}", request.source,
                                    info.content, request.expectedContent));
    }
}

void refuseDowngrade(const InstallRequest& request, const FileInfo& newInfo, const Old& old)
{
    if (!request.allowsDowngrade && old.info && newInfo.release < old.info->release) {
        throw UnfitFile(fmt::format(
            "{}: has the release number {}, lower than the {} of {}; --downgrade allows it",
            request.source, newInfo.release, old.info->release, request.target));
    }
}

void refuseSameFile(const InstallRequest& request)
{
    std::error_code error;
    if (fs::equivalent(request.source, request.target, error)) {
        throw RefusedReplacement(
            fmt::format("{} and {} are the same file", request.source, request.target));
    }
}

Old oldOf(Replacement& replacement)
{
    replacement.replaced().settle();
    Old old = {replacement.replaced().exists(), std::nullopt};
    try {
        old.info = old.exists ? std::optional(boundedInfo(replacement.target())) : std::nullopt;
    } catch (const UnreadableFile&) {
        return old;
    }
    return old;
}

void printForPeople(const std::string& target, const Old& old, const FileInfo& newInfo,
                    Output& output)
{
    Table table = {{{"file", Kind::TEXT}}, {{target}}};
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

void print(const InstallRequest& request, const Old& old, const FileInfo& newInfo, Output& output)
{
    if (output.format() == Format::JSON) {
        nlohmann::ordered_json object = {{"file", request.target}};
        object["old"] = old.info ? toJson(*old.info) : nlohmann::ordered_json();
        object["new"] = toJson(newInfo);
        output.printJson(object);
    } else {
        printForPeople(request.target, old, newInfo, output);
    }
}

void install(const InstallRequest& request, Output& output)
{
    refuseSameFile(request);
    Replacement replacement(request.target);
    replacement.copyFrom(request.source);
    refuseFindings(request, replacement.path());
    const FileInfo newInfo = boundedInfo(replacement.path());
    refuseOtherContent(request, newInfo);
    const Old old = oldOf(replacement);
    refuseDowngrade(request, newInfo, old);
    replacement.putInPlace();
    print(request, old, newInfo, output);
}

}  // namespace

ExitStatus runInstall(const InstallRequest& request, Output& output)
{
    const auto refuse = [](const std::exception& refusal, ExitStatus status) {
        printMessage(std::string("not installed: ") + refusal.what());
        return status;
    };
    try {
        install(request, output);
        return ExitStatus::DONE;
    } catch (const UnfitFile& refusal) {
        return refuse(refusal, ExitStatus::NOT_FOUND_OR_FINDINGS);
    } catch (const RefusedReplacement& refusal) {
        return refuse(refusal, ExitStatus::UNREADABLE);
    } catch (const UnreadableFile& refusal) {
        return refuse(refusal, ExitStatus::UNREADABLE);
    }
}
