#include "ExportCommand.h"

#include <filesystem>
#include <set>

#include "commands/exchange/NewFiles.h"
#include "commands/exchange/SourceTable.h"
#include "commands/exchange/rowObstacles.h"
#include "commands/exchange/writeSources.h"
#include "database/DatabaseErrors.h"
#include "database/stored/StoredFile.h"
#include "text/formatted.h"
#include "text/message.h"

namespace {

namespace fs = std::filesystem;

/// A file of texts that is there already, and would stay, is of a language that is gone.
std::vector<std::string> folderObstacles(const std::string& folder,
                                         const std::map<std::string, std::string>& files)
{
    std::vector<std::string> obstacles;
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
    return obstacles;
}

std::map<std::string, std::string> faultlessSources(const Database& database,
                                                    const ExportRequest& request)
{
    const StoredFile content = readStored(database);
    refuseObstacles(database.file(), fileObstacles(database, content, request.dropsOwn));
    std::map<std::string, std::string> files = sourcesOf(content);
    refuseObstacles(database.file(), folderObstacles(request.folder, files));
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
try {
    write(faultlessSources(database, request), request.folder, output);
    return ExitStatus::DONE;
} catch (const UnfitFile& unfit) {
    printMessage(formatted("not exported: {}", unfit.what()));
    return ExitStatus::NOT_FOUND_OR_FINDINGS;
}
