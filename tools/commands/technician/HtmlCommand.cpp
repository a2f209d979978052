#include "HtmlCommand.h"

#include <filesystem>
#include <map>
#include <vector>

#include "database/info/Sha256.h"
#include "database/stored/StoredFile.h"
#include "database/stored/valueColumns.h"
#include "manual/page.h"
#include "text/formatted.h"
#include "text/html.h"
#include "text/message.h"

namespace {

/// The rows of one code. A file may define a fault type twice, or not at all.
struct Entry {
    std::vector<const StoredRow*> faultTypes;
    std::vector<const StoredRow*> texts;
};

/// Codes that are numbers come first, in their order.
using Entries = std::map<std::pair<std::int64_t, std::string>, Entry>;

std::pair<std::int64_t, std::string> keyOf(const RawCell& code)
{
    return code.type == CellType::INTEGER
               ? std::pair(static_cast<std::int64_t>(std::stoll(code.bytes)), code.bytes)
               : std::pair(INT64_MAX, code.bytes);
}

Entries entriesOf(const StoredFile& content)
{
    Entries entries;
    for (const StoredRow& row : content.faultTypes) {
        entries[keyOf(row[StoredFile::CODE])].faultTypes.push_back(&row);
    }
    for (const StoredRow& row : content.texts) {
        entries[keyOf(row[StoredFile::CODE])].texts.push_back(&row);
    }
    return entries;
}

std::string htmlIn(const RawCell& cell)
{
    return htmlText(RawCellView{cell.type, cell.bytes}.text());
}

std::string hashSource(const char* content)
{
    Sha256 hash;
    hash.add(content);
    return formatted("'sha256-{}'", base64(hash.digest()));
}

std::string head(const std::string& title)
{
    return formatted(
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src {}; "
        "script-src {}; base-uri 'none'; form-action 'none'\">\n"
        "<title>{}</title>\n<style>{}</style>\n</head>\n",
        hashSource(MANUAL_STYLE), hashSource(MANUAL_SCRIPT), title, MANUAL_STYLE);
}

/// @param languages  in the order of the texts; without the controls, which are of use only to the
///                   script, the page is a plain list.
std::string controls(const std::vector<std::string>& languages, const std::set<std::string>& types)
{
    std::string html =
        "<form role=\"search\" hidden>\n<label class=\"search\">Search "
        "<input type=\"search\" autocomplete=\"off\"></label>\n"
        "<fieldset><legend>Languages</legend>\n";
    for (const std::string& language : languages) {
        html += formatted("<label><input type=\"checkbox\" value=\"{0}\" checked> {0}</label>\n",
                          language);
    }
    html += "</fieldset>\n<label>Type <select>\n<option value=\"\">all</option>\n";
    for (const std::string& type : types) {
        html +=
            formatted("<option value=\"={0}\">{1}</option>\n", type, type.empty() ? "none" : type);
    }
    return html + "</select></label>\n</form>\n<p id=\"count\" role=\"status\"></p>\n";
}

/// @param tag  of the element; nothing is written for NULL and for an empty text.
std::string element(const char* tag, const RawCell& cell)
{
    return cell.isNull() || htmlIn(cell).empty()
               ? ""
               : formatted("<{0} dir=\"auto\">{1}</{0}>\n", tag, htmlIn(cell));
}

std::string titled(const char* title, const RawCell& cell)
{
    const std::string value = element("dd", cell);
    return value.empty() ? "" : formatted("<dt>{}</dt>\n{}", title, value);
}

std::string section(const StoredRow& row)
{
    constexpr std::size_t SHORT_DESCRIPTION = StoredFile::NAME + 1;
    constexpr std::size_t DESCRIPTION = StoredFile::NAME + 2;
    constexpr std::size_t COMMENT = StoredFile::NAME + 3;
    constexpr std::size_t REMEDY = StoredFile::NAME + 4;
    const std::string list = titled("Remedy", row[REMEDY]) + titled("Comment", row[COMMENT]);
    const RawCell& name = row[StoredFile::NAME];
    return formatted(
               "<section data-language=\"{0}\">\n<h3><span>[{0}]</span> <bdi>{1}</bdi></h3>\n",
               htmlIn(row[StoredFile::LANGUAGE]), name.isNull() ? "" : htmlIn(name)) +
           element("p", row[SHORT_DESCRIPTION]) + element("p", row[DESCRIPTION]) +
           (list.empty() ? "" : "<dl>\n" + list + "</dl>\n") + "</section>\n";
}

/// The numbers of a fault type that say something.
std::string facts(const StoredRow& row)
{
    constexpr std::size_t BUG = StoredFile::TYPE + 1;
    constexpr std::size_t CLEAR_AFTER_CYCLE = StoredFile::TYPE + 2;
    const auto says = [](const RawCell& cell) { return !cell.isNull() && cell.bytes != "0"; };
    std::string text;
    if (says(row[CLEAR_AFTER_CYCLE])) {
        text = "clears after cycle " + htmlIn(row[CLEAR_AFTER_CYCLE]);
    }
    if (says(row[BUG])) {
        text += (text.empty() ? "bug " : ", bug ") + htmlIn(row[BUG]);
    }
    return text.empty() ? "" : "<p class=\"facts\">" + text + "</p>\n";
}

class Page {
public:
    Page(const StoredFile& content, const HtmlRequest& request)
        : m_entries(entriesOf(content)), m_request(request)
    {
        std::set<std::pair<std::int64_t, std::string>> languages;
        for (const StoredRow& row : content.texts) {
            if (isInOneOf(m_request.languages, row)) {
                languages.insert(keyOf(row[StoredFile::LANGUAGE]));
            }
        }
        for (const auto& [number, language] : languages) {
            m_languages.push_back(htmlText(language));
        }
        for (const StoredRow& row : content.faultTypes) {
            m_types.insert(htmlIn(row[StoredFile::TYPE]));
        }
    }

