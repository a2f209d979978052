// Starts with a level of the service of its own: the program's variable takes the place of the
// library's before anything of the library runs.

#include <cstdio>

#include "zav/DescriptionDb.h"

int DescriptionDb::m_Debug = 7;

int main()
{
    std::printf("service level %d, connection level %u\n", DescriptionDb::m_Debug,
                DescriptionDb::sqliteDb.m_dbgLevel);
}
