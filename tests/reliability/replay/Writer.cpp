#include "Writer.h"

#include <algorithm>
#include <stdexcept>

#include "Reading.h"
#include "RecordingVfs.h"
#include "databaseName.h"
#include "support/TempDir.h"
#include "support/database.h"

namespace {

constexpr const char* ROWS =
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20)"
    "INSERT INTO fault_type_definition SELECT i, 'generation 0', 'error', i, 1 FROM n;"
    "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 60)"
    "INSERT INTO descriptions "
    "SELECT i, i % 5, 1, 'generation 0', 'short', 'long', '', hex(zeroblob(200)) FROM n;";

/// @return an update that writes the generation into each row, and so into each index entry.
std::string updateAll(int generation, int textLength)
{
    const std::string g = std::to_string(generation);
    return "UPDATE fault_type_definition SET alias = 'generation " + g + "', bug = bug + 1;" +
           "UPDATE descriptions SET name = 'generation " + g + "', id_fault_type = (id + " + g +
           ") % 5, remedy = hex(zeroblob(" + std::to_string(textLength / 2) + "));";
}

std::string updateSome(int generation)
{
    return "UPDATE fault_type_definition SET alias = 'generation " + std::to_string(generation) +
           "'";
}

/// One run of a writer on a file of its own.
class Run {
public:
    explicit Run(const Writer& writer) : m_setUp(writer) { makeFile(); }

    Recording record()
    {
        m_recording.start = imageOf(m_dir.path());
        m_text = readThroughSqlite(m_file).text;
        const RecordingVfs vfs;
        m_operations = &vfs.operations();
        changeGenerations();
        m_recording.operations = vfs.operations();
        return m_recording;
    }

private:
    void makeFile()
    {
        OpenFile file(m_file);
        file.run("PRAGMA page_size=" + std::to_string(m_setUp.pageSize) +
                 ";PRAGMA auto_vacuum=" + m_setUp.autoVacuum + ";BEGIN;" + schemaSql() + ROWS +
                 "COMMIT;PRAGMA journal_mode=" + m_setUp.journalMode);
    }

    void changeGenerations()
    {
        OpenFile writer(m_file);
        writer.run("PRAGMA journal_mode=" + m_setUp.journalMode + ";PRAGMA synchronous=" +
                   m_setUp.synchronous + ";PRAGMA cache_size=4;PRAGMA wal_autocheckpoint=60");
        runLarge(writer, updateAll(1, 900), "COMMIT");
        run(writer, updateSome(2), "COMMIT");
        runLarge(writer, updateAll(3, 1300), "ROLLBACK");
        runLarge(writer, updateAll(4, 300), "COMMIT");
        run(writer, updateSome(5), "COMMIT");
    }

    void run(OpenFile& writer, const std::string& update, const std::string& end)
    {
        finish(writer, begin(writer, update), end);
    }

    void runLarge(OpenFile& writer, const std::string& update, const std::string& end)
    {
        const std::size_t begun = begin(writer, update);
        if (!hasSpilled(begun)) {
            throw std::logic_error("the transaction fits the writer's page cache");
        }
        finish(writer, begun, end);
    }

    std::size_t begin(OpenFile& writer, const std::string& update) const
    {
        const std::size_t before = m_operations->size();
        writer.run("BEGIN IMMEDIATE;" + update);
        return before;
    }

    void finish(OpenFile& writer, std::size_t begun, const std::string& end)
    {
        writer.run(end);
        const std::size_t over = m_operations->size();
        const std::string text = readThroughSqlite(m_file).text;
        m_recording.transactions.push_back({begun, over, m_text, text});
        m_text = text;
    }

    /// @return whether pages have gone to the database or its log since then.
    bool hasSpilled(std::size_t begun) const
    {
        const auto isPage = [](const Operation& operation) {
            return operation.kind == Operation::Kind::WRITE &&
                   operation.file.find("-journal") == std::string::npos;
        };
        return std::any_of(m_operations->begin() + static_cast<std::ptrdiff_t>(begun),
                           m_operations->end(), isPage);
    }

    const Writer& m_setUp;
    TempDir m_dir;
    const std::string m_file = m_dir.file(DATABASE_NAME);
    std::string m_text;
    Recording m_recording;
    const std::vector<Operation>* m_operations = nullptr;
};

}  // namespace

std::string Writer::name() const
{
    return journalMode + ", synchronous=" + synchronous + ", pages of " + std::to_string(pageSize) +
           " bytes, auto_vacuum=" + autoVacuum;
}

Recording Writer::record() const
{
    return Run(*this).record();
}

std::vector<Writer> allWriters(const std::string& synchronous)
{
    std::vector<Writer> writers;
    for (const char* journalMode : {"DELETE", "TRUNCATE", "PERSIST", "WAL"}) {
        writers.push_back({journalMode, synchronous, 1024, "FULL"});
        writers.push_back({journalMode, synchronous, 4096, "NONE"});
    }
    return writers;
}
