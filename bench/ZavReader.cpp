#include <stdexcept>

#include "Reader.h"
#include "zav/DescriptionDb.h"

namespace {

class ZavReader : public Reader {
public:
    explicit ZavReader(const std::string& file)
    {
        m_db->setDbgLevel(0);
        if (m_db->openDb(file, true) != 0) {
            throw std::runtime_error("cannot open " + file);
        }
    }
    ~ZavReader() override { m_db->closeDb(); }

    std::size_t ask(Question question, unsigned short code) override
    {
        std::vector<FaultTypeDef> faultTypes;
        std::vector<Descriptions> descriptions;
        FaultTypeDef faultType;
        switch (question) {
        case Question::ALL_FAULT_TYPES:
            m_db->getFaultTypeDefTbl(faultTypes);
            return faultTypes.size();
        case Question::ALL_DESCRIPTIONS:
            m_db->getDescriptionsTbl(descriptions);
            return descriptions.size();
        case Question::FAULT_TYPE_BY_CODE:
            return m_db->getFaultTypeDef(code, faultType) == 0 ? 1 : 0;
        case Question::TEXTS_OF_CODE:
            m_db->getDescriptionsByFC(code, descriptions);
            return descriptions.size();
        }
        throw std::invalid_argument("no such question");
    }

private:
    DescriptionDb* const m_db = DescriptionDb::getInstance();
};

}  // namespace

std::unique_ptr<Reader> openZav(const std::string& file)
{
    return std::make_unique<ZavReader>(file);
}
