#include "ChangeList.h"

std::string ChangeList::nameOf(const Change& change) const
{
    const std::string code = change.code.isNull() ? "NULL" : change.code.bytes;
    const auto alias = aliases.find(code);
    return alias == aliases.end() ? code : code + ' ' + alias->second;
}

const char* nameOf(Change::Kind kind)
{
    switch (kind) {
    case Change::Kind::ADDED:
        return "added";
    case Change::Kind::REMOVED:
        return "removed";
    default:
        return "changed";
    }
}
