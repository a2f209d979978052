// reader FILE [COMMAND...]: opens a database and asks all four questions; then, after each of the
// shell commands, which do something to the file below it, asks again. Prints the four results each
// time, behind the lines of the library.

#include <cstdlib>
#include <iostream>
#include <vector>

#include "zav/DescriptionDb.h"

namespace {

constexpr unsigned short CODE = 3;

void ask(DescriptionDb& service)
{
    std::vector<FaultTypeDef> faultTypes;
    std::vector<Descriptions> texts;
    FaultTypeDef faultType;
    std::vector<Descriptions> textsOfCode;
    const int results[] = {
        service.getFaultTypeDefTbl(faultTypes), service.getFaultTypeDef(CODE, faultType),
        service.getDescriptionsTbl(texts), service.getDescriptionsByFC(CODE, textsOfCode)};
    std::cout << "results";
    for (const int result : results) {
        std::cout << ' ' << result;
    }
    std::cout << std::endl;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::cerr << "usage: reader FILE [COMMAND...]\n";
        return 2;
    }
    DescriptionDb& service = *DescriptionDb::getInstance();
    service.setDbgLevel(0);
    if (service.openDb(argv[1], true) != 0) {
        return 1;
    }
    ask(service);
    for (int i = 2; i < argc; ++i) {
        const int status = std::system(argv[i]);
        if (status != 0) {
            std::cout << "ends with " << status << ": " << argv[i] << "\n";
            return 3;
        }
        ask(service);
    }
    return service.closeDb() == 0 ? 0 : 1;
}
