#include "infoTexts.h"

#include "InfoJson.h"
#include "text/formatted.h"

std::vector<InfoText> infoTexts(const FileInfo& info)
{
    const std::string release = info.release == 0 ? "none" : std::to_string(info.release);
    const std::string writer =
        info.sqliteVersion.empty() ? "unknown" : "SQLite " + info.sqliteVersion;
    return {{"release", release},
            {"content", info.content},
            {"fault_types", std::to_string(info.faultTypes)},
            {"texts", std::to_string(info.texts)},
            {"journal_mode", journalModeOf(info)},
            {"size", formatted("{} bytes", info.size)},
            {"written_by", writer}};
}
