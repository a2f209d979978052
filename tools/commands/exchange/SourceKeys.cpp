#include "SourceKeys.h"

#include "SourceTable.h"
#include "text/formatted.h"

namespace {

std::string placeOf(const std::string& file, std::size_t line)
{
    return line > 0 ? formatted(" in {}:{}", file, line) : "";
}

std::uint32_t keyOf(std::uint16_t code, std::uint16_t language)
{
    constexpr unsigned LANGUAGE_BITS = 16;
    return static_cast<std::uint32_t>(code) << LANGUAGE_BITS | language;
}

}  // namespace

std::string SourceKeys::addFaultType(std::uint16_t code, std::size_t line)
{
    const auto [known, isNew] = m_faultTypes.emplace(code, line);
    return isNew ? ""
                 : formatted("the fault type {} is defined{} already", code,
                             placeOf(FAULTS_FILE, known->second));
}

std::string SourceKeys::addText(std::uint16_t code, std::uint16_t language, std::size_t line)
{
    const auto [known, isNew] = m_texts.emplace(keyOf(code, language), line);
    if (!isNew) {
        return formatted("the fault type {} has a text{} already", code,
                         placeOf(textsFileOf(language), known->second));
    }
    return m_lacksFaultTypes || m_faultTypes.count(code) > 0
               ? ""
               : formatted("there is no fault type {}", code);
}
