#include "mergeTranslations.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <unordered_map>

#include "check/relations/placeholders.h"
#include "commands/exchange/SourceTable.h"
#include "text/formatted.h"
#include "text/shortened.h"
#include "translatedFields.h"

namespace {

/// Where a text stands in a file.
struct Place {
    std::uint16_t code;
    std::uint16_t language;
    std::size_t position;  ///< in the row

    bool operator<(const Place& other) const
    {
        return std::tie(code, language, position) <
               std::tie(other.code, other.language, other.position);
    }
};

/// What a tool says of a target that is not to be used yet begins with needs-, or is new.
bool isDone(const TranslationUnit& unit)
{
    static const std::set<std::string> done = {"", TRANSLATED, "signed-off", "final"};
    return !unit.target.empty() && done.count(unit.state) > 0;
}

std::string shownPlaceholders(const std::string& text)
{
    const std::string placeholders = placeholdersIn(text);
    return placeholders.empty() ? "no placeholder" : shortened(placeholders);
}

/// @return the text from a little before the place where it becomes another, so that it is seen.
std::string shownFrom(const std::string& text, std::size_t difference)
{
    constexpr std::size_t BEFORE = 20;
    if (difference <= BEFORE) {
        return shortened(text);
    }
    std::size_t start = difference - BEFORE;
    while (start < text.size() && (static_cast<unsigned char>(text[start]) & 0xC0U) == 0x80U) {
        ++start;  // inside a character
    }
    return "..." + shortened(std::string_view(text).substr(start));
}

std::string changedSource(const std::string& source, const std::string& now)
{
    const std::size_t common = std::min(source.size(), now.size());
    const auto difference = static_cast<std::size_t>(
        std::mismatch(source.begin(), source.begin() + static_cast<std::ptrdiff_t>(common),
                      now.begin())
            .first -
        source.begin());
    const std::string there =
        now.empty() ? "none" : formatted("\"{}\"", shownFrom(now, difference));
    return formatted("the source is \"{}\", but the file has {}; translate that",
                     shownFrom(source, difference), there);
}

class Merge {
public:
    Merge(const std::string& name, StoredFile& content, Mistakes& mistakes)
        : m_name(name), m_content(content), m_mistakes(mistakes)
    {
        for (const StoredRow& row : content.faultTypes) {
            m_codes.insert(shortNumber(row[StoredFile::CODE]));
        }
        for (std::size_t i = 0; i < content.texts.size(); ++i) {
            const StoredRow& row = content.texts[i];
            m_rows.emplace(
                keyOf(shortNumber(row[StoredFile::CODE]), shortNumber(row[StoredFile::LANGUAGE])),
                i);
        }
    }

    void take(const Translation& translation)
    {
        for (const TranslationUnit& unit : translation.units) {
            if (const std::optional<Place> source = placeOf(unit, translation)) {
                take(unit, *source, {source->code, translation.to.number, source->position});
            }
        }
    }

    MergedTexts finish()
    {
        const std::uint64_t most = largestNumber(FieldKind::NUMBER_16);
        if (m_content.texts.size() > most) {
            m_mistakes.push_back({m_name, 0, "",
                                  formatted("with it there are {} texts; a file holds {}",
                                            m_content.texts.size(), most)});
        }
        std::sort(
            m_content.texts.begin(), m_content.texts.end(),
            [](const StoredRow& one, const StoredRow& other) { return keyOf(one) < keyOf(other); });
        return m_merged;
    }

private:
    static std::uint32_t keyOf(std::uint16_t code, std::uint16_t language)
    {
        constexpr unsigned LANGUAGE_BITS = 16;
        return static_cast<std::uint32_t>(code) << LANGUAGE_BITS | language;
    }

    static std::uint32_t keyOf(const StoredRow& row)
    {
        return keyOf(shortNumber(row[StoredFile::CODE]), shortNumber(row[StoredFile::LANGUAGE]));
    }

    void add(const TranslationUnit& unit, const std::string& what)
    {
        m_mistakes.push_back({m_name, unit.line, shortened(unit.id), what});
    }

