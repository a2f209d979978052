#pragma once

#include <string>
#include <vector>

struct sqlite3;

/// Sees the SQL that is really sent to SQLite by every connection opened while it lives. One at a
/// time.
class SqlTrace {
public:
    SqlTrace();
    ~SqlTrace();
    SqlTrace(const SqlTrace&) = delete;
    SqlTrace& operator=(const SqlTrace&) = delete;

    /// @return the statements in the order in which they were started.
    const std::vector<std::string>& statements() const { return m_statements; }

    /// @return the number of times a connection was closed, attempts that SQLite refused included.
    int closed() const { return m_closed; }

    /// @return the number of connections opened.
    int opened() const { return m_opened; }

    /// @return the connection that was opened last; null before the first.
    sqlite3* connection() const { return m_connection; }

    void clear() { m_statements.clear(); }

    struct Hook;  // SQLite's callbacks

private:
    std::vector<std::string> m_statements;
    int m_closed = 0;
    int m_opened = 0;
    sqlite3* m_connection = nullptr;
};
