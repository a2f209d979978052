// An application that runs for years: it keeps a database open, and notices when the file is
// replaced.
//
//     follow-updates FILE
//
// For each line on standard input, which stands for somebody who asks, it says what there is.

#include <zav/DescriptionDb.h>

#include <iostream>
#include <string>
#include <vector>

#include "FollowedFile.h"

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: follow-updates FILE\n";
        return 2;
    }
    DescriptionDb& db = *DescriptionDb::getInstance();
    db.setDbgLevel(0);
    FollowedFile file(argv[1]);
    for (std::string line; std::getline(std::cin, line);) {
        if (file.follow()) {
            std::cout << "another file is open\n";
        }
        std::vector<FaultTypeDef> faultTypes;
        std::vector<Descriptions> texts;
        if (db.getFaultTypeDefTbl(faultTypes) < 0 || db.getDescriptionsTbl(texts) < 0) {
            std::cout << "the file cannot be read" << std::endl;
            continue;
        }
        std::cout << faultTypes.size() << " fault types, " << texts.size() << " texts" << std::endl;
    }
    return 0;
}
