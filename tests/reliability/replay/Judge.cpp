#include "Judge.h"

#include "RecordingVfs.h"
#include "databaseName.h"

Judge::Verdict Judge::examine(const Image& image, const std::set<std::string>& legal) const
{
    const std::string plainFolder = m_dir.file("plain");
    lay(image, plainFolder);
    const Reading plain = readThroughSqlite(plainFolder + "/" + DATABASE_NAME);

    const std::string folder = m_dir.file("tested");
    lay(image, folder);
    Reading read;
    Verdict verdict;
    {
        const RecordingVfs vfs;
        read = m_reader(folder + "/" + DATABASE_NAME);
        verdict.recovery.operations = vfs.operations();
    }
    verdict.recovery.start = image;
    verdict.recovery.transactions = {{0, verdict.recovery.operations.size(), read.text, read.text}};
    verdict.fault = faultOf(read, plain, legal);
    if (verdict.fault.empty() && !isSound(folder + "/" + DATABASE_NAME)) {
        verdict.fault = "the file is damaged afterwards";
    }
    return verdict;
}

std::string Judge::faultOf(const Reading& read, const Reading& plain,
                           const std::set<std::string>& legal) const
{
    if (!read.hasSucceeded) {
        return (plain.hasSucceeded ? "refused, unlike by SQLite: " : "refused, by SQLite too: ") +
               read.text;
    }
    if (!(read == plain)) {
        return "read otherwise than by SQLite";
    }
    return legal.count(read.text) == 0 ? "neither the state before nor the one after" : "";
}
