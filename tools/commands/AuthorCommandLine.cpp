
#include <algorithm>
#include <limits>

#include "CommandLine.h"
#include "author/BuildCommand.h"
#include "author/DiffCommand.h"
#include "author/ExportCommand.h"
#include "author/MergeCommand.h"
#include "author/TranslateCommand.h"
#include "line/CommandParser.h"
#include "line/arguments.h"
#include "line/authorCommands.h"
#include "line/helpTexts.h"
#include "technician/HtmlCommand.h"
#include "technician/SearchCommand.h"
#include "text/formatted.h"

namespace {

/// The commands of zav-author. Who calls them calls zav.
class Parser : public CommandParser {
public:
    Parser()
    {
        addSearch();
        addHtml();
        addExport();
        addBuild();
        addDiff();
        addTranslate();
        addMerge();
        addHelp();
    }

private:
    void addSearch()
    {
        CLI::App* command = addFileCommand(
            "search", descriptionOf("search"),
            footer("zav search faults.db door open --language 1", "nothing has all words"));
        command->add_option("WORD", m_search.words, "What a fault type must have, all of them")
            ->required()
            ->type_name("");
        addFormat(*command, "table|json|csv");
        addNumbers(*command, "--language", m_search.languages,
                   "Only in this language; may be repeated")
            ->type_name("LANGUAGE");
        const auto store = [this](const std::vector<std::string>& names) {
            for (const std::string& name : names) {
                m_search.fields.insert(fieldFrom(name));
            }
        };
        command
            ->add_option_function<std::vector<std::string>>("--field", store,
                                                            "Only in this column; may be repeated")
            ->type_name("NAME")
            ->allow_extra_args(false);
        command->callback([this] {
            if (std::find(m_search.words.begin(), m_search.words.end(), "") !=
                m_search.words.end()) {
                throw CLI::ValidationError("WORD", "is empty");
            }
            runOnDatabase(listingFormat(),
                          [request = m_search](const Database& database, Output& output) {
                              return runSearch(database, request, output);
                          });
        });
    }

    static std::string fieldFrom(const std::string& name)
    {
        const std::vector<std::string> known = searchedFields();
        if (std::find(known.begin(), known.end(), name) == known.end()) {
            throw CLI::ValidationError(
                "--field", formatted(R"("{}" is none of {})", name, listed(known, "|")));
        }
        return name;
    }

    void addHtml()
    {
        CLI::App* command =
            addFileCommand("html", descriptionOf("html"),
                           footer("zav html faults.db --language 1 --title Press >manual.html",
                                  "a language in which there is no text"));
        addNumbers(*command, "--language", m_html.languages,
                   "Only the texts in this language; may be repeated")
            ->type_name("LANGUAGE");
        command
            ->add_option("--title", m_html.title, "Of the page; the name of the file unless given")
            ->type_name("TEXT");
        command->callback([this] {
            refuseGeneral("--format", "zav html writes nothing but HTML");
            runOnDatabase(Format::TABLE,
                          [request = m_html](const Database& database, Output& output) {
                              return runHtml(database, request, output);
                          });
        });
    }

    void addExport()
    {
        CLI::App* command = addFileCommand(
            "export", descriptionOf("export"),
            footer("zav export faults.db sources", "something in the file that cannot travel"));
        addFile(*command, "FOLDER", m_export.folder, "Where the sources are written");
        addFormat(*command, "table|json|csv");
        command->add_flag("--drop-own", m_export.dropsOwn,
                          "Leave your own columns, tables, indexes and views out");
        command->callback([this] {
            runOnDatabase(listingFormat(),
                          [request = m_export](const Database& database, Output& output) {
                              return runExport(database, request, output);
                          });
        });
    }

    void addBuild()
    {
        CLI::App* command = addCommand("build", descriptionOf("build"),
                                       footer("zav build sources faults.db --release 7",
                                              "mistakes in the sources, or findings in the file"));
        addFile(*command, "FOLDER", m_build.folder, "The sources, as zav export writes them");
        addFile(*command, "FILE", m_build.target, "The database file to be made");
        addFormat(*command, "table|json");
        addRelease(*command, m_build.release, "none");
        addForce(*command, m_build.isForced);
        command->callback([this] {
            refuseGeneral("--debug", "zav build keeps the library silent");
            m_request = {recordFormat(),
                         [request = m_build](Output& output) { return runBuild(request, output); }};
        });
    }

    void addDiff()
    {
        CLI::App* command = addCommand(
            "diff", descriptionOf("diff"),
            footer("zav diff released.db faults.db --format markdown", "the files differ"));
        addFile(*command, "OLD", m_diff.before, "The old file");
        addFile(*command, "NEW", m_diff.after, "The new file");
        addDebug(*command);
        addFormat(*command, "table|json|csv|markdown");
        addNumbers(*command, "--code", m_diff.codes,
                   "Only what is of this fault type; may be repeated")
            ->type_name("CODE");
        addNumbers(*command, "--language", m_diff.languages,
                   "Only the texts in this language; may be repeated")
            ->type_name("LANGUAGE");
        command->callback([this] {
            m_diff.format = valueNamed<DiffFormat>({{"table", DiffFormat::LINES},
                                                    {"json", DiffFormat::JSON},
                                                    {"csv", DiffFormat::CSV},
                                                    {"markdown", DiffFormat::MARKDOWN}},
                                                   m_format, "--format");
            m_diff.debugLevel = m_debugLevel;
            m_request = {Format::TABLE,
                         [request = m_diff](Output& output) { return runDiff(request, output); }};
        });
    }

