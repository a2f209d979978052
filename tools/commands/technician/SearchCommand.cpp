#include "SearchCommand.h"

#include <algorithm>
#include <map>
#include <optional>
#include <tuple>

#include "database/stored/StoredFile.h"
#include "database/stored/valueColumns.h"
#include "nearestAlias.h"
#include "text/FoldedText.h"
#include "text/TextWidth.h"
#include "text/Utf8.h"
#include "text/formatted.h"
#include "text/message.h"

namespace {

/// How much it says that a word stands in a field, best first.
enum class Rank { NAME, DESCRIPTION, OTHER };

struct Field {
    Rank rank;
    std::string text;
    FoldedText folded;
};

/// What of a fault type and its text in one language matches all words.
struct Match {
    StoredRow faultType;
    std::optional<StoredRow> text;
    std::size_t score;  ///< the less, the better
    std::string piece;  ///< of the best field beside alias and name; empty: those have all words
};

std::string textIn(const RawCell& cell)
{
    return std::string(RawCellView{cell.type, cell.bytes}.text());
}

Rank rankOf(const std::string& column)
{
    if (column == faultTypeColumns().alias || column == descriptionsColumns().name) {
        return Rank::NAME;
    }
    return column == descriptionsColumns().description ? Rank::DESCRIPTION : Rank::OTHER;
}

class Search {
public:
    explicit Search(const SearchRequest& request) : m_request(request)
    {
        for (const std::string& word : request.words) {
            m_words.emplace_back(word);
        }
        addColumns(faultTypeModel(), StoredFile::ALIAS, m_faultTypeColumns);
        addColumns(descriptionsModel(), StoredFile::NAME, m_textColumns);
    }

    const std::vector<FoldedText>& words() const { return m_words; }

    /// @return by score, then by code; of each fault type the best language.
    std::vector<Match> run(const StoredFile& content) const
    {
        std::multimap<std::string, const StoredRow*> texts;
        for (const StoredRow& text : content.texts) {
            if (isInOneOf(m_request.languages, text)) {
                texts.emplace(text[StoredFile::CODE].bytes, &text);
            }
        }
        std::vector<Match> matches;
        for (const StoredRow& faultType : content.faultTypes) {
            const auto [begin, end] = texts.equal_range(faultType[StoredFile::CODE].bytes);
            std::optional<Match> best;
            const std::vector<Field> own = fieldsOf(faultType, m_faultTypeColumns);
            for (auto text = begin; text != end; ++text) {
                takeBetter(matchOf(own, faultType, text->second), best);
            }
            if (begin == end) {
                takeBetter(matchOf(own, faultType, nullptr), best);
            }
            if (best) {
                matches.push_back(std::move(*best));
            }
        }
        std::stable_sort(matches.begin(), matches.end(), [](const Match& one, const Match& other) {
            return one.score < other.score;
        });
        return matches;
    }

private:
    struct Column {
        std::size_t position;
        Rank rank;
    };
    using Columns = std::vector<Column>;

    void addColumns(const TableModel& table, std::size_t first, Columns& columns) const
    {
        const std::vector<TableModel::Column> all = valueColumns(table);
        for (std::size_t i = first; i < all.size(); ++i) {
            const bool isWanted =
                m_request.fields.empty() || m_request.fields.count(all[i].name) > 0;
            if (all[i].kind == FieldKind::TEXT && isWanted) {
                columns.push_back({i, rankOf(all[i].name)});
            }
        }
    }

    static std::vector<Field> fieldsOf(const StoredRow& row, const Columns& columns)
    {
        std::vector<Field> fields;
        for (const Column& column : columns) {
            const std::string text = textIn(row[column.position]);
            fields.push_back({column.rank, text, FoldedText(text)});
        }
        return fields;
    }

    std::optional<Match> matchOf(const std::vector<Field>& own, const StoredRow& faultType,
                                 const StoredRow* text) const
    {
        std::vector<Field> fields = own;
        if (text != nullptr) {
            const std::vector<Field> further = fieldsOf(*text, m_textColumns);
            fields.insert(fields.end(), further.begin(), further.end());
        }
        std::stable_sort(fields.begin(), fields.end(), [](const Field& one, const Field& other) {
            return one.rank < other.rank;
        });
        Match match = {faultType, text != nullptr ? std::optional(*text) : std::nullopt, 0, ""};
        for (const FoldedText& word : m_words) {
            const auto found = std::find_if(fields.begin(), fields.end(), [&](const Field& field) {
                return field.folded.contains(word.bytes());
            });
            if (found == fields.end()) {
                return std::nullopt;
            }
            const Field& best = *found;
            match.score += static_cast<std::size_t>(best.rank);
            if (match.piece.empty() && best.rank != Rank::NAME) {
                match.piece = pieceAround(word, best.text);
            }
        }
        return match;
    }

