#pragma once

#include <string>
#include <vector>

#include "zav/Descriptions.h"
#include "zav/FaultTypeDef.h"
#include "zav/Sqlite3Db.h"
#include "zav/ZavSqlDescriptionsTbl.h"
#include "zav/ZavSqlFaultTypeDefTbl.h"
#include "zav/export.h"

/// Read access to a database of fault definitions; one per process.
///
/// Expected order: getInstance(), setDbgLevel() if wanted, openDb(), any number of queries,
/// closeDb(). The application owns every vector and record that it passes in.
///
/// The numeric part of the global C++ locale must not group digits: the lookups would send "4.711"
/// for 4711.
///
/// @note Not locked: the application makes the first getInstance() from one thread and serialises
///       its calls into the service.
class ZAV_EXPORT DescriptionDb {
public:
    DescriptionDb(const DescriptionDb&) = delete;
    DescriptionDb& operator=(const DescriptionDb&) = delete;

    /// @return the one instance, made by the first call; owned by the library, which destroys it at
    ///         exit. The same pointer on every call.
    /// @throws std::bad_alloc if the instance cannot be made; a later call tries again.
    static DescriptionDb* getInstance();

    /// Opens a database file, read-only. Nothing is created. A file that is damaged, or no database
    /// at all, opens: its queries fail. What a writer that died has half done is rolled back first;
    /// see Sqlite3Db::openDb().
    ///
    /// Writes `[DEBUG] ZAV::openDb() <path>` before opening from level 2 up,
    /// `[DEBUG] ZAV::openDb() OK` after success from level 1 up, and
    /// `[ERROR] ZAV::openDb() FAiled to open=<path>` after a failure at every level.
    ///
    /// @param dbFile  path of the file; never taken as a URI.
    /// @param ignored has no effect: the file is always opened read-only.
    /// @return 0 opened; -1 a database is open already and stays so (no line is written); -2 the
    ///         file could not be opened.
    /// @throws std::system_error if LogUtil::logMutex cannot be locked; the database may be open
    ///         then.
    int openDb(const std::string& dbFile, bool ignored);

    /// Closes the database. Writes no line.
    ///
    /// @return 0 closed; -1 none is open, or it could not be closed and stays open.
    int closeDb();

    /// Sets the diagnostic level of the service: 0 or less for errors only, 1 also for each
    /// successful opening, 2 or more also for each path before it is opened.
    ///
    /// A level above 1 also sets the connection's own level to 1; it is never lowered, and never
    /// reaches the connection's line per query, which takes a level above 1.
    ///
    /// @param level  any value. It holds for the whole process and may be set whether a database is
    ///               open or not, but not while another call runs.
    void setDbgLevel(int level);

    /// Reads every row of the table "fault_type_definition".
    ///
    /// @param[out] faultTypeDefs  emptied and filled, one record per row in the database's order,
    ///                            once the query has succeeded; untouched on a negative result.
    /// @return the number of records (0 or more); -1 no database is open; -2 the query failed (one
    ///         error line has been written to standard output).
    int getFaultTypeDefTbl(std::vector<FaultTypeDef>& faultTypeDefs);

    /// Looks up one fault type by its code.
    ///
    /// The code is compared by SQL's LIKE, as text, with the first of the current columns of the
    /// table: "code", unless a query on a file with another column order has put another one
    /// first.
    ///
    /// @param faultCode          16 bits, 0 to 65535, although codes in the file may be larger.
    /// @param[out] faultTypeDef  the record found; untouched on -1.
    /// @return 0 exactly one was found; -1 in every other case: none, more than one, no database
    ///         open, the query failed (then one error line has been written to standard output).
    int getFaultTypeDef(unsigned short faultCode, FaultTypeDef& faultTypeDef);

    /// Reads every row of the table "descriptions".
    ///
    /// @param[out] descriptions  emptied and filled, one record per row in the database's order,
    ///                           once the query has succeeded; untouched on a negative result.
    /// @return the number of records (0 or more); -1 no database is open; -2 the query failed (one
    ///         error line has been written to standard output).
    int getDescriptionsTbl(std::vector<Descriptions>& descriptions);

    /// Reads the texts of one fault type in every language.
    ///
    /// The code is compared by "=" with the second of the current columns of the table:
    /// "id_fault_type", unless a query on a file with another column order has put another one
    /// second.
    ///
    /// @param faultCode          32 bits, 0 to 4294967295; a code above 65535 finds the file's rows
    ///                           for it, although their `id_fault_type` then reads as 0, with an
    ///                           error line for each.
    /// @param[out] descriptions  emptied and filled, one record per row in the database's order,
    ///                           once the query has succeeded; untouched on a negative result.
    /// @return the number of records (0 if there are none for the code); -1 no database is open; -2
    ///         the query failed (one error line has been written to standard output).
    int getDescriptionsByFC(unsigned int faultCode, std::vector<Descriptions>& descriptions);

    /// Diagnostic level of the service; 1 at first. Set it by setDbgLevel().
    static int m_Debug;
    /// The one connection; made at library load. Its members tell what a failed openDb() does not.
    /// Opened or closed directly, it no longer agrees with what openDb() and closeDb() know.
    static Sqlite3Db sqliteDb;
    /// The one instance; null until the first getInstance(). For reading only.
    static DescriptionDb* m_pInstance;

private:
    class Monitor;

    DescriptionDb();
    ~DescriptionDb();

    // In this order in the binary interface: the test abi/layout_test.cpp fails at a change.
    bool m_bOpen = false;
    ZavSqlFaultTypeDefTbl m_faultTypeDefTbl;
    ZavSqlDescriptionsTbl m_descriptionsTbl;
};
