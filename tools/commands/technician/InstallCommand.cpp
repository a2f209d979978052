#include "InstallCommand.h"

#include <filesystem>

#include "commands/placing/placeDatabase.h"
#include "database/DatabaseErrors.h"
#include "text/formatted.h"

namespace {

namespace fs = std::filesystem;

void refuseOtherContent(const InstallRequest& request, const FileInfo& info)
{
    if (!request.expectedContent.empty() && request.expectedContent != info.content) {
        throw UnfitFile(formatted("{}: holds the content {}, not {}", request.source, info.content,
                                  request.expectedContent));
    }
}

void refuseDowngrade(const InstallRequest& request, const FileInfo& newInfo, const OldDatabase& old)
{
    if (!request.allowsDowngrade && old.info && newInfo.release < old.info->release) {
        throw UnfitFile(formatted(
            "{}: has the release number {}, lower than the {} of {}; --downgrade allows it",
            request.source, newInfo.release, old.info->release, request.target));
    }
}

void refuseSameFile(const InstallRequest& request)
{
    std::error_code error;
    if (fs::equivalent(request.source, request.target, error)) {
        throw RefusedReplacement(
            formatted("{} and {} are the same file", request.source, request.target));
    }
}

}  // namespace

ExitStatus runInstall(const InstallRequest& request, Output& output)
{
    Placing placing;
    placing.target = request.target;
    placing.name = request.source;
    placing.refusal = "not installed";
    placing.failOn = request.failOn;
    placing.prepare = [&] { refuseSameFile(request); };
    placing.fill = [&](Replacement& replacement) { replacement.copyFrom(request.source); };
    placing.judge = [&](const FileInfo& newInfo) { refuseOtherContent(request, newInfo); };
    placing.compare = [&](const FileInfo& newInfo, const OldDatabase& old) {
        refuseDowngrade(request, newInfo, old);
    };
    return placeDatabase(placing, output);
}