    /// @return where its source stands; nothing if that is nowhere.
    std::optional<Place> placeOf(const TranslationUnit& unit, const Translation& translation)
    {
        const std::size_t slash = std::min(unit.id.find('/'), unit.id.size());
        std::uint16_t code = 0;
        const char* const begin = unit.id.data();
        const auto [read, error] = std::from_chars(begin, begin + slash, code);
        if (error != std::errc() || read != begin + slash || m_codes.count(code) == 0) {
            add(unit,
                formatted("there is no fault type \"{}\"", shortened(unit.id.substr(0, slash))));
            return std::nullopt;
        }
        const std::string name = unit.id.substr(std::min(slash + 1, unit.id.size()));
        const auto& fields = translatedFields();
        const auto field =
            std::find_if(fields.begin(), fields.end(),
                         [&](const TranslatedField& known) { return known.name == name; });
        if (field == fields.end()) {
            std::vector<std::string> names;
            for (const TranslatedField& known : fields) {
                names.push_back(known.name);
            }
            add(unit, formatted("there is no field \"{}\"; translated are {}", shortened(name),
                                listed(names, ", ")));
            return std::nullopt;
        }
        return Place{code, translation.from.number, field->position};
    }

    void take(const TranslationUnit& unit, const Place& source, const Place& target)
    {
        const auto [known, isNew] = m_lines.emplace(target, unit.line);
        if (!isNew) {
            add(unit, formatted("stands in line {} already", known->second));
            return;
        }
        if (!isDone(unit)) {
            return;
        }
        const std::string now = textAt(source);
        if (unit.source != now) {
            add(unit, changedSource(unit.source, now));
        } else if (placeholdersIn(unit.target) != placeholdersIn(unit.source)) {
            add(unit, formatted("the target has {}, but the source has {}; use the same",
                                shownPlaceholders(unit.target), shownPlaceholders(unit.source)));
        } else {
            set(source, target, unit.target);
        }
    }

    std::string textAt(const Place& place) const
    {
        const auto found = m_rows.find(keyOf(place.code, place.language));
        return found == m_rows.end() ? "" : m_content.texts[found->second][place.position].bytes;
    }

    /// @param source  which is there.
    void set(const Place& source, const Place& target, const std::string& text)
    {
        const std::string before = textAt(target);
        if (before == text) {
            return;
        }
        ++(before.empty() ? m_merged.added : m_merged.changed);
        const auto [found, isNew] =
            m_rows.emplace(keyOf(target.code, target.language), m_content.texts.size());
        if (isNew) {
            const std::size_t original = m_rows.at(keyOf(source.code, source.language));
            m_content.texts.push_back(untranslated(m_content.texts[original], target.language));
        }
        m_content.texts[found->second][target.position] = RawCell::ofText(text);
    }

    /// What shows nothing in the original shows nothing in the translation; what is still to be
    /// translated is not known.
    static StoredRow untranslated(const StoredRow& original, std::uint16_t language)
    {
        StoredRow row = original;
        row[StoredFile::LANGUAGE] = RawCell::ofNumber(language);
        row[commentPosition()] = RawCell::ofText("");
        for (const TranslatedField& field : translatedFields()) {
            RawCell& cell = row[field.position];
            cell = cell.bytes.empty() ? cell : RawCell();
        }
        return row;
    }

    const std::string& m_name;
    StoredFile& m_content;
    Mistakes& m_mistakes;
    std::set<std::uint16_t> m_codes;
    std::unordered_map<std::uint32_t, std::size_t> m_rows;  ///< by code and language
    std::map<Place, std::size_t> m_lines;                   ///< of the units
    MergedTexts m_merged;
};

}  // namespace

MergedTexts mergeTranslations(const std::vector<Translation>& translations, const std::string& name,
                              StoredFile& content, Mistakes& mistakes)
{
    Merge merge(name, content, mistakes);
    for (const Translation& translation : translations) {
        merge.take(translation);
    }
    return merge.finish();
}
