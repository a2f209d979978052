#include "Reader.h"

#include <stdexcept>

std::size_t SqlReader::ask(Question question, unsigned short code)
{
    switch (question) {
    case Question::ALL_FAULT_TYPES:
        return readFaultTypes(R"(SELECT * FROM "fault_type_definition")");
    case Question::ALL_DESCRIPTIONS:
        return readDescriptions(R"(SELECT * FROM "descriptions")");
    case Question::FAULT_TYPE_BY_CODE:
        return readFaultTypes(R"(SELECT * FROM "fault_type_definition" WHERE code LIKE )" +
                              std::to_string(code));
    case Question::TEXTS_OF_CODE:
        return readDescriptions(R"(SELECT * FROM "descriptions" WHERE id_fault_type=)" +
                                std::to_string(code));
    }
    throw std::invalid_argument("no such question");
}
