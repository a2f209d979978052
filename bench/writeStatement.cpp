// Writes one statement text in a process of its own, to see how much memory that takes.
//
//     zav_write_statement_heap KIND

#include <iostream>

#include "statementText.h"

int main(int argc, char** argv)
{
    for (const StatementKind& kind : STATEMENTS) {
        if (argc == 2 && argv[1] == std::string(kind.name)) {
            return kind.write().empty() ? 1 : 0;
        }
    }
    std::cerr << "usage: zav_write_statement_heap zav|sqlite3_mprintf\n";
    return 2;
}
