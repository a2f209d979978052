#include "Database.h"

#include "DatabaseErrors.h"
#include "LibraryLines.h"
#include "LibraryTable.h"
#include "TableModel.h"
#include "text/formatted.h"

Database::Database(const std::string& file, int debugLevel)
    : m_file(file), m_journals(journalsOf(file)), m_service(DescriptionDb::getInstance())
{
    m_service->setDbgLevel(debugLevel);
    if (m_service->openDb(file, true) != 0) {
        throw UnreadableFile(
            formatted("{}: cannot be opened: {}", file, DescriptionDb::sqliteDb.lastErrorText()));
    }
}

Database::~Database()
{
    m_service->closeDb();
}

std::vector<FaultTypeDef> Database::faultTypes()
{
    std::vector<FaultTypeDef> records;
    throwIfFailed(m_service->getFaultTypeDefTbl(records));
    return records;
}

std::optional<FaultTypeDef> Database::faultType(std::uint16_t code)
{
    FaultTypeDef record;
    if (m_service->getFaultTypeDef(code, record) == 0) {
        return record;
    }
    const int count = faultTypesWith(code);
    throwIfFailed(count);
    if (count > 0) {
        throw AmbiguousCode(formatted("{}: {} fault types have the code {}", m_file, count, code));
    }
    return std::nullopt;
}

/// The lookup tells neither no match from several nor either from a failure. Asks again, the same
/// question but for its answer, and without the library's line on a failure, which is out already.
int Database::faultTypesWith(std::uint16_t code)
{
    const LibrarySilence silence;
    LibraryTable<FaultTypeDef> table;
    std::vector<FaultTypeDef> found;
    return DescriptionDb::sqliteDb.getTbl(faultTypeModel().lookupOf(std::to_string(code)), found,
                                          &table);
}

std::vector<Descriptions> Database::texts()
{
    std::vector<Descriptions> records;
    throwIfFailed(m_service->getDescriptionsTbl(records));
    return records;
}

std::vector<Descriptions> Database::textsOf(std::uint32_t code)
{
    std::vector<Descriptions> records;
    throwIfFailed(m_service->getDescriptionsByFC(code, records));
    return records;
}

void Database::throwIfFailed(int result) const
{
    if (result < 0) {
        throw UnreadableFile(
            formatted("{}: cannot be read: {}", m_file, LibraryLines::lastFailure()));
    }
}
