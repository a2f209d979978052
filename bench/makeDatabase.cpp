// Makes a database file to measure on:
//
//     zav_make_database FILE FAULT_TYPES [indexed]

#include <iostream>

#include "database.h"

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::cerr << "usage: zav_make_database FILE FAULT_TYPES [indexed]\n";
        return 2;
    }
    makeFaultDatabase(argv[1], std::stoi(argv[2]), argc > 3);
}
