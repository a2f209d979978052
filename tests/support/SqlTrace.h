#pragma once

#include <string>
#include <vector>

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

    /// @return the number of connections closed.
    int closed() const { return m_closed; }

    void clear() { m_statements.clear(); }

    struct Hook;  // SQLite's callbacks

private:
    std::vector<std::string> m_statements;
    int m_closed = 0;
};
