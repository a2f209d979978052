
#include <algorithm>
#include <limits>

#include "CommandLine.h"
#include "author/BuildCommand.h"
#include "author/DiffCommand.h"
#include "author/ExportCommand.h"
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
        addHelp();
    }

private:
    void addSearch()
    {
        CLI::App* command = addFileCommand(
            "search", descriptionOf("search"),
            footer("  zav search faults.db door open --language 1\n", "nothing has all words"));
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
        CLI::App* command = addFileCommand(
            "html", descriptionOf("html"),
            footer("  zav html faults.db --language 1 --title Press >manual.html\n", ""));
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
            footer("  zav export faults.db sources\n", "something in the file that cannot travel"));
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
                                       footer("  zav build sources faults.db --release 7\n",
                                              "mistakes in the sources, or findings in the file"));
        addFile(*command, "FOLDER", m_build.folder, "The sources, as zav export writes them");
        addFile(*command, "FILE", m_build.target, "The database file to be made");
        addFormat(*command, "table|json");
        command
            ->add_option_function<std::string>(
                "--release",
                [this](const std::string& text) { m_build.release = releaseFrom(text); },
                "The release number; none unless given")
            ->type_name("N");
        command->add_flag("--force", m_build.isForced, "Replace a file that is there already");
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
            footer("  zav diff released.db faults.db --format markdown\n", "the files differ"));
        addFile(*command, "OLD", m_diff.before, "The old file");
        addFile(*command, "NEW", m_diff.after, "The new file");
        addDebug(*command);
        addFormat(*command, "table|json|csv|markdown");
        addNumbers(*command, "--code", m_diff.codes, "Only what is of this fault type")
            ->type_name("CODE");
        addNumbers(*command, "--language", m_diff.languages, "Only the texts in this language")
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

    /// With an example.
    static std::string footer(const std::string& example, const std::string& foundNothing)
    {
        return "Example:\n" + example + "\n" + exitStatuses(foundNothing);
    }

    SearchRequest m_search;
    HtmlRequest m_html;
    ExportRequest m_export;
    BuildRequest m_build;
    DiffRequest m_diff;
};

}  // namespace

Request parseCommandLine(int argc, char** argv)
{
    return Parser().parse(argc, argv);
}
