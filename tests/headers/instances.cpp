// Every template of the public headers, instantiated whole for types of an application.

#include <zav/DescriptionDb.h>
#include <zav/LogUtil.h>
#include <zav/SqlTbl.h>
#include <zav/Sqlite3Db.h>
#include <zav/sqlTblUtil.h>

struct OwnRecord {
    unsigned long number;
};

struct OwnElement {
    explicit OwnElement(const OwnRecord& record) : number(record.number) {}
    unsigned long number;
};

template class SqlTbl<OwnRecord>;
template int Sqlite3Db::getTbl<OwnRecord, OwnRecord>(const std::string& query,
                                                     std::vector<OwnRecord>& records,
                                                     SqlTbl<OwnRecord>* table);
template int Sqlite3Db::getTbl<OwnElement, OwnRecord>(const std::string& query,
                                                      std::vector<OwnElement>& records,
                                                      SqlTbl<OwnRecord>* table);
template int sqlTblUtil::setValueFromSqlResult<unsigned long>(char** cell, unsigned long* value);
template int sqlTblUtil::setValueFromSqlResult<double>(char** cell, double* value);
