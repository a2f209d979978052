// Asks a database file one question, some times over, in a process of its own: to count
// instructions, to time the first read, to see how much memory one takes.
//
//     zav_ask READER QUESTION CODE TIMES FILE
//
// Prints the nanoseconds from before the file is opened to after the first answer. With 0 for TIMES
// it only opens the file, and prints nothing.

#include <chrono>
#include <iostream>
#include <stdexcept>

#include "Reader.h"

namespace {

template <class Kind, std::size_t COUNT>
const Kind& named(const std::string& name, const Kind (&kinds)[COUNT])
{
    for (const Kind& kind : kinds) {
        if (name == kind.name) {
            return kind;
        }
    }
    throw std::invalid_argument("no such reader or question: " + name);
}

int ask(const ReaderKind& kind, Question question, unsigned short code, int times,
        const std::string& file)
{
    const auto start = std::chrono::steady_clock::now();
    const std::unique_ptr<Reader> reader = kind.open(file);
    if (times == 0) {
        return 0;
    }
    const std::size_t rows = reader->ask(question, code);
    const std::chrono::nanoseconds first = std::chrono::steady_clock::now() - start;
    if (rows == 0) {
        std::cerr << "nothing found\n";
        return 1;
    }
    for (int done = 1; done < times; ++done) {
        reader->ask(question, code);
    }
    std::cout << first.count() << "\n";
    return 0;
}

}  // namespace

int main(int argc, char** argv)
try {
    if (argc != 6) {
        std::cerr << "usage: zav_ask READER QUESTION CODE TIMES FILE\n";
        return 2;
    }
    return ask(named(argv[1], READERS), named(argv[2], QUESTIONS).question,
               static_cast<unsigned short>(std::stoul(argv[3])), std::stoi(argv[4]), argv[5]);
} catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 1;
}