    void write(const std::string& title, Output& output) const
    {
        output.printText(head(title));
        output.printText(formatted("<body>\n<header>\n<h1>{}</h1>\n{}</header>\n<main>\n", title,
                                   controls(m_languages, m_types)));
        for (const auto& [key, entry] : m_entries) {
            writeEntry(entry, htmlText(key.second), output);
        }
        output.printText(
            formatted("</main>\n<script>{}</script>\n</body>\n</html>\n", MANUAL_SCRIPT));
    }

private:
    std::string sections(const Entry& entry) const
    {
        std::string html;
        for (const StoredRow* text : entry.texts) {
            html += isInOneOf(m_request.languages, *text) ? section(*text) : "";
        }
        return html;
    }

    void writeEntry(const Entry& entry, const std::string& code, Output& output) const
    {
        const std::string texts = sections(entry);
        if (entry.faultTypes.empty()) {
            output.printText(texts.empty() ? "" : article(code, code, "", "", "", texts));
        }
        std::size_t number = 0;
        for (const StoredRow* row : entry.faultTypes) {
            const std::string id = ++number == 1 ? code : formatted("{}-{}", code, number);
            output.printText(article(id, code, htmlIn((*row)[StoredFile::ALIAS]),
                                     htmlIn((*row)[StoredFile::TYPE]), facts(*row), texts));
        }
    }

    static std::string article(const std::string& id, const std::string& code,
                               const std::string& alias, const std::string& type,
                               const std::string& facts, const std::string& texts)
    {
        return formatted(
            "<article id=\"{0}\" data-type=\"{3}\">\n<h2><a href=\"#{0}\">{1}</a> "
            "<bdi>{2}</bdi> <span class=\"facts\">{3}</span></h2>\n{4}{5}</article>\n",
            id, code, alias, type, facts, texts);
    }

    Entries m_entries;
    const HtmlRequest& m_request;
    std::vector<std::string> m_languages;
    std::set<std::string> m_types;
};

}  // namespace

ExitStatus runHtml(const Database& database, const HtmlRequest& request, Output& output)
{
    const StoredFile content = readStored(database);
    for (const std::uint16_t language : request.languages) {
        if (!hasTextIn(language, content)) {
            printMessage(formatted("{}: no text has the language {}", database.file(), language));
            return ExitStatus::NOT_FOUND_OR_FINDINGS;
        }
    }
    const std::string title = request.title.empty()
                                  ? std::filesystem::path(database.file()).filename().string()
                                  : request.title;
    Page(content, request).write(htmlText(title), output);
    return ExitStatus::DONE;
}
