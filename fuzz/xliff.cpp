// Any text through the reader of translations: it comes to an end within its bounds, and what it
// reads without a mistake is read the same once it is written again.

#include <string>
#include <vector>

#include "commands/exchange/xliff/checkXml.h"
#include "commands/exchange/xliff/readXliff.h"
#include "commands/exchange/xliff/writeXliff.h"
#include "expect.h"
#include "target.h"

namespace {

constexpr const char* NAME = "t.xlf";

void expectSame(const Translation& one, const Translation& other)
{
    expect(one.original == other.original, "the same file");
    expect(one.from.number == other.from.number && one.to.number == other.to.number,
           "the same languages");
    expect(one.units.size() == other.units.size(), "as many units");
    for (std::size_t i = 0; i < one.units.size(); ++i) {
        expect(one.units[i].id == other.units[i].id, "the same id");
        expect(one.units[i].source == other.units[i].source, "the same source");
        expect(one.units[i].target == other.units[i].target, "the same target");
        expect(one.units[i].state == other.units[i].state, "the same state");
    }
}

bool isFitXml(const std::string& text)
{
    try {
        checkXml(text);
        return true;
    } catch (const UnfitXml&) {
        return false;
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(data, data + size);
    Mistakes mistakes;
    const std::vector<Translation> translations = readXliff(text, NAME, mistakes);
    expect(!mistakes.empty() || isFitXml(text), "what XML does not allow is a mistake");
    if (!mistakes.empty()) {
        return 0;
    }
    for (const Translation& translation : translations) {
        const std::vector<Translation> again = readXliff(xliffOf(translation), NAME, mistakes);
        expect(mistakes.empty() && again.size() == 1, "what is written can be read");
        expectSame(translation, again.front());
    }
    return 0;
}
