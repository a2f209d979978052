#include "CheckCommand.h"

#include <algorithm>
#include <memory>

#include "check/FileCheck.h"
#include "commands/findings/CsvWriter.h"
#include "commands/findings/JsonWriter.h"
#include "commands/findings/LinesWriter.h"
#include "commands/findings/SarifWriter.h"
#include "output/ProgressLine.h"

namespace {

std::unique_ptr<FindingWriter> writerFor(const CheckRequest& request, Output& output)
{
    switch (request.format) {
    case CheckFormat::JSON:
        return std::make_unique<JsonWriter>(output);
    case CheckFormat::CSV:
        return std::make_unique<CsvWriter>(output);
    case CheckFormat::SARIF:
        return std::make_unique<SarifWriter>(output, request.files);
    default:
        return std::make_unique<LinesWriter>(output, request.isGrouped);
    }
}

/// No option hides that a file cannot be read at all.
bool isWanted(FindingKind kind, const CheckRequest& request)
{
    const bool isChosen = request.only.empty() || request.only.count(kind) > 0;
    return kind == FindingKind::UNREADABLE || (isChosen && request.ignored.count(kind) == 0);
}

ExitStatus statusOf(const Finding& finding, const CheckRequest& request)
{
    if (finding.kind == FindingKind::UNREADABLE) {
        return ExitStatus::UNREADABLE;
    }
    return infoOf(finding.kind).severity >= request.failOn ? ExitStatus::NOT_FOUND_OR_FINDINGS
                                                           : ExitStatus::DONE;
}

ExitStatus checkFile(const std::string& file, const CheckRequest& request, FindingWriter& writer,
                     ProgressLine& progress)
{
    CheckOptions options;
    options.languages = request.languages;
    options.onProgress = [&] { progress.show(file); };
    const FileCheck check(file, options);

    ExitStatus status = ExitStatus::DONE;
    const auto write = [&](const Finding& finding) {
        if (isWanted(finding.kind, request)) {
            progress.clear();
            writer.add(finding);
            status = std::max(status, statusOf(finding, request));
        }
    };
    writer.beginFile(file);
    if (writer.wantsOrder()) {
        // One after the other rather than all kept and sorted: there may be millions.
        for (const Severity severity : {Severity::ERROR, Severity::WARNING, Severity::NOTE}) {
            check.run([&](const Finding& finding) {
                if (infoOf(finding.kind).severity == severity) {
                    write(finding);
                }
            });
        }
    } else {
        check.run(write);
    }
    progress.clear();
    writer.endFile();
    return status;
}

}  // namespace

ExitStatus runCheck(const CheckRequest& request, Output& output)
{
    const std::unique_ptr<FindingWriter> writer = writerFor(request, output);
    ProgressLine progress("checking");
    ExitStatus status = ExitStatus::DONE;
    writer->begin();
    for (const std::string& file : request.files) {
        status = std::max(status, checkFile(file, request, *writer, progress));
    }
    writer->end();
    return status;
}
