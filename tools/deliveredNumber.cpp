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

std::optional<std::uint64_t> deliveredNumber(const std::string& text, unsigned bits)
{
    const LibrarySilence silence;
    return bits == 16 ? readAs<unsigned short>(text) : readAs<unsigned int>(text);
}

std::uint64_t largestNumber(unsigned bits)
{
    return (std::uint64_t{1} << bits) - 1;
}
