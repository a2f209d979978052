// Runs a target on stored inputs, without libFuzzer: on each file named, and on each file in each
// folder named.

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "support/database.h"
#include "target.h"

namespace {

std::vector<std::string> inputFiles(const std::string& path)
{
    if (!std::filesystem::is_directory(path)) {
        return {path};
    }
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
        files.push_back(entry.path());
    }
    return files;
}

}  // namespace

int main(int argc, char** argv)
{
    std::size_t inputs = 0;
    for (const char* path : std::vector<const char*>(argv + 1, argv + argc)) {
        for (const std::string& file : inputFiles(path)) {
            const std::string input = contents(file);
            const std::vector<std::uint8_t> bytes(input.begin(), input.end());
            LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
            ++inputs;
        }
    }
    std::cout.clear();  // silenced by the targets
    std::cout << inputs << " inputs\n";
    return inputs > 0 ? 0 : 1;
}
