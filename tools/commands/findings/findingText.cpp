#include "findingText.h"

#include "text/SqlText.h"
#include "text/shortened.h"

std::string shownValue(const RawCell& value, std::size_t bytes)
{
    switch (value.type) {
    case CellType::NONE:
        return "NULL";
    case CellType::TEXT:
        return '"' + shortened(value.bytes, bytes) + '"';
    case CellType::BLOB:
        return shortened("x'" + hexadecimal(value.bytes.substr(0, bytes)) + "'", bytes);
    default:
        return value.bytes;
    }
}

std::string messageOf(const Finding& finding)
{
    return finding.value ? shownValue(*finding.value) + ": " + finding.what : finding.what;
}
