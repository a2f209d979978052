#include "deliveredNumber.h"

#include "LibraryLines.h"
#include "zav/sqlTblUtil.h"

namespace {

template <class Number>
std::optional<std::uint64_t> readAs(const std::string& text)
{
    std::string cell = text;  // the library takes it as it gets it from SQLite: not const
    char* start = cell.data();
    Number number = 0;
    if (sqlTblUtil::setValueFromSqlResult(&start, &number) != 0) {
        return std::nullopt;
    }
    return number;
}

}  // namespace

std::optional<std::uint64_t> deliveredNumber(const std::string& text, FieldKind kind)
{
    const LibrarySilence silence;
    return kind == FieldKind::NUMBER_16 ? readAs<unsigned short>(text) : readAs<unsigned int>(text);
}
