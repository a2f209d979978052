// The application of a device: device FILE NEW_FILE FIRST HOURS. It opens FILE and follows its
// updates. Each hour, thinned to a lookup per minute, begins with zav install of the next
// generation, FIRST at first, by way of NEW_FILE. Prints an hour's generation and what the process
// takes at its end, and ends with 1 when an answer is not of the file that is in place.

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "FollowedFile.h"
#include "support/Usage.h"

namespace {

constexpr int MINUTES = 60;
constexpr int FAULT_TYPES = 20;
constexpr std::size_t LANGUAGES = 4;

class Device {
public:
    explicit Device(const std::string& file) : m_name(file), m_file(file) {}

    bool update(const std::string& newFile, const std::string& generation) const
    {
        const std::string command = "rm -f " + newFile + " && generations make " + newFile + " " +
                                    generation + " && zav install " + newFile + " " + m_name +
                                    " >/dev/null";
        return std::system(command.c_str()) == 0;
    }

    bool answersAre(const std::string& generation)
    {
        for (unsigned short code = 1; code <= MINUTES; ++code) {
            m_file.follow();
            if (!isOf(generation, static_cast<unsigned short>(code % FAULT_TYPES + 1))) {
                std::cout << "wrong answer at minute " << code << std::endl;
                return false;
            }
        }
        return true;
    }

private:
    bool isOf(const std::string& generation, unsigned short code)
    {
        FaultTypeDef faultType;
        std::vector<Descriptions> texts;
        if (m_service.getFaultTypeDef(code, faultType) != 0 ||
            m_service.getDescriptionsByFC(code, texts) != static_cast<int>(LANGUAGES) ||
            std::to_string(faultType.bug) != generation) {
            return false;
        }
        return std::all_of(texts.begin(), texts.end(), [&](const Descriptions& text) {
            return text.name == generation && text.id_fault_type == code;
        });
    }

    std::string m_name;
    DescriptionDb& m_service = *DescriptionDb::getInstance();
    FollowedFile m_file;
};

int run(const std::string& file, const std::string& newFile, long first, long hours)
{
    DescriptionDb::getInstance()->setDbgLevel(0);
    Device device(file);
    for (long hour = 0; hour < hours; ++hour) {
        const std::string generation = std::to_string(first + hour);
        std::cout << "begun " << generation << std::endl;
        if (!device.update(newFile, generation)) {
            std::cout << "no update to " << generation << std::endl;
            return 1;
        }
        std::cout << "committed " << generation << std::endl;
        if (!device.answersAre(generation)) {
            return 1;
        }
        const Usage used = usage();
        std::cout << "hour " << generation << ' ' << used.descriptors << ' ' << used.heapBytes
                  << ' ' << used.sqliteBytes << ' ' << used.residentKilobytes << std::endl;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 5) {
        std::cerr << "usage: device FILE NEW_FILE FIRST HOURS\n";
        return 2;
    }
    return run(argv[1], argv[2], std::atol(argv[3]), std::atol(argv[4]));
}
