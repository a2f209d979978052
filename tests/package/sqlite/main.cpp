#include <sqlite3.h>
#include <zav/DescriptionDb.h>

int main()
{
    DescriptionDb& db = *DescriptionDb::getInstance();
    return sqlite3_libversion_number() > 0 && db.closeDb() == -1 ? 0 : 1;
}
