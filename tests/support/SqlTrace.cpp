#include "support/SqlTrace.h"

#include <sqlite3.h>

#include "support/autoExtension.h"

namespace {
SqlTrace* g_current = nullptr;
}

struct SqlTrace::Hook {
    static int onOpen(sqlite3* db, char** /*errorText*/, const sqlite3_api_routines* /*api*/)
    {
        ++g_current->m_opened;
        g_current->m_connection = db;
        return sqlite3_trace_v2(db, SQLITE_TRACE_STMT | SQLITE_TRACE_CLOSE, onEvent, nullptr);
    }

    static int onEvent(unsigned event, void* /*context*/, void* /*subject*/, void* sql)
    {
        if (g_current == nullptr) {
            return 0;
        }
        if (event == SQLITE_TRACE_STMT) {
            g_current->m_statements.emplace_back(static_cast<const char*>(sql));
        } else {
            ++g_current->m_closed;
        }
        return 0;
    }
};

SqlTrace::SqlTrace()
{
    g_current = this;
    addAutoExtension(Hook::onOpen);
}

SqlTrace::~SqlTrace()
{
    removeAutoExtension(Hook::onOpen);
    g_current = nullptr;
}
