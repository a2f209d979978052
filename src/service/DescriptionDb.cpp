#include "zav/DescriptionDb.h"

#include <cstddef>
#include <string>

#include "../sqlite/logLine.h"
#include "tables.h"

namespace {

std::string selectAll(const std::string& tableName)
{
    return std::string("SELECT * FROM \"").append(tableName).append("\"");
}

/// Name of a column by its position in the current list, which earlier queries may have reordered
/// or shortened. Past its end the name is empty, which makes SQLite refuse the statement.
template <class Record>
const char* columnName(const SqlTbl<Record>& table, std::size_t position)
{
    return position < table.columns.size() ? table.columns[position].name.c_str() : "";
}

std::string selectWhere(const std::string& tableName, const char* column, const char* comparison,
                        unsigned int number)
{
    std::string query = selectAll(tableName);
    query.append(" WHERE ").append(column).append(comparison);
    query.append(sqlTblUtil::numberText(number));
    return query;
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
                           std::string("FAiled to open=").append(dbFile));
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
    return sqliteDb.getTbl(selectAll(m_faultTypeDefTbl.tableName), faultTypeDefs,
                           &m_faultTypeDefTbl);
}

int DescriptionDb::getFaultTypeDef(unsigned short faultCode, FaultTypeDef& faultTypeDef)
{
    const std::string query =
        selectWhere(m_faultTypeDefTbl.tableName, columnName(m_faultTypeDefTbl, 0),
                    tables::COMPARES_CODE, faultCode);
    std::vector<FaultTypeDef> found;
    const int count = sqliteDb.getTbl(query, found, &m_faultTypeDefTbl);
    if (count != 1) {
        return -1;
    }
    faultTypeDef = found.front();
    return 0;
}

int DescriptionDb::getDescriptionsTbl(std::vector<Descriptions>& descriptions)
{
    return sqliteDb.getTbl(selectAll(m_descriptionsTbl.tableName), descriptions,
                           &m_descriptionsTbl);
}

int DescriptionDb::getDescriptionsByFC(unsigned int faultCode,
                                       std::vector<Descriptions>& descriptions)
{
    const std::string query =
        selectWhere(m_descriptionsTbl.tableName, columnName(m_descriptionsTbl, 1),
                    tables::COMPARES_FAULT_TYPE, faultCode);
    return sqliteDb.getTbl(query, descriptions, &m_descriptionsTbl);
}
