// Reads a database of fault definitions: quickstart FILE

#include <zav/DescriptionDb.h>

#include <iostream>
#include <string>
#include <vector>

namespace {

void showAllFaultTypes(DescriptionDb& db)
{
    std::vector<FaultTypeDef> faultTypes;
    const int count = db.getFaultTypeDefTbl(faultTypes);
    std::cout << "All fault types: " << count << "\n";
    for (const FaultTypeDef& faultType : faultTypes) {
        std::cout << "  " << faultType.code << "  " << faultType.alias << " (" << faultType.type
                  << ")\n";
    }
}

void showFaultType(DescriptionDb& db, unsigned short code)
{
    std::cout << "\nFault type " << code << ":\n";
    FaultTypeDef faultType;
    if (db.getFaultTypeDef(code, faultType) != 0) {
        std::cout << "  not found\n";
        return;
    }
    std::cout << "  " << faultType.alias << ", clears after cycle "
              << faultType.clear_after_cycle_nr << "\n";
}

void showTexts(DescriptionDb& db, unsigned int code)
{
    std::vector<Descriptions> texts;
    const int count = db.getDescriptionsByFC(code, texts);
    std::cout << "\nTexts of fault type " << code << ": " << count << "\n";
    for (const Descriptions& text : texts) {
        std::cout << "  [" << text.id_language << "] " << text.name << ": " << text.description
                  << "\n      " << text.remedy << "\n";
    }
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: quickstart FILE\n";
        return 2;
    }
    DescriptionDb& db = *DescriptionDb::getInstance();

    // A failed open: the library says so on standard output, the result is -2.
    const int failed = db.openDb("no-such-file.db", true);
    std::cout << "openDb of a missing file: " << failed << "\n\n";

    if (db.openDb(argv[1], true) != 0) {
        return 1;
    }
    showAllFaultTypes(db);
    showFaultType(db, 101);
    showTexts(db, 101);
    showFaultType(db, 999);  // a miss
    showTexts(db, 999);
    return db.closeDb() == 0 ? 0 : 1;
}
