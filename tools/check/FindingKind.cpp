#include "FindingKind.h"

#include <algorithm>

const std::vector<KindInfo>& allKinds()
{
    using Kind = FindingKind;
    constexpr Severity ERROR = Severity::ERROR;
    constexpr Severity WARNING = Severity::WARNING;
    constexpr Severity NOTE = Severity::NOTE;
    static const std::vector<KindInfo> kinds = {
        {Kind::UNREADABLE, "unreadable", ERROR, false, "SQLite cannot read even the schema"},
        {Kind::DAMAGED, "damaged", ERROR, false,
         "SQLite finds the file damaged, cannot read it to its end, or an index answers wrongly"},
        {Kind::MISSING_TABLE, "missing-table", ERROR, true, "every query of the table fails"},
        {Kind::MISSING_COLUMN, "missing-column", ERROR, true,
         "the field keeps what was last read into it"},
        {Kind::LETTER_CASE, "letter-case", ERROR, true,
         "the library looks for the column in other letters, and finds none"},
        {Kind::COLUMN_ORDER, "column-order", ERROR, false,
         "the columns stand in another order, by which lookups go wrong"},
        {Kind::OUT_OF_RANGE, "out-of-range", ERROR, true, "the number does not fit its field"},
        {Kind::NOT_A_NUMBER, "not-a-number", ERROR, true,
         "the library finds no number, and says 0"},
        {Kind::INEXACT_NUMBER, "inexact-number", ERROR, true,
         "the library delivers another number, or its lookup does not find this one"},
        {Kind::CUT_TEXT, "cut-text", ERROR, true, "the text ends at its first NUL byte"},
        {Kind::DUPLICATE_CODE, "duplicate-code", ERROR, false,
         "several fault types have the code, so that its lookup finds none"},
        {Kind::DUPLICATE_ID, "duplicate-id", ERROR, false, "several texts have the id"},
        {Kind::UNKNOWN_FAULT, "unknown-fault", ERROR, false,
         "the text is of a fault type that is nowhere defined"},
        {Kind::CODE_RANGE, "code-range", ERROR, false, "the lookup takes codes up to 65535 only"},
        {Kind::WAL_MODE, "wal-mode", WARNING, false,
         "the file cannot be read where nothing may be written"},
        {Kind::JOURNAL_FILE, "journal-file", WARNING, false,
         "a journal lies beside the file, and may change it"},
        {Kind::NOT_UTF8, "not-utf8", WARNING, false, "the text holds bytes that are no UTF-8"},
        {Kind::CONTROL_CHARACTER, "control-character", WARNING, false,
         "the text holds a control character; line ends and tabulators are none"},
        {Kind::MISSING_TEXT, "missing-text", WARNING, false,
         "the fault type has no text in a language"},
        {Kind::MISSING_LANGUAGE, "missing-language", WARNING, false,
         "a language lacks texts for more than a quarter of the fault types"},
        {Kind::DUPLICATE_TEXT, "duplicate-text", WARNING, false,
         "the fault type has several texts in the language"},
        {Kind::DUPLICATE_ALIAS, "duplicate-alias", WARNING, false,
         "several fault types have the alias"},
        {Kind::SAME_TEXT, "same-text", WARNING, false,
         "name, short description and description are those of another language"},
        {Kind::PLACEHOLDER_MISMATCH, "placeholder-mismatch", WARNING, false,
         "the placeholders differ from those of the other languages"},
        {Kind::MISSING_INDEX, "missing-index", WARNING, false,
         "each lookup of texts reads the whole table"},
        {Kind::NULL_VALUE, "null", NOTE, true, R"(NULL reads as 0 or as "n/a")"},
        {Kind::QUOTE, "quote", NOTE, false,
         "the library's statement texts break at a single quote"},
        {Kind::EXTRA_COLUMN, "extra-column", NOTE, true, "the library skips the column"},
        {Kind::RARE_TYPE, "rare-type", NOTE, false,
         "the type is rare, and nearly that of many fault types"},
        {Kind::SURROUNDING_SPACE, "surrounding-space", NOTE, false,
         "the text begins or ends with white space"},
        {Kind::EMPTY_TEXT, "empty-text", NOTE, false, "the name or the description is empty"},
    };
    return kinds;
}

const KindInfo& infoOf(FindingKind kind)
{
    return allKinds()[static_cast<std::size_t>(kind)];
}

std::optional<FindingKind> kindNamed(const std::string& name)
{
    const auto found = std::find_if(allKinds().begin(), allKinds().end(),
                                    [&](const KindInfo& info) { return name == info.name; });
    return found == allKinds().end() ? std::nullopt : std::optional(found->kind);
}

const char* nameOf(Severity severity)
{
    switch (severity) {
    case Severity::ERROR:
        return "error";
    case Severity::WARNING:
        return "warning";
    default:
        return "note";
    }
}
