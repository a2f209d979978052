// What reading through the library costs.

#include <string>
#include <vector>

#include "Cost.h"
#include "zav/DescriptionDb.h"

namespace {

constexpr unsigned short CODE = 101;

class ZavReader : public CostReader {
public:
    bool open(const char* file) override
    {
        m_service->setDbgLevel(0);
        return m_service->openDb(file, true) == 0;
    }

    std::size_t ask(Stage question) override
    {
        FaultTypeDef faultType;
        switch (question) {
        case Stage::TEXTS_OF_CODE:
            return static_cast<std::size_t>(m_service->getDescriptionsByFC(CODE, m_textsOfCode));
        case Stage::FAULT_TYPE:
            return m_service->getFaultTypeDef(CODE, faultType) == 0 ? 1 : 0;
        case Stage::ALL_FAULT_TYPES:
            return static_cast<std::size_t>(m_service->getFaultTypeDefTbl(m_faultTypes));
        default:
            return static_cast<std::size_t>(m_service->getDescriptionsTbl(m_texts));
        }
    }

private:
    DescriptionDb* m_service = DescriptionDb::getInstance();
    std::vector<Descriptions> m_textsOfCode;
    std::vector<Descriptions> m_texts;
    std::vector<FaultTypeDef> m_faultTypes;
};

}  // namespace

int main(int argc, char** argv)
{
    ZavReader reader;
    return countCost(reader, argc, argv);
}
