// Asks a database file one question, some times over, in a process of its own: to count
// instructions, to time the first read, to see how much memory one takes.
//
//     zav_ask READER QUESTION CODE TIMES FILE
//
// Prints the nanoseconds from before the file is opened to after the first answer.

#include <chrono>
#include <iostream>
#include <stdexcept>

#include "Reader.h"

namespace {

template <class Kind, std::size_t count>
const Kind& named(const std::string& name, const Kind (&kinds)[count])
{
    for (const Kind& kind : kinds) {
        if (name == kind.name) {
            return kind;
        }
    }
    throw std::invalid_argument("no such reader or question: " + name);
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 6) {
        std::cerr << "usage: zav_ask READER QUESTION CODE TIMES FILE\n";
        return 2;
    }
    const Question question = named(argv[2], QUESTIONS).question;
    const auto code = static_cast<unsigned short>(std::stoul(argv[3]));
    const auto start = std::chrono::steady_clock::now();
    const std::unique_ptr<Reader> reader = named(argv[1], READERS).open(argv[5]);
    const std::size_t rows = reader->ask(question, code);
    const std::chrono::nanoseconds first = std::chrono::steady_clock::now() - start;
    if (rows == 0) {
        std::cerr << "nothing found\n";
        return 1;
    }
    for (int done = 1; done < std::stoi(argv[4]); ++done) {
        reader->ask(question, code);
    }
    std::cout << first.count() << "\n";
}
