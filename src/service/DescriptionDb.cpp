#include "zav/DescriptionDb.h"

#include <cstddef>
#include <sstream>

#include "../sqlite/logLine.h"
#include "tables.h"

namespace {

template <class Record>
std::string selectAll(const SqlTbl<Record>& table)
{
    return "SELECT * FROM \"" + table.tableName + "\"";
}

/// Name of a column by its position in the current list, which earlier queries may have reordered
/// or shortened. Past its end the name is empty, which makes SQLite refuse the statement.
template <class Record>
std::string columnName(const SqlTbl<Record>& table, std::size_t position)
{
    return position < table.columns.size() ? table.columns[position].name : "";
}

}  // namespace

/// Destroys the instance at exit: its own destruction is registered by the first getInstance(),
/// later than the connection's, and so comes before it.
class DescriptionDb::Monitor {
public:
    ~Monitor() { delete m_pInstance; }
};

int DescriptionDb::m_Debug = 1;
Sqlite3Db DescriptionDb::sqliteDb(static_cast<std::uint32_t>(m_Debug));
DescriptionDb* DescriptionDb::m_pInstance = nullptr;

DescriptionDb::DescriptionDb()
    : m_faultTypeDefTbl(tables::FAULT_TYPE_DEFINITION), m_descriptionsTbl(tables::DESCRIPTIONS)
{
}

DescriptionDb::~DescriptionDb() = default;

DescriptionDb* DescriptionDb::getInstance()
{
    static Monitor monitor;
    if (m_pInstance == nullptr) {
        m_pInstance = new DescriptionDb;
    }
    return m_pInstance;
}

int DescriptionDb::openDb(const std::string& dbFile, bool /*ignored*/)
{
    if (m_bOpen) {
        return -1;
    }
    if (m_Debug >= 2) {
        LogUtil::writeLine(LogUtil::DEBUG_PREFIX, LogUtil::SERVICE_TAG, "openDb", dbFile);
    }
    if (sqliteDb.openDb(dbFile, true) < 0) {
        LogUtil::writeLine(LogUtil::ERROR_PREFIX, LogUtil::SERVICE_TAG, "openDb",
                           "FAiled to open=", dbFile);
        return -2;
    }
    m_bOpen = true;
    if (m_Debug >= 1) {
        LogUtil::writeLine(LogUtil::DEBUG_PREFIX, LogUtil::SERVICE_TAG, "openDb", "OK");
    }
    return 0;
}

int DescriptionDb::closeDb()
{
    if (!m_bOpen || sqliteDb.closeDb() != 0) {
        return -1;
    }
    m_bOpen = false;
    return 0;
}

void DescriptionDb::setDbgLevel(int level)
{
    m_Debug = level;
    if (level > 1) {
        sqliteDb.m_dbgLevel = 1;
    }
}

int DescriptionDb::getFaultTypeDefTbl(std::vector<FaultTypeDef>& faultTypeDefs)
{
    return sqliteDb.getTbl(selectAll(m_faultTypeDefTbl), faultTypeDefs, &m_faultTypeDefTbl);
}

int DescriptionDb::getFaultTypeDef(unsigned short faultCode, FaultTypeDef& faultTypeDef)
{
    std::ostringstream query;
    query << selectAll(m_faultTypeDefTbl) << " WHERE " << columnName(m_faultTypeDefTbl, 0)
          << tables::COMPARES_CODE << static_cast<unsigned long>(faultCode);
    std::vector<FaultTypeDef> found;
    const int count = sqliteDb.getTbl(query.str(), found, &m_faultTypeDefTbl);
    if (count != 1) {
        return -1;
    }
    faultTypeDef = found.front();
    return 0;
}

int DescriptionDb::getDescriptionsTbl(std::vector<Descriptions>& descriptions)
{
    return sqliteDb.getTbl(selectAll(m_descriptionsTbl), descriptions, &m_descriptionsTbl);
}

int DescriptionDb::getDescriptionsByFC(unsigned int faultCode,
                                       std::vector<Descriptions>& descriptions)
{
    std::ostringstream query;
    query << selectAll(m_descriptionsTbl) << " WHERE " << columnName(m_descriptionsTbl, 1)
          << tables::COMPARES_FAULT_TYPE << std::dec << static_cast<unsigned long>(faultCode);
    return sqliteDb.getTbl(query.str(), descriptions, &m_descriptionsTbl);
}
