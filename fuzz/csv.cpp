// Any text through the reader of sources: it comes to an end, and what it reads without a mistake
// is read the same once it is written again.

#include <algorithm>
#include <string>
#include <vector>

#include "commands/exchange/CsvReader.h"
#include "expect.h"
#include "target.h"

namespace {

using Records = std::vector<CsvRecord>;

Records recordsOf(const std::string& text)
{
    Records records;
    CsvReader reader(text);
    for (CsvRecord record; reader.next(record);) {
        expect(!record.cells.empty(), "a record has a cell");
        expect(records.empty() || record.line > records.back().line, "records follow one another");
        records.push_back(record);
    }
    return records;
}

std::string quoted(const std::string& cell)
{
    std::string text = "\"";
    for (const char character : cell) {
        text.append(character == '"' ? 2 : 1, character);
    }
    return text + '"';
}

std::string written(const Records& records)
{
    std::string text;
    for (const CsvRecord& record : records) {
        for (std::size_t i = 0; i < record.cells.size(); ++i) {
            text += (i > 0 ? "," : "") + quoted(record.cells[i]);
        }
        text += "\r\n";
    }
    return text;
}

bool hasMistake(const Records& records)
{
    return std::any_of(records.begin(), records.end(),
                       [](const CsvRecord& record) { return !record.mistake.empty(); });
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Records records = recordsOf(std::string(data, data + size));
    if (hasMistake(records)) {
        return 0;
    }
    // The first line says what stands between cells.
    const Records again = recordsOf("a,b\r\n" + written(records));
    expect(again.size() == records.size() + 1, "the same number of records");
    for (std::size_t i = 0; i < records.size(); ++i) {
        expect(again[i + 1].cells == records[i].cells, "the same cells");
        expect(again[i + 1].mistake.empty(), "no mistake");
    }
    return 0;
}