    /// @return the words around a place in a text, on one line.
    static std::string pieceAround(const FoldedText& word, const std::string& text)
    {
        constexpr std::size_t BYTES_BEFORE = 40;
        constexpr std::size_t BYTES = 120;
        const FoldedText::Places places = FoldedText::placesOf({word}, text);
        const std::size_t place = places.empty() ? 0 : places.front().first;
        std::size_t begin = place > BYTES_BEFORE ? text.find(' ', place - BYTES_BEFORE) : 0;
        begin = begin == 0 || begin >= place ? begin : begin + 1;
        begin = begin > place ? place : begin;
        std::size_t end = text.size();
        if (end - begin > BYTES) {
            const std::size_t wordEnd = places.empty() ? 0 : places.front().second;
            end = std::min(text.find(' ', std::max(begin + BYTES, wordEnd)), text.size());
        }
        std::string piece = text.substr(begin, end - begin);
        std::replace(piece.begin(), piece.end(), '\n', ' ');
        return (begin > 0 ? "... " : "") + piece + (end < text.size() ? " ..." : "");
    }

    static void takeBetter(std::optional<Match> match, std::optional<Match>& best)
    {
        if (match && (!best || match->score < best->score)) {
            best = std::move(match);
        }
    }

    const SearchRequest& m_request;
    std::vector<FoldedText> m_words;
    Columns m_faultTypeColumns;
    Columns m_textColumns;
};

std::string nameIn(const Match& match)
{
    return match.text ? textIn((*match.text)[StoredFile::NAME]) : "";
}

/// @return the text, safe to show, with the words in it emphasised.
std::string emphasised(const std::string& text, const Search& search, const Output& output)
{
    const std::string shown = printableLine(text);
    std::string result;
    std::size_t position = 0;
    for (const auto& [begin, end] : FoldedText::placesOf(search.words(), shown)) {
        result += shown.substr(position, begin - position) +
                  output.styled(Look::STRONG, shown.substr(begin, end - begin));
        position = end;
    }
    return result + shown.substr(position);
}

void printForPeople(const std::vector<Match>& matches, const Search& search, Output& output)
{
    for (const Match& match : matches) {
        std::string line =
            formatted("{}  {}", printableLine(match.faultType[StoredFile::CODE].bytes),
                      emphasised(textIn(match.faultType[StoredFile::ALIAS]), search, output));
        if (match.text) {
            line += formatted("  [{}] {}", printableLine((*match.text)[StoredFile::LANGUAGE].bytes),
                              emphasised(nameIn(match), search, output));
        }
        line += match.piece.empty() ? "" : "\n    " + emphasised(match.piece, search, output);
        output.printText(line + '\n');
    }
}

void print(const std::vector<Match>& matches, const Search& search, Output& output)
{
    if (output.format() == Format::TABLE) {
        return printForPeople(matches, search, output);
    }
    using Kind = Table::Kind;
    Table table = {{{"code", Kind::NUMBER},
                    {"alias", Kind::TEXT},
                    {"language", Kind::NUMBER},
                    {"name", Kind::TEXT},
                    {"text", Kind::TEXT}},
                   {}};
    for (const Match& match : matches) {
        table.rows.push_back({match.faultType[StoredFile::CODE], match.faultType[StoredFile::ALIAS],
                              match.text ? (*match.text)[StoredFile::LANGUAGE] : RawCell(),
                              match.text ? (*match.text)[StoredFile::NAME] : RawCell(),
                              match.piece});
    }
    output.print(table);
}

bool isCode(const std::string& words)
{
    return words.find_first_not_of("0123456789") == std::string::npos;
}

void sayNearest(const Database& database, const SearchRequest& request, const StoredFile& content)
{
    std::vector<std::string> aliases;
    for (const StoredRow& faultType : content.faultTypes) {
        aliases.push_back(textIn(faultType[StoredFile::ALIAS]));
    }
    const std::string words = listed(request.words, " ");
    printMessage(
        formatted("{}: no fault type has all of: {}{}", database.file(), words,
                  isCode(words) ? "; zav fault looks a code up" : nearestAlias(words, aliases)));
}

}  // namespace

std::vector<std::string> searchedFields()
{
    std::vector<std::string> names;
    for (const TableModel& table : {faultTypeModel(), descriptionsModel()}) {
        for (const TableModel::Column& column : table.columns) {
            if (column.kind == FieldKind::TEXT) {
                names.push_back(column.name);
            }
        }
    }
    return names;
}

ExitStatus runSearch(const Database& database, const SearchRequest& request, Output& output)
{
    const StoredFile content = readStored(database);
    const Search search(request);
    const std::vector<Match> matches = search.run(content);
    print(matches, search, output);
    if (!matches.empty()) {
        return ExitStatus::DONE;
    }
    sayNearest(database, request, content);
    return ExitStatus::NOT_FOUND_OR_FINDINGS;
}