    void addTranslate()
    {
        CLI::App* command = addFileCommand(
            "translate", descriptionOf("translate"),
            footer("zav translate faults.db --from 1 --to 3 --names 1=en,3=fr >french.xlf",
                   "no text in the language, or something in the file that cannot travel"));
        addNumber<std::uint16_t>(*command, "--from", m_translate.from,
                                 "The language that is translated")
            ->required()
            ->type_name("LANGUAGE");
        addNumber<std::uint16_t>(*command, "--to", m_translate.to,
                                 "The language that it is translated into")
            ->required()
            ->type_name("LANGUAGE");
        command->add_flag("--missing", m_translate.isMissingOnly, "Only what has no translation");
        const auto store = [this](const std::vector<std::string>& pairs) {
            for (const std::string& pair : pairs) {
                addName(pair);
            }
        };
        command
            ->add_option_function<std::vector<std::string>>(
                "--names", store, "What translators call the languages; x-1 and x-3 unless given")
            ->delimiter(',')
            ->type_name("1=en,3=fr")
            ->allow_extra_args(false);
        command->callback([this] {
            refuseGeneral("--format", "zav translate writes nothing but XLIFF");
            if (m_translate.from == m_translate.to) {
                throw CLI::ValidationError("--to", "is the language of --from");
            }
            runOnDatabase(Format::TABLE,
                          [request = m_translate](const Database& database, Output& output) {
                              return runTranslate(database, request, output);
                          });
        });
    }

    void addName(const std::string& pair)
    {
        const std::size_t equals = std::min(pair.find('='), pair.size());
        const auto language = numberFrom<std::uint16_t>(pair.substr(0, equals), "--names");
        const std::string name = pair.substr(std::min(equals + 1, pair.size()));
        constexpr const char* IN_NAMES =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-";
        if (name.empty() || name.find_first_not_of(IN_NAMES) != std::string::npos) {
            throw CLI::ValidationError(
                "--names", formatted(R"("{}" is no name of a language, such as 1=en)", pair));
        }
        if (!m_translate.names.emplace(language, name).second) {
            throw CLI::ValidationError("--names",
                                       formatted("language {} has a name already", language));
        }
    }

    void addMerge()
    {
        CLI::App* command =
            addCommand("merge", descriptionOf("merge"),
                       footer("zav merge faults.db french.xlf new.db",
                              "mistakes in the translations, or findings in the file"));
        command->add_option("FILE", m_merge.file, "The database file")->required()->type_name("");
        command
            ->add_option("TRANSLATIONS", m_merge.translations,
                         "What zav translate has written, and a translator filled in")
            ->required()
            ->type_name("");
        command->add_option("NEW", m_merge.target, "The database file to be made")
            ->required()
            ->type_name("");
        addFormat(*command, "table|json");
        addRelease(*command, m_merge.release, "that of FILE");
        command->add_flag("--drop-own", m_merge.dropsOwn,
                          "Leave your own columns, tables, indexes and views out");
        addForce(*command, m_merge.isForced);
        command->callback([this] {
            refuseGeneral("--debug", "zav merge keeps the library silent");
            m_request = {recordFormat(),
                         [request = m_merge](Output& output) { return runMerge(request, output); }};
        });
    }

    template <class Release>
    static void addRelease(CLI::App& command, Release& release, const std::string& otherwise)
    {
        command
            .add_option_function<std::string>(
                "--release", [&release](const std::string& text) { release = releaseFrom(text); },
                "The release number; " + otherwise + " unless given")
            ->type_name("N");
    }

    static void addForce(CLI::App& command, bool& isForced)
    {
        command.add_flag("--force", isForced, "Replace a file that is there already");
    }

    static std::int32_t releaseFrom(const std::string& text)
    {
        constexpr std::int32_t LARGEST = std::numeric_limits<std::int32_t>::max();
        const auto number = numberFrom<std::uint32_t>(text, "--release");
        if (number > LARGEST) {
            throw CLI::ValidationError(
                "--release", formatted(R"("{}" is no number from 0 to {})", text, LARGEST));
        }
        return static_cast<std::int32_t>(number);
    }

    SearchRequest m_search;
    HtmlRequest m_html;
    ExportRequest m_export;
    BuildRequest m_build;
    DiffRequest m_diff;
    TranslateRequest m_translate;
    MergeRequest m_merge;
};

}  // namespace

Request parseCommandLine(int argc, char** argv)
{
    return Parser().parse(argc, argv);
}
